#!/bin/bash
# Stops the server that start.sh named in this file and removes its folder. Nothing to stop is no error.
#   tests/postgres/stop.sh build/debug/postgres-socket
set -eu
state=$(readlink -m "$1")
[ -f "$state" ] || exit 0
folder=$(cat "$state")
case $folder in /tmp/quilla-postgres.*) ;; *) echo "$state does not name a test server." >&2; exit 1 ;; esac
process=$(head -n 1 "$folder/data/postmaster.pid" 2>/dev/null || true)
if [ -n "$process" ] && kill -INT "$process" 2>/dev/null; then # a fast shutdown
    for _ in $(seq 100); do
        [ -e "$folder/data/postmaster.pid" ] || break
        sleep 0.1
    done
fi
rm -rf "$folder" "$state"
