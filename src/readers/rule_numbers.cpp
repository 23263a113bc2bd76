#include "readers/rule_numbers.h"

#include "platform/db/decimal.h"

#include <cmath>
#include <limits>

namespace quilla {

bool isRuleRate(const QString& text)
{
    return Decimal::read(text) && std::abs(readNumber(text).value_or(RuleRateLimit)) < RuleRateLimit;
}

bool isRuleCount(const QString& text)
{
    const auto number = readNumber(text);
    return number && Decimal::read(text) && *number == std::floor(*number)
        && *number >= std::numeric_limits<qint32>::min() && *number <= std::numeric_limits<qint32>::max();
}

} // namespace quilla
