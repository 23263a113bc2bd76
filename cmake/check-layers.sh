#!/bin/sh
# The rules of the layers that no compiler knows. Prints each offending line; exits 1 if there is one.
cd "$1" || exit 2
bad=0
complain() { [ -n "$2" ] && { printf '%s:\n%s\n' "$1" "$2" >&2; bad=1; }; }

sources() { find "$@" \( -name '*.h' -o -name '*.cpp' \); }

# Each folder, and the folders below it whose headers it may include besides its own.
layers='
platform/core
platform/sql     platform/core
platform/db      platform/core platform/sql
platform/sheet   platform/core
platform/grid    platform/core platform/sql platform/db
platform/ui      platform/core platform/db platform/grid
platform/report  platform/core platform/db platform/sheet platform/ui
database         platform/[a-z]+
frame            platform/[a-z]+
backup           platform/[a-z]+ database frame
output           platform/[a-z]+ frame
desk             platform/[a-z]+ frame
statistics       platform/[a-z]+ frame output
catalogue        platform/[a-z]+ frame statistics
readers          platform/[a-z]+ database frame output statistics
exceptions       platform/[a-z]+ desk frame output readers statistics
reservations     platform/[a-z]+ catalogue desk frame
holdings         platform/[a-z]+ database readers
setup            platform/[a-z]+ backup database frame holdings readers
app              platform/[a-z]+ backup catalogue database desk exceptions frame output readers reservations statistics
'
known=
while read -r folder below; do
    [ -n "$folder" ] || continue
    known="$known $folder"
    allowed=$(echo $folder $below | tr ' ' '|')
    complain "$folder/ must not include a folder that is not below it" \
        "$(sources "$folder" | xargs -r grep -nE '#include "[^"]*/' | grep -vE "#include \"($allowed)/")"
done <<END
$layers
END
for folder in platform/*/ */; do
    case " $known platform " in
    *" ${folder%/} "*) ;;
    *) complain "cmake/check-layers.sh has no line for a folder" "src/$folder" ;;
    esac
done

# Only the two folders that know the engines may name one.
complain "only platform/sql and platform/db may ask which engine it is" \
    "$(sources . | grep -vE '^\./platform/(sql|db)/' |
        xargs -r grep -nE 'sqlite3_|SQLHDBC|Engine::|#include [<"](sqlite3|sql|sqlext|libpq-fe)\.h')"

# A screen (any file of these folders that is not an operation) sends no SQL. `database` and `holdings` have none.
complain "a screen must leave its SQL to an operation" \
    "$(sources . | grep -vE '^\./(platform/(sql|db)|database|holdings)/|_ops\.|/sublib\.' |
        xargs -r grep -niE '"[ (]*(select|insert|update|delete|exec)[ ]')"
exit $bad
