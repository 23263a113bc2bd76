#!/bin/sh
# The rules of the layers that no compiler knows. Prints each offending line; exits 1 if there is one.
cd "$1" || exit 2
bad=0
complain() { [ -n "$2" ] && { printf '%s:\n%s\n' "$1" "$2" >&2; bad=1; }; }

sources() { find "$@" \( -name '*.h' -o -name '*.cpp' \) 2>/dev/null; }

# Only the two folders that know the engines may name one.
complain "only platform/sql and platform/db may ask which engine it is" \
    "$(sources app platform/core platform/grid platform/report platform/sheet platform/ui frame database desk readers holdings backup setup catalogue reservations exceptions statistics output |
        xargs -r grep -nE 'sqlite3_|SQLHDBC|Engine::|#include [<"](sqlite3|sql|sqlext|libpq-fe)\.h' )"

# A screen (any file that is not an operation) sends no SQL.
complain "a screen must leave its SQL to an operation" \
    "$(sources app platform/report platform/ui frame desk readers backup setup catalogue reservations exceptions statistics output | grep -vE '_ops\.|sublib\.' |
        xargs -r grep -niE '"(select|insert|update|delete|exec)[ ]' )"

# Calls go down only: the platform knows no subsystem.
complain "platform/ must not include a subsystem" \
    "$(sources platform | xargs -r grep -nE '#include "(app|frame|database|desk|readers|holdings|backup|setup|catalogue|reservations|exceptions|statistics|output)/' )"
exit $bad
