#pragma once

#include "frame/session.h"
#include "platform/ui/form/text_box.h"
#include "platform/ui/grid/flex_grid.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace quilla {

class ReportViewer;
class Piece;

/// The desk's query page: where a book is, and what a reader or a group of readers has on loan.
class LoanQueryPage final : public QWidget {
    Q_OBJECT

public:
    LoanQueryPage(Session& session, ReportViewer& viewer);

    QGroupBox Frame4;
    QCheckBox Check2[4];
    QLabel Label6[2]; ///< what to type into the boxes
    TextBox Text2[2];
    QComboBox Combo1; ///< units
    QComboBox Combo2; ///< types
    QPushButton CmdFind;
    QPushButton CmdPrint;
    QPushButton CmdExit;
    QGroupBox Frame5;
    FlexGrid Grid3;

    /// The column of the grid that holds the barcode.
    static constexpr int BarcodeColumn = 2;

private:
    void layOut();
    void followTicks(int clicked);
    void find();
    void print();

    Session& m_session;
    ReportViewer& m_viewer;
    QString m_statement; ///< of the last query that found something
};

} // namespace quilla
