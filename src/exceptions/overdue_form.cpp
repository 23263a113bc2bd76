#include "exceptions/overdue_form.h"

#include "exceptions/dunning_ops.h"
#include "exceptions/overdue_ops.h"
#include "output/export_ops.h"

namespace quilla {

namespace {

/// The title takes what is left.
const WidthRule Widths {.spareSmall = 80,
    .spareLarge = 360,
    .parts = 0,
    .columns = {{0, 0, 0, 1200, false}, {1, 1, 0, -8400, true}, {2, 7, 0, 1200, false}}};

const SortedListPlan& plan()
{
    static const SortedListPlan plan {
        .name = u"ChaoQifrm"_s,
        .title = u"超期书刊管理"_s,
        .everything = overdueList(),
        .format = u"^条形码|<书     名|^读者单位|^读者证号|^读者姓名|^借书日期|^应还日期|>超期天数"_s,
        .money = {},
        .widths = Widths,
        .triple = {u"barcode,bookname,readunit,readercode,name,orderdate,yhdate,cqday"_s,
            u"条形码,书名,读者单位,读者证号,读者姓名,借书日期,应还日期,超期天数"_s,
            u"字符,字符,字符,字符,字符,日期,日期,数字"_s, u"统计条件"_s},
        .sorting = {{u"条 形 码"_s, u"barcode"_s}, {u"书    名"_s, u"bookname"_s},
            {u"读者单位"_s, u"readunit"_s}, {u"读者证号"_s, u"readercode"_s}, {u"读者姓名"_s, u"name"_s},
            {u"借书日期"_s, u"orderdate"_s}, {u"应还日期"_s, u"yhdate"_s}, {u"超期天数"_s, u"cqday"_s}},
        .captions = {u"&S 简单排序"_s, u"&P 打印"_s, u"&X 关闭"_s, u"&F 查找"_s, u"&E 输出到excel"_s},
    };
    return plan;
}

} // namespace

ChaoQifrm::ChaoQifrm(const Workplace& place)
    : SortedList(place, plan())
{
    onClick(Command1[Print], [this] { offerPrinting(); });
    connect(&Grid1, &FlexGrid::rightReleased, this, [this] { offerPrinting(); });
    onClick(Command1[Own], [this] {
        toExcel(
            listLayout(ListExport::Overdue), anyShown() ? m_search.statement() : QString(), NothingToOutput);
    });
}

void ChaoQifrm::offerPrinting()
{
    switch (Menu.Popup({u"超期书刊列表"_s, u"-"_s, u"个人催还单据"_s, u"-"_s, u"集体催还单据"_s})) {
    case 1:
        return PrintOverdueList();
    case 3:
        return PrintDunningNotices(u"readercode"_s);
    case 5:
        return PrintDunningNotices(u"readunit"_s);
    }
}

void ChaoQifrm::PrintOverdueList()
{
    printOverdue(m_session, m_reports, m_search.statement());
}

void ChaoQifrm::PrintDunningNotices(const QString& groupField)
{
    labRemark.setText(noticesShownEarlier(m_session, groupField));
    quilla::PrintDunningNotices(m_session, m_reports, groupField, m_search);
}

} // namespace quilla
