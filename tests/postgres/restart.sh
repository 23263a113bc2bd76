#!/bin/bash
# Takes the server that start.sh named in this file down, or up again, with its data as they stand.
#   tests/postgres/restart.sh down build/debug/postgres-socket
#   tests/postgres/restart.sh up build/debug/postgres-socket
set -eu
folder=$(cat "$2")
case $folder in /tmp/quilla-postgres.*) ;; *) echo "$2 does not name a test server." >&2; exit 1 ;; esac
control=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)/pg_ctl
as_server() { "$@"; }
owner=$(stat -c %U "$folder/data")
[ "$owner" = "$(id -un)" ] || as_server() { runuser -u "$owner" -- "$@"; }
cd "$folder"
if [ "$1" = down ]; then
    as_server "$control" -D "$folder/data" -w -m fast stop >/dev/null
else
    as_server "$control" -D "$folder/data" -l "$folder/server.log" -w start \
        -o "-k $folder -c listen_addresses='' -c fsync=off -c full_page_writes=off -c max_connections=50" >/dev/null
fi
