#pragma once

#include "frame/workplace.h"
#include "platform/ui/form/text_box.h"
#include "platform/ui/grid/list_screen.h"
#include "statistics/loan_history_ops.h"

#include <QGroupBox>
#include <QPushButton>

namespace quilla {

/// The history of a copy or of a reader; a click on a loan shows its reader and its title.
class JylsQueryFrm final : public ListScreen {
    Q_OBJECT

public:
    explicit JylsQueryFrm(const Workplace& place);

    TextBox Text1[18]; ///< the two search boxes are the first and the last
    QPushButton Command1[3];
    QGroupBox Frame3;
    FlexGrid& MSHFlexGrid1;

private:
    enum class Started { ByEnter, Otherwise };

    void layOut();
    void wire();
    void enter(int box);
    void leaveBox(int box);
    void search(Started started);
    void emptyResult();
    void showLoans(Started started);
    void showReader(const QString& readercode);
    void showCatalogue(const QString& barcode);
    void showLoan(int row);
    void openReader(int row);
    void print();

    const Workplace m_place;
    Session& m_session;
    int m_box = 0; ///< the search box that was used last
    HistoryQuery m_query; ///< of the last search
    Recordset m_rows; ///< that it found
};

} // namespace quilla
