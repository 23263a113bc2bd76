#pragma once

#include "platform/sql/ast.h"
#include "platform/sql/translator.h"

namespace quilla::sql {

/// On PostgreSQL the column of a table without an identity column that numbers its rows. Only the program
/// knows of it: "*" does not name it.
inline constexpr QStringView EntryColumn = u"qj_entry";

/// Gives the rows of a select the order in which they were entered, unless the select has an order of its
/// own, so that a list looks the same on every engine and after every change: by the number that each of its
/// tables gives to a row, the leftmost table first. A view on the left stands for its own tables and is
/// written out as a select that brings their numbers along.
///
/// SQLite numbers the rows of every table. PostgreSQL has the identity column or `EntryColumn`.
///
/// A select in brackets has no numbers: beside tables it follows them, on the left it ends the matter.
/// A select that groups, counts, combines, or limits its rows without an order is left as it is.
void orderByEntry(Query& query, const Schema& schema, Engine engine);

} // namespace quilla::sql
