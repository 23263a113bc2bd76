#include "exceptions/lost_list_form.h"

#include "exceptions/lost_book_ops.h"
#include "exceptions/lost_editor.h"
#include "platform/ui/form/wait_cursor.h"

namespace quilla {

namespace {

/// The title takes what is left.
const WidthRule Widths {.spareSmall = 80,
    .spareLarge = 360,
    .parts = 0,
    .columns = {{0, 0, 0, 1200, false}, {1, 1, 0, -7200, true}, {2, 6, 0, 1200, false}}};

const SortedListPlan& plan()
{
    static const SortedListPlan plan {
        .name = u"lostMangerfrm"_s,
        .title = u"图书丢失管理"_s,
        .everything = lostBookList(),
        .format = u"^条形码|<书     名|^读者单位|^读者证号|^读者姓名|^应罚金额|^登记日期"_s,
        .money = {LostColumn::Amount},
        .widths = Widths,
        .triple = {u"barcode,bookname,readunit,readercode,name,yfjine,createdate"_s,
            u"条形码,书名,读者单位,读者证号,读者姓名,应罚金额,登记日期"_s,
            u"字符,字符,字符,字符,字符,数字,日期"_s, u"统计条件"_s},
        .sorting = {{u"条 形 码"_s, u"barcode"_s}, {u"书    名"_s, u"bookname"_s},
            {u"读者单位"_s, u"readunit"_s}, {u"读者证号"_s, u"readercode"_s}, {u"读者姓名"_s, u"name"_s},
            {u"应罚金额"_s, u"yfjine"_s}, {u"登记日期"_s, u"createdate"_s}},
        .captions = {u"&S 简单排序"_s, u"&P 打印"_s, u"&X 关闭"_s, u"&F 查找"_s, u"&A 基本操作"_s},
    };
    return plan;
}

} // namespace

/// The register has no report: its print button stands there for the suite's other programs and does nothing.
lostMangerfrm::lostMangerfrm(const Workplace& place)
    : SortedList(place, plan())
{
    onClick(Command1[Own], [this] { offerActions(); });
    connect(&Grid1, &FlexGrid::rightReleased, this, [this] { offerActions(); });
    connect(&Grid1, &FlexGrid::insertPressed, this, [this] { edit(u"A"_s); });
    connect(&Grid1, &FlexGrid::deletePressed, this, [this] { DeleteLostEntries(); });
    onOpen(Grid1, [this](int) { edit(u"E"_s); });
}

void lostMangerfrm::offerActions()
{
    switch (Menu.Popup({u"增加"_s, u"-"_s, u"删除"_s, u"-"_s, u"修改"_s})) {
    case 1:
        return edit(u"A"_s);
    case 3:
        return DeleteLostEntries();
    case 5:
        return edit(u"E"_s);
    }
}

/// Opens on an empty list too.
void lostMangerfrm::edit(const QString& mode)
{
    lostMangerAddfrm editor(m_session, mode, this);
    if (mode == u"E") editor.LoadLostEntryFromGrid(Grid1);
    editor.Added = [this](const QStringList& line) { addLine(line); };
    editor.Dated = [this](const QString& date) { Grid1.setTextMatrix(Grid1.Row(), LostColumn::Date, date); };
    editor.exec();
    Grid1.setFocus();
}

/// The list is not read anew: the entry stands at its end whatever the list was narrowed to.
void lostMangerfrm::addLine(const QStringList& line)
{
    Grid1.cells().addRow(line);
    showCount(lines());
}

void lostMangerfrm::DeleteLostEntries()
{
    if (!anyShown() || !confirmLostDeletion(m_session)) return;
    const WaitCursor hourglass;
    const int first = std::min(Grid1.Row(), Grid1.RowSel());
    int row = std::max(Grid1.Row(), Grid1.RowSel());
    QStringList barcodes;
    for (int line = row; line >= first; --line)
        barcodes.append(Grid1.TextMatrix(line, LostColumn::Barcode));
    deleteLostEntries(m_session, barcodes, [this, &row] { removeLine(row--); });
    Grid1.setRow(std::min(first, lines()));
}

void lostMangerfrm::removeLine(int row)
{
    Grid1.cells().removeRow(row);
    const bool one = lines() == 1;
    showCount(one && !anyShown() ? 0 : lines());
}

} // namespace quilla
