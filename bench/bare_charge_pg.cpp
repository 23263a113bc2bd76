#include "bench/bare_charge_pg.h"

#include "platform/core/text.h"

#include <QDateTime>

using namespace quilla;

namespace {

/// Each "?" becomes "$1", "$2"...; the statements here have none in quotes.
QByteArray numbered(const QByteArray& text)
{
    QByteArray result;
    int count = 0;
    for (const char c : text)
        result += c == '?' ? '$' + QByteArray::number(++count) : QByteArray(1, c);
    return result;
}

std::string day(int daysOn)
{
    return QDate::currentDate().addDays(daysOn).toString(Qt::ISODate).toStdString();
}

void check(PGconn* connection, PGresult* result)
{
    const ExecStatusType status = PQresultStatus(result);
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) qFatal("%s", PQerrorMessage(connection));
    PQclear(result);
}

} // namespace

BareChargePg::BareChargePg(PGconn* connection, sql::Translator& translator)
    : m_connection(connection)
{
    m_reader = prepare(translator,
        u"select readstatus,term,bookcount,orderbook,daycount,ifcanre from DZK  where ReaderCode='R'"_s);
    m_date = prepare(translator, u"select getdate()"_s);
    m_overdue = prepare(
        translator, u"Select count(jhskid) From jhsk Where readercode='R' And yhdate<'2026-01-01'"_s);
    m_copy = prepare(translator,
        u"select borrowstatus,bookstatus from SCK  where bookstatus<>'丢失' and  bookstatus<>'注销' and "
        "barcode='B'"_s);
    m_hold = prepare(translator,
        u"select barcode,oldtime,yyk.readercode,barcode,name,readerclass from yyk  join dzk on "
        "yyk.readercode=dzk.readercode where yyk.barcode='B'"_s);
    m_holidays = prepare(translator, u"Select code From Global Where type='holiday' Order by code"_s);
    m_loan = prepare(translator,
        u"insert into JHSK(readercode,barcode,orderdate,yhdate,operater) "
        "Values('R','B','2026-01-01','2026-01-01','O')"_s);
    m_copyUpdate = prepare(translator,
        u"update SCK set borrowstatus=0,bookstatus='借出' where bookstatus<>'丢失' and  bookstatus<>'注销' "
        "and barcode='B'"_s);
    m_readerUpdate = prepare(translator, u"update DZK set orderbook=orderbook+1 where ReaderCode='R'"_s);
}

int BareChargePg::prepare(sql::Translator& translator, const QString& tsql)
{
    std::vector<sql::Literal> literals;
    const QByteArray text = numbered(translator.translate(tsql, literals).text);
    const std::string name = std::to_string(++m_count);
    check(m_connection, PQprepare(m_connection, name.c_str(), text.constData(), 0, nullptr));
    return m_count;
}

void BareChargePg::run(int statement, Values values)
{
    std::vector<const char*> texts;
    for (const std::string& value : values)
        texts.push_back(value.c_str());
    check(m_connection,
        PQexecPrepared(m_connection, std::to_string(statement).c_str(), int(texts.size()), texts.data(),
            nullptr, nullptr, 0));
}

void BareChargePg::send(const char* text)
{
    check(m_connection, PQexec(m_connection, text));
}

void BareChargePg::charge(const std::string& barcode, const std::string& reader)
{
    run(m_reader, {reader});
    run(m_date);
    run(m_date);
    run(m_overdue, {reader, day(0)});
    run(m_copy, {"丢失", "注销", barcode});
    run(m_hold, {barcode});
    send("BEGIN");
    run(m_date);
    run(m_holidays, {"holiday"});
    run(m_date);
    run(m_loan, {reader, barcode, day(0), day(30), "bench"});
    run(m_copyUpdate, {"0", "借出", "丢失", "注销", barcode});
    run(m_readerUpdate, {"1", reader});
    send("COMMIT");
}
