#include "statistics/period.h"

#include "platform/core/date_box.h"
#include "platform/db/decimal.h"

namespace quilla {

namespace {

constexpr int FirstYear = 1901;
constexpr int LastYear = 2048;

std::optional<Period> readYear(const QString& typed)
{
    const std::optional<qint64> year = readWhole(typed);
    if (!year || *year < FirstYear || *year > LastYear) return {};
    return Period {int(*year)};
}

std::optional<Period> readMonth(const QString& typed)
{
    const std::optional<QDate> date = platformDate(typed);
    return date ? std::optional(Period {date->year(), date->month()}) : std::nullopt;
}

} // namespace

QString Period::text() const
{
    return month == 0 ? QString::number(year) : u"%1-%2"_s.arg(year).arg(month);
}

QString Period::firstDay() const
{
    return text() + (month == 0 ? u"-01-01"_s : u"-01"_s);
}

QString Period::lastDay() const
{
    return month == 0 ? text() + u"-12-31"_s : u"%1-%2"_s.arg(text()).arg(days());
}

QString Period::holds(QStringView column) const
{
    if (month == 0) return u"year(%1)=%2"_s.arg(column).arg(year);
    return u"year(%1)='%2'  and  month(%1)='%3'"_s.arg(column).arg(year).arg(month);
}

QString presetPeriod(PeriodKind kind, const QDate& today)
{
    return today.toString(kind == PeriodKind::Month ? u"yyyy-MM"_s : u"yyyy"_s);
}

std::optional<Period> readPeriod(PeriodKind kind, const QString& typed)
{
    return kind == PeriodKind::Month ? readMonth(typed) : readYear(typed);
}

} // namespace quilla
