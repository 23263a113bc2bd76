#include "database/circulation_rules.h"

#include "database/row_text.h"

namespace quilla {

QString ruleColumns()
{
    QStringList columns;
    for (const auto& rule : circulationRules<qint64>())
        columns.append(rule.column.toString());
    return columns.join(u',');
}

void addRules(RowText& row, const RuleNumbers& rules)
{
    for (const auto& rule : circulationRules<qint64>()) {
        if (rule.kind == RuleKind::Flag)
            row.bit(rules.*rule.flag);
        else if (rule.kind == RuleKind::Rate)
            row.money(rules.*rule.number);
        else
            row.number(rules.*rule.number);
    }
}

} // namespace quilla
