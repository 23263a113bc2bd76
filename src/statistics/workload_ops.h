#pragma once

#include "frame/work.h"
#include "statistics/period.h"

#include <QStringList>

namespace quilla {

class GridModel;

/// What the desk's workload means per reader and per copy, as the screen shows it.
struct WorkloadFigures {
    QString allReaders {}; ///< how many readers borrowed or returned
    QString lentPerReader {};
    QString returnedPerReader {};
    QString shelfUse {}; ///< of the stock that is there
    QString visitors {}; ///< of the readers whose card is valid
};

/// Counts heads for a period whose workload stands in `cells`, with the totals in the line 合计. `beforeEach`
/// runs before each statement. Throws `Error`.
WorkloadFigures countWorkload(
    StrictWork& work, const Period& period, const GridModel& cells, const std::function<void()>& beforeEach);

/// `part` of `whole` in per cent with two decimals, an exact half away from zero: "1,250.00%". "0.00%" when
/// either is not above 0.
QString percentage(qint64 part, qint64 whole);

/// A plain decimal with two places and a comma after each thousand: "1,234.50". Other texts stay.
QString groupedMoney(const QString& amount);

/// The line of a statistic's sums, 0 when there is none.
int sumLine(const GridModel& cells);

} // namespace quilla
