#include "desk/loan_query_ops.h"

#include "frame/search.h"
#include "frame/sublib.h"
#include "frame/work.h"
#include "platform/db/decimal.h"
#include "platform/report/report_viewer.h"

namespace quilla {

namespace {

/// "%1" is the text, its quotes doubled; in the order of `LoanQuery::Part`.
const std::array<QString, 4> Conditions {
    u"(name Like '%%1%' OR readercode ='%1')"_s,
    u"(readunit ='%1')"_s,
    u"(readerclass ='%1')"_s,
    u"(bookname Like '%%1%' OR barcode = '%1')"_s,
};

QString cell(ResumingWork& work, const Recordset& row, QStringView field)
{
    return work.attempt([&] { return row.field(field).text(); }).value_or(QString());
}

QString dateCell(ResumingWork& work, const Recordset& row, QStringView field)
{
    return work.attempt([&] { return isoDate(row.field(field).moment()); }).value_or(QString());
}

LoanLine lineOf(ResumingWork& work, const Recordset& row)
{
    LoanLine line;
    for (const QStringView field : {u"ReaderCode", u"Name", u"BarCode", u"BookName"})
        line.append(cell(work, row, field));
    const QString price = cell(work, row, u"Price");
    const auto money = Decimal::read(price);
    line.append(money ? money->fixed(2) : price);
    for (const QStringView field : {u"orderdate", u"yhdate"})
        line.append(dateCell(work, row, field));
    line.append(cell(work, row, u"operater"));
    return line;
}

} // namespace

QString loanStatement(const LoanQuery& query)
{
    QStringList conditions;
    for (std::size_t part = 0; part < Conditions.size(); ++part) {
        const auto& [ticked, typed] = query.parts[part];
        const QString text = SqlText(typed);
        QString condition = Conditions[part];
        if (ticked && !text.isEmpty()) conditions.append(condition.replace(u"%1"_s, text));
    }
    if (conditions.isEmpty()) return {};
    return u"select ReaderCode,Name,BarCode,BookName,Price,orderdate,yhdate,operater,readunit from JhskV where "_s
        + conditions.join(u" And "_s);
}

std::vector<LoanLine> findLoans(Session& session, const QString& statement)
{
    std::vector<LoanLine> lines;
    ResumingWork work(session);
    if (!work) return lines;
    Recordset row = work.select(statement);
    if (row.eof()) session.prompt.inform(u"找不到任何匹配的记录"_s, OperationTitle);
    for (; !row.eof(); row.next())
        lines.push_back(lineOf(work, row));
    return lines;
}

void printLoans(Session& session, ReportViewer& viewer, const QString& statement)
{
    if (statement.isEmpty()) return;
    ResumingWork work(session);
    if (!work) return;
    Recordset rows = work.select(statement);
    if (!rows.eof()) viewer.showReport(u"JHSKReport"_s, rows);
}

QStringList readerUnits(Session& session)
{
    return firstColumn(session, u"select distinct readunit from dzdw"_s);
}

QStringList readerClasses(Session& session)
{
    return firstColumn(session, u"select distinct readerclass from dzlx"_s);
}

} // namespace quilla
