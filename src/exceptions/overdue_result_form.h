#pragma once

#include "statistics/searched_list.h"

namespace quilla {

/// The overdue loans that the filter asked for, printed as a report or as dunning notices.
class CQListFrm final : public SearchedList {
    Q_OBJECT

public:
    explicit CQListFrm(const Workplace& place);

    void loadData(const QString& condition, const QString& order) override;
    /// Refused while the list is empty.
    void PrintOverdueReport();
    /// `groupField` is "readercode" or "readunit".
    void PrintDunningNotices(const QString& groupField);

    QLabel iRowCount;
    QLabel labRemark; ///< that notices of the kind were printed today already
    QPushButton CmdList;
    QPushButton CmdPrintRpt;
    QPushButton cmdToExcel;
    QPushButton CmdQuit;

    QString GroupField; ///< what notices are grouped by; empty after a cancel

private:
    void wire();
    void chooseNotices();

    QString ListStatement; ///< what filled the list; empty when it found no row
};

} // namespace quilla
