#!/bin/bash
# Starts a private PostgreSQL for the tests: a cluster of its own in a temporary folder, reached through a
# unix socket alone, its superuser "quilla" without a password. One server serves all tests of a run; each
# test makes databases of its own in it (tests/support/postgres_database.h).
#   tests/postgres/start.sh build/debug/postgres-socket
# writes the socket's folder into that file; ctest does so before the tests that
# `quilla_needs_postgres(target)` names. By hand: start it, run the test's binary, stop it:
#   psql -h "$(cat build/debug/postgres-socket)" -U quilla postgres
#   tests/postgres/stop.sh build/debug/postgres-socket
# Through ODBC: Driver={PostgreSQL Unicode};Servername=<the folder>;Database=<a database>;Uid=quilla
# More options for the server stand in QUILLA_POSTGRES_OPTIONS.
set -eu
here=$(dirname "$(readlink -f "$0")")
state=$(readlink -m "$1")
"$here/stop.sh" "$state" # one that an interrupted run left behind

programs=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -n 1)
[ -n "$programs" ] || { echo "PostgreSQL is not installed (package postgresql)." >&2; exit 1; }

# The server refuses to run as root.
as_server() { "$@"; }
folder=$(mktemp -d /tmp/quilla-postgres.XXXXXX)
if [ "$(id -u)" = 0 ]; then
    account=postgres
    id "$account" >/dev/null 2>&1 || account=nobody
    chown "$account" "$folder"
    as_server() { runuser -u "$account" -- "$@"; }
fi
cd "$folder"
# Its sort order and case rules are the least helpful ones: what the program needs it must bring along.
as_server "$programs/initdb" -D "$folder/data" -U quilla -A trust -E UTF8 --locale=C --no-sync >"$folder/initdb.log" 2>&1 ||
    { cat "$folder/initdb.log" >&2; exit 1; }
# The state is written first: a start that fails half-way is cleaned up by the next one.
printf '%s' "$folder" >"$state"
as_server "$programs/pg_ctl" -D "$folder/data" -l "$folder/server.log" -w -t 60 start \
    -o "-k $folder -c listen_addresses='' -c fsync=off -c full_page_writes=off -c max_connections=50 ${QUILLA_POSTGRES_OPTIONS:-}" >/dev/null ||
    { cat "$folder/server.log" >&2; exit 1; }
