#pragma once

#include <QStringView>

namespace quilla::sql {

/// A function of the dialect with a certain number of arguments: what it takes and gives, and how each engine
/// writes it.
///
/// Kinds are one letter each: d date, t text, n number, i whole number, m decimal, a anything (all of them of
/// one kind), 1 what its first argument is. Arguments past the last letter are like it; a date part does not
/// count as an argument.
///
/// In the texts of the engines "$1" is the first argument, "$~1" the same as one that is compared, "$p" the
/// date part in quotes, "$*" all arguments.
struct FunctionRule {
    QStringView name;
    int least; ///< arguments
    int most; ///< -1 for any number
    QStringView arguments;
    char16_t result;
    QStringView sqlite;
    QStringView postgres;
};

bool isFunction(QStringView lower);
/// Null when there is none with so many arguments.
const FunctionRule* functionRule(QStringView lower, int arguments);

} // namespace quilla::sql
