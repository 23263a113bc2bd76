#include "statistics/loan_count_ops.h"

#include "output/print_ops.h"
#include "platform/core/date_box.h"

namespace quilla {

namespace {

/// One way to count: "<head><loans><middle><returns><tail>".
struct Variant {
    QString head;
    QString loans;
    QString middle;
    QString returns;
    QString tail;
    QString group; ///< at the end of each of the two inner selects
    QString reportTitle;
    bool limitsInside; ///< whether the condition names tables of the inner selects
};

/// The readers stand under their names, though the report calls the column by their codes: that is how the
/// report has always looked.
const std::vector<Variant>& variants()
{
    static const std::vector<Variant> list {
        {u"select DZK.name as ItemKey,JHKVR.JsCount,JHLSKVR.HsCount from (DZK left join ("_s,
            u"select readercode,count(*) as JsCount from JHK"_s,
            u") AS JHKVR on DZK.readercode=JHKVR.readercode) left join ("_s,
            u"select readercode,count(*) as HsCount from JHSLSK"_s,
            u") AS JHLSKVR on DZK.readercode=JHLSKVR.readercode"_s, u" Group by readercode"_s, u"读者证号"_s,
            false},
        {u"select DZDW.readunit as ItemKey,JHKVR.JsCount,JHLSKVR.HsCount from (DZDW left join ("_s,
            u"select DZK.readunit,count(*) as JsCount from (JHK left join DZK on JHK.readercode=DZK.readercode)"_s,
            u") AS JHKVR on DZDW.readunit=JHKVR.readunit) left join ("_s,
            u"select DZK.readunit,count(*) as HsCount from (JHSLSK left join DZK on JHSLSK.readercode=DZK.readercode)"_s,
            u") AS JHLSKVR on DZDW.readunit=JHLSKVR.readunit"_s, u" Group by DZK.readunit"_s, u"读者单位"_s,
            true},
        {u"select DZLX.readerclass as ItemKey,JHKVR.JsCount,JHLSKVR.HsCount from (DZLX left join ("_s,
            u"select DZK.readerclass,count(*) as JsCount from (JHK left join DZK on JHK.readercode=DZK.readercode)"_s,
            u") AS JHKVR on DZLX.readerclass=JHKVR.readerclass) left join ("_s,
            u"select DZK.readerclass,count(*) as HsCount from (JHSLSK left join DZK on JHSLSK.readercode=DZK.readercode)"_s,
            u") AS JHLSKVR on DZLX.readerclass=JHLSKVR.readerclass"_s, u" Group by DZK.readerclass"_s,
            u"读者类型"_s, true},
        {u"select ZSK.bookname as ItemKey,JHKVB.JsCount,JHLSKVB.HsCount from (ZSK left join ("_s,
            u"select ZSK.zskid,count(*) as JsCount from JHK left join (SCK left join ZSK on SCK.zskid=ZSK.zskid and (sck.bookstatus<>'丢失' and  sck.bookstatus<>'注销')) on JHK.barcode=SCK.barcode"_s,
            u") AS JHKVB on zsk.zskid=JHKVB.zskid) left join ("_s,
            u"select ZSK.zskid,count(*) as HsCount from JHSLSK left join (SCK left join ZSK on SCK.zskid=ZSK.zskid and (sck.bookstatus<>'丢失' and  sck.bookstatus<>'注销')) on JHSLSK.barcode=SCK.barcode"_s,
            u") AS JHLSKVB on zsk.zskid=JHLSKVB.zskid"_s, u" Group by ZSK.zskid"_s, u"书名"_s, true},
        {u"select SCK.barcode as ItemKey,JHKVB.JsCount,JHLSKVB.HsCount from (SCK left join ("_s,
            u"select barcode,count(*) as JsCount from JHK"_s,
            u") AS JHKVB on sck.barcode=JHKVB.barcode) left join ("_s,
            u"select barcode,count(*) as HsCount from JHSLSK"_s,
            u") AS JHLSKVB on sck.barcode=JHLSKVB.barcode"_s, u" Group by barcode"_s, u"条码号"_s, false},
    };
    return list;
}

const Variant& variantOf(CountBy by)
{
    return variants()[std::size_t(by)];
}

QString inner(const QString& select, const QString& condition, const QString& group)
{
    return select + (condition.isEmpty() ? QString() : u" where "_s + condition) + group;
}

/// The loans, or the returns, between the dates.
QString within(const QString& field, const std::optional<DateLimits>& dates)
{
    return dates ? u"(%1 between '%2' And '%3')"_s.arg(field, dates->from, dates->to) : QString();
}

QString joined(const QString& first, const QString& second)
{
    return first.isEmpty() || second.isEmpty() ? first + second : first + u" And "_s + second;
}

} // namespace

const QueryTriple& countTriple(CountBy by)
{
    static const QueryTriple readers {u"dzk.readercode,dzk.name,dzk.readunit,dzk.readerclass"_s,
        u"读者证号,姓名,读者单位,读者类型"_s, u"字符,字符,字符,字符"_s};
    static const QueryTriple titles {
        u"zsk.bookname,zsk.author,zsk.classcode"_s, u"书名,著者,分类号"_s, u"字符,字符,字符"_s};
    static const QueryTriple copies {
        u"sck.barcode,sck.rollcode,sck.bookplace"_s, u"条码号,卷次,藏址"_s, u"字符,字符,字符"_s};
    if (by == CountBy::Title) return titles;
    return by == CountBy::Copy ? copies : readers;
}

QString countStatement(CountBy by, const QString& condition, const std::optional<DateLimits>& dates)
{
    const Variant& variant = variantOf(by);
    const QString innerCondition = variant.limitsInside ? condition : QString();
    const QString outerCondition = variant.limitsInside ? QString() : condition;
    const QString loanDates = within(u"orderdate"_s, dates);
    const QString returnDates = within(u"backdate"_s, dates);
    const QString borrowCondition = joined(loanDates, innerCondition);
    const QString returnCondition = joined(returnDates, innerCondition);
    const QString statement = variant.head + inner(variant.loans, borrowCondition, variant.group)
        + variant.middle + inner(variant.returns, returnCondition, variant.group) + variant.tail;
    return outerCondition.isEmpty() ? statement : statement + u" where "_s + outerCondition;
}

bool reportCounts(Session& session, ReportViewer& reports, CountBy by, const QString& statement)
{
    return printList(session, reports,
        {.design = u"LtTjReport"_s,
            .select = statement,
            .nothing = {},
            .noRows = NoRows::Printed,
            .texts = [by] { return ReportTexts {variantOf(by).reportTitle}; }});
}

std::optional<DateLimits> limitsOf(const QString& from, const QString& to)
{
    if (!platformDate(from) || !platformDate(to)) return {};
    return DateLimits {doubled(from), doubled(to)};
}

} // namespace quilla
