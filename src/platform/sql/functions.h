#pragma once

#include <QStringView>

namespace quilla::sql {

/// What the SQLite driver must register on each connection, since SQLite has no like of its own. The
/// translator writes these names, also into views, so none may be reserved for top-level statements; all
/// but `getdate` are deterministic. Each answers null when an argument is null.
///
/// A date is its canonical text: "yyyy-mm-dd" at midnight, else "yyyy-mm-dd hh:mm:ss.zzz".
namespace Function {

/// getdate() -> date. The clock's date and time to the millisecond.
inline constexpr QStringView Now = u"getdate";

/// qj_like(pattern, text) -> 0 or 1. LIKE as the server has it: "%", "_", "[a-z]", "[^a]"; "\" is an
/// ordinary character, case does not count.
inline constexpr QStringView Like = u"qj_like";

/// qj_datediff(part, from, to) -> integer. How many borders of `part` lie between the two dates.
/// `part`: year, quarter, month, week, day, hour, minute, second, millisecond.
inline constexpr QStringView DateDifference = u"qj_datediff";

/// qj_dateadd(part, number, date) -> date. A month that is too short gives its last day. Parts as above.
inline constexpr QStringView DateAdd = u"qj_dateadd";

/// qj_convert_date(style, date) -> text. `style` is 0 ("Oct  1 2003 12:00AM"), 23 ("2003-10-01"),
/// 111 ("2003/10/01"), 112 ("20031001"), 120 ("2003-10-01 00:00:00").
inline constexpr QStringView ConvertDate = u"qj_convert_date";

/// qj_convert_text(width, value) -> text. A text is cut to `width` characters; a whole number that needs
/// more becomes "*".
inline constexpr QStringView ConvertText = u"qj_convert_text";

/// qj_convert_decimal(width, scale, number) -> text. With so many digits after the point; "*" when that is
/// longer than `width`. No width is 0.
inline constexpr QStringView ConvertDecimal = u"qj_convert_decimal";

/// qj_date(text) -> date. Reads what `readDate` reads; error when the text is no date, also when empty.
inline constexpr QStringView Date = u"qj_date";

/// qj_integer(bytes, value) -> integer. What goes into a column of whole numbers: a fraction is cut off;
/// error outside the column's range. What is no number comes back as it is.
inline constexpr QStringView Integer = u"qj_integer";

/// qj_decimal(digits, scale, value) -> number. What goes into a decimal column: rounded, a half away from 0;
/// error outside the column's range. What is no number comes back as it is.
inline constexpr QStringView Decimal = u"qj_decimal";

/// qj_quotient(number, divisor) -> number. Of two whole numbers the whole part; error when the divisor is 0,
/// where SQLite itself gives null.
inline constexpr QStringView Quotient = u"qj_quotient";

/// qj_remainder(number, divisor) -> number. Error when the divisor is 0.
inline constexpr QStringView Remainder = u"qj_remainder";

/// qj_round(number, places) -> number. A half away from 0; places before the point are negative.
inline constexpr QStringView Round = u"qj_round";

/// qj_str(number, width, scale) -> text. Rounded, a half away from 0, and filled up with blanks on the left;
/// stars when it is longer than `width`.
inline constexpr QStringView Str = u"qj_str";

/// qj_substring(text, start, length) -> text. Places before the first character count.
inline constexpr QStringView Substring = u"qj_substring";

/// upper(text) and lower(text) -> text. Beyond the letters of ASCII too, where SQLite's own stop.
inline constexpr QStringView Upper = u"upper";
inline constexpr QStringView Lower = u"lower";

/// qj_part(part, date) -> integer. Parts as above and dayofyear, weekday (Sunday is 1).
inline constexpr QStringView Part = u"qj_part";

} // namespace Function

/// The collation of every text column on SQLite: orders as `compareText` does.
inline constexpr QStringView TextCollation = u"QUILLA";

} // namespace quilla::sql
