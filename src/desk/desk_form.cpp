#include "desk/desk_form.h"

#include "desk/charge_ops.h"
#include "desk/discharge_ops.h"
#include "desk/reader_panel_ops.h"
#include "desk/reader_picker_form.h"
#include "desk/renewal_ops.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/look/theme.h"

#include <QKeyEvent>
#include <QTabBar>

namespace quilla {

namespace {

enum DeskPage { ChargePage, DischargePage };

struct GridDesign {
    int rows; ///< when empty, captions included
    QString format;
    std::vector<int> widths; ///< twips
};

const GridDesign LoanGrid {8,
    u"^借书控制号|^图书条形码     |<书名                  |<著者    |<借书日期  |<应还日期  |^操作员"_s,
    {850, 1100, 2000, 1100, 1000, 1000, 900}};

const GridDesign ReturnGrid {15,
    u"^还书控制号|<图书条形码  |<书名                   |<借书日期  |<应还日期  |<还书日期  |<操作员"_s,
    {850, 1100, 2000, 1100, 1000, 1000, 900}};

void setUp(FlexGrid& grid, const GridDesign& design)
{
    grid.setUp(design.rows, design.format, design.widths);
}

void bind(FlexGrid& grid, const GridDesign& design, Recordset& rows)
{
    grid.bind(rows);
    grid.setFormatString(design.format);
    grid.setColWidths(design.widths);
}

} // namespace

TsjhFrm::TsjhFrm(const Workplace& place, FineDialog& fines)
    : cmdTuShuYuYue(u"&Y 图书预约"_s)
    , cmdWuZhengJieShu(u"&W 无证借书"_s)
    , CmdQuit(u"&E 安全退出"_s)
    , Frame1(u"读者信息"_s)
    , Label1(u"输入读者证号："_s)
    , Label2(u"输入图书条码号："_s)
    , Frame2(u"借书信息"_s)
    , Label8(u"输入图书条码号："_s)
    , Check1(u"续 借(&A)"_s)
    , Frame3(u"还书信息"_s)
    , Query(place.session, place.reports)
    , m_session(place.session)
    , m_host(place.host)
    , m_fines(fines)
{
    QUILLA_NAMES(SSTab1, cmdTuShuYuYue, cmdWuZhengJieShu, CmdQuit, tMsg, Frame1, Label3, Label5, Label1,
        TxtReaderCode, Label2, TxtBarCode, Frame2, Grid1, Label8, TxtRetBook, Check1, Frame3, Grid2);
    setCaptions(Label3,
        {u"读者证号："_s, u"读者姓名："_s, u"性    别："_s, u"读者类型："_s, u"读者单位："_s, u"可借总数："_s,
            u"已借册数："_s, u"可借册数："_s, u"读者状态："_s, u"有效期限："_s});
    setObjectName(u"TsjhFrm"_s);
    setWindowTitle(u"图书借还"_s + u"-操作员："_s + m_session.OperatorName);
    layOut();
    wire();
    makeTips();
    setUpLoans();
    setUpReturns();
    TxtReaderCode.setFocus();
}

void TsjhFrm::layOut()
{
    QFont large = tMsg.font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    tMsg.setFont(large);
    tMsg.setAccessibleName(u"操作结果"_s);
    std::vector<FormField> panel;
    for (int index = 0; index < 10; ++index) {
        Label5[index].setTextFormat(Qt::PlainText);
        panel.emplace_back(Label3[index], Label5[index]);
    }
    const Piece charging = column(group(Frame1, fields(5, panel)),
        row(Label1, Piece(TxtReaderCode).grow(2), room(24), Label2, Piece(TxtBarCode).grow(2), stretch()),
        group(Frame2, Piece(Grid1).grow()).grow());
    const Piece discharging
        = column(row(Label8, Piece(TxtRetBook).grow(2), room(24), Check1, stretch().grow(2)),
            group(Frame3, Piece(Grid2).grow()).grow());
    build(*this,
        column(row(tMsg, stretch(), cmdTuShuYuYue, cmdWuZhengJieShu, CmdQuit),
            tabs(SSTab1, {{u"借  书"_s, charging}, {u"还书、续借"_s, discharging}, {u"查  询"_s, Query}})
                .grow()));
    resize(pixelsOf(13500, *this), pixelsOf(8400, *this));
}

void TsjhFrm::wire()
{
    onEnter(TxtReaderCode, [this] { readReaderCard(); });
    onEnter(TxtBarCode, [this] { scanForCharge(); });
    onEnter(TxtRetBook, [this] { scanForReturn(); });
    onClick(Check1, [this] { TxtRetBook.setFocus(); });
    for (QPushButton* button : {&CmdQuit, &Query.CmdExit})
        onClick(*button, [this] { closeScreen(*this); });
    onClick(cmdTuShuYuYue, [this] { m_host.openScreen(u"frmTushuYuYue"_s, Modally.toString()); });
    onClick(cmdWuZhengJieShu, [this] { lendWithoutCard(); });
    cmdTuShuYuYue.setEnabled(m_host.hasScreen(u"frmTushuYuYue"_s));
    connect(&SSTab1, &QTabWidget::currentChanged, this, &TsjhFrm::enterPage);
    for (QWidget* control :
        std::initializer_list<QWidget*> {&TxtReaderCode, &TxtBarCode, &TxtRetBook, SSTab1.tabBar()})
        control->installEventFilter(this);
    for (FlexGrid* grid : {&Grid1, &Grid2}) {
        connect(grid, &FlexGrid::blankPressed, this, [this] { ToggleDeskPage(Qt::Key_Space); });
        connect(grid, &FlexGrid::rowClicked, this, [this, grid] { showDetails(*grid, 1); });
    }
    connect(&Query.Grid3, &FlexGrid::rowClicked, this,
        [this] { showDetails(Query.Grid3, LoanQueryPage::BarcodeColumn); });
}

void TsjhFrm::makeTips()
{
    constexpr int readingTime = 20'000;
    m_tip.Create(this);
    m_tip.setMaxTipWidth(480);
    m_tip.setDelayTime(cTooltip::Autopop, readingTime);
    for (FlexGrid* grid : {&Grid1, &Grid2, &Query.Grid3}) {
        m_tip.AddTool(grid, {});
        m_tip.setToolText(grid, {}); // nothing to say until a line is clicked
    }
}

void TsjhFrm::ToggleDeskPage(int key)
{
    if (key == Qt::Key_Space) showPage(SSTab1.currentIndex() == ChargePage ? DischargePage : ChargePage);
}

bool TsjhFrm::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Space) {
            // The blank that turns the page enters no box.
            ToggleDeskPage(key);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void TsjhFrm::keyPressEvent(QKeyEvent* event)
{
    ToggleDeskPage(event->key());
    QWidget::keyPressEvent(event);
}

/// Whoever turned the page, the operator or an operation.
void TsjhFrm::enterPage(int page)
{
    tMsg.clear();
    if (page == ChargePage) {
        setUpLoans();
        clearReaderPanel();
        emptyReaderCode();
        focusReaderCode();
    } else if (page == DischargePage) {
        setUpReturns();
        TxtRetBook.clear();
        TxtRetBook.setFocus();
    }
}

void TsjhFrm::readReaderCard()
{
    const WaitCursor wait;
    ShowReader(m_session, *this, TxtReaderCode.text());
    ShowLoans(m_session, *this, TxtReaderCode.text());
}

/// The reader that was picked takes the place of a scanned card; from here on nothing is different.
void TsjhFrm::lendWithoutCard()
{
    ReaderPickerFrm picker(m_session, noCardPicker(), this);
    picker.exec();
    showPage(ChargePage);
    if (!picker.PickedCode.isEmpty()) {
        TxtReaderCode.setText(picker.PickedCode);
        return readReaderCard();
    }
    setUpLoans();
    clearReaderPanel();
    emptyReaderCode();
    focusReaderCode();
}

/// The scan is taken off the box first, so that the next one finds it empty whatever happens to this one.
void TsjhFrm::scanForCharge()
{
    const QString reader = TxtReaderCode.text();
    if (reader.isEmpty()) return;
    const WaitCursor wait;
    const QString barcode = TxtBarCode.text();
    TxtBarCode.clear();
    const ChargeResult result = ChargeBook(m_session, *this, barcode, reader);
    if (result > Charged) return tMsg.clear();
    if (result < Charged) return tell(u"借书失败"_s, false);
    tell(u"借书成功"_s, true);
    ShowReader(m_session, *this, reader);
    ShowLoans(m_session, *this, reader);
}

/// A refusal leaves the barcode in the box, selected, so that the next scan takes its place.
void TsjhFrm::scanForReturn()
{
    const QString barcode = TxtRetBook.text();
    if (barcode.isEmpty()) return;
    const WaitCursor wait;
    TxtRetBook.selectAll();
    qint16 count = 0;
    if (Check1.isChecked()) {
        count = CheckRenewal(m_session, *this, barcode);
        if (count == RenewalRefused) return;
    }
    if (!takeBack(barcode)) return;
    if (Check1.isChecked() && !renew(count, barcode)) return;
    ShowReturns(m_session, *this, TxtReaderCode.text(), Returns::Today);
    TxtRetBook.clear();
    Check1.setChecked(false);
    TxtRetBook.setFocus();
}

bool TsjhFrm::takeBack(const QString& barcode)
{
    const DischargeResult result = DischargeBook(m_session, *this, m_fines, barcode);
    if (result == Discharged)
        tell(u"还书成功"_s, true);
    else if (result < Discharged)
        tell(u"还书失败"_s, false);
    else if (result == FineDeclined)
        tell(u"取消还书"_s, false);
    else
        tMsg.clear();
    return result == Discharged;
}

/// False when a check refused the new charge; the copy stays returned.
bool TsjhFrm::renew(qint16 count, const QString& barcode)
{
    const ChargeResult result = RechargeBook(m_session, *this, count, barcode, TxtReaderCode.text());
    if (result > Charged)
        tMsg.clear();
    else
        tell(result == Charged ? u"续借成功"_s : u"续借失败"_s, result == Charged);
    return result <= Charged;
}

void TsjhFrm::tell(const QString& text, bool good)
{
    tMsg.setText(text);
    setTone(tMsg, good ? Tone::Ok : Tone::Error);
}

void TsjhFrm::showDetails(FlexGrid& grid, int barcodeColumn)
{
    const QString barcode = grid.current(barcodeColumn);
    if (!isBlank(barcode)) m_tip.setToolText(&grid, bookDetails(m_session, barcode));
}

void TsjhFrm::focusReaderCode()
{
    TxtReaderCode.setFocus();
}

void TsjhFrm::emptyReaderCode()
{
    TxtReaderCode.clear();
}

void TsjhFrm::setReaderCode(const QString& readercode)
{
    TxtReaderCode.setText(readercode);
}

void TsjhFrm::untickRenewal()
{
    Check1.setChecked(false);
}

void TsjhFrm::selectBarCode()
{
    TxtBarCode.setFocus();
    TxtBarCode.selectAll();
}

void TsjhFrm::emptyAndFocusBarCode()
{
    TxtBarCode.clear();
    TxtBarCode.setFocus();
}

void TsjhFrm::showPage(int page)
{
    SSTab1.setCurrentIndex(page);
}

void TsjhFrm::clearReaderPanel()
{
    for (QLabel& label : Label5)
        label.clear();
}

void TsjhFrm::fillReaderPanel(const ReaderPanel& values)
{
    for (std::size_t index = 0; index < values.size(); ++index)
        Label5[index].setText(values[index]);
    showReaderStatus(values[PanelLabel::Status]);
}

void TsjhFrm::showReaderStatus(const QString& status)
{
    QLabel& label = Label5[PanelLabel::Status];
    label.setText(status);
    setTone(label, sameText(status, u"有效") ? Tone::Ok : Tone::Error);
}

void TsjhFrm::setUpLoans()
{
    setUp(Grid1, LoanGrid);
}

void TsjhFrm::bindLoans(Recordset& loans)
{
    bind(Grid1, LoanGrid, loans);
}

void TsjhFrm::setUpReturns()
{
    setUp(Grid2, ReturnGrid);
}

void TsjhFrm::bindReturns(Recordset& returns)
{
    bind(Grid2, ReturnGrid, returns);
}

} // namespace quilla
