#include "readers/holiday_ops.h"

#include "frame/sublib.h"
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
bool passesAsDay(Session& session, const QString& text)
{
    if (!text.isEmpty()) return CheckDateBox(text, session.prompt).passed();
    session.prompt.inform(u"请输入正确的日期格式(例如:2003-01-01)"_s, OperationTitle);
    return false;
}

void sendAndGoOn(Session& session, const QString& tsql)
{
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return;
    session.error.attempt([&] { conn.execute(tsql); });
    session.error.clear();
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
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return holidays;
    Recordset row = conn.open(u"Select memo,code from Global Where type='holiday' order by code");
    for (; !row.eof(); row.next()) {
        const QString code = row.field(1).text();
        holidays.push_back({row.field(0).text(), code.left(DayLength), code.mid(LastDayAt)});
    }
    return holidays;
}

std::optional<int> CheckHolidayForm(Session& session, const ClosingPeriod& holiday)
{
    if (holiday.name.isEmpty()) {
        session.prompt.warn(u"无效假期名称，取消该操作。"_s, OperationTitle);
        return HolidayBox::Name;
    }
    if (!passesAsDay(session, holiday.first)) return HolidayBox::First;
    if (!passesAsDay(session, holiday.last)) return HolidayBox::Last;
    if (holiday.first > holiday.last) {
        session.prompt.warn(u"假期开始时间不能大于结束时间。"_s, OperationTitle);
        return HolidayBox::First;
    }
    return {};
}

bool holidayNameIsTaken(Session& session, const QString& name, const QString& unchanged)
{
    if (name.isEmpty() || name == unchanged) return false;
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return false;
    const Recordset same
        = conn.open(u"Select type From Global Where type='holiday' and memo='%1'"_s.arg(doubled(name)));
    if (same.eof()) return false;
    session.prompt.warn(u"假期名称‘%1’已经存在。"_s.arg(name), OperationTitle);
    return true;
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
