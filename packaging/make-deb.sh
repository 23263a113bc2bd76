#!/bin/bash
# Builds the package for Debian 12 and checks it: build/quilla_VERSION_ARCHITECTURE.deb
set -eu
cd "$(dirname "$(readlink -f "$0")")/.."
packaging/install-packages.sh packaging/packages-run.txt packaging/packages-deb.txt

# One version everywhere: of the program, the package and the software catalogue.
version=$(sed -n 's/^project(quilla VERSION \([^ ]*\) .*/\1/p' CMakeLists.txt)
[ "$(dpkg-parsechangelog -S Version)" = "$version" ] && grep -q "release version=\"$version\"" packaging/*.metainfo.xml || {
    echo "The program is version $version: say so in debian/changelog and packaging/*.metainfo.xml." >&2
    exit 1
}

# debhelper gives the build a home of its own, where the compiler's cache would begin anew.
command -v ccache >/dev/null && export CCACHE_DIR=${CCACHE_DIR:-$(ccache --get-config cache_dir)}
mkdir -p build
rm -f build/quilla_*.deb
debian/rules clean >/dev/null
debian/rules binary
appstreamcli validate --no-net debian/quilla/usr/share/metainfo/*.metainfo.xml
desktop-file-validate debian/quilla/usr/share/applications/*.desktop
lintian --fail-on error build/quilla_*.deb
ls -l build/quilla_*.deb
