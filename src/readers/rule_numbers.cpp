#include "readers/rule_numbers.h"

#include "platform/db/decimal.h"

#include <cmath>
#include <limits>

namespace quilla {

bool isRuleNumber(RuleKind kind, const QString& text)
{
    const auto number = readNumber(text);
    return number && Decimal::read(text) && (kind == RuleKind::Rate || *number == std::floor(*number));
}

bool isRuleRate(const QString& text)
{
    return isRuleNumber(RuleKind::Rate, text) && std::abs(*readNumber(text)) < RuleRateLimit;
}

bool isRuleCount(const QString& text)
{
    if (!isRuleNumber(RuleKind::Count, text)) return false;
    const double number = *readNumber(text);
    return number >= std::numeric_limits<qint32>::min() && number <= std::numeric_limits<qint32>::max();
}

} // namespace quilla
