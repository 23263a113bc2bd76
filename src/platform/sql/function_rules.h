#pragma once

#include <QStringView>

namespace quilla::sql {

/// What a function of the dialect takes and gives, one letter each: d date, t text, n number, i whole
/// number, m decimal, a anything (all of them of one kind), 1 what its first argument is. Arguments past
/// the last letter are like it; a date part does not count as an argument.
struct FunctionRule {
    QStringView name;
    int least;
    int most; ///< -1 for any number
    QStringView arguments;
    char16_t result;
};

/// Null for a function outside the dialect.
const FunctionRule* functionRule(QStringView lower);

} // namespace quilla::sql
