#!/bin/bash
# Installs the package in a bare Debian 12, starts what it holds, upgrades it and takes it away again; the library
# must outlive all of it.
#   packaging/make-deb.sh && packaging/test_package.sh build/quilla_4.1_amd64.deb [the package before it]
# ctest skips it unless QUILLA_TEST_PACKAGE names the package.
set -eu
cd "$(dirname "$(readlink -f "$0")")/.."
. packaging/bare-root.sh

# older PACKAGE: the same programs under a version that the package replaces.
older() {
    local folder=$root/tmp/older
    dpkg-deb -R "$1" "$folder"
    sed -i 's/^Version: .*/Version: 0.1/' "$folder/DEBIAN/control"
    dpkg-deb -b "$folder" "$root/root/quilla_0.1.deb" >/dev/null
    rm -rf "$folder"
    echo "$root/root/quilla_0.1.deb"
}

packaged_programs() { dpkg-deb -c "$1" | sed -n 's#.* \./usr/bin/\([^ ]*\) ->.*#\1#p'; }

loans() { librarian quilla-db export-readers /tmp/readers-$1.csv >/dev/null && cat "$root/tmp/readers-$1.csv"; }

new=${1:-${QUILLA_TEST_PACKAGE:-}}
[ -n "$new" ] || skip "QUILLA_TEST_PACKAGE names no package"
make_root "$@"

step "install the package before this one"
before=${2:-$(older "$new")}
install_packages "$before"
librarian quilla-db first-start
librarian quilla-db check
loans before >"$root/tmp/before"
[ -s "$root/tmp/before" ] || fail "the demo library has no readers"

step "upgrade"
install_packages "$new"
[ "$(inside dpkg-query -W -f '${Version}' quilla)" = "$(dpkg-deb -f "$new" Version)" ] || fail "not upgraded"
librarian quilla-db first-start
librarian quilla-db check
loans after | cmp - "$root/tmp/before" || fail "the upgrade changed the library"

step "start every program"
for program in $(packaged_programs "$new"); do
    [ -e "$root/usr/share/man/man1/$program.1.gz" ] || fail "$program has no manual page"
    missing=$(inside ldd "/usr/bin/$program" | grep "not found") && fail "$program: $missing"
done
librarian quilla-db --help >/dev/null
librarian env QT_QPA_PLATFORM=offscreen quilla --gallery /tmp/pictures 2>/dev/null
pictures=$(find "$root/tmp/pictures" -name '*.png' | wc -l)
[ "$pictures" -gt 30 ] || fail "only $pictures pictures"
[ -s "$root/usr/share/doc/quilla/README.md" ] || fail "no manual"

step "read the library with sqlite3"
install_packages sqlite3
overdue=$(read_library "select count(*) from JhskCqV where name<>'' and cqday>0")
[ "$overdue" -gt 0 ] || fail "sqlite3 reads: $overdue"

step "remove"
inside apt-get purge -y -qq quilla >/dev/null 2>&1
[ ! -e "$root/usr/libexec/quilla" ] || fail "the package leaves files behind"
[ -s "$root$library" ] || fail "the library went with the package"
step "done: $pictures pictures"
