#include "statistics/period_chart.h"

#include "platform/grid/grid_model.h"
#include "statistics/workload_ops.h"

namespace quilla {

namespace {

ChartBar bar(const QString& label, const QString& number)
{
    return {label, QString(number).remove(u',').toDouble(), number};
}

QString caption(const GridModel& cells, int col)
{
    return QString(cells.TextMatrix(0, col)).remove(u' ');
}

/// A bar for each line, but for the sums.
ChartSeries byLine(const GridModel& cells, const QString& title, int col)
{
    ChartSeries series {title, {}};
    const int sums = sumLine(cells);
    for (int row = 1; row < cells.Rows(); ++row)
        if (row != sums) series.bars.push_back(bar(cells.TextMatrix(row, 0), cells.TextMatrix(row, col)));
    return series;
}

} // namespace

Chart workloadChart(const QString& title, const GridModel& cells)
{
    Chart chart {title, {}};
    for (int col = 1; col < cells.Cols(); ++col)
        chart.series.push_back(byLine(cells, caption(cells, col), col));
    return chart;
}

Chart classesChart(const QString& title, const GridModel& cells)
{
    const int last = cells.Cols() - 1;
    const int sums = sumLine(cells);
    ChartSeries classes {u"各类借出册数"_s, {}};
    for (int col = 1; col < last; ++col)
        classes.bars.push_back(bar(caption(cells, col), cells.TextMatrix(sums, col)));
    return {title, {classes, byLine(cells, u"借出册数合计"_s, last)}};
}

Chart readerTypesChart(const QString& title, const GridModel& cells)
{
    constexpr int sumColumn = 1;
    ChartSeries days {u"每天借出册数"_s, {}};
    for (int col = sumColumn + 1; col < cells.Cols(); ++col) {
        qint64 sum = 0;
        for (int row = 1; row < cells.Rows(); ++row)
            sum += cells.TextMatrix(row, col).toLongLong();
        days.bars.push_back(bar(caption(cells, col), QString::number(sum)));
    }
    return {title, {byLine(cells, u"各类读者借出册数"_s, sumColumn), days}};
}

} // namespace quilla
