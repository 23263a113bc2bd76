#pragma once

#include "platform/ui/grid/flex_grid.h"
#include "statistics/period_statistic.h"
#include "statistics/workload_ops.h"

#include <QLabel>

namespace quilla {

/// A statistic as it goes to paper: its grid with its labels, which print as they stand here.
class PeriodPaper final : public QWidget {
    Q_OBJECT

public:
    PeriodPaper(const PeriodStatistic& statistic, const Period& period);

    /// Widths and centring, once the grid is filled.
    void loadGridData();
    void showFigures(const WorkloadFigures& figures);

    QLabel Title;
    QLabel labDateJian[2]; ///< the first and the last day
    QLabel labReaderCount;
    QLabel labBiLv[5];
    QLabel labRiQi; ///< when it was printed
    FlexGrid Grid1;

private:
    void layOut();

    const PeriodStatistic& m_statistic;
};

} // namespace quilla
