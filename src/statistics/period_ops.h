#pragma once

#include "frame/session.h"
#include "statistics/period_statistic.h"
#include "statistics/workload_ops.h"

namespace quilla {

class GridModel;
class ReportViewer;

/// What a run brought beside the lines of its grid.
struct PeriodRun {
    qsizetype lines = 0; ///< 0: nothing happened in the period, and there are no figures
    WorkloadFigures figures {}; ///< where the statistic counts readers
};

/// Puts the result of the statistic into `cells`, under `format`. `beforeEach` runs before each statement.
/// nullopt after a failure, which is reported.
std::optional<PeriodRun> runStatistic(Session& session, const PeriodStatistic& statistic,
    const Period& period, GridModel& cells, const std::function<void()>& beforeEach);

/// Runs the procedure again, for a printed form. False after a failure, which is reported.
bool fillPaper(Session& session, const PeriodStatistic& statistic, const Period& period, GridModel& cells);

/// Runs the procedure again and opens the report of the reader types. A failure is reported.
void showReaderTypes(
    Session& session, ReportViewer& reports, const PeriodStatistic& statistic, const Period& period);

/// How often books were lent in the period of a statistic by classes: the last column of its sums.
QString sumOf(const GridModel& cells);

/// A failed run, or a form that the printer did not take.
void tellFailure(Session& session, const Error& error);

/// Asks the operator to set up the printer.
void hintAtPaper(Session& session, const PeriodStatistic& statistic);

} // namespace quilla
