#include "output/report_designs.h"

namespace quilla {

namespace {

using enum Content;

constexpr int DaysOfLongestMonth = 31;

/// The caption of the first column is the title that a screen gives.
ReportDesign circulationCounts()
{
    return {
        .name = u"LtTjReport"_s,
        .title = u"流通情况统计表"_s,
        .Section4 = {heading(u"流通情况统计表"_s)},
        .Section1 = {{u"%i"_s, u"ItemKey"_s}, {u"借阅册次"_s, u"JsCount"_s, Count, 2},
            {u"归还册次"_s, u"HsCount"_s, Count, 2}},
        .Section3 = dateAndPages(),
        .totalCaption = u"合计："_s,
        // The counts come without a price, so the first total stays blank; the layout is the suite's.
        .Section5 = {{u"Function1"_s, u"price"_s, u"ItemKey"_s}, {u"Function2"_s, u"JsCount"_s},
            {u"Function3"_s, u"HsCount"_s}},
    };
}

/// The columns of one kind, and a total under each.
void addCounted(ReportDesign& design, const QString& caption, const QString& field)
{
    design.Section1.push_back({caption, field, Count});
    design.Section5.push_back({u"Function%1"_s.arg(design.Section5.size() + 1), field});
}

ReportDesign readerTypesByDay()
{
    ReportDesign design {
        .name = u"ydztjRtp"_s,
        .title = u"各类读者借出统计表"_s,
        .paper = Paper::Wide,
        .Section4 = {heading(u"各类读者借出统计表"_s), run({{ReportLabels::Month, {}}})},
        .Section1 = {{u"读者类型"_s, u"读者类型"_s}},
        .Section3 = dateAndPages(),
        .totalCaption = u"总计"_s,
        .points = 7.5,
    };
    for (int day = 1; day <= DaysOfLongestMonth; ++day)
        addCounted(design, u"%1号"_s.arg(day), u"t%1"_s.arg(day));
    addCounted(design, u"小计"_s, u"小计"_s);
    return design;
}

ReportDesign readersByMonth()
{
    const Typeface large = heading({}).labels.front().font;
    const Typeface kai {u"楷体_GB2312"_s, 11};
    ReportDesign design {
        .name = u"ndztjrpt"_s,
        .title = u"年读者统计表"_s,
        .Section4
        = {run({{u"labTuShuGuan"_s, u"图书馆"_s, {kai.family, large.points, true}},
               {ReportLabels::Year, {}, large}, {u"labTitle"_s, u"年读者统计表"_s, large, Place::Left, 0}}),
            run({{u"labDanWeiMing"_s, u"单位"_s, kai}, {ReportLabels::Unit, {}, {u"宋体"_s, 11}},
                {u"labDuZhe"_s, u"读者"_s, kai, Place::Left, 24},
                {ReportLabels::Type, {}, {u"宋体"_s, 11}}})},
        .Section1 = {{u"读者类型"_s, u"读者类型"_s}, {u"借书证号"_s, u"借书证号"_s, Code}},
        .Section3 = dateAndPages(),
        .totalCaption = u"总计"_s,
        .points = 8,
    };
    addCounted(design, u"小计"_s, u"小计"_s);
    for (const QString& month :
        u"一月,二月,三月,四月,五月,六月,七月,八月,九月,十月,十一月,十二月"_s.split(u','))
        addCounted(design, month, month);
    return design;
}

ReportDesign bookRanking()
{
    return {
        .name = u"JhphbDataReport"_s,
        .title = u"图书借阅排行榜"_s,
        .Section4 = {heading(u"图书借阅排行榜"_s)},
        .Section1 = {{u"榜次"_s, u"榜次"_s, Word}, {u"读者单位"_s, u"读者单位"_s},
            {u"索书号"_s, u"索书号"_s, Code}, {u"正题名"_s, u"正题名"_s, Text, 1.8},
            {u"责任说明"_s, u"责任说明"_s}, {u"借阅次数"_s, u"借阅次数"_s, Count}},
        .Section3 = dateAndPages(),
    };
}

ReportDesign readerRanking()
{
    return {
        .name = u"dzjyphbRpt"_s,
        .title = u"读者借阅排行榜"_s,
        .Section4 = {heading(u"读者借阅排行榜"_s),
            run({{ReportLabels::From, {}}, {u"labZhi"_s, u"至"_s}, {ReportLabels::To, {}}})},
        .Section1 = {{u"榜次"_s, u"榜次"_s, Word}, {u"姓名"_s, u"name"_s, Name},
            {u"读者类型"_s, u"readerclass"_s, Name, 1.5}, {u"所属单位"_s, u"readunit"_s},
            {u"借阅次数"_s, u"jycishu"_s, Count, 1.5}},
        .Section3 = dateAndPages(),
    };
}

} // namespace

ReportCatalog statisticReports()
{
    return {circulationCounts(), readerTypesByDay(), readersByMonth(), bookRanking(), readerRanking()};
}

} // namespace quilla
