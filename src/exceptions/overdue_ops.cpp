#include "exceptions/overdue_ops.h"

#include "output/export_ops.h"
#include "output/print_ops.h"

namespace quilla {

ListSearch overdueList()
{
    return {
        .select = u"Select barcode,bookname,readunit,readercode,name,orderdate,yhdate,cqday From JHSKCQV"_s};
}

ListSearch overdueStatistics()
{
    return {.select
        = u"select readercode,name,readunit,bookname,author,barcode,orderdate,yhdate,cqday from JhskCqV"_s};
}

void printOverdue(Session& session, ReportViewer& reports, const QString& statement)
{
    printList(session, reports,
        {.design = u"JHSKcqReport"_s,
            .select = statement,
            .nothing = NothingForPaper.toString(),
            .noRows = NoRows::Printed});
}

QString overdueCondition(const OverdueFilter& filter, const QString& given)
{
    QStringList clauses;
    if (!given.isEmpty()) clauses.append(given);
    const auto ask = [&](const std::optional<QString>& text, const QString& clause) {
        if (text) clauses.append(QString(clause).replace(u"%1"_s, doubled(*text)));
    };
    ask(filter.reader, u"(name Like '%%1%' OR readercode Like '%%1%')"_s);
    ask(filter.unit, u"(readunit Like '%%1%')"_s);
    ask(filter.type, u"(readerclass Like '%%1%')"_s);
    return clauses.join(u" And "_s);
}

QStringList unitsToChoose(Session& session)
{
    return firstColumn(session, u"select readunit from dzdw"_s);
}

QStringList typesToChoose(Session& session)
{
    return firstColumn(session, u"select readerclass from dzlx"_s);
}

} // namespace quilla
