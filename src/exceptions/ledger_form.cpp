#include "exceptions/ledger_form.h"

#include "exceptions/ledger_editor.h"
#include "exceptions/ledger_ops.h"
#include "output/export_ops.h"
#include "platform/ui/form/wait_cursor.h"

namespace quilla {

namespace {

const QString Format
    = u"^注销编号|^注销日期   |书名                |<著  者  |^条码号    |^价  格|^注销原因 |^操作员 |<备  注       "_s;
const QueryTriple Triple {u"bookname,author,barcode,cause,outdate,operater"_s,
    u"书名,作者,条码号,注销原因,注销日期,登记员"_s, u"字符,字符,字符,字符,日期,字符"_s};
constexpr int PresetField = 2; ///< the barcode
constexpr int PriceColumn = 5;

} // namespace

BookOutFrm::BookOutFrm(const Workplace& place)
    : SearchedList(place, u"BookOutFrm"_s, u"藏书注销登记"_s)
    , CmdFind(u"&F 查找"_s)
    , CmdQuery(u"&V 检索"_s)
    , CmdAdd(u"&A 登记"_s)
    , CmdPrint(u"&P 打印"_s)
    , cmdToExcel(u"&E 输出到excel"_s)
    , CmdQuit(u"&X 关闭"_s)
{
    QUILLA_NAMES(Combo1, Text1, CmdFind, CmdQuery, CmdAdd, CmdPrint, cmdToExcel, CmdQuit, iRec);
    Combo1.addItems(ledgerFindFields());
    Combo1.setCurrentIndex(PresetField);
    Combo1.setAccessibleName(u"查找项目"_s);
    Text1.setAccessibleName(u"查找内容"_s);
    Text1.setToolTip(u"'%'代表全部记录"_s);
    Text1.setHighlighted(true);
    layOut();
    wire();
    loadData({}, {});
}

void BookOutFrm::layOut()
{
    arrange(column(row(Combo1, Piece(Text1).grow(), CmdFind, CmdQuery), Piece(Grid1).grow(),
        row(u"记录数："_s, iRec, stretch(), CmdAdd, CmdPrint, cmdToExcel, CmdQuit)));
}

void BookOutFrm::wire()
{
    onClick(CmdFind, [this] { FindInLedger(); });
    onClick(CmdQuery, [this] { query(); });
    onClick(CmdAdd, [this] { add(); });
    onClick(CmdPrint, [this] { PrintLedger(); });
    onClick(cmdToExcel, [this] {
        toExcel(listLayout(ListExport::Withdrawals), anyShown() ? ledgerForExport(m_search) : QString(),
            NothingToOutput);
    });
    onClick(CmdQuit, [this] { closeScreen(*this); });
    onEnter(Text1, [this] {
        if (!Text1.text().isEmpty()) Grid1.setFocus();
        FindInLedger();
    });
    onOpen(Grid1, [this](int row) { edit(row); });
    connect(&Grid1, &FlexGrid::insertPressed, this, [this] { add(); });
    connect(&Grid1, &FlexGrid::findPressed, this, [this] { query(); });
    connect(&Grid1, &FlexGrid::rightReleased, this, [this](int row) { offerRestoration(row); });
}

/// The grid is emptied before the connection is opened.
void BookOutFrm::loadData(const QString& condition, const QString& order)
{
    const WaitCursor hourglass;
    m_search = ledgerList();
    m_search.condition = condition;
    m_search.order = order;
    Grid1.setUp(2, Format);
    iRec.setText(u"0"_s);
    auto found = rowsFound(m_session, m_search);
    if (!found) return;
    fillGrid(
        Grid1, *found, {.format = Format, .money = {PriceColumn}, .count = &iRec, .countHasCaption = true});
    for (int row = 1; row < Grid1.Rows(); ++row)
        Grid1.cells().setRowData(row, Grid1.TextMatrix(row, 0).toLongLong());
}

void BookOutFrm::ReloadLedger()
{
    const QString id = Grid1.current(0);
    loadData(m_search.condition, m_search.order);
    Grid1.selectKey(id);
}

void BookOutFrm::FindInLedger()
{
    if (Combo1.currentText().isEmpty() || Text1.text().isEmpty()) return Text1.setFocus();
    loadData(ledgerFindCondition(Combo1.currentIndex(), Text1.text()), LedgerFindOrder.toString());
}

void BookOutFrm::query()
{
    find(Triple);
}

void BookOutFrm::add()
{
    AddBookOutFrm editor(m_session, this);
    editor.SetDataMode(u"A"_s);
    editor.InfoLoad(0);
    run(editor);
}

void BookOutFrm::edit(int row)
{
    const qint64 id = Grid1.cells().RowData(row);
    if (id <= 0) return;
    AddBookOutFrm editor(m_session, this);
    editor.SetDataMode(u"E"_s);
    editor.InfoLoad(id);
    run(editor);
}

void BookOutFrm::run(AddBookOutFrm& editor)
{
    editor.exec();
    ReloadLedger();
}

void BookOutFrm::offerRestoration(int row)
{
    Grid1.setRow(row);
    if (Menu.Popup({u"恢复注销"_s}) == 1) RestoreWithdrawnCopy();
}

void BookOutFrm::RestoreWithdrawnCopy()
{
    if (currentId() <= 0) return;
    restoreWithdrawnCopy(m_session, currentId());
    ReloadLedger();
}

void BookOutFrm::PrintLedger()
{
    printLedger(m_session, m_reports, m_search, anyShown());
}

} // namespace quilla
