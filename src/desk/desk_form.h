#pragma once

#include "desk/charge_ops.h"
#include "desk/desk_view.h"
#include "desk/fine_dialog.h"
#include "desk/loan_query_page.h"
#include "desk/scan_list_pane.h"
#include "desk/slip_button.h"
#include "frame/workplace.h"
#include "platform/ui/form/focus_scroller.h"
#include "platform/ui/form/result_label.h"
#include "platform/ui/form/text_box.h"
#include "platform/ui/form/tooltip.h"
#include "platform/ui/grid/flex_grid.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QSplitter>
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

    FocusScroller Room; ///< scrolls where the window is too small for what is in it
    QSplitter Split; ///< the pages and the session list
    QTabWidget SSTab1;
    QPushButton cmdTuShuYuYue;
    QPushButton cmdWuZhengJieShu;
    QPushButton CmdQuit;
    SlipButton cmdSlip;
    QPushButton cmdCause; ///< why the last scan failed; shows only then
    ResultLabel tMsg; ///< the outcome of the last operation on the first two pages

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

    ScanListPane Scans;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // What the operations do to this screen.
    void refusing(const QString& reason) override;
    void asking() override;
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
    void showCharge(ChargeResult result, const QString& barcode, const QString& reader);
    void showLoan(const QString& barcode);
    void markOverdue();
    void enterBox(QWidget& box);
    void scanForReturn();
    void showReturn();
    ScanOutcome takeBack(const QString& barcode);
    ScanOutcome renew(qint16 count, const QString& barcode);
    void fadeResult();
    void beginScan(ScanKind kind, const QString& code, const QString& reader = {});
    void endScan(ScanOutcome outcome);
    void explain(ScanEntry& scan, const Failure& failure);
    void showCause();
    void enlist(const ScanEntry& scan);
    void enlistUnserved(const QStringList& codes);
    void makeKeys();
    void placeScans();
    void openReturns();
    void openReader(const QString& readercode);
    void tell(const QString& text, bool good);
    void showDetails(FlexGrid& grid, int barcodeColumn);

    Session& m_session;
    ScreenHost& m_host;
    FineDialog& m_fines;
    Sounds& m_sounds;
    std::optional<ScanEntry> m_scan; ///< the one that is under way
    bool m_isShared = false; ///< pages and session list have got their parts of the room
    bool m_resultIsFresh = false; ///< the line of the result is about the last scan, and none has begun since
    cTooltip m_tip;
};

} // namespace quilla
