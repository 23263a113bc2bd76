#include "statistics/loan_history_form.h"

#include "platform/ui/form/form.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/look/theme.h"
#include "statistics/no_rows.h"

#include <QApplication>

namespace quilla {

namespace {

enum Box { Barcode = 0, ReaderName = 1, Reader = 2, FirstField = 3, ReaderCode = 17 };
enum Button { Print, Quit, Find };
enum Column { CopyColumn = 2, ReaderColumn, LentColumn };

const QString Format = u"^|^标志  |^图书条码         |^借书证    |^借阅日期     |^还书日期     |^操作员   "_s;
const QString Title = u"借阅历史统计"_s;
constexpr int BlankRows = 2;
constexpr int ScreenWidth = 12000; // twips
constexpr int ScreenHeight = 8400;

/// "文献类弄" is what libraries find in their manuals.
const QStringList FieldCaptions {u"索书号："_s, u"正题名："_s, u"文献类弄："_s, u"责任者："_s, u"出版者："_s,
    u"作品语种："_s, u"出版日期："_s, u"出版地："_s, u"尺寸："_s, u"版本次："_s, u"册数："_s, u"页数："_s,
    u"主题词："_s, u"附注："_s};

} // namespace

JylsQueryFrm::JylsQueryFrm(const Workplace& place)
    : ListScreen(u"JylsQueryFrm"_s, u"借阅历史情况查询"_s)
    , Frame3(u"编目信息"_s)
    , MSHFlexGrid1(Grid1)
    , m_place(place)
    , m_session(place.session)
{
    QUILLA_NAMES(Text1, Command1, Frame3, MSHFlexGrid1);
    setCaptions(Command1, {u"打印[&P]"_s, u"退出[&X]"_s, u"确定[&O]"_s});
    MSHFlexGrid1.setAccessibleName(u"借阅历史"_s);
    MSHFlexGrid1.setUp(BlankRows, Format);
    layOut();
    wire();
}

void JylsQueryFrm::layOut()
{
    std::vector<FormField> catalogue;
    for (int field = 0; field < FieldCaptions.size(); ++field)
        catalogue.emplace_back(FieldCaptions[field], Text1[FirstField + field]);
    for (int box = ReaderName; box < ReaderCode; ++box) {
        Text1[box].setReadOnly(true);
        Text1[box].setFocusPolicy(Qt::ClickFocus);
    }
    const Piece searches = row(u"图书条形码："_s, Piece(Text1[Barcode]).grow(), u"借书证条形码："_s,
        Piece(Text1[ReaderCode]).grow(), Command1[Find], Command1[Print], Command1[Quit]);
    const Piece reader
        = row(u"读者姓名："_s, Piece(Text1[ReaderName]).grow(), u"借书证号："_s, Piece(Text1[Reader]).grow());
    setUsualSize(ScreenWidth, ScreenHeight);
    arrange(column(searches, Piece(MSHFlexGrid1).grow(), reader, group(Frame3, fields(2, catalogue))));
    Text1[Barcode].setFocus();
}

void JylsQueryFrm::wire()
{
    for (const int box : {int(Barcode), int(ReaderCode)}) {
        onEnter(Text1[box], [this, box] { enter(box); });
        onLeave(Text1[box], [this, box] { leaveBox(box); });
    }
    onClick(Command1[Find], [this] { search(Started::Otherwise); });
    onClick(Command1[Print], [this] { print(); });
    onClick(Command1[Quit], [this] { closeScreen(*this); });
    connect(&MSHFlexGrid1, &FlexGrid::rowClicked, this, &JylsQueryFrm::showLoan);
    connect(&MSHFlexGrid1, &FlexGrid::blankPressed, this, [this] { showLoan(MSHFlexGrid1.Row()); });
    onOpen(MSHFlexGrid1, [this](int row) { openReader(row); });
}

void JylsQueryFrm::enter(int box)
{
    m_box = box;
    search(Started::ByEnter);
    Text1[box].selectAll();
}

/// A code that was typed is searched when its box is left, unless that was for a button that searches itself
/// or closes. An empty box, and one that was searched already, say nothing.
void JylsQueryFrm::leaveBox(int box)
{
    if (Text1[box].text().isEmpty()) return;
    m_box = box;
    const QWidget* const now = QApplication::focusWidget();
    const bool isSearched = Text1[box].text() == (box == Barcode ? m_query.barcode : m_query.readercode);
    if (!isSearched && now != &Command1[Find] && now != &Command1[Quit]) search(Started::Otherwise);
}

void JylsQueryFrm::search(Started started)
{
    const HistoryOf kind = m_box == Barcode ? HistoryOf::Copy : HistoryOf::Reader;
    if (Text1[m_box].text().isEmpty()) {
        m_session.prompt.inform(
            kind == HistoryOf::Copy ? u"请输入图书条码"_s : u"请输入借书证条码"_s, OperationTitle);
        for (const int box : {int(Barcode), int(ReaderCode)})
            Text1[box].clear();
        return;
    }
    const WaitCursor hourglass;
    emptyResult();
    m_query = {kind, Text1[Barcode].text(), Text1[ReaderCode].text()};
    std::optional<Recordset> rows = loanHistory(m_session, m_query);
    if (!rows) return;
    m_rows = std::move(*rows);
    if (m_rows.eof()) return setWindowTitle(Title + NoRowsNote);
    showLoans(started);
}

void JylsQueryFrm::emptyResult()
{
    setWindowTitle(Title);
    for (int box = ReaderName; box < ReaderCode; ++box)
        Text1[box].clear();
    MSHFlexGrid1.setUp(BlankRows, Format);
    m_rows = {};
}

/// The catalogue of the first line follows the scanner alone; after the button it waits for a click.
void JylsQueryFrm::showLoans(Started started)
{
    {
        const GridModel::Filling filling(MSHFlexGrid1.cells());
        MSHFlexGrid1.bind(m_rows);
        MSHFlexGrid1.setFormatString(Format);
    }
    MSHFlexGrid1.setRow(1);
    MSHFlexGrid1.scrollToTop();
    showReader(MSHFlexGrid1.TextMatrix(1, ReaderColumn));
    if (started == Started::ByEnter) showCatalogue(MSHFlexGrid1.TextMatrix(1, CopyColumn));
}

void JylsQueryFrm::showReader(const QString& readercode)
{
    const HistoryReader reader = historyReader(m_session, readercode);
    Text1[ReaderName].setText(reader.name);
    Text1[Reader].setText(reader.readercode);
}

void JylsQueryFrm::showCatalogue(const QString& barcode)
{
    const Catalogue catalogue = catalogueOf(m_session, barcode);
    for (std::size_t field = 0; field < catalogue.size(); ++field)
        Text1[FirstField + int(field)].setText(catalogue[field]);
}

void JylsQueryFrm::showLoan(int row)
{
    if (MSHFlexGrid1.TextMatrix(1, LentColumn).isEmpty()) return;
    showCatalogue(MSHFlexGrid1.TextMatrix(row, CopyColumn));
    showReader(MSHFlexGrid1.TextMatrix(row, ReaderColumn));
}

/// The card of the loan's reader, as long as there is one.
void JylsQueryFrm::openReader(int row)
{
    const QString readercode = MSHFlexGrid1.TextMatrix(row, ReaderColumn);
    if (!historyReader(m_session, readercode).name.isEmpty())
        m_place.host.openScreen(u"DzaddFrm"_s, readercode);
}

void JylsQueryFrm::print()
{
    if (!m_place.formPrinter.isUpright())
        return m_session.prompt.inform(u"请用A4纸，并把打印机设为纵向打印"_s, OperationTitle);
    if (MSHFlexGrid1.TextMatrix(1, 1).isEmpty())
        return m_session.prompt.inform(u"请先检索再打印"_s, OperationTitle);
    printHistory(m_place.reports, m_rows, m_query);
    closeScreen(*this);
}

} // namespace quilla
