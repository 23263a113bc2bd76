#!/bin/bash
# A library's first day on a bare Debian 12: install the package, set a library up, import 20,000 records with copies
# and 5,000 readers, charge a book to a reader through the windows, make a backup and restore it. Ends at the first
# step that does not do what it should. Needs root, debootstrap and the network for Debian's packages.
#   packaging/make-deb.sh && packaging/try-package.sh build/quilla_4.1_amd64.deb [folder for pictures]
set -eu
cd "$(dirname "$(readlink -f "$0")")/.."
. packaging/bare-root.sh

operator=wang password=secret reader=D000123 barcode=00045671

# until_it COMMAND ...: waits up to ten seconds for it to succeed.
until_it() {
    for _ in $(seq 100); do
        "$@" >/dev/null 2>&1 && return
        sleep 0.1
    done
    return 1
}

# A screen inside the root, with a window manager: `display`. A window that comes while the manager starts is lost.
start_screen() {
    mkdir -m 1777 -p "$root/tmp/.X11-unix"
    librarian sh -c 'exec Xvfb -displayfd 3 -screen 0 1366x768x24 -noreset 3>/tmp/display 2>/dev/null' &
    until_it test -s "$root/tmp/display" || fail "no screen came up"
    display=:$(cat "$root/tmp/display")
    librarian openbox >/dev/null 2>&1 &
    until_it librarian xdotool get_num_desktops || fail "no window manager came up"
}

# window TITLE: waits for it and gives it the keyboard.
window() {
    if ! until_it librarian xdotool search --onlyvisible --name "$1"; then
        picture missing
        tail -n 5 "$root/tmp/quilla.log" >&2
        fail "no window “$1”"
    fi
    librarian xdotool search --onlyvisible --name "$1" windowactivate --sync 2>/dev/null || true
}

keys() { librarian xdotool key --delay 60 "$@"; }
enter() {
    librarian xdotool type --delay 20 "$1"
    keys Return
}
picture() {
    [ -n "$pictures" ] || return 0
    librarian import -window root /tmp/picture.png && cp "$root/tmp/picture.png" "$pictures/$1.png"
}

# expect WHAT WANTED SELECT: waits until the library answers so.
expect() {
    until_it answers "$2" "$3" && return
    picture "$1"
    fail "$1: “$(read_library "$3")”, not “$2”"
}
answers() { [ "$(read_library "$2")" = "$1" ]; }

make_library() {
    librarian quilla-db create --operator "$operator"
    echo "$password" | librarian quilla-db set-password "$operator"
    librarian quilla-db load-starter
    librarian quilla-db first-start # makes it the stored connection
}

import_files() {
    librarian quilla-db import-books /tmp/files/books.mrc
    librarian quilla-db import-readers /tmp/files/readers.csv --add-units
    librarian quilla-db guard
    librarian quilla-db check
    expect "titles, copies, readers" "20000|40000|5000" \
        "select (select count(*) from zsk), (select count(*) from sck), (select count(*) from dzk)"
}

charge() {
    librarian sh -c 'echo $$ >/tmp/quilla.pid; exec quilla' >"$root/tmp/quilla.log" 2>&1 &
    window "登录流通子系统"
    picture login
    enter "$operator"
    enter "$password"
    window "青简台"
    keys alt+b Return
    sleep 1
    enter "$reader"
    enter "$barcode"
    expect loan "$reader|$barcode|$operator" "select readercode, barcode, operater from jhsk"
    sleep 1
    picture charged
    kill "$(cat "$root/tmp/quilla.pid")"
    read_library "select name, bookname, date(yhdate) from JhskV"
}

backup_and_restore() {
    librarian sh -c "ls ~/.local/share/青简文库/backups/quilla-*-$(date +%F).db" || fail "no backup of the day"
    librarian quilla-db backup /home/librarian/backup.db
    [ "$(stat -c %a "$root/home/librarian/backup.db")" = 600 ] || fail "others may read the backup"
    echo x | librarian quilla-db add-operator later
    librarian quilla-db restore /home/librarian/backup.db
    librarian sh -c "ls ~/.local/share/青简文库/quilla-replaced-*.db" || fail "the replaced library is gone"
    librarian quilla-db check
    expect "operators of the backup" "$operator" "select group_concat(username) from LibUse"
    expect "loan of the backup" "$reader|$barcode" "select readercode, barcode from jhsk"
}

package=${1:?the package}
pictures=${2:+$(readlink -f "$2")}
display=
make_root "$@"

step "install $package and what tries it"
install_packages "$package"
inside sh -c 'command -v sqlite3 Xvfb' && fail "the package brings what tries it"
install_packages xvfb xdotool openbox sqlite3 ${pictures:+imagemagick}
mkdir "$root/tmp/files"
packaging/write_library_files.py "$root/tmp/files"

step "set up a library"
make_library
step "import 20,000 records with 40,000 copies and 5,000 readers"
import_files
step "charge $barcode to $reader through the windows"
start_screen
charge
step "back up and restore"
backup_and_restore
step "done"
