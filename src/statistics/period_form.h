#pragma once

#include "frame/workplace.h"
#include "platform/ui/grid/list_screen.h"
#include "statistics/period_box.h"
#include "statistics/period_ops.h"

#include <QGroupBox>

namespace quilla {

/// The screen of one of the statistics over a month or a year.
class PeriodStatisticFrm final : public ListScreen {
    Q_OBJECT

public:
    /// `statistic` is one of `periodStatistics`.
    PeriodStatisticFrm(const Workplace& place, const PeriodStatistic& statistic);

    PeriodBox Box; ///< with `textDate`, `labMonthhh`, `MonthView` and `cmdDate`
    QPushButton cmdNewSelect;
    QPushButton cmdClick[3];
    QPushButton cmdChart;
    QPushButton cmdToExcel;
    QPushButton cmdQuit;
    QGroupBox Frame1;
    QLabel labReaderCount;
    QLabel labBookJieChu;
    QLabel labBookHuanHui;
    QLabel LabBiLv[3];

private:
    void layOut();
    QLayout* figures();
    void wire();
    void run();
    void showRun(const PeriodRun& run);
    void showFigures(const WorkloadFigures& figures);
    void emptyGrid();
    void colourSelection(bool focused);
    void print();
    void printForm();
    void showChart();
    void toExcel();

    const Workplace m_place;
    Session& m_session;
    const PeriodStatistic& m_statistic;
    Period m_last; ///< the period of the last run
    qsizetype m_lines = 0; ///< that it brought
    WorkloadFigures m_figures;
};

} // namespace quilla
