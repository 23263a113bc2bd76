#pragma once

#include "platform/core/text.h"

#include <QStringList>

#include <array>

namespace quilla {

class RowText;

/// The rules of circulation, of a reader type (`jycs`) or of one card (`dzk`), which has a copy of its own.
/// `Number` is a text where an operator types them and a whole number where a program counts with them; rates
/// are hundredths then.
template <typename Number> struct CirculationRules {
    Number loanDays {};
    Number loanCopies {};
    Number overdueFine {}; ///< yuan a day
    Number defileFine {}; ///< times the price
    Number lostFine {}; ///< times the price
    Number renewals {};
    Number renewalDays {};
    bool mayHoldOverdue = false; ///< may borrow while a book is overdue
    Number holdDays {};
    Number holdCopies {};
    Number artsCopies {};
    Number scienceCopies {};
    bool needsNoCard = false;
    bool operator==(const CirculationRules&) const = default;
};

enum class RuleKind { Count, Rate, Flag };

/// Where a rule stands in the database, how operators call it, and which member of the record holds it:
/// `flag` for a flag, `number` for any other.
template <typename Number> struct CirculationRule {
    QStringView column;
    QStringView caption;
    RuleKind kind;
    Number CirculationRules<Number>::*number;
    bool CirculationRules<Number>::*flag = nullptr;
};

/// All rules in the order of the table.
template <typename Number> constexpr std::array<CirculationRule<Number>, 13> circulationRules()
{
    using R = CirculationRules<Number>;
    using enum RuleKind;
    return {{
        {u"daycount", u"可借天数(天)", Count, &R::loanDays},
        {u"bookcount", u"可借册数(册)", Count, &R::loanCopies},
        {u"fine", u"超期罚款(元/天)", Rate, &R::overdueFine},
        {u"defile", u"污损罚款(倍)", Rate, &R::defileFine},
        {u"lost", u"丢失罚款(倍)", Rate, &R::lostFine},
        {u"recount", u"可续借次数(次)", Count, &R::renewals},
        {u"reday", u"可续借天数(天)", Count, &R::renewalDays},
        {u"ifcanre", u"有过期书刊时还可以借书", Flag, nullptr, &R::mayHoldOverdue},
        {u"orderday", u"可预借天数(天)", Count, &R::holdDays},
        {u"ordercount", u"可预借册数(册)", Count, &R::holdCopies},
        {u"Acount", u"文艺类可借册数(册)", Count, &R::artsCopies},
        {u"Bcount", u"理科类可借册数(册)", Count, &R::scienceCopies},
        {u"wuzheng", u"可以无证借书", Flag, nullptr, &R::needsNoCard},
    }};
}

/// How many of the rules are numbers.
inline constexpr int NumberRules = 11;

/// The rules that are numbers, in the order of the table.
template <typename Number> constexpr std::array<CirculationRule<Number>, NumberRules> numberRules()
{
    std::array<CirculationRule<Number>, NumberRules> numbers {};
    std::size_t next = 0;
    for (const CirculationRule<Number>& rule : circulationRules<Number>())
        if (rule.kind != RuleKind::Flag) numbers[next++] = rule;
    return numbers;
}

/// The rules as a program counts with them.
using RuleNumbers = CirculationRules<qint64>;

/// The columns of all rules, joined by ",".
QString ruleColumns();
/// Adds the rules to a row whose columns continue with `ruleColumns`.
void addRules(RowText& row, const RuleNumbers& rules);

} // namespace quilla
