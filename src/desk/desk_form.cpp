#include "desk/desk_form.h"

#include "desk/desk_pages.h"
#include "desk/reader_panel_ops.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/small_screen.h"
#include "platform/ui/look/theme.h"
#include "platform/ui/scan/scan_backlog.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLayout>
#include <QShortcut>
#include <QTabBar>

namespace quilla {

TsjhFrm::TsjhFrm(const Workplace& place, FineDialog& fines)
    : cmdTuShuYuYue(u"&Y 图书预约"_s)
    , cmdWuZhengJieShu(u"&W 无证借书"_s)
    , CmdQuit(u"&E 安全退出"_s)
    , cmdSlip(place)
    , cmdCause(u"F8 失败原因"_s)
    , Frame1(u"读者信息"_s)
    , Label1(u"输入读者证号："_s)
    , Label2(u"输入图书条码号："_s)
    , Frame2(u"借书信息"_s)
    , Label8(u"输入图书条码号："_s)
    , Check1(u"续 借(&A)"_s)
    , Frame3(u"还书信息"_s)
    , Query(place.session, place.reports)
    , Scans(place)
    , m_session(place.session)
    , m_host(place.host)
    , m_fines(fines)
    , m_sounds(place.sounds)
{
    QUILLA_NAMES(Room, Split, SSTab1, cmdTuShuYuYue, cmdWuZhengJieShu, CmdQuit, cmdSlip, cmdCause, tMsg,
        Frame1, Label3, Label5, Label1, TxtReaderCode, Label2, TxtBarCode, Frame2, Grid1, Label8, TxtRetBook,
        Check1, Frame3, Grid2);
    setCaptions(Label3,
        {u"读者证号："_s, u"读者姓名："_s, u"性    别："_s, u"读者类型："_s, u"读者单位："_s, u"可借总数："_s,
            u"已借册数："_s, u"可借册数："_s, u"读者状态："_s, u"有效期限："_s});
    setObjectName(u"TsjhFrm"_s);
    setWindowTitle(u"图书借还"_s + u"-操作员："_s + m_session.OperatorName);
    layOut();
    wire();
    makeKeys();
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
    Split.addWidget(
        tabs(SSTab1, {{u"借  书"_s, charging}, {u"还书、续借"_s, discharging}, {u"查  询"_s, Query}})
            .control);
    Split.addWidget(Piece(Scans).control);
    Split.setChildrenCollapsible(false);
    // The captions and one line stay visible; the operator shares out the rest of a small screen.
    for (QTableView* list : std::initializer_list<QTableView*> {&Grid1, &Grid2, &Query.Grid3, &Scans.List})
        list->setMinimumHeight(2 * (fontMetrics().height() + 8));
    build(*this,
        column(row(tMsg, cmdCause, stretch(), cmdSlip, cmdTuShuYuYue, cmdWuZhengJieShu, CmdQuit),
            Piece(Room).grow()));
    Room.setWidget(&Split);
    saveHeight({this, &Frame1, SSTab1.widget(ChargePage), SSTab1.widget(DischargePage)});
    Query.layout()->setContentsMargins({}); // its page has margins too
    resize(pixelsOf(13500, *this), pixelsOf(9000, *this));
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
        connect(grid, &FlexGrid::rowClicked, this, [this, grid] { showDetails(*grid, BarcodeColumn); });
    }
    connect(&Query.Grid3, &FlexGrid::rowClicked, this,
        [this] { showDetails(Query.Grid3, LoanQueryPage::BarcodeColumn); });
}

/// F2, F3 and F4 turn to a page, Ctrl+Tab goes through the pages, F6 goes to the session list, F8 shows why a
/// scan failed, F9 prints the reader's slip.
void TsjhFrm::makeKeys()
{
    const auto on = [this](const QKeySequence& keys, auto step) {
        auto* shortcut = new QShortcut(keys, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, this, step);
    };
    const auto turn
        = [this](int by) { showPage((SSTab1.currentIndex() + by + SSTab1.count()) % SSTab1.count()); };
    on(Qt::Key_F2, [this] {
        showPage(ChargePage);
        TxtReaderCode.setFocus(); // there already, the next reader's card is scanned
    });
    on(Qt::Key_F3, [this] { openReturns(); });
    on(Qt::Key_F4, [this] {
        showPage(QueryPage);
        // from the session list, which may have gone
        if (!Query.isAncestorOf(focusWidget())) Query.Check2[0].setFocus();
    });
    on(Qt::Key_F8, [this] { showCause(); });
    on(Qt::Key_F9, [this] { cmdSlip.print(TxtReaderCode.text()); });
    on(Qt::Key_F6, [this] {
        Scans.show();
        Scans.enterList();
    });
    on(Qt::CTRL | Qt::Key_Tab, [turn] { turn(1); });
    on(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, [turn] { turn(-1); });
    SSTab1.setTabToolTip(ChargePage, u"借书（F2）"_s);
    SSTab1.setTabToolTip(DischargePage, u"还书、续借（F3）"_s);
    SSTab1.setTabToolTip(QueryPage, u"查询（F4）"_s);
    for (QLineEdit* box : {&TxtReaderCode, &TxtBarCode, &TxtRetBook})
        connect(box, &QLineEdit::textEdited, this, &TsjhFrm::fadeResult);
    cmdCause.hide();
    onClick(cmdCause, [this] { showCause(); });
    connect(&cmdSlip, &SlipButton::asked, this, [this] { cmdSlip.print(TxtReaderCode.text()); });
    connect(&Scans, &ScanListPane::readerWanted, this, &TsjhFrm::openReader);
}

/// From the session list with the barcode of its line, ready for Enter.
void TsjhFrm::openReturns()
{
    const ScanEntry* chosen = Scans.List.hasFocus() ? Scans.current() : nullptr;
    const QString barcode = chosen ? chosen->barcode : QString();
    showPage(DischargePage);
    TxtRetBook.setFocus();
    if (barcode.isEmpty()) return;
    TxtRetBook.setText(barcode);
    TxtRetBook.selectAll();
}

void TsjhFrm::openReader(const QString& readercode)
{
    const QString card = u"DzaddFrm"_s;
    if (!readercode.isEmpty() && m_host.hasScreen(card)) m_host.openScreen(card, readercode);
}

/// The session list stands beside the pages where both have room, else below them.
void TsjhFrm::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const auto way = width() >= pixelsOf(20000, *this) ? Qt::Horizontal : Qt::Vertical;
    if (m_isShared && way == Split.orientation()) return;
    m_isShared = true;
    Split.setOrientation(way);
    placeScans();
    const int room = way == Qt::Horizontal ? width() : height();
    Split.setSizes({room * 3 / 5, room * 2 / 5});
}

void TsjhFrm::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    connect(&ScanBacklog::of(*window()), &ScanBacklog::unserved, this, &TsjhFrm::enlistUnserved,
        Qt::UniqueConnection);
}

void TsjhFrm::makeTips()
{
    constexpr int readingTime = 20'000;
    Grid1.horizontalHeader()->setToolTip(u"应还日期前有“！”的红色行：图书已到期或超期"_s);
    m_tip.Create(this);
    m_tip.setMaxTipWidth(480);
    m_tip.setDelayTime(cTooltip::Autopop, readingTime);
    for (FlexGrid* grid : {&Grid1, &Grid2, &Query.Grid3})
        m_tip.AddTool(grid, {});
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

/// Hides the session list below the query page, which needs the room for what it finds. Each page is at least
/// as high as what is on it; by default all would be as high as the highest one.
void TsjhFrm::placeScans()
{
    Scans.setVisible(Split.orientation() == Qt::Horizontal || SSTab1.currentIndex() != QueryPage);
    SSTab1.setMinimumHeight(
        SSTab1.tabBar()->sizeHint().height() + SSTab1.currentWidget()->minimumSizeHint().height());
}

/// Runs whether the operator or an operation turned the page.
void TsjhFrm::enterPage(int page)
{
    tMsg.clear();
    cmdCause.hide();
    placeScans();
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

void TsjhFrm::showDetails(FlexGrid& grid, int barcodeColumn)
{
    const QString barcode = grid.current(barcodeColumn);
    if (!isBlank(barcode)) m_tip.setToolText(&grid, bookDetails(m_session, barcode));
}

} // namespace quilla
