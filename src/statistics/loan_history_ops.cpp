#include "statistics/loan_history_ops.h"

#include "frame/work.h"
#include "output/report_designs.h"
#include "platform/report/report_viewer.h"

namespace quilla {

namespace {

/// In the order of the screen's boxes.
constexpr QStringView CatalogueFields[] {u"索书号", u"bookname", u"docclass", u"Author", u"publisher",
    u"lagclass", u"pubdate", u"pubplace", u"measure", u"edition", u"bookcount", u"pages", u"ztc", u"endnote"};

/// Reports the error of a step that follows the search itself.
void tellLater(Session& session)
{
    if (!session.error.isSet()) return;
    const QString text = u"数据库错误,错误原因："_s + session.error.text();
    session.error.clear();
    session.prompt.inform(text, OperationTitle);
}

QString titleOf(ResumingWork& work, const QString& barcode)
{
    const Recordset copy = work.select(
        u"select zskid from sck where  bookstatus<>'丢失' and  bookstatus<>'注销'  and barcode='%1'"_s.arg(
            doubled(barcode)));
    return copy.eof() ? QString() : copy.field(0).text();
}

Catalogue readCatalogue(ResumingWork& work, const QString& title)
{
    const Recordset found = work.select(
        u"select rtrim(classcode)+'/' + convert(varchar(5),zch) as 索书号,BOOKname,author,docclass,lagclass,publisher,pubplace,pubdate,edition,measure,pages,bookcount,endnote,ztc from zsk join sck on zsk.zskid=sck.zskid and  sck.bookstatus<>'丢失' and  sck.bookstatus<>'注销' where zsk.zskid=%1"_s
            .arg(title));
    Catalogue catalogue;
    for (std::size_t field = 0; !found.eof() && field < catalogue.size(); ++field)
        catalogue[field] = found.field(CatalogueFields[field]).text();
    return catalogue;
}

} // namespace

/// The statement is sent twice, as the screen has always done: the first time only shows whether there are
/// rows.
std::optional<Recordset> loanHistory(Session& session, const HistoryQuery& query)
{
    const QString statement = u"exec procjylstj %1,'%2','%3'"_s.arg(QString::number(int(query.kind)),
        doubled(trimBlanks(query.barcode)), doubled(trimBlanks(query.readercode)));
    return handled(
        session, Opened::Directly,
        [&](StrictWork& work) {
            Recordset first = work.open(statement);
            return first.eof() ? std::move(first) : work.open(statement);
        },
        [&](const Error& error) {
            session.prompt.inform(u"[%1]\n请检查数据库？"_s.arg(error.text), OperationTitle);
        });
}

HistoryReader historyReader(Session& session, const QString& readercode)
{
    HistoryReader reader {{}, readercode};
    ResumingWork work(session, Opened::Directly);
    const Recordset card
        = work.select(u"select name from dzk where readercode='%1'"_s.arg(doubled(readercode)));
    if (!card.eof()) reader.name = card.field(u"Name").text();
    work.release();
    tellLater(session);
    return reader;
}

Catalogue catalogueOf(Session& session, const QString& barcode)
{
    Catalogue catalogue;
    ResumingWork work(session, Opened::Directly);
    const QString title = titleOf(work, barcode);
    if (!title.isEmpty()) catalogue = readCatalogue(work, title);
    work.release();
    tellLater(session);
    return catalogue;
}

void printHistory(ReportViewer& reports, Recordset& rows, const HistoryQuery& query)
{
    const QString kind = query.kind == HistoryOf::Copy ? u"图书"_s : u"读者"_s;
    rows.first();
    reports.showReport(u"jylsRpt"_s, rows,
        {{},
            {{ReportLabels::Code, query.code()}, {ReportLabels::Kind, kind},
                {ReportLabels::Heading, u"借阅历史统计表"_s}}});
}

} // namespace quilla
