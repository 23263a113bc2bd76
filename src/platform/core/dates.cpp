#include "platform/core/dates.h"

#include "platform/core/date_digits.h"
#include "platform/core/text.h"

#include <QDateTime>

#include <algorithm>
#include <ctime>

namespace quilla {

namespace {

/// Takes 1 to `most` digits off the front of `text`.
std::optional<int> takeNumber(QStringView& text, int most)
{
    const qsizetype limit = std::min<qsizetype>(most, text.size());
    int value = 0;
    qsizetype digits = 0;
    for (; digits < limit && text[digits] >= u'0' && text[digits] <= u'9'; ++digits)
        value = value * 10 + (text[digits].unicode() - u'0');
    text = text.sliced(digits);
    return digits ? std::optional(value) : std::nullopt;
}

/// Takes one of the few characters `of` off the front. A plain loop: a charge reads forty dates, and a search
/// in Qt costs more than the comparison it comes to.
bool takeOne(QStringView& text, QStringView of)
{
    if (text.isEmpty() || std::find(of.begin(), of.end(), text.front()) == of.end()) return false;
    text = text.sliced(1);
    return true;
}

std::optional<QDate> takeDate(QStringView& text)
{
    const QStringView whole = text;
    const auto year = takeNumber(text, 4);
    if (!year || whole.size() - text.size() != 4) return {};
    const bool separated = takeOne(text, u"-/.");
    const QChar separator = separated ? whole[4] : QChar();
    const auto month = takeNumber(text, 2);
    if (!month || (separated && !takeOne(text, QStringView(&separator, 1)))) return {};
    const auto day = takeNumber(text, 2);
    if (!day) return {};
    const bool compact = !separated;
    if (compact && whole.size() - text.size() != 8) return {};
    const QDate date(*year, *month, *day);
    return date.isValid() ? std::optional(date) : std::nullopt;
}

/// Up to three digits after the second's point, as milliseconds; further digits are passed over.
int takeMilliseconds(QStringView& text)
{
    int value = 0;
    int scale = 100;
    while (!text.isEmpty() && text.front() >= u'0' && text.front() <= u'9') {
        value += scale * (text.front().unicode() - u'0');
        scale /= 10;
        text = text.sliced(1);
    }
    return value;
}

std::optional<QTime> takeTime(QStringView& text)
{
    const auto hour = takeNumber(text, 2);
    if (!hour || !takeOne(text, u":")) return {};
    const auto minute = takeNumber(text, 2);
    if (!minute) return {};
    int second = 0;
    int milliseconds = 0;
    if (takeOne(text, u":")) {
        const auto seconds = takeNumber(text, 2);
        if (!seconds) return {};
        second = *seconds;
        if (takeOne(text, u".")) milliseconds = takeMilliseconds(text);
    }
    const QTime time(*hour, *minute, second, milliseconds);
    return time.isValid() ? std::optional(time) : std::nullopt;
}

} // namespace

Moment SystemClock::now() const
{
    timespec now {};
    clock_gettime(CLOCK_REALTIME, &now);
    std::tm local {};
    localtime_r(&now.tv_sec, &local);
    return {QDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday),
        QTime(local.tm_hour, local.tm_min, std::min(local.tm_sec, 59), int(now.tv_nsec / 1'000'000))};
}

/// Digit by digit: a long list holds hundreds of thousands of dates.
QString isoDate(const QDate& date)
{
    const bool ordinary = date.isValid() && date.year() >= 0 && date.year() <= 9999;
    return ordinary ? localeDateText(Moment {date}) : date.toString(u"yyyy-MM-dd");
}

QString isoDate(const Moment& moment)
{
    return isoDate(moment.date);
}

QString isoDate(const std::optional<Moment>& moment)
{
    return moment ? isoDate(moment->date) : QString();
}

QString localeDateText(const Moment& moment)
{
    char16_t text[20];
    char16_t* end = putDate(text, moment.date);
    if (!moment.isMidnight()) end = putTime(end, moment.time, moment.time.hour() < 10 ? 1 : 2);
    return QString(reinterpret_cast<const QChar*>(text), end - text);
}

std::optional<Moment> readDate(QStringView text)
{
    text = trimBlanks(text);
    const auto date = takeDate(text);
    if (!date) return {};
    if (text.isEmpty()) return Moment {*date};
    if (!takeOne(text, u" T")) return {};
    text = trimBlanks(text);
    const auto time = takeTime(text);
    if (!time || !text.isEmpty()) return {};
    return Moment {*date, *time};
}

std::optional<QDate> readDay(QStringView text)
{
    text = trimBlanks(text);
    const auto date = takeDate(text);
    return text.isEmpty() ? date : std::nullopt;
}

void settleTimeZone()
{
    if (!qEnvironmentVariableIsSet("TZ")) qputenv("TZ", ":/etc/localtime");
}

QDate zeroDate()
{
    return QDate(1899, 12, 30);
}

} // namespace quilla
