#include "exceptions/ledger_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"
#include "output/export_ops.h"
#include "output/print_ops.h"
#include "platform/core/date_box.h"
#include "platform/core/dates.h"
#include "platform/db/decimal.h"

namespace quilla {

namespace {

const QString Columns = u"BookOutID,outdate,bookname,author,barcode,price,cause,operater,memo"_s;
/// What the report and the spreadsheet show.
const QString OutputSelect = u"select bookname,author,barcode,price,cause,outdate from BookOut"_s;

QString priceText(const Value& price)
{
    return Decimal::read(price.text()).value_or(Decimal()).fixed(2);
}

bool isWithdrawn(ResumingWork& work, const QString& barcode)
{
    const QString code = doubled(barcode);
    return !work.select(u"select BookOutID,barcode from bookout where barcode='%1'"_s.arg(code)).eof()
        || !work.select(u"select sckid,barcode from sck where barcode='%1' and bookstatus='注销'"_s.arg(code))
                .eof();
}

std::optional<CatalogueData> catalogueData(ResumingWork& work, const QString& barcode)
{
    const Recordset copy
        = work.select(u"select bookname,author,price from BookV where barcode='%1'"_s.arg(doubled(barcode)));
    if (copy.eof()) return {};
    return CatalogueData {copy.field(0).text(), copy.field(1).text(), priceText(copy.field(2))};
}

QString priceOf(const Withdrawal& entry)
{
    return Decimal::read(entry.price).value_or(Decimal()).text();
}

QString insertOf(const Withdrawal& entry)
{
    const auto date = platformDate(entry.outdate);
    return u"insert into BookOut (bookname,author,barcode,price,cause,memo,outdate,operater) Values('%1','%2','%3',%4,'%5','%6','%7','%8')"_s
        .arg(doubled(entry.bookname), doubled(entry.author), doubled(entry.barcode), priceOf(entry),
            doubled(entry.cause), doubled(entry.memo), date ? isoDate(*date) : QString(),
            doubled(entry.operater));
}

QString updateOf(const Withdrawal& entry)
{
    return u"update BookOut set bookname='%1',author='%2',barcode='%3',price=%4,cause='%5',memo='%6' where BookOutID=%7"_s
        .arg(doubled(entry.bookname), doubled(entry.author), doubled(entry.barcode), priceOf(entry),
            doubled(entry.cause), doubled(entry.memo), entry.id);
}

Withdrawal newWithdrawal(Session& session)
{
    return {.cause = withdrawalCauses().front(),
        .operater = session.OperatorName,
        .outdate = isoDate(GetServerDate(session))};
}

} // namespace

QStringList withdrawalCauses()
{
    return {u"丢失"_s, u"注销"_s, u"下落不明"_s};
}

ListSearch ledgerList()
{
    return {.select = u"select %1 from BookOut"_s.arg(Columns)};
}

QStringList ledgerFindFields()
{
    return {u"书名"_s, u"作者"_s, u"条码号"_s, u"注销原因"_s, u"注销日期"_s};
}

QString ledgerFindCondition(int field, const QString& text)
{
    const QString names[] {u"bookname"_s, u"author"_s, u"barcode"_s, u"cause"_s, u"outdate"_s};
    return names[field] + u" Like '%"_s + doubled(text) + u"%'"_s;
}

bool restoreWithdrawnCopy(Session& session, qint64 id)
{
    ResumingWork work(session);
    return work && work.transact([&] {
        work.send(
            u"update sck set borrowstatus=1,bookstatus='库本' where barcode in (select barcode from BookOut where BookOutID=%1)"_s
                .arg(id));
        work.send(u"delete from BookOut where BookOutID=%1"_s.arg(id));
        return true;
    });
}

void printLedger(Session& session, ReportViewer& reports, const ListSearch& list, bool anyShown)
{
    printList(session, reports,
        {.design = u"PrintBookOut"_s,
            .select = anyShown ? ledgerForExport(list) : QString(),
            .nothing = NothingForPaper.toString(),
            .noRows = NoRows::Silent,
            .texts = [&session] {
                return ReportTexts {.title = QString::number(GetServerDate(session).date.year()) + u"年度"_s};
            }});
}

QString ledgerForExport(const ListSearch& list)
{
    return ListSearch {.select = OutputSelect, .condition = list.condition}.statement();
}

std::optional<Withdrawal> readWithdrawal(Session& session, qint64 id)
{
    if (id == 0) return newWithdrawal(session);
    const auto found
        = rowsFound(session, {.select = u"select %1 from BookOut where BookOutID=%2"_s.arg(Columns).arg(id)});
    if (!found || found->eof()) return {};
    const auto text = [&](QStringView field) { return found->field(field).text(); };
    return Withdrawal {text(u"BookOutID"), text(u"bookname"), text(u"author"), text(u"barcode"),
        priceText(found->field(u"price")), text(u"cause"), text(u"memo"), text(u"operater"),
        isoDate(found->field(u"outdate").moment())};
}

CopyCheck CheckCopyForWithdrawal(Session& session, const QString& barcode)
{
    {
        ResumingWork work(session);
        if (!work) return {.refused = true};
        if (!isWithdrawn(work, barcode)) return {.data = catalogueData(work, barcode)};
    }
    session.prompt.inform(u"条形码%1对应的图书已经注销!"_s.arg(barcode), OperationTitle);
    return {.refused = true};
}

std::optional<Refusal> withdrawalDateRefusal(const QString& date)
{
    if (date.isEmpty()) return {};
    if (!platformDate(date))
        return Refusal {.text = u"请正确输入登记日期(例如:2003-01-01)"_s, .box = LedgerBox::Date};
    if (!startsWithFullYear(date))
        return Refusal {.text = u"请输入完整的日期格式!(例如:2003-01-01)"_s, .box = LedgerBox::Date};
    return {};
}

bool SaveWithdrawal(Session& session, const EditorMode& mode, const Withdrawal& entry)
{
    ResumingWork work(session);
    if (!work) return true;
    return !work.transact([&] {
        work.send(mode.isAdd() ? insertOf(entry) : updateOf(entry));
        if (mode.isAdd())
            work.send(
                u"update sck set bookstatus='注销',borrowstatus=0 where  bookstatus<>'注销' and barcode='%1'"_s
                    .arg(doubled(entry.barcode)));
        return true;
    });
}

} // namespace quilla
