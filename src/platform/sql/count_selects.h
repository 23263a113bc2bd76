#pragma once

#include "platform/sql/ast.h"

namespace quilla::sql {

/// The name of the counts; no column of a library has it.
inline const QString RowsOfKey = QStringLiteral("qj_rows");

ExprPtr makeColumn(const QString& qualifier, const QString& name);
/// A column that is grouped by its spellings, whatever compares as equal.
ExprPtr makeKey(const QString& name);
/// "count(*)"
ExprPtr makeCount();
/// A copy of an expression without a select in it, as conditions on one table are.
ExprPtr copyOf(const Expr& expr);
SourcePtr makeDerived(const QString& alias, std::unique_ptr<Query> query);

/// The keys of a table in the order of an index. It must stand in brackets of its own: PostgreSQL takes
/// comparing texts for cheap, and would rather hash all of them than follow the index.
SourcePtr keysInOrder(const QString& table, const QString& key);

/// Counts the rows of each key along an index; the key is called `name` in the result. Only the order asked
/// for makes PostgreSQL group in it: its index has nulls first, its groups have them last.
Select countInOrder(const QString& table, const QString& key, const QString& name);

} // namespace quilla::sql
