#include "desk/due_date_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"

namespace quilla {

std::optional<Holiday> readHoliday(const QString& code)
{
    constexpr qsizetype width = 10;
    const QStringView text(code);
    if (text.size() < 2 * width + 1) return {};
    const auto from = readDay(text.first(width));
    const auto to = readDay(text.sliced(width + 1, width));
    if (!from || !to) return {};
    return Holiday {*from, *to};
}

QDate moveOverHolidays(QDate start, int days, const std::vector<Holiday>& holidays)
{
    QDate due = start.addDays(days);
    for (const auto& [from, to] : holidays) {
        if (from > due || to < start) continue;
        const bool runsPastDue = to >= due;
        if (from <= start) {
            due = to.addDays(days);
            if (!runsPastDue) start = to;
        } else if (runsPastDue) {
            due = to.addDays(days - start.daysTo(from) + 1);
            start = from;
        } else {
            due = start.addDays(days + 1); // one day, however long the holiday
            start = from;
        }
    }
    return due;
}

DueDate dueDateFor(Session& session, qint16 days)
{
    ResumingWork work(session);
    if (!work) return {{zeroDate()}};
    const bool certain = work.connection().isOpen();
    Recordset rows = work.select(u"Select code From Global Where type='holiday' Order by code");
    const Moment now = GetServerDate(session);
    if (rows.eof()) return {now.addDays(days), certain};

    std::vector<Holiday> holidays;
    for (; !rows.eof(); rows.next()) {
        if (const auto holiday = readHoliday(rows.field(0).text())) holidays.push_back(*holiday);
    }
    return {{moveOverHolidays(now.date, days, holidays)}};
}

Moment ComputeDueDate(Session& session, qint16 days)
{
    return dueDateFor(session, days).date;
}

} // namespace quilla
