#include "statistics/fine_statistic_ops.h"

#include "output/print_ops.h"

namespace quilla {

const QueryTriple& fineTriple()
{
    static const QueryTriple triple {
        u"barcode,readercode,name,readerclass,readunit,cause,bookname,author,sfmoney,opratedate"_s,
        u"条码号,读者号,读者姓名,读者类型,读者单位,罚款原因,书名,作者,实罚金额,罚款日期"_s,
        u"字符,字符,字符,字符,字符,字符,字符,字符,数字,日期"_s, u"罚款统计"_s};
    return triple;
}

ListSearch fineSearch(const std::optional<DateLimits>& dates, const QString& condition, const QString& order)
{
    QString where = condition;
    if (dates) {
        where = u"opratedate between '%1' And '%2'"_s.arg(doubled(dates->from), doubled(dates->to));
        if (!condition.isEmpty()) where += u" And (%1)"_s.arg(condition);
    }
    return {u"select readercode,name,barcode,bookname,cause,sfmoney,opratedate,oprater from FKKV"_s, where,
        order.isEmpty() ? u"opratedate,cause"_s : order};
}

bool reportFines(Session& session, ReportViewer& reports, const ListSearch& search)
{
    return printList(session, reports,
        {.design = u"FkDataReport"_s,
            .select = search.statement(),
            .nothing = {},
            .noRows = NoRows::Printed});
}

} // namespace quilla
