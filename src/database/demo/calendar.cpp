#include "database/demo/calendar.h"

#include "platform/core/text.h"

#include <algorithm>
#include <array>

namespace quilla::demo {

namespace {

constexpr int FirstSpringFestival = 2000; // year

/// New year's day of the Chinese calendar, month * 100 + day, from the year 2000 on.
constexpr std::array SpringFestivals = {205, 124, 212, 201, 122, 209, 129, 218, 207, 126, 214, 203, 123, 210,
    131, 219, 208, 128, 216, 205, 125, 212, 201, 122, 210, 129, 217, 206, 126, 213, 203, 123, 211, 131, 219,
    208, 128, 215, 204, 124, 212, 201, 122, 210, 130, 217, 206, 126, 214, 202, 123};

QDate springFestival(int year)
{
    const int at = year - FirstSpringFestival;
    if (at < 0 || at >= int(SpringFestivals.size())) return {};
    return QDate(year, SpringFestivals[std::size_t(at)] / 100, SpringFestivals[std::size_t(at)] % 100);
}

void addYear(std::vector<Holiday>& holidays, int year)
{
    const auto add = [&](QStringView name, const QDate& first, int days) {
        if (first.isValid())
            holidays.push_back({u"%1年%2"_s.arg(year).arg(name), first, first.addDays(days - 1)});
    };
    add(u"元旦", QDate(year, 1, 1), 3);
    if (const QDate newYear = springFestival(year); newYear.isValid()) add(u"春节", newYear.addDays(-1), 8);
    add(u"清明节", QDate(year, 4, 4), 3);
    add(u"劳动节", QDate(year, 5, 1), 3);
    add(u"暑期闭馆", QDate(year, 8, 1), 10);
    add(u"国庆节", QDate(year, 10, 1), 7);
}

const Holiday* holidayOn(const std::vector<Holiday>& holidays, const QDate& day)
{
    const auto found = std::find_if(holidays.begin(), holidays.end(),
        [&](const Holiday& holiday) { return holiday.first <= day && day <= holiday.last; });
    return found == holidays.end() ? nullptr : &*found;
}

} // namespace

std::vector<Holiday> makeHolidays(const QDate& today)
{
    std::vector<Holiday> holidays;
    for (int year = today.year() - 3; year <= today.year() + 1; ++year)
        addYear(holidays, year);
    return holidays;
}

bool isOpen(const std::vector<Holiday>& holidays, const QDate& day)
{
    return !holidayOn(holidays, day);
}

QDate dueDate(const std::vector<Holiday>& holidays, const QDate& from, int days)
{
    const QDate due = from.addDays(days);
    const Holiday* holiday = holidayOn(holidays, due);
    return holiday ? holiday->last.addDays(1) : due;
}

} // namespace quilla::demo
