# shellcheck shell=bash
# Sourced by what tries the package: a bare Debian 12 in a folder of its own, gone at the end. Needs root, and the
# network for Debian's packages.

# skip WHY: ctest counts it as skipped.
skip() {
    echo "Skipped: $1"
    exit 77
}

# make_root: sets `root`. Nothing but the base system, and one user, the librarian. What is mounted in it is seen
# by this process alone, and what it starts ends with it.
make_root() {
    [ "$(id -u)" = 0 ] || skip "a bare root needs root"
    command -v debootstrap >/dev/null || skip "debootstrap is not installed"
    if [ -z "${BARE_ROOT_ALONE:-}" ]; then
        BARE_ROOT_ALONE=1 exec unshare --mount --propagation private --pid --fork --kill-child -- "$0" "$@"
    fi
    root=$(mktemp -d /tmp/quilla-root.XXXXXX)
    chmod 755 "$root"
    trap 'umount -q "$root/proc"; rm -rf --one-file-system "$root"' EXIT
    debootstrap --variant=minbase bookworm "$root" >"$root.log" 2>&1 || { tail "$root.log"; skip "no bare root could be made"; }
    rm -f "$root.log"
    mount -t proc proc "$root/proc"
    inside useradd --create-home --shell /bin/bash librarian
    inside apt-get update -qq
}

# inside COMMAND ...: as root in the bare root.
inside() {
    chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive "$@"
}

# librarian COMMAND ...: as the user who works at the desk.
librarian() {
    chroot --userspec=librarian:librarian "$root" env -i PATH=/usr/bin:/bin HOME=/home/librarian LC_ALL=C.UTF-8 \
        TZ=Asia/Shanghai ${display:+DISPLAY=$display} "$@"
}

# install_packages NAME or FILE ...: a file lies outside.
install_packages() {
    local package names=()
    for package; do
        case $package in
        *.deb)
            cp "$package" "$root/tmp/"
            names+=("/tmp/$(basename "$package")")
            ;;
        *) names+=("$package") ;;
        esac
    done
    inside apt-get install -y -qq --no-install-recommends "${names[@]}" >"$root/tmp/install.log" 2>&1 ||
        { tail -n 20 "$root/tmp/install.log" >&2; return 1; }
}

# read_library SELECT: from the librarian's own library; needs the package sqlite3 inside.
library=/home/librarian/.local/share/青简文库/quilla.db
read_library() {
    librarian sqlite3 -readonly -cmd '.load /usr/lib/quilla/order' "$library" "$1"
}

step() { printf '%s  %s\n' "$(date +%T)" "$*"; }
fail() {
    echo "Failed: $*" >&2
    exit 1
}
