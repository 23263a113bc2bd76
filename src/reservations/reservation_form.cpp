#include "reservations/reservation_form.h"

#include "catalogue/title_search_ops.h"
#include "platform/ui/form/activation.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/grid/list_screen.h"
#include "platform/ui/look/theme.h"
#include "reservations/reservation_ops.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace quilla {

namespace {

enum ReaderBox { CodeBox, NameBox };
enum Command { Reserve, Leave };

const QString TitleFormat = u"^控制ID|^索书号|<正题名|ISBN"_s;
const std::vector<int> TitleWidths {0, 2000, 5000, 2400}; // twips

constexpr int ScreenWidth = 11530;
constexpr int ScreenHeight = 8000;

bool isKey(const QString& zskid)
{
    return zskid.toLongLong() > 0;
}

/// A window that hides stays the active one of its area: without this no screen would have the keyboard.
void activateLatest(QMdiArea& area)
{
    const QList<QMdiSubWindow*> windows = area.subWindowList(QMdiArea::ActivationHistoryOrder);
    const auto latest = std::find_if(
        windows.rbegin(), windows.rend(), [](const auto* window) { return window->isVisible(); });
    if (latest != windows.rend()) area.setActiveSubWindow(*latest);
}

} // namespace

frmTushuYuYue::frmTushuYuYue(Session& session)
    : TitleSearchScreen(session, u"frmTushuYuYue"_s, u"读者预约图书管理"_s)
    , Reader(session)
{
    QUILLA_NAMES(Grid2, labBookISBN, labBookName, labBarCode, cmdYuYue, labZhongShu, labCeShu);
    setCaptions(cmdYuYue, {u"预约(&Y)"_s, u"退出(&Q)"_s});
    layOut();
    wire();
    makeTip();
    showNoTitles();
}

void frmTushuYuYue::layOut()
{
    for (QLabel* label : {&labBookISBN, &labBookName, &labBarCode}) {
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
    labBookName.setWordWrap(true); // a long title must not push the buttons out of the window
    const Piece chosen = row(u"ISBN："_s, Piece(labBookISBN).grow(2), u"正题名："_s,
        Piece(labBookName).grow(5), u"条形码："_s, Piece(labBarCode).grow(2));
    build(*this,
        column(searchLine({}), group(u"总书库"_s, Piece(Grid1).grow()).grow(3),
            group(u"书册库"_s, Piece(Grid2).grow()).grow(2), group(u"当前选择的图书信息"_s, chosen),
            row(u"输入读者证号："_s, Reader.Text2[CodeBox], u"读者姓名："_s, Reader.Text2[NameBox],
                Reader.cmdDuZhe, stretch(), cmdYuYue[Reserve], cmdYuYue[Leave]),
            row(u"满足条件的图书种数："_s, labZhongShu, room(24), u"当前图书的册数："_s, labCeShu,
                stretch())));
    resize(pixelsOf(ScreenWidth, *this), pixelsOf(ScreenHeight, *this));
}

void frmTushuYuYue::wire()
{
    Reader.onReader([this] { place(); });
    connect(&Grid1, &FlexGrid::rowClicked, this, &frmTushuYuYue::chooseTitle);
    connect(&Grid2, &FlexGrid::rowClicked, this, &frmTushuYuYue::chooseCopy);
    onOpen(Grid1, [this](int row) { chooseTitle(row); });
    onOpen(Grid2, [this](int row) { chooseCopy(row); });
    Grid1.setRightButtonChooses(false);
    connect(&Grid1, &FlexGrid::rightReleased, this, &frmTushuYuYue::showDetail);
    onLeave(Grid1, [this] { Tip.setToolText(&Grid1, {}); });
    onClick(cmdYuYue[Reserve], [this] { place(); });
    onClick(cmdYuYue[Leave], [this] { putAway(); });
    onActivation(*this, [this] { Text1.setFocus(); });
}

void frmTushuYuYue::makeTip()
{
    constexpr int readingTime = 20'000;
    Tip.Create(this);
    Tip.setMaxTipWidth(480);
    Tip.setDelayTime(cTooltip::Autopop, readingTime);
    Tip.AddTool(&Grid1, {});
}

void frmTushuYuYue::ClearTitleGrid()
{
    Grid1.setUp(2, TitleFormat, TitleWidths);
    labZhongShu.setText(u"0"_s);
}

void frmTushuYuYue::ClearCopyGrid()
{
    Grid2.clearCopies();
    labCeShu.setText(u"0"_s);
}

void frmTushuYuYue::searchFor(const QString& text)
{
    auto titles = SearchTitles(m_session, text);
    if (!titles) return;
    if (titles->eof()) return showNoTitles();
    fillGrid(Grid1, *titles,
        {.format = TitleFormat, .widths = TitleWidths, .count = &labZhongShu, .countHasCaption = true});
    chooseTitle(1);
}

void frmTushuYuYue::showNoTitles()
{
    ClearTitleGrid();
    labBookISBN.clear();
    labBookName.clear();
    showNoCopy();
}

void frmTushuYuYue::chooseTitle(int row)
{
    const QString zskid = Grid1.TextMatrix(row, TitleId);
    if (!isKey(zskid)) return ClearCopyGrid();
    labBookISBN.setText(Grid1.TextMatrix(row, TitleIsbn));
    labBookName.setText(Grid1.TextMatrix(row, TitleName));
    LoadCopies(zskid);
}

void frmTushuYuYue::LoadCopies(const QString& zskid)
{
    auto copies = usableCopies(m_session, Opened::Directly, zskid);
    if (!copies) return;
    if (copies->eof()) return showNoCopy();
    labCeShu.setText(QString::number(Grid2.showCopies(*copies)));
    chooseCopy(1);
}

void frmTushuYuYue::chooseCopy(int row)
{
    if (!isKey(Grid2.TextMatrix(row, CopyTitleId))) return;
    labBarCode.setText(Grid2.TextMatrix(row, CopyBarcode));
    cmdYuYue[Reserve].setEnabled(true);
    Reader.Text2[CodeBox].setFocus();
}

/// A title without a copy that can be looked at can't be reserved.
void frmTushuYuYue::showNoCopy()
{
    ClearCopyGrid();
    labBarCode.clear();
    cmdYuYue[Reserve].setEnabled(false);
}

/// Of the line under the pointer, which need not be the current one.
void frmTushuYuYue::showDetail(int row)
{
    const QString zskid = Grid1.TextMatrix(row, TitleId);
    if (!isKey(zskid)) return;
    if (const auto detail = ShowTitleDetail(m_session, zskid)) Tip.setToolText(&Grid1, *detail);
}

ReservationRequest frmTushuYuYue::request() const
{
    ReservationRequest request;
    request.readercode = Reader.Text2[CodeBox].text();
    request.bookname = labBookName.text();
    request.barcode = labBarCode.text();
    request.currentName = Grid1.current(TitleName);
    request.currentBarcode = Grid2.current(CopyBarcode);
    request.zskid = Grid1.current(TitleId);
    for (int row = 1; row < Grid2.Rows(); ++row)
        request.copyStates.append(Grid2.TextMatrix(row, CopyStatus));
    return request;
}

/// The choice stays after a reservation, so that the next reader can reserve the same title at once.
void frmTushuYuYue::place()
{
    const WaitCursor hourglass;
    const ReservationOutcome outcome = PlaceReservation(m_session, request());
    if (outcome == ReservationOutcome::Untouched) return;
    if (outcome == ReservationOutcome::Placed) emptyReader();
    backToReader();
}

void frmTushuYuYue::emptyReader()
{
    for (TextBox& box : Reader.Text2)
        box.clear();
}

void frmTushuYuYue::backToReader()
{
    Reader.Text2[CodeBox].setFocus();
    Reader.Text2[CodeBox].selectAll();
}

void frmTushuYuYue::putAway()
{
    showNoTitles();
    Text1.clear();
    emptyReader();
    parentWidget() ? parentWidget()->hide() : hide();
    if (const auto* window = qobject_cast<QMdiSubWindow*>(parentWidget())) activateLatest(*window->mdiArea());
}

/// The window's close box hides it too; the screen stays for the next use.
void frmTushuYuYue::closeEvent(QCloseEvent* event)
{
    event->ignore();
    putAway();
}

} // namespace quilla
