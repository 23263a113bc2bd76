#include "readers/reader_card_checks_ops.h"

#include "platform/core/date_box.h"
#include "platform/db/decimal.h"
#include "readers/rule_numbers.h"

namespace quilla {

namespace {

constexpr int TypeMismatch = 13;
const QString NoNumber = u"读者流通参数应该为数值！请重新设定！"_s;

/// Under the application title.
Refusal untitled(const QString& text, Icon icon, int field)
{
    return {.text = text, .title = QString(), .icon = icon, .box = field};
}

std::optional<Refusal> wrongDate(const QString& text, const QString& noDate, int field)
{
    if (!platformDate(text)) return Refusal {.text = noDate, .box = field};
    if (!startsWithFullYear(text))
        return Refusal {.text = u"请输入完整的日期格式!(例如:2003-01-01)"_s, .box = field};
    return {};
}

int fieldOf(QString RuleTexts::*number)
{
    const auto rules = numberRules<QString>();
    const auto same = [number](const CirculationRule<QString>& rule) { return rule.number == number; };
    return CardField::FirstRule + int(std::ranges::find_if(rules, same) - rules.begin());
}

} // namespace

std::optional<Refusal> missingReader(const ReaderCard& card)
{
    if (isBlank(card.code)) return untitled(u"请正确输入读者号"_s, Icon::Warning, CardField::Code);
    if (isBlank(card.name)) return untitled(u"请输入读者姓名"_s, Icon::Warning, CardField::Name);
    return {};
}

std::optional<Refusal> missingTypeOrUnit(const ReaderCard& card, bool hasUnits)
{
    if (isBlank(card.type)) return Refusal {.text = u"读者类型没有定义！请添加读者类型！"_s};
    if (!isBlank(card.unit)) return {};
    if (hasUnits) return untitled(u"请输入读者单位"_s, Icon::Warning, CardField::Unit);
    return untitled(u"目前没有可用的读者单位，请先定义读者单位"_s, Icon::Information, CardField::Unit);
}

std::optional<Refusal> wrongDates(const ReaderCard& card)
{
    if (auto wrong = wrongDate(card.issued, u"请正确输入登记日期(例如:2003-01-01)"_s, CardField::Issued))
        return wrong;
    return wrongDate(card.term, u"请正确输入有效期限(例如:2003-01-01)"_s, CardField::Term);
}

std::optional<Refusal> wrongNumbers(const RuleTexts& rules)
{
    for (const auto& rule : numberRules<QString>())
        if (rule.number != &RuleTexts::loanCopies && !isRuleNumber(rule.kind, rules.*rule.number))
            return Refusal {.text = NoNumber, .box = fieldOf(rule.number)};
    return {};
}

std::optional<Refusal> missingLimits(const RuleTexts& rules)
{
    for (QString RuleTexts::*const limit : {&RuleTexts::loanCopies, &RuleTexts::loanDays}) {
        const auto number = readNumber(rules.*limit);
        if (!number) throw Error(TypeMismatch, u"DzaddFrm"_s, u"类型不匹配"_s);
        if (*number == 0)
            return Refusal {.text = u"有一些必须的参数没有设置，请检查并继续设置！"_s, .box = fieldOf(limit)};
    }
    if (isRuleNumber(RuleKind::Count, rules.loanCopies)) return {};
    return Refusal {.text = NoNumber, .box = fieldOf(&RuleTexts::loanCopies)};
}

} // namespace quilla
