#include "readers/reader_register_form.h"

#include "output/export_ops.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/form/working_progress.h"
#include "readers/batch_unit_form.h"
#include "readers/reader_card_form.h"

#include <QPointer>

namespace quilla {

namespace {

enum Command { Add, Edit, Delete, Search, Lost, DeleteAll, Close };

const QString FilledFormat
    = u"^读者证号|<姓名|^性别|<读者类型|<读者单位|^可借册数|^已借册数|^办证日期|^有效期限|^有效状态"_s;
const QString EmptyFormat
    = u"读者证号|<姓名|^性别|<读者类型|<读者单位|^可借册数|^已借册数|^办证日期|^有效期限|^有效状态"_s;
const std::vector<int> Widths {1400, 1000, 600, 1300, 1800, 850, 850, 1150, 1150, 850}; // twips
constexpr int BlankRows = 20;

const QueryTriple Triple {
    u"readercode,name,sex,readerclass,readunit,bookcount,orderbook,readstatus,paperdate,term"_s,
    u"读者号,姓名,性别,读者类型,读者单位,可借册数,已借册数,有效状态,办证日期,有效期限"_s,
    u"字符,字符,字符,字符,字符,数字,数字,字符,日期,日期"_s};

const QString ChangeUnits = u"批量修改读者单位"_s;

} // namespace

DzglFrm::DzglFrm(const Workplace& place)
    : SearchedList(place, u"DzglFrm"_s, u"读者管理"_s)
    , Label1(u"读 者 管 理"_s)
    , iRowCount(u"0"_s)
    , cmdPrint(u"打印报表(&P)"_s)
    , cmdToExcel(u"输出到excel(&E)"_s)
{
    QUILLA_NAMES(Label1, iRowCount, CmdDzgl, cmdPrint, cmdToExcel);
    setCaptions(CmdDzgl,
        {u"增 加(A)"_s, u"修 改(&E)"_s, u"删 除(&D)"_s, u"查 找(&F)"_s, u"挂 失(&L)"_s, u"成批删除"_s,
            u"关 闭(&Q)"_s});
    Grid1.setHint(u"按“查 找(F)”或 Ctrl+F 查找读者，不设条件即列出全部读者"_s);
    layOut();
    wire();
    Grid1Fresh();
    Grid1.rememberWidths(m_session.settings, u"DzglFrm.Grid1"_s);
}

void DzglFrm::layOut()
{
    QFont font = Label1.font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    Label1.setFont(font);
    Label1.setAlignment(Qt::AlignCenter);
    arrange(column(Label1, Piece(Grid1).grow(), row(u"记录数："_s, iRowCount, stretch()),
        row(stretch(), CmdDzgl[Search], CmdDzgl[Add], CmdDzgl[Edit], CmdDzgl[Delete], CmdDzgl[Lost],
            CmdDzgl[DeleteAll], cmdPrint, cmdToExcel, CmdDzgl[Close])));
}

void DzglFrm::wire()
{
    void (DzglFrm::*const steps[])() {&DzglFrm::addCard, &DzglFrm::editCard, &DzglFrm::deleteCurrent,
        &DzglFrm::query, &DzglFrm::reportLost, &DzglFrm::deleteFound};
    for (int command = Add; command < Close; ++command)
        onClick(CmdDzgl[command], [this, step = steps[command]] { (this->*step)(); });
    onClick(CmdDzgl[Close], [this] { closeScreen(*this); });
    onClick(cmdPrint, [this] { print(); });
    onClick(cmdToExcel, [this] {
        toExcel(listLayout(ListExport::Readers), anyShown() ? readersForOutput(m_search) : QString(),
            NothingToPrint);
    });
    onOpen(Grid1, [this](int) { editCard(); });
    connect(&Grid1, &FlexGrid::insertPressed, this, [this] { addCard(); });
    connect(&Grid1, &FlexGrid::deletePressed, this, [this] { deleteCurrent(); });
    connect(&Grid1, &FlexGrid::findPressed, this, [this] { query(); });
    connect(&Grid1, &FlexGrid::rightReleased, this, [this] { offerBatch(); });
    Grid1.setSortsByCaption(true);
}

void DzglFrm::Grid1Fresh()
{
    iRowCount.setText(u"0"_s);
    Grid1.setUp(BlankRows, EmptyFormat, Widths);
}

void DzglFrm::loadData(const QString& condition, const QString& order)
{
    m_search.condition = condition;
    m_search.order = order;
    if (list()) Grid1.selectKey({});
}

/// False when there is no connection; the screen stays as it was then.
bool DzglFrm::list()
{
    const WaitCursor hourglass;
    const auto listed = listReaders(m_session, m_search, Grid1.cells());
    if (!listed) return false;
    if (listed->found == 0) {
        m_search.condition.clear();
        Grid1Fresh();
        return true;
    }
    iRowCount.setText(QString::number(listed->found));
    Grid1.setFormatString(FilledFormat);
    Grid1.setColWidths(Widths);
    if (!listed->toTell.isEmpty()) m_session.prompt.inform(listed->toTell, OperationTitle);
    return true;
}

void DzglFrm::RefreshReaderList()
{
    refreshAt(currentCode());
}

void DzglFrm::refreshAt(const QString& code)
{
    const GridOrder order = Grid1.order();
    if (!list()) return;
    Grid1.sortBy(order);
    Grid1.selectKey(code);
}

void DzglFrm::addCard()
{
    openEditor(u"A"_s, {});
}

void DzglFrm::editCard()
{
    if (!currentCode().isEmpty()) openEditor(u"E"_s, currentCode());
}

void DzglFrm::openEditor(const QString& mode, const QString& code)
{
    DzaddFrm editor(
        m_session, [this] { RefreshReaderList(); }, this);
    editor.SetEditMode(mode);
    editor.LoadReader(code);
    const bool saved = editor.exec() == QDialog::Accepted;
    refreshAt(saved ? trimBlanks(editor.Text1[CardBox::ReaderCode].text()) : currentCode());
}

/// The next line takes the place of the one that goes.
void DzglFrm::deleteCurrent()
{
    const QString code = currentCode();
    if (code.isEmpty()) return;
    const int row = Grid1.Row();
    const QString next = Grid1.TextMatrix(row + 1 < Grid1.Rows() ? row + 1 : row - 1, ReaderCode);
    if (!deleteReader(m_session, code)) return Grid1.setFocus();
    refreshAt(code);
    if (!sameText(currentCode(), code)) Grid1.selectKey(next);
}

void DzglFrm::query()
{
    find(Triple);
}

void DzglFrm::reportLost()
{
    if (currentCode().isEmpty()) return;
    const int row = Grid1.Row();
    if (reportCardLost(m_session, currentCode())) Grid1.setTextMatrix(row, ReaderState, u"挂失"_s);
}

void DzglFrm::deleteFound()
{
    if (!anyShown()) return;
    WorkingProgress progress(this, CmdDzgl[DeleteAll].text());
    const QPointer<DzglFrm> there(this); // it may be closed meanwhile
    deleteReaders(m_session, progress, codesFound(), [there] {
        if (there) there->RefreshReaderList();
    });
}

void DzglFrm::offerBatch()
{
    const bool filled = anyShown() && !Grid1.current(Grid1.Col()).isEmpty();
    if (filled && Menu.Popup({ChangeUnits}) == 1) changeUnit();
}

/// The dialog is gone before the walk begins: the screen that owns it may be closed meanwhile.
QString DzglFrm::askForUnit()
{
    updateAll dialog(this);
    dialog.exec();
    return dialog.Text1.text();
}

void DzglFrm::changeUnit()
{
    const QString unit = askForUnit();
    if (unit.isEmpty()) return;
    WorkingProgress progress(this, ChangeUnits);
    const QPointer<DzglFrm> there(this);
    if (changeUnits(m_session, progress, codesFound(), unit) && there) there->RefreshReaderList();
}

void DzglFrm::print()
{
    const bool any = anyShown() || !Grid1.TextMatrix(1, ReaderName).isEmpty();
    printReaders(m_session, m_reports, m_search, any);
}

QStringList DzglFrm::codesFound() const
{
    QStringList codes;
    for (int row = 1; row < Grid1.Rows() && !Grid1.TextMatrix(row, ReaderCode).isEmpty(); ++row)
        codes.append(Grid1.TextMatrix(row, ReaderCode));
    return codes;
}

} // namespace quilla
