#include "statistics/period_ops.h"

#include "output/report_designs.h"
#include "platform/db/command.h"
#include "platform/grid/grid_model.h"
#include "platform/report/report_viewer.h"

namespace quilla {

namespace {

/// The connection is opened from the text in memory: a statistic never sends the operator to the settings.
template <typename Steps> auto whole(Session& session, Steps&& steps)
{
    return handled(session, Opened::Directly, std::forward<Steps>(steps),
        [&](const Error& error) { tellFailure(session, error); });
}

/// The reader types are asked for by a plain statement, all others by a command with parameters.
Recordset callProcedure(Connection& connection, const PeriodStatistic& statistic, const Period& period)
{
    if (statistic.paperName.isEmpty())
        return connection.open(
            u"exec %1 '%2','%3'"_s.arg(statistic.procedure).arg(period.year).arg(period.month));
    const bool isMonth = period.kind() == PeriodKind::Month;
    Command command(connection, statistic.procedure);
    command.append(u"@tongjiData", period.text(), isMonth ? 7 : 4);
    if (isMonth) command.append(u"@monthDays", period.days());
    return command.execute();
}

void fill(GridModel& cells, Recordset& rows, const QString& format, int moneyColumn)
{
    const GridModel::Filling filling(cells);
    cells.bind(rows);
    cells.setFormatString(format);
    for (int row = 1; moneyColumn >= 0 && row < cells.Rows(); ++row)
        cells.setTextMatrix(row, moneyColumn, groupedMoney(cells.TextMatrix(row, moneyColumn)));
}

} // namespace

std::optional<PeriodRun> runStatistic(Session& session, const PeriodStatistic& statistic,
    const Period& period, GridModel& cells, const std::function<void()>& beforeEach)
{
    return whole(session, [&](StrictWork& work) {
        beforeEach();
        Recordset rows = callProcedure(work.connection(), statistic, period);
        PeriodRun run {rows.recordCount()};
        if (run.lines == 0) return run;
        fill(cells, rows, statistic.format, statistic.moneyColumn);
        if (statistic.countsReaders) run.figures = countWorkload(work, period, cells, beforeEach);
        return run;
    });
}

bool fillPaper(Session& session, const PeriodStatistic& statistic, const Period& period, GridModel& cells)
{
    return whole(session, [&](StrictWork& work) {
        Recordset rows = callProcedure(work.connection(), statistic, period);
        fill(cells, rows, statistic.paperFormat, statistic.moneyColumn);
    });
}

void showReaderTypes(
    Session& session, ReportViewer& reports, const PeriodStatistic& statistic, const Period& period)
{
    std::optional<Recordset> rows = whole(
        session, [&](StrictWork& work) { return callProcedure(work.connection(), statistic, period); });
    const QString month = u"%1年%2月"_s.arg(period.year).arg(period.month);
    if (rows) reports.showReport(u"ydztjRtp"_s, *rows, {{}, {{ReportLabels::Month, month}}});
}

QString sumOf(const GridModel& cells)
{
    return cells.TextMatrix(sumLine(cells), cells.Cols() - 1);
}

void tellFailure(Session& session, const Error& error)
{
    session.prompt.inform(u"出现意外错误！详细信息如下：\n"_s + error.text, OperationTitle);
}

void hintAtPaper(Session& session, const PeriodStatistic& statistic)
{
    session.prompt.inform(statistic.paperHint + u"\n设置正确后点击确定按钮！"_s, OperationTitle);
}

} // namespace quilla
