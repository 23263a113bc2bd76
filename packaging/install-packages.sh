#!/bin/bash
# Installs what is missing of the packages named in a list file, and says so.
#   packaging/install-packages.sh packaging/packages-run.txt [more lists]
set -eu
wanted=$(cat "$@" | sed 's/#.*//' | tr -s ' \n' ' ')
missing=
for package in $wanted; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing="$missing $package"
done
[ -z "$missing" ] && exit 0
sudo=
if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || { echo "Missing packages:$missing. Install them as root." >&2; exit 1; }
    sudo=sudo
fi
echo "Installing:$missing"
$sudo apt-get update -qq
$sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >/dev/null
