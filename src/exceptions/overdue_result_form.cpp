#include "exceptions/overdue_result_form.h"

#include "exceptions/dunning_ops.h"
#include "exceptions/notice_style_form.h"
#include "exceptions/overdue_ops.h"
#include "output/export_ops.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/look/theme.h"

namespace quilla {

namespace {

const QString Format
    = u"读者证号  |读者姓名|读者单位  |<书名              |<著者   |条码号|借书日期  |应还日期  "_s;
constexpr int ColumnsShown = 8; ///< the days overdue are read for the export alone

} // namespace

CQListFrm::CQListFrm(const Workplace& place)
    : SearchedList(place, u"CQListFrm"_s, u"超期统计结果"_s)
    , iRowCount(u"0"_s)
    , CmdList(u"&L 打印报表"_s)
    , CmdPrintRpt(u"&P 打印催还单"_s)
    , cmdToExcel(u"&E 输出到excel"_s)
    , CmdQuit(u"&X 关闭"_s)
{
    QUILLA_NAMES(iRowCount, labRemark, CmdList, CmdPrintRpt, cmdToExcel, CmdQuit);
    setTone(labRemark, Tone::Warning);
    wire();
    Grid1.setUp(2, Format);
    arrange(row(u"记录数："_s, iRowCount, room(16), labRemark), {CmdList, CmdPrintRpt, cmdToExcel, CmdQuit});
}

void CQListFrm::wire()
{
    onClick(CmdList, [this] { PrintOverdueReport(); });
    onClick(CmdPrintRpt, [this] { chooseNotices(); });
    onClick(cmdToExcel, [this] { toExcel(listLayout(ListExport::Overdue), ListStatement, NothingToOutput); });
    onClick(CmdQuit, [this] { closeScreen(*this); });
}

void CQListFrm::loadData(const QString& condition, const QString& order)
{
    const WaitCursor hourglass;
    Grid1.setUp(2, Format);
    iRowCount.setText(u"0"_s);
    m_search = overdueStatistics();
    m_search.condition = condition;
    m_search.order = order;
    ListStatement.clear();
    auto found = rowsFound(m_session, m_search);
    if (!found) return;
    if (!found->eof()) ListStatement = m_search.statement();
    fillGrid(Grid1, *found, {.format = Format, .count = &iRowCount, .countHasCaption = true});
    Grid1.setCols(ColumnsShown);
}

void CQListFrm::PrintOverdueReport()
{
    printOverdue(m_session, m_reports, ListStatement);
}

void CQListFrm::chooseNotices()
{
    if (ListStatement.isEmpty()) return m_session.prompt.inform(NothingForPaper.toString(), OperationTitle);
    ShowStyleFrm style(GroupField, this);
    style.exec();
    if (!GroupField.isEmpty()) PrintDunningNotices(GroupField);
}

void CQListFrm::PrintDunningNotices(const QString& groupField)
{
    labRemark.setText(noticesShownEarlier(m_session, groupField));
    quilla::PrintDunningNotices(m_session, m_reports, groupField, m_search);
}

} // namespace quilla
