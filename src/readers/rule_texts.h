#pragma once

#include "database/circulation_rules.h"
#include "platform/db/recordset.h"

#include <optional>

namespace quilla {

/// The rules as the boxes of an editor hold them; any text may stand there.
using RuleTexts = CirculationRules<QString>;

/// A number for its box, as short as it can be written.
QString numberText(const Recordset& row, QStringView column);
/// The rules of a row that has a column for each of those that are numbers; empty texts for nulls.
RuleTexts readRuleNumbers(const Recordset& row);
/// All rules of a row.
RuleTexts readRules(const Recordset& row);
/// Every number 0, no flag set.
RuleTexts noRules();

/// Columns with their values, as a statement takes them.
using ColumnValues = std::vector<std::pair<QString, QString>>;

/// A number as it stands without quotes in a statement; the rest of what a box holds does not reach it.
QString bareNumber(const QString& text);
/// All rules with their values, in the order of the table.
ColumnValues ruleValues(const RuleTexts& rules);
/// "name=value", joined by ",".
QString assignments(const ColumnValues& columns);
/// "names) Values(values", the inside of an insert statement.
QString namesAndValues(const ColumnValues& columns, QStringView between);

} // namespace quilla
