#include "platform/db/moment.h"

#include "platform/core/date_digits.h"
#include "platform/core/dates.h"

namespace quilla {

namespace {

/// The `count` digits at `at` as a number; -1 when one of them is none.
template <typename Char> int digits(const Char* at, int count)
{
    int value = 0;
    for (int i = 0; i < count; ++i) {
        const unsigned digit = unsigned(at[i]) - '0';
        if (digit > 9) return -1;
        value = value * 10 + int(digit);
    }
    return value;
}

/// "H:mm:ss", "HH:mm:ss" or "HH:mm:ss.zzz"; an invalid time for all else.
template <typename Char> QTime quickTime(const Char* at, std::size_t length)
{
    const int hourDigits = length == 7 ? 1 : 2;
    if ((length != 7 && length != 8 && length != 12) || at[hourDigits] != ':' || at[hourDigits + 3] != ':')
        return QTime();
    if (length == 12 && at[8] != '.') return QTime();
    const int milliseconds = length == 12 ? digits(at + 9, 3) : 0;
    return QTime(
        digits(at, hourDigits), digits(at + hourDigits + 1, 2), digits(at + hourDigits + 4, 2), milliseconds);
}

template <typename Char> std::optional<Moment> quickMoment(const Char* at, std::size_t length)
{
    if (length < 10 || at[4] != '-' || at[7] != '-') return {};
    const QDate date(digits(at, 4), digits(at + 5, 2), digits(at + 8, 2));
    if (!date.isValid() || date.year() < 1) return {};
    if (length == 10) return Moment {date};
    if (at[10] != ' ') return {};
    const QTime time = quickTime(at + 11, length - 11);
    return time.isValid() ? std::optional(Moment {date, time}) : std::nullopt;
}

} // namespace

std::optional<Moment> readMoment(QStringView text)
{
    const auto quick = quickMoment(text.utf16(), std::size_t(text.size()));
    return quick ? quick : readDate(text);
}

std::optional<Moment> readMoment(std::string_view utf8)
{
    const auto quick = quickMoment(utf8.data(), utf8.size());
    return quick ? quick : readDate(QString::fromUtf8(utf8.data(), qsizetype(utf8.size())));
}

CanonicalMoment::CanonicalMoment(const Moment& moment)
{
    char* end = putDate(text, moment.date);
    if (!moment.isMidnight()) {
        end = putTime(end, moment.time, 2);
        *end++ = '.';
        end = putDigits(end, moment.time.msec(), 3);
    }
    length = std::size_t(end - text);
}

} // namespace quilla
