#include "readers/holiday_ops.h"

#include "frame/work.h"
#include "platform/core/date_box.h"

namespace quilla {

namespace {

// A stored period: first day, one blank, last day.
constexpr int DayLength = 10;
constexpr int LastDayAt = 11;

const QString Between = u"  至  "_s;

QString storedPeriod(const ClosingPeriod& holiday)
{
    const auto stored = [](const QString& day) { return isoDate(platformDate(day).value_or(QDate())); };
    return stored(holiday.first) + u' ' + stored(holiday.last);
}

/// An empty box is a fault here, unlike in a search.
std::optional<Refusal> wrongDay(const QString& text, int box)
{
    if (!platformDate(text)) return Refusal {.text = u"请输入正确的日期格式(例如:2003-01-01)"_s, .box = box};
    if (!startsWithFullYear(text))
        return Refusal {.text = u"请输入完整的日期格式!(例如:2003-01-01)"_s, .box = box};
    return {};
}

void sendAndGoOn(Session& session, const QString& tsql)
{
    ResumingWork work(session);
    if (work) work.send(tsql);
}

} // namespace

QString periodText(const ClosingPeriod& holiday)
{
    return holiday.first + Between + holiday.last;
}

/// A period as typed may be shorter than a stored one, so the days are found by what stands between them.
ClosingPeriod holidayOfLine(const QString& name, const QString& period)
{
    return {name, period.section(Between, 0, 0), period.section(Between, 1)};
}

std::vector<ClosingPeriod> readHolidays(Session& session)
{
    std::vector<ClosingPeriod> holidays;
    StrictWork work(session);
    if (!work) return holidays;
    Recordset row = work.open(u"Select memo,code from Global Where type='holiday' order by code");
    for (; !row.eof(); row.next()) {
        const QString code = row.field(1).text();
        holidays.push_back({row.field(0).text(), code.left(DayLength), code.mid(LastDayAt)});
    }
    return holidays;
}

std::optional<Refusal> CheckHolidayForm(const ClosingPeriod& holiday)
{
    if (isBlank(holiday.name))
        return Refusal {
            .text = u"无效假期名称，取消该操作。"_s, .icon = Icon::Warning, .box = HolidayBox::Name};
    if (auto wrong = wrongDay(holiday.first, HolidayBox::First)) return wrong;
    if (auto wrong = wrongDay(holiday.last, HolidayBox::Last)) return wrong;
    if (holiday.first > holiday.last)
        return Refusal {
            .text = u"假期开始时间不能大于结束时间。"_s, .icon = Icon::Warning, .box = HolidayBox::First};
    return {};
}

std::optional<Refusal> takenHolidayName(Session& session, const QString& name, const QString& unchanged)
{
    if (name.isEmpty() || name == unchanged) return {};
    StrictWork work(session);
    if (!work) return {};
    const Recordset same
        = work.open(u"Select type From Global Where type='holiday' and memo='%1'"_s.arg(doubled(name)));
    if (same.eof()) return {};
    return Refusal {
        .text = u"假期名称‘%1’已经存在。"_s.arg(name), .icon = Icon::Warning, .box = HolidayBox::Name};
}

void addHoliday(Session& session, const ClosingPeriod& holiday)
{
    sendAndGoOn(session,
        u"Insert Into global (type,code,memo) Values ('holiday','%1','%2')"_s.arg(
            storedPeriod(holiday), doubled(holiday.name)));
}

void changeHoliday(Session& session, const ClosingPeriod& holiday, const QString& oldName)
{
    sendAndGoOn(session,
        u"Update global Set code='%1',memo='%2' Where type='holiday' And memo='%3'"_s.arg(
            storedPeriod(holiday), doubled(holiday.name), doubled(oldName)));
}

RecordRemoval holidayRemoval()
{
    return {u"是否确定删除所选的假期管理？"_s, u"Delete From Global Where type='holiday' And memo='%1'"_s};
}

} // namespace quilla
