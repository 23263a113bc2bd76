#pragma once

#include "output/export_layouts.h"
#include "platform/report/report_design.h"
#include "statistics/period.h"
#include "statistics/period_chart.h"

namespace quilla {

/// A statistic over a month or a year: what its screen shows, sends, prints and exports.
struct PeriodStatistic {
    QString name {}; ///< of its screen
    QString title {};
    PeriodKind kind {};
    QString frameTitle {}; ///< over the result while nothing runs
    QString printCaption {};
    QString procedure {};
    QString format {}; ///< of the grid that holds a result
    QString emptyFormat {};
    QString paperFormat {};
    QString emptyNote {}; ///< follows the title after a run without lines
    std::vector<int> widths {}; ///< of the columns, in twips; empty: the captions decide
    int moneyColumn = -1; ///< -1: there is none
    bool countsReaders = false; ///< whether head counts and rates stand beside the grid
    QString paperName {}; ///< of the form that is printed; empty: the report of the reader types is shown
    Paper paper = Paper::Upright;
    QString paperHint {}; ///< how the printer has to be set up
    Chart (*chart)(const QString& title, const GridModel& cells) = nullptr;
    ExportLayout (*sheet)(const Period&) = nullptr; ///< its title is that of the printed form, too
};

/// The five of them, in the order of the menu.
const std::vector<PeriodStatistic>& periodStatistics();

} // namespace quilla
