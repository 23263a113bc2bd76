#include "app/gallery_samples_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"
#include "output/report_designs.h"
#include "reservations/return_notice_ops.h"

namespace quilla {

namespace {

struct Source {
    QString statement;
    ReportTexts texts {};
};

/// The statements with which the screens fill their reports, cut to a few pages.
QHash<QString, Source> sources(const QString& today)
{
    const QString notices
        = u" SHAPE {select readunit+' 超期图书如下：' as GroupKey,readercode,name,name as "
          u"itital,readunit,barcode,"
          "bookname,orderdate,yhdate from JhskCqV order by readunit}  AS JHSKT COMPUTE JHSKT BY 'GroupKey'"_s;
    const QString loans = u"select top 120 * from "_s;
    return {
        {u"ZqDataReport"_s,
            {u"select top 120 bookname,author,barcode,orderdate,yhdate,name,readunit from JhskV"_s}},
        {u"FkDataReport"_s, {loans + u"FkkV order by opratedate"_s}},
        {u"DsDataReport"_s, {loans + u"BookOut"_s}},
        {u"JHLSDataReport"_s, {loans + u"JhslskV"_s}},
        {u"PrintBookOut"_s, {loans + u"BookOut"_s, {u"2026年度"_s}}},
        {u"LtTjReport"_s,
            {u"select readunit as ItemKey,count(*) as JsCount,count(*)/2 as HsCount from JhslskV group by readunit"_s,
                {u"读者单位"_s}}},
        {u"JHSKReport"_s, {loans + u"JhskV"_s}},
        {u"JHSKCQRpt"_s, {notices, {u"读者姓名"_s}}},
        {u"JHSKcqReport"_s, {loans + u"JhskCqV order by cqday desc"_s}},
        {u"ydztjRtp"_s, {u"exec procydztj '2026','3'"_s, {{}, {{ReportLabels::Month, u"2026年3月"_s}}}}},
        {u"JhphbDataReport"_s, {u"exec procjhphb '全部','40','2000-01-01','2030-12-31','全部' "_s}},
        {u"ndztjrpt"_s,
            {u"exec procndztj '2026','全部','全部'"_s,
                {{},
                    {{ReportLabels::Year, u"2026"_s}, {ReportLabels::Unit, u"全部"_s},
                        {ReportLabels::Type, u"全部"_s}}}}},
        {u"printYuYueOk"_s, {returnNotices(today)}},
        {u"printGoodBook"_s,
            {u"select top 60 classcode + '/' +convert(varchar,zch)+fzqfh as ssh,bookname,author,publisher,"
             "pubplace,pubdate,isbn from zsk"_s}},
        {u"dzjyphbRpt"_s,
            {u"exec procdzjyphb  '全部','40','2000-01-01','2030-12-31'"_s,
                {{}, {{ReportLabels::From, u"2000年01月01日"_s}, {ReportLabels::To, u"2030年12月31日"_s}}}}},
        {u"readerPrint"_s, {loans + u"dzk"_s}},
        {u"ltcsPrint"_s,
            {u"Select readerclass,daycount,bookcount,fine,defile,lost,recount,reday,case ifcanre when 0 then "
             "'否' when 1 then '是' end as chaoqixujie,case wuzheng when 0 then '否' when 1 then '是' end as "
             "wuzhengjie,orderday,ordercount from jycs"_s}},
    };
}

/// The history of the reader who has the most books.
Source historySource(ResumingWork& work)
{
    const Recordset reader
        = work.select(u"select top 1 readercode from dzk order by orderbook desc,readercode");
    const QString code = reader.eof() ? QString() : reader.field(0).text();
    return {u"exec procjylstj 17,'','%1'"_s.arg(doubled(code)),
        {{}, {{ReportLabels::Kind, u"读者"_s}, {ReportLabels::Code, code}}}};
}

} // namespace

std::vector<ReportSample> reportSamples(Session& session)
{
    std::vector<ReportSample> samples;
    ResumingWork work(session);
    if (!work) return samples;
    Connection& conn = work.connection();
    QHash<QString, Source> statements = sources(isoDate(GetServerDate(session)));
    statements.insert(u"jylsRpt"_s, historySource(work));
    for (const ReportDesign& design : reportDesigns()) {
        const Source source = statements.value(design.name);
        work.attempt([&] {
            Recordset rows
                = design.group.empty() ? conn.open(source.statement) : conn.openShaped(source.statement);
            samples.push_back({design, std::move(rows), source.texts});
        });
    }
    return samples;
}

} // namespace quilla
