#!/bin/bash
# A library's first day on a bare Debian 12: install the package, set a library up through the windows, with an import
# of 20,000 records with copies and of 5,000 readers, charge a book to a reader, make a backup and restore it. Ends at
# the first step that does not do what it should. Needs root, debootstrap and the network for Debian's packages.
#   packaging/make-deb.sh && packaging/try-package.sh build/quilla_4.1_amd64.deb [folder for pictures]
set -eu
cd "$(dirname "$(readlink -f "$0")")/.."
. packaging/bare-root.sh

operator=wang password=secret reader=D000123 barcode=00045671

# until_it COMMAND ...: waits for it to succeed, ten seconds or what `patience` says.
until_it() {
    for _ in $(seq $((${patience:-10} * 10))); do
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
        tail -n 5 "$root/tmp/setup.log" >&2
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

# Page by page: a new library in the usual file, its operator, all that is recommended, both files.
set_up() {
    librarian quilla-setup >"$root/tmp/setup.log" 2>&1 &
    window "青简台设置"
    picture welcome
    keys Down Return
    enter "City library"
    keys Return
    enter "$operator"
    enter "$password"
    enter "$password"
    keys Return Return
    enter /tmp/files/books.mrc
    enter /tmp/files/readers.csv
    keys Return
    picture steps
    keys Return
    patience=60 expect "titles, copies, readers" "20000|40000|5000" \
        "select (select count(*) from zsk), (select count(*) from sck), (select count(*) from dzk)"
    sleep 1
    picture set-up
    librarian quilla-db check
}

# The set-up opens the desk; the first line of the lock file names the process that holds it.
charge() {
    keys Return
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
    kill "$(head -n 1 "$root$(dirname "$library")/quilla.lock")"
    read_library "select name, bookname, date(yhdate) from JhskV"
}

backup_and_restore() {
    librarian sh -c "ls ~/.local/share/青简文库/backups/quilla-*-\$(date +%F).db" || fail "no backup of the day"
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

step "set up a library with 20,000 records, 40,000 copies and 5,000 readers"
start_screen
set_up
step "charge $barcode to $reader"
charge
step "back up and restore"
backup_and_restore
step "done"
