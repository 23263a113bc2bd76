#include "readers/rule_texts.h"

#include "platform/db/decimal.h"

namespace quilla {

QString numberText(const Recordset& row, QStringView column)
{
    const QString stored = row.field(column).text();
    const auto number = Decimal::read(stored);
    return number ? number->text() : stored;
}

RuleTexts readRuleNumbers(const Recordset& row)
{
    RuleTexts rules;
    for (const auto& rule : numberRules<QString>())
        rules.*rule.number = numberText(row, rule.column);
    return rules;
}

RuleTexts readRules(const Recordset& row)
{
    RuleTexts rules = readRuleNumbers(row);
    for (const auto& rule : circulationRules<QString>())
        if (rule.kind == RuleKind::Flag) rules.*rule.flag = row.field(rule.column).isTrue();
    return rules;
}

RuleTexts noRules()
{
    RuleTexts rules;
    for (const auto& rule : numberRules<QString>())
        rules.*rule.number = u"0"_s;
    return rules;
}

QString bareNumber(const QString& text)
{
    return Decimal::read(text).value_or(Decimal()).text();
}

ColumnValues ruleValues(const RuleTexts& rules)
{
    ColumnValues values;
    for (const auto& rule : circulationRules<QString>()) {
        const bool isFlag = rule.kind == RuleKind::Flag;
        values.emplace_back(rule.column.toString(),
            isFlag ? QString(rules.*rule.flag ? u"1"_s : u"0"_s) : bareNumber(rules.*rule.number));
    }
    return values;
}

QString assignments(const ColumnValues& columns)
{
    QStringList list;
    for (const auto& [name, value] : columns)
        list.append(name + u'=' + value);
    return list.join(u',');
}

QString namesAndValues(const ColumnValues& columns, QStringView between)
{
    QStringList names;
    QStringList values;
    for (const auto& [name, value] : columns) {
        names.append(name);
        values.append(value);
    }
    return names.join(u',') + between.toString() + values.join(u',');
}

} // namespace quilla
