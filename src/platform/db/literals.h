#pragma once

#include "platform/core/error.h"
#include "platform/db/value.h"
#include "platform/sql/translator.h"

#include <optional>

namespace quilla {

// How the literals of a statement become the values that their columns want. The readings of quoted
// numbers are the server's: blanks around them are ignored, an empty text is 0.

/// Nullopt for an unquoted number with a fraction or beyond 64 bits. Throws `CannotConvert` for a quoted
/// text that is no whole number.
std::optional<qint64> wholeNumberOf(const sql::Literal& literal);
/// The same, but nullopt for any text that is no whole number.
std::optional<qint64> exactWholeOf(const sql::Literal& literal);
/// A whole number, "True" or "False". Throws `CannotConvert`.
bool bitOf(const sql::Literal& literal);
/// Rounded to `scale` digits after the point when that is not negative. Throws `CannotConvert`.
double numberOf(const sql::Literal& literal, int scale = -1);
/// The same, digit for digit.
QString decimalOf(const sql::Literal& literal, int scale = -1);
/// Throws `CannotConvert` when the number, which is `whole` or else `number`, does not fit the column that it
/// goes into. PostgreSQL itself would not object before a row is written.
void refuseOutside(
    const sql::NumberRange& range, const sql::Literal& literal, std::optional<qint64> whole, double number);
/// Throws `CannotConvert`, also for an empty text.
Moment momentOf(const sql::Literal& literal);

/// The text, quotes undoubled, or the number as it is written.
Value valueOf(const sql::Literal& literal);

/// The longest UTF-8 form of the literal, in bytes.
inline std::size_t utf8Bound(const sql::Literal& literal)
{
    return std::size_t(literal.text.size()) * 3;
}
/// Writes the text of the literal, its quotes undoubled, as UTF-8 to `out` (room for `utf8Bound`). The end.
char* writeUtf8(const sql::Literal& literal, char* out);

} // namespace quilla
