#pragma once

#include "platform/ui/form/date_range.h"
#include "statistics/circulation_ops.h"
#include "statistics/searched_list.h"

#include <QRadioButton>

namespace quilla {

/// Lists loans, returns, fines or lost books that meet a condition.
class LttjFrm final : public SearchedList {
    Q_OBJECT

public:
    explicit LttjFrm(const Workplace& place);

    void loadData(const QString& condition, const QString& order) override;

    QRadioButton Option1[4];
    DateRange Dates; ///< `Check1` and `Text1`
    QPushButton cmdQuery;
    QPushButton CmdPrint;
    QPushButton cmdToExcel;
    QPushButton cmdQuit;
    QLabel iRec;

private:
    const CirculationMode& mode() const;
    void layOut();
    void wire();
    void emptyGrid();
    void query();
    void printRows();

    /// The last select that found rows. It outlives a change of the mode, so that printing runs it under the
    /// head of the new one.
    QString m_lastSelect;
};

} // namespace quilla
