#include "output/export_layouts.h"

namespace quilla {

namespace {

constexpr int DaysOfLongestMonth = 31;

ExportLayout loanHistoryLayout()
{
    return {u"借还历史统计表"_s,
        {{u"正题名"_s, u"bookname"_s, 40}, {u"条形码"_s, u"barcode"_s, 10}, {u"读者姓名"_s, u"name"_s, 10},
            {u"读者单位"_s, u"readunit"_s, 25}, {u"借书日期"_s, u"orderdate"_s, 10},
            {u"还书日期"_s, u"backdate"_s, 10}, {u"操作员"_s, u"operater"_s, 10}}};
}

ExportLayout openLoansLayout()
{
    return {u"借书情况统计表"_s,
        {{u"正题名"_s, u"bookname"_s, 40}, {u"条形码"_s, u"barcode"_s, 10}, {u"读者姓名"_s, u"name"_s, 10},
            {u"读者单位"_s, u"readunit"_s, 25}, {u"借书日期"_s, u"orderdate"_s, 10},
            {u"应还日期"_s, u"yhdate"_s, 10}}};
}

ExportLayout finesLayout()
{
    return {u"罚款统计一览表"_s,
        {{u"读者证号"_s, u"readercode"_s, 13}, {u"读者姓名"_s, u"name"_s, 10},
            {u"条形码"_s, u"barcode"_s, 13}, {u"正题名"_s, u"bookname"_s, 40},
            {u"罚款原因"_s, u"cause"_s, 10}, {u"实罚金额"_s, u"sfmoney"_s, 10, CellFormat::Money},
            {u"罚款日期"_s, u"opratedate"_s, 10}, {u"操作员"_s, u"oprater"_s, 10}}};
}

ExportLayout lostBooksLayout()
{
    return {u"丢失图书统计表"_s,
        {{u"正题名"_s, u"bookname"_s, 40}, {u"责任者"_s, u"author"_s, 10}, {u"条形码"_s, u"barcode"_s, 13},
            {u"图书价格"_s, u"price"_s, 10, CellFormat::Money}, {u"注销日期"_s, u"outdate"_s, 10},
            {u"注销原因"_s, u"cause"_s, 10}, {u"操作员"_s, u"operater"_s, 10}}};
}

ExportLayout overdueLayout()
{
    return {u"借书超期统计表"_s,
        {{u"读者证号"_s, u"readercode"_s, 13}, {u"读者单位"_s, u"readunit"_s, 13},
            {u"正题名"_s, u"bookname"_s, 40}, {u"条形码"_s, u"barcode"_s, 10},
            {u"借书日期"_s, u"orderdate"_s, 10}, {u"应还日期"_s, u"yhdate"_s, 13},
            {u"超期天数"_s, u"cqday"_s, 13}}};
}

ExportLayout readersLayout()
{
    return {u"读者资料一览表"_s,
        {{u"读者证号"_s, u"readercode"_s, 15}, {u"姓名"_s, u"name"_s, 12}, {u"性别"_s, u"sex"_s, 7},
            {u"读者类型"_s, u"readerclass"_s, 10}, {u"读者单位"_s, u"readunit"_s, 20},
            {u"办证日期"_s, u"paperdate"_s, 12}, {u"有效期限"_s, u"term"_s, 12}}};
}

ExportLayout withdrawalsLayout()
{
    return {u"藏书注销帐"_s,
        {{u"正题名"_s, u"bookname"_s, 40}, {u"著者"_s, u"author"_s, 10}, {u"条形码"_s, u"barcode"_s, 13},
            {u"价格"_s, u"price"_s, 10, CellFormat::Money}, {u"注销原因"_s, u"cause"_s, 10}}};
}

QString yearText(int year)
{
    return QString::number(year) + u'年';
}
QString monthText(int year, int month)
{
    return yearText(year) + QString::number(month) + u'月';
}

std::vector<ExportColumn> columns(const QStringList& captions, double width)
{
    std::vector<ExportColumn> list;
    for (const QString& caption : captions)
        list.push_back({caption, {}, width});
    return list;
}

ExportLayout workloadLayout(const QString& title, const QString& first)
{
    ExportLayout layout {title,
        columns(
            {first, u"借出册数"_s, u"还回册数"_s, u"过期册数"_s, u"罚款金额"_s, u"读者人次"_s, u"注销册数"_s},
            10)};
    layout.columns[4].format = CellFormat::Money;
    return layout;
}

ExportLayout classesLayout(const QString& title, const QString& first)
{
    QStringList captions {first};
    for (const QChar letter : u"ABCDEFGHIJKNOPQRSTUVXZ"_s)
        captions.append(letter + u"类"_s);
    return {title, columns(captions << u"小计"_s, 5)};
}

} // namespace

QStringList ExportLayout::captions() const
{
    QStringList list;
    for (const ExportColumn& column : columns)
        list.append(column.caption);
    return list;
}

std::vector<double> ExportLayout::widths() const
{
    std::vector<double> list;
    for (const ExportColumn& column : columns)
        list.push_back(column.width);
    return list;
}

ExportLayout listLayout(ListExport list)
{
    switch (list) {
    case ListExport::Readers:
        return readersLayout();
    case ListExport::Withdrawals:
        return withdrawalsLayout();
    case ListExport::LoanHistory:
        return loanHistoryLayout();
    case ListExport::OpenLoans:
        return openLoansLayout();
    case ListExport::Fines:
        return finesLayout();
    case ListExport::LostBooks:
        return lostBooksLayout();
    case ListExport::Overdue:
        break;
    }
    return overdueLayout();
}

ExportLayout monthlyWorkloadLayout(int year, int month)
{
    return workloadLayout(monthText(year, month) + u"流通工作量统计报表"_s, u"第几天"_s);
}

ExportLayout yearlyWorkloadLayout(int year)
{
    return workloadLayout(yearText(year) + u"流通工作量统计报表"_s, u"月份"_s);
}

ExportLayout monthlyClassesLayout(int year, int month)
{
    return classesLayout(monthText(year, month) + u"图书借出统计报表"_s, u"第几天"_s);
}

ExportLayout yearlyClassesLayout(int year)
{
    return classesLayout(yearText(year) + u"图书借出分类统计报表"_s, u"月份"_s);
}

ExportLayout monthlyReadersLayout(int year, int month)
{
    QStringList captions {u"读者类型"_s, u"小计"_s};
    for (int day = 1; day <= DaysOfLongestMonth; ++day)
        captions.append(QString::number(day) + u'号');
    ExportLayout layout {monthText(year, month) + u"读者借阅统计报表"_s, columns(captions, 5)};
    layout.columns[0].width = 10;
    layout.columns[0].format = CellFormat::Text;
    return layout;
}

ExportLayout yearlyReadersLayout(int year)
{
    ExportLayout layout {yearText(year) + u"读者借阅统计报表"_s,
        {{u"读者单位"_s, {}, 15, CellFormat::Text}, {u"读者姓名"_s, {}, 10, CellFormat::Text},
            {u"读者类型"_s, {}, 13, CellFormat::Text}, {u"借书证号"_s, {}, 10, CellFormat::Text}}};
    for (const ExportColumn& column :
        columns({u"小计"_s, u"一月"_s, u"二月"_s, u"三月"_s, u"四月"_s, u"五月"_s, u"六月"_s, u"七月"_s,
                    u"八月"_s, u"九月"_s, u"十月"_s, u"十一月"_s, u"十二月"_s},
            7))
        layout.columns.push_back(column);
    return layout;
}

} // namespace quilla
