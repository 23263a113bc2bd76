#include "database/scale.h"

#include "database/circulation_rules.h"
#include "database/demo/random.h"
#include "database/library_schema.h"
#include "database/row_text.h"
#include "platform/core/dates.h"
#include "platform/core/text.h"

namespace quilla {

namespace {

constexpr int DaysOfHistory = 3650;
constexpr int LoanDays = 30;
constexpr int ReadersAHold = 50;

/// Number `number` of a title, held copy or loan belongs to which reader.
int readerOf(int number, const ScaleOptions& options)
{
    return (number - 1) % options.readers + 1;
}

int holdsOf(const ScaleOptions& options)
{
    return std::min(options.readers / ReadersAHold, options.copies - options.loans);
}

void fillTitles(Connection& connection, const ScaleOptions& options)
{
    RowText row(
        connection, u"zsk", u"bookname,author,publisher,pubplace,pubdate,isbn,classcode,zch,catatime");
    const QString classes = u"ABCDEFGHIJKNOPQRSTUVXZ"_s;
    for (int title = 1; title <= (options.copies + 1) / 2; ++title) {
        const QString number = QString::number(title);
        row.text(u"图书"_s + number)
            .text(u"作者"_s + number)
            .text(u"出版社"_s + QString::number(title % 200));
        row.text(u"北京")
            .text(u"2003.5")
            .text(u"7-00-"_s + number)
            .text(classes[title % classes.size()] + u"1"_s);
        row.number(title).date(options.today.addDays(-DaysOfHistory)).send();
    }
}

/// The number of the first title; the others follow without a gap in a new base.
qint64 firstTitle(Connection& connection)
{
    return connection.open(u"select min(zskid) as first from zsk").field(0).integer().value_or(1);
}

void fillCopies(Connection& connection, const ScaleOptions& options, qint64 first)
{
    RowText row(connection, u"sck", u"zskid,barcode,bookplace,price,borrowstatus,bookstatus");
    for (int copy = 1; copy <= options.copies; ++copy) {
        const bool out = copy <= options.loans;
        row.number(first + (copy - 1) / 2).text(scaleBarcode(copy)).text(u"书库").money(2500);
        row.bit(!out).text(out ? u"借出" : u"库本").send();
    }
}

void fillReaders(Connection& connection, const ScaleOptions& options)
{
    connection.execute(u"insert into dzlx(readerclass) values('读者')");
    connection.execute(u"insert into dzdw(readunit) values('单位')");
    RuleNumbers rules {.loanDays = LoanDays,
        .loanCopies = 50,
        .overdueFine = 10,
        .defileFine = 100,
        .lostFine = 300,
        .renewals = 1,
        .renewalDays = 15,
        .mayHoldOverdue = true,
        .holdDays = 7,
        .holdCopies = 5};
    RowText type(connection, u"jycs", u"readerclass,"_s + ruleColumns());
    addRules(type.text(u"读者"), rules);
    type.send();
    RowText row(connection, u"dzk",
        u"readercode,name,sex,readerclass,readunit,orderbook,yordercshu,readstatus,term,paperdate,"_s
            + ruleColumns());
    const int holds = holdsOf(options);
    for (int reader = 1; reader <= options.readers; ++reader) {
        const int loans
            = options.loans / options.readers + (reader <= options.loans % options.readers ? 1 : 0);
        row.text(scaleReaderCode(reader)).text(u"读者"_s + QString::number(reader)).text(u"男").text(u"读者");
        row.text(u"单位").number(loans).number(reader <= holds ? 1 : 0).text(u"有效");
        row.date(options.today.addYears(5)).date(options.today.addYears(-5));
        rules.loanCopies = loans + 50;
        addRules(row, rules);
        row.send();
    }
}

void fillLoans(Connection& connection, const ScaleOptions& options)
{
    constexpr int OverdueShare = 10;
    RowText row(connection, u"jhsk", u"readercode,barcode,orderdate,yhdate,operater");
    for (int loan = 1; loan <= options.loans; ++loan) {
        const int age = loan % OverdueShare ? loan % (LoanDays - 2) : LoanDays + 1 + loan % 60;
        const QDate ordered = options.today.addDays(-age);
        row.text(scaleReaderCode(readerOf(loan, options))).text(scaleBarcode(loan)).date(ordered);
        row.date(ordered.addDays(LoanDays)).text(u"admin").send();
    }
}

void fillHistory(Connection& connection, const ScaleOptions& options)
{
    demo::Random random(1);
    RowText row(connection, u"jhslsk", u"readercode,barcode,orderdate,yhdate,backdate,operater");
    for (int loan = 0; loan < options.history; ++loan) {
        const int daysAgo = LoanDays + int(qint64(options.history - loan) * DaysOfHistory / options.history);
        const QDate ordered = options.today.addDays(-daysAgo);
        row.text(scaleReaderCode(random.between(1, options.readers)));
        row.text(scaleBarcode(random.between(1, options.copies)))
            .date(ordered)
            .date(ordered.addDays(LoanDays));
        row.date(ordered.addDays(random.between(1, LoanDays - 1))).text(u"admin").send();
    }
}

/// Each on a copy that is not out.
void fillHolds(Connection& connection, const ScaleOptions& options, qint64 first)
{
    RowText row(connection, u"yyk", u"readercode,zskid,barcode,ordertime,oldtime,orderstatus");
    for (int hold = 1; hold <= holdsOf(options); ++hold) {
        const int copy = options.loans + hold;
        row.text(scaleReaderCode(hold)).number(first + (copy - 1) / 2).text(scaleBarcode(copy));
        row.date(options.today.addDays(-9)).date(options.today.addDays(5)).bit(true).send();
    }
}

/// Closing periods of three days, two a year.
void fillHolidays(Connection& connection, const ScaleOptions& options)
{
    RowText row(connection, u"Global", u"type,code,memo");
    for (int year = options.today.year() - 8; year <= options.today.year() + 1; ++year)
        for (const int month : {5, 10}) {
            const QDate day(year, month, 1);
            row.text(u"holiday").text(isoDate(day) + u' ' + isoDate(day.addDays(2)));
            row.text(u"%1年%2月"_s.arg(year).arg(month)).send();
        }
}

} // namespace

void fillScaleData(Connection& connection, const ScaleOptions& asked)
{
    refuseFilledLibrary(connection);
    ScaleOptions options = asked;
    options.readers = std::max(1, options.readers);
    options.copies = std::max(1, options.copies);
    options.loans = std::min(options.loans, options.copies);
    fillTitles(connection, options);
    const qint64 first = firstTitle(connection);
    fillCopies(connection, options, first);
    fillReaders(connection, options);
    fillLoans(connection, options);
    withoutIndexes(connection, u"jhslsk", [&] { fillHistory(connection, options); });
    fillHolds(connection, options, first);
    fillHolidays(connection, options);
}

QString scaleReaderCode(int number)
{
    return u"R%1"_s.arg(number, 7, 10, QChar(u'0'));
}

QString scaleBarcode(int number)
{
    return u"B%1"_s.arg(number, 8, 10, QChar(u'0'));
}

} // namespace quilla
