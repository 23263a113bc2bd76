#include "output/report_designs.h"

namespace quilla {

namespace {

using enum Content;

ReportDesign openLoans()
{
    return {
        .name = u"JHSKReport"_s,
        .title = u"借书记录统计表"_s,
        .Section4 = {heading(u"借书记录统计表"_s)},
        .Section1 = {{u"借阅证号"_s, u"readercode"_s, Code}, {u"条形码"_s, u"barcode"_s, Code},
            {u"书      名"_s, u"bookname"_s, Text, 1.5}, {u"借书日期"_s, u"orderdate"_s, Date},
            {u"应还日期"_s, u"yhdate"_s, Date}, {u"读者单位"_s, u"readunit"_s}},
        .Section3 = dateAndPages(),
    };
}

ReportDesign loanStatistics()
{
    return {
        .name = u"ZqDataReport"_s,
        .title = u"借书情况统计表"_s,
        .Section4 = {heading(u"借书情况统计表"_s)},
        .Section1 = {{u"姓  名"_s, u"name"_s, Name}, {u"条形码"_s, u"barcode"_s, Code},
            {u"书      名"_s, u"bookname"_s, Text, 1.5}, {u"借书日期"_s, u"orderdate"_s, Date},
            {u"读者单位"_s, u"readunit"_s}, {u"应还日期"_s, u"yhdate"_s, Date}},
        .Section3 = dateAndPages(),
        .totalCaption = u"合计："_s,
        // No select of this list brings a price, so the total stays blank; the layout is the suite's.
        .Section5 = {{u"Function1"_s, u"price"_s, u"yhdate"_s}},
    };
}

ReportDesign finishedLoans()
{
    return {
        .name = u"JHLSDataReport"_s,
        .title = u"借还历史统计表"_s,
        .paper = Paper::Wide,
        .Section4 = {heading(u"借还历史统计表"_s)},
        .Section1 = {{u"姓  名"_s, u"name"_s, Name}, {u"条形码"_s, u"barcode"_s, Code},
            {u"书      名"_s, u"bookname"_s, Text, 2}, {u"借书日期"_s, u"orderdate"_s, Date},
            {u"还书日期"_s, u"backdate"_s, Date}, {u"读者单位"_s, u"readunit"_s},
            {u"操作员"_s, u"operater"_s, Name}},
        .Section3 = dateAndPages(),
    };
}

ReportDesign overdueLoans()
{
    return {
        .name = u"JHSKcqReport"_s,
        .title = u"借书超期统计表"_s,
        .Section4 = {heading(u"借书超期统计表"_s)},
        .Section1 = {{u"书      名"_s, u"bookname"_s, Text, 1.5}, {u"条形码"_s, u"barcode"_s, Code},
            {u"借阅证号"_s, u"readercode"_s, Code}, {u"借书日期"_s, u"orderdate"_s, Date},
            {u"应还日期"_s, u"yhdate"_s, Date}, {u"读者单位"_s, u"readunit"_s},
            {u"天数"_s, u"cqday"_s, Count}},
        .Section3 = dateAndPages(),
    };
}

/// A notice for each reader or unit, on pages of its own; the last column shows the other party.
ReportDesign dunningNotices()
{
    return {
        .name = u"JHSKCQRpt"_s,
        .title = u"催还单"_s,
        .Section1 = {{u"书      名"_s, u"bookname"_s, Text, 1.5}, {u"条形码"_s, u"barcode"_s, Code},
            {u"读者号"_s, u"readercode"_s, Code}, {u"借书日期"_s, u"orderdate"_s, Date},
            {u"应还日期"_s, u"yhdate"_s, Date}, {u"%i"_s, u"iTital"_s}},
        .Section3 = dateAndPages(),
        .group = {{u"JHSKT"_s, {ends({}, {u"labGroupDate"_s, u"%D"_s}), groupHeading(u"GroupKey"_s)}}},
        .isSilent = true,
    };
}

ReportDesign loanHistory()
{
    return {
        .name = u"jylsRpt"_s,
        .title = u"借阅历史统计表"_s,
        .Section4 = {heading(u"借阅历史统计表"_s, ReportLabels::Heading),
            run({{ReportLabels::Kind, u"读者"_s}, {ReportLabels::Code, {}}})},
        .Section1 = {{u"标志"_s, u"标志"_s, Word}, {u"图书条码"_s, u"barcode"_s, Code},
            {u"借书证"_s, u"readercode"_s, Code}, {u"借阅日期"_s, u"orderdate"_s, Date},
            {u"还书日期"_s, u"backdate"_s, Date}, {u"操作员"_s, u"operater"_s, Name}},
        .Section3 = dateAndPages(),
    };
}

/// The session list of the desk.
ReportDesign scans()
{
    return {
        .name = u"ScanReport"_s,
        .title = u"本台今日借还"_s,
        .paper = Paper::Wide,
        .Section4 = {heading(u"本台今日借还"_s)},
        .Section1 = {{u"时间"_s, u"scantime"_s, Date, 0.8}, {u"事项"_s, u"kind"_s, Word},
            {u"条形码"_s, u"barcode"_s, Code}, {u"书      名"_s, u"bookname"_s, Text, 1.5},
            {u"借阅证号"_s, u"readercode"_s, Code}, {u"姓  名"_s, u"name"_s, Name},
            {u"结果"_s, u"result"_s, Text, 1.5}},
        .Section3 = dateAndPages(),
    };
}

} // namespace

ReportCatalog loanReports()
{
    return {openLoans(), loanStatistics(), finishedLoans(), overdueLoans(), dunningNotices(), loanHistory(),
        scans()};
}

} // namespace quilla
