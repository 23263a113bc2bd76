#pragma once

#include "platform/sql/ast.h"
#include "platform/sql/translator.h"

namespace quilla::sql {

/// Gives a select that tells no order the order in which its rows were entered, so that a list stands alike
/// on every engine and after every change: by the number that each of its tables gives to a row, the leftmost
/// table first. A view on the left stands for its own leftmost table and is written out as a select that
/// brings that number along.
///
/// SQLite numbers the rows of every table. PostgreSQL has the identity column; where a table has none, the
/// columns that the schema tells for it, else the place of the row, which changes when the row does.
///
/// A select that groups, counts, limits or combines is left as it is.
void orderByEntry(Query& query, const Schema& schema, Engine engine);

} // namespace quilla::sql
