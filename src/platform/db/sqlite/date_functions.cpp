#include "platform/db/sqlite/date_functions.h"

#include "platform/core/text.h"
#include "platform/db/cursor.h"

#include <QLocale>

namespace quilla {

namespace {

enum class Part { Year, Quarter, Month, Week, Day, Hour, Minute, Second, Millisecond, DayOfYear, WeekDay };

struct PartName {
    std::string_view name;
    Part part;
};

constexpr PartName partNames[] {
    {"year", Part::Year},
    {"quarter", Part::Quarter},
    {"month", Part::Month},
    {"week", Part::Week},
    {"day", Part::Day},
    {"hour", Part::Hour},
    {"minute", Part::Minute},
    {"second", Part::Second},
    {"millisecond", Part::Millisecond},
    {"dayofyear", Part::DayOfYear},
    {"weekday", Part::WeekDay},
};

std::optional<Part> partNamed(std::string_view name)
{
    for (const PartName& known : partNames)
        if (known.name == name) return known.part;
    return {};
}

qint64 millisecondsOf(const Moment& moment)
{
    return moment.date.toJulianDay() * MillisecondsPerDay + moment.time.msecsSinceStartOfDay();
}

std::optional<Moment> momentAt(qint64 milliseconds)
{
    if (milliseconds < 0) return {};
    const QDate date = QDate::fromJulianDay(milliseconds / MillisecondsPerDay);
    if (!date.isValid() || date.year() < 1 || date.year() > 9999) return {};
    return Moment {date, QTime::fromMSecsSinceStartOfDay(int(milliseconds % MillisecondsPerDay))};
}

/// Milliseconds of a part of fixed length; 0 for months and their like.
qint64 lengthOf(Part part)
{
    switch (part) {
    case Part::Week:
        return 7 * MillisecondsPerDay;
    case Part::Day:
    case Part::DayOfYear:
    case Part::WeekDay:
        return MillisecondsPerDay;
    case Part::Hour:
        return 3'600'000;
    case Part::Minute:
        return 60'000;
    case Part::Second:
        return 1'000;
    case Part::Millisecond:
        return 1;
    default:
        return 0;
    }
}

int monthsIn(Part part)
{
    return part == Part::Year ? 12 : part == Part::Quarter ? 3 : 1;
}

/// Which of the parts, counted from the beginning of the calendar, the moment lies in.
qint64 ordinal(Part part, const Moment& moment)
{
    const qint64 length = lengthOf(part);
    if (!length) return (qint64(moment.date.year()) * 12 + moment.date.month() - 1) / monthsIn(part);
    // Julian day 0 was a Monday: one day more makes Sunday the first of its week.
    const qint64 shift = part == Part::Week ? MillisecondsPerDay : 0;
    return (millisecondsOf(moment) + shift) / length;
}

int weekDay(const QDate& date)
{
    return date.dayOfWeek() % 7 + 1;
}

int weekOfYear(const QDate& date)
{
    return (date.dayOfYear() + weekDay(QDate(date.year(), 1, 1)) - 2) / 7 + 1;
}

int numberOf(Part part, const Moment& moment)
{
    switch (part) {
    case Part::Year:
        return moment.date.year();
    case Part::Quarter:
        return (moment.date.month() + 2) / 3;
    case Part::Month:
        return moment.date.month();
    case Part::Week:
        return weekOfYear(moment.date);
    case Part::Day:
        return moment.date.day();
    case Part::Hour:
        return moment.time.hour();
    case Part::Minute:
        return moment.time.minute();
    case Part::Second:
        return moment.time.second();
    case Part::Millisecond:
        return moment.time.msec();
    case Part::DayOfYear:
        return moment.date.dayOfYear();
    case Part::WeekDay:
        return weekDay(moment.date);
    }
    return 0;
}

/// "Oct  1 2003 12:00AM"
QByteArray serverDefault(const Moment& moment)
{
    const int hour = moment.time.hour() % 12 ? moment.time.hour() % 12 : 12;
    return QByteArray::fromStdString(
               QLocale::c().monthName(moment.date.month(), QLocale::ShortFormat).toStdString())
        + QByteArray::number(moment.date.day()).rightJustified(3) + ' '
        + QByteArray::number(moment.date.year()) + QByteArray::number(hour).rightJustified(3) + ':'
        + QByteArray::number(moment.time.minute()).rightJustified(2, '0')
        + (moment.time.hour() < 12 ? "AM" : "PM");
}

QByteArray dayWith(const QByteArray& separator, std::string_view canonical)
{
    const auto part = [&](int at, int length) { return QByteArray(canonical.data() + at, length); };
    return part(0, 4) + separator + part(5, 2) + separator + part(8, 2);
}

QByteArray secondsOf(std::string_view canonical)
{
    return canonical.size() > 10 ? QByteArray(canonical.data(), 19)
                                 : QByteArray(canonical.data(), 10) + " 00:00:00";
}

} // namespace

std::optional<qint64> dateDifference(std::string_view part, const Moment& from, const Moment& to)
{
    const auto known = partNamed(part);
    if (!known) return {};
    return ordinal(*known, to) - ordinal(*known, from);
}

std::optional<Moment> dateAdd(std::string_view part, qint64 number, const Moment& moment)
{
    const auto known = partNamed(part);
    constexpr qint64 most = 1'000'000'000'000'000; // beyond the calendar in every part
    if (!known || number > most || number < -most) return {};
    const qint64 length = lengthOf(*known);
    if (length)
        return number > most / length || number < -most / length
            ? std::nullopt
            : momentAt(millisecondsOf(moment) + number * length);
    if (qAbs(number) > 9999 * 12) return {};
    return momentAt(millisecondsOf({moment.date.addMonths(int(number) * monthsIn(*known)), moment.time}));
}

std::optional<int> datePart(std::string_view part, const Moment& moment)
{
    const auto known = partNamed(part);
    return known ? std::optional(numberOf(*known, moment)) : std::nullopt;
}

std::optional<QByteArray> convertDate(int style, const Moment& moment)
{
    const CanonicalMoment canonical(moment);
    switch (style) {
    case 0:
        return serverDefault(moment);
    case 23:
        return dayWith("-", canonical.view());
    case 111:
        return dayWith("/", canonical.view());
    case 112:
        return dayWith("", canonical.view());
    case 120:
        return secondsOf(canonical.view());
    default:
        return {};
    }
}

} // namespace quilla
