#pragma once

#include "database/circulation_rules.h"

#include <QString>

namespace quilla {

/// The rates of the rules (fines by the day, multiples of a price) lie below this: their columns have five
/// digits before the point.
inline constexpr double RuleRateLimit = 100000;

/// Whether the text is a number of that kind: any for a rate, a whole one for days, copies and renewals.
bool isRuleNumber(RuleKind kind, const QString& text);

/// Whether the text is a rate that its column holds.
bool isRuleRate(const QString& text);

/// Whether the text is a whole number that its column holds, as all other rules are: days, copies, renewals.
bool isRuleCount(const QString& text);

} // namespace quilla
