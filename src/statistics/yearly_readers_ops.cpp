#include "statistics/yearly_readers_ops.h"

#include "frame/work.h"
#include "output/report_designs.h"
#include "platform/db/decimal.h"
#include "platform/report/report_viewer.h"

namespace quilla {

namespace {

constexpr int YearWidth = 10;
constexpr int NameWidth = 20;

/// Cut to the width of the procedure's parameter first, so that no quote is lost between the two steps.
QString argument(const QString& text, int width)
{
    return doubled(trimBlanks(text).left(width));
}

QStringList firstColumn(Session& session, const QString& select)
{
    QStringList values;
    ResumingWork work(session, Opened::Directly);
    for (Recordset row = work.select(select); !row.eof(); row.next())
        values.append(row.field(0).text());
    return values;
}

} // namespace

std::optional<Refusal> yearRefusal(const QString& year)
{
    if (readWhole(year)) return {};
    return Refusal {u"请输入4位数字的年"_s, OperationTitle.toString()};
}

std::optional<Recordset> yearlyReaders(Session& session, const YearlyReadersQuery& query)
{
    const QString statement = u"exec procndztj '%1','%2','%3'"_s.arg(
        argument(query.year, YearWidth), argument(query.unit, NameWidth), argument(query.type, NameWidth));
    return handled(
        session, Opened::Directly, [&](StrictWork& work) { return work.open(statement); },
        [&](const Error& error) {
            session.prompt.inform(u"出现意外错误！详细信息如下：\n"_s + error.text, OperationTitle);
        });
}

void printYearlyReaders(Session& session, ReportViewer& reports, const YearlyReadersQuery& query)
{
    std::optional<Recordset> rows = yearlyReaders(session, query);
    if (!rows) return;
    reports.showReport(u"ndztjrpt"_s, *rows,
        {{},
            {{ReportLabels::Year, trimBlanks(query.year)}, {ReportLabels::Unit, trimBlanks(query.unit)},
                {ReportLabels::Type, trimBlanks(query.type)}}});
}

QStringList unitsOfReaders(Session& session)
{
    return firstColumn(session, u"select distinct readunit from dzdw"_s);
}

QStringList typesOfReaders(Session& session)
{
    return firstColumn(session, u"select distinct readerclass from dzlx"_s);
}

} // namespace quilla
