#pragma once

#include "desk/desk_view.h"
#include "desk/fine_dialog.h"
#include "desk/loan_query_page.h"
#include "frame/workplace.h"
#include "platform/ui/form/text_box.h"
#include "platform/ui/form/tooltip.h"
#include "platform/ui/grid/flex_grid.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

namespace quilla {

/// The desk: charging, discharging with renewal, and the loan query, each on a page of its own.
class TsjhFrm final : public QWidget, private DeskView {
    Q_OBJECT

public:
    /// `fines` settles what comes back late.
    TsjhFrm(const Workplace& place, FineDialog& fines);

    /// The blank turns to the discharge page and back to the charge page; any other key does nothing.
    void ToggleDeskPage(int key);

    QTabWidget SSTab1;
    QPushButton cmdTuShuYuYue;
    QPushButton cmdWuZhengJieShu;
    QPushButton CmdQuit;
    QLabel tMsg; ///< the outcome of the last operation on the first two pages

    QGroupBox Frame1; ///< the reader panel
    QLabel Label3[10];
    QLabel Label5[10];
    QLabel Label1;
    TextBox TxtReaderCode;
    QLabel Label2;
    TextBox TxtBarCode;
    QGroupBox Frame2;
    FlexGrid Grid1; ///< the reader's open loans

    QLabel Label8;
    TextBox TxtRetBook;
    QCheckBox Check1; ///< renew what is brought back
    QGroupBox Frame3;
    FlexGrid Grid2; ///< what the reader returned today

    LoanQueryPage Query;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // What the operations do to this screen.
    void focusReaderCode() override;
    void emptyReaderCode() override;
    void setReaderCode(const QString& readercode) override;
    void untickRenewal() override;
    void setUpReturns() override;
    void bindReturns(Recordset& returns) override;
    void selectBarCode() override;
    void emptyAndFocusBarCode() override;
    void showPage(int page) override;
    void clearReaderPanel() override;
    void fillReaderPanel(const ReaderPanel& values) override;
    void showReaderStatus(const QString& status) override;
    void setUpLoans() override;
    void bindLoans(Recordset& loans) override;

    void layOut();
    void wire();
    void makeTips();
    void enterPage(int page);
    void readReaderCard();
    void lendWithoutCard();
    void scanForCharge();
    void showLoan(const QString& barcode);
    void markOverdue();
    void enterBox(QWidget& box);
    void scanForReturn();
    bool takeBack(const QString& barcode);
    bool renew(qint16 count, const QString& barcode);
    void tell(const QString& text, bool good);
    void showDetails(FlexGrid& grid, int barcodeColumn);

    Session& m_session;
    ScreenHost& m_host;
    FineDialog& m_fines;
    cTooltip m_tip;
};

} // namespace quilla
