#include "platform/core/dates.h"

#include "platform/core/date_digits.h"
#include "platform/core/text.h"

#include <QDateTime>

namespace quilla {

namespace {

/// Takes 1 to `most` digits off the front of `text`.
std::optional<int> takeNumber(QStringView& text, int most)
{
    int value = 0;
    int digits = 0;
    while (digits < most && !text.isEmpty() && text.front() >= u'0' && text.front() <= u'9') {
        value = value * 10 + (text.front().unicode() - u'0');
        text = text.sliced(1);
        ++digits;
    }
    return digits ? std::optional(value) : std::nullopt;
}

bool takeOne(QStringView& text, QStringView of)
{
    if (text.isEmpty() || !of.contains(text.front())) return false;
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
    const QDateTime now = QDateTime::currentDateTime();
    return {now.date(), now.time()};
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
