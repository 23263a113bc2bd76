#include "output/report_designs.h"

namespace quilla {

namespace {

using enum Content;

ReportDesign fines()
{
    return {
        .name = u"FkDataReport"_s,
        .title = u"罚款统计一览表"_s,
        .paper = Paper::Wide,
        .Section4 = {heading(u"罚款统计一览表"_s)},
        .Section1 = {{u"读者证号"_s, u"readercode"_s, Code}, {u"姓  名"_s, u"name"_s, Name},
            {u"条形码"_s, u"barcode"_s, Code}, {u"书      名"_s, u"bookname"_s},
            {u"实罚金额"_s, u"sfmoney"_s, Money}, {u"罚款日期"_s, u"opratedate"_s, Date},
            {u"操作员"_s, u"oprater"_s, Name}, {u"罚款原因"_s, u"cause"_s, Word}},
        .Section3 = dateAndPages(),
        .totalCaption = u"合计："_s,
        .Section5 = {{u"Function1"_s, u"sfmoney"_s}},
    };
}

ReportDesign lostBooks()
{
    return {
        .name = u"DsDataReport"_s,
        .title = u"丢失图书统计表"_s,
        .Section4 = {heading(u"丢失图书统计表"_s)},
        .Section1 = {{u"著 者"_s, u"author"_s}, {u"条形码"_s, u"barcode"_s, Code},
            {u"书      名"_s, u"bookname"_s, Text, 1.6}, {u"价 格"_s, u"price"_s, Money},
            {u"注销原因"_s, u"cause"_s, Word}, {u"注销日期"_s, u"outdate"_s, Date},
            {u"操作员"_s, u"operater"_s, Name}},
        .Section3 = dateAndPages(),
    };
}

/// Its title is the year that a screen gives it.
ReportDesign withdrawals()
{
    const Typeface large = heading({}).labels.front().font;
    return {
        .name = u"PrintBookOut"_s,
        .title = u"藏书注销帐"_s,
        .Section4
        = {run({{u"labYear"_s, u"%i"_s, large}, {u"labTitle"_s, u"藏书注销帐"_s, large, Place::Left, 0}})},
        .Section1 = {{u"书      名"_s, u"bookname"_s, Text, 1.8}, {u"著 者"_s, u"author"_s},
            {u"条码号"_s, u"barcode"_s, Code}, {u"价 格"_s, u"price"_s, Money},
            {u"注销原因"_s, u"cause"_s, Name}},
        .Section3 = dateAndPages(),
        .totalCaption = u"合计："_s,
        .Section5 = {{u"Function1"_s, u"price"_s}},
    };
}

ReportDesign heldBooks()
{
    return {
        .name = u"printYuYueOk"_s,
        .title = u"预约图书回库通知单"_s,
        .paper = Paper::Wide,
        .Section4 = {heading(u"以下预约图书已经还回，欢迎预约者前来借阅"_s)},
        .Section1 = {{u"书      名"_s, u"bookname"_s}, {u"条形码"_s, u"barcode"_s, Code},
            {u"最先预约"_s, u"name"_s, Name}, {u"读者证号"_s, u"readercode"_s, Code},
            {u"预约日期"_s, u"ordertime"_s, Date}, {u"到书日期"_s, u"backdate"_s, Date},
            {u"截止日期"_s, u"oldtime"_s, Date}},
        .Section3 = dateAndPages({u"labPqintRiQi"_s, u"打印日期:%D"_s}),
    };
}

ReportDesign recommendedBooks()
{
    return {
        .name = u"printGoodBook"_s,
        .title = u"本图书馆推荐以下好书，欢迎前来借阅"_s,
        .paper = Paper::Wide,
        .Section4 = {heading(u"本图书馆推荐以下好书，欢迎前来借阅"_s)},
        .Section1 = {{u"索书号"_s, u"ssh"_s, Code}, {u"正题名"_s, u"bookname"_s, Text, 1.8},
            {u"责任者"_s, u"author"_s}, {u"出版者"_s, u"publisher"_s}, {u"出版地"_s, u"pubplace"_s, Name},
            {u"出版日期"_s, u"pubdate"_s, Word}, {u"ISBN"_s, u"isbn"_s, Code, 1.45}},
        .Section3 = dateAndPages(),
    };
}

ReportDesign readers()
{
    return {
        .name = u"readerPrint"_s,
        .title = u"读者资料一览表"_s,
        .Section4 = {heading(u"读者资料一览表"_s)},
        .Section1 = {{u"姓  名"_s, u"name"_s, Name}, {u"性别"_s, u"sex"_s, Word},
            {u"读者证号"_s, u"readercode"_s, Code}, {u"读者类型"_s, u"readerclass"_s, Name},
            {u"办证日期"_s, u"paperdate"_s, Date}, {u"读者单位"_s, u"readunit"_s},
            {u"有效期限"_s, u"term"_s, Date}},
        .Section3 = dateAndPages(),
    };
}

ReportDesign circulationRules()
{
    return {
        .name = u"ltcsPrint"_s,
        .title = u"图书馆图书借阅参数,借阅图书时请参照本规定"_s,
        .paper = Paper::Wide,
        .Section4 = {heading(u"图书馆图书借阅参数,借阅图书时请参照本规定"_s)},
        .Section1 = {{u"读者类型"_s, u"readerclass"_s, Name}, {u"可借册数"_s, u"bookcount"_s, Count},
            {u"可借天数"_s, u"daycount"_s, Count}, {u"可预借册数"_s, u"ordercount"_s, Count},
            {u"可预借天数"_s, u"orderday"_s, Count}, {u"可续借次数"_s, u"recount"_s, Count},
            {u"可续借天数"_s, u"reday"_s, Count}, {u"可无证借书"_s, u"wuzhengjie"_s, Word},
            {u"超期可续借"_s, u"chaoqixujie"_s, Word}, {u"超期罚款倍数"_s, u"fine"_s, Count},
            {u"污损罚款倍数"_s, u"defile"_s, Count}, {u"丢失罚款倍数"_s, u"lost"_s, Count}},
        .Section3 = dateAndPages(),
    };
}

} // namespace

ReportCatalog listReports()
{
    return {
        fines(), lostBooks(), withdrawals(), heldBooks(), recommendedBooks(), readers(), circulationRules()};
}

} // namespace quilla
