#include "database/demo/write.h"

#include "database/demo_library.h"
#include "database/row_text.h"
#include "platform/core/dates.h"
#include "platform/core/text.h"

namespace quilla::demo {

namespace {

/// The numbers that the database gave the titles, in their order.
std::vector<qint64> writeTitles(Connection& connection, const Library& library)
{
    RowText row(connection, u"zsk",
        u"bookname,author,publisher,pubplace,pubdate,isbn,classcode,zch,fzqfh,docclass,lagclass,edition,"
        u"measure,"
        "pages,bookcount,books,booksauthor,authorcode,ztc,endnote,cataman,catatime");
    for (const Title& title : library.titles) {
        row.text(title.bookname)
            .text(title.author)
            .text(title.publisher)
            .text(title.pubplace)
            .text(title.pubdate);
        row.text(title.isbn).text(title.classcode).number(title.zch).text(title.fzqfh).text(u"普通图书");
        row.text(title.lagclass).text(title.edition).text(title.measure).text(u"%1页"_s.arg(title.pages));
        row.number(qint64(title.copies.size())).text(title.books).text(u"").text(title.authorcode);
        row.text(title.terms).text(u"").text(u"编目").date(title.catalogued).send();
    }
    std::vector<qint64> ids;
    for (Recordset rows = connection.open(u"select zskid from zsk order by zskid"); !rows.eof(); rows.next())
        ids.push_back(rows.field(0).integer().value_or(0));
    return ids;
}

QString stateText(CopyState state)
{
    switch (state) {
    case CopyState::In:
        return u"库本"_s;
    case CopyState::Out:
        return u"借出"_s;
    case CopyState::Reference:
        return u"典藏"_s;
    case CopyState::Lost:
        return u"丢失"_s;
    case CopyState::Withdrawn:
        return u"注销"_s;
    }
    return {};
}

void writeCopies(Connection& connection, const Library& library, const std::vector<qint64>& ids)
{
    RowText row(connection, u"sck", u"zskid,barcode,rollcode,bookplace,price,borrowstatus,bookstatus");
    for (const Copy& copy : library.copies) {
        const bool lendable = copy.state == CopyState::In || copy.state == CopyState::Reference;
        row.number(ids[std::size_t(copy.title)]).text(copy.barcode).text(u"").text(copy.place);
        row.money(library.titles[std::size_t(copy.title)].price)
            .bit(lendable)
            .text(stateText(copy.state))
            .send();
    }
}

void writeClasses(Connection& connection, const Library& library)
{
    RowText typeName(connection, u"dzlx", u"readerclass");
    RowText rules(connection, u"jycs", u"readerclass,"_s + ruleColumns());
    for (const ReaderClass& type : library.classes) {
        typeName.text(type.name).send();
        rules.text(type.name);
        addRules(rules, type.rules);
        rules.send();
    }
    RowText unit(connection, u"dzdw", u"readunit");
    for (const QString& name : library.units)
        unit.text(name).send();
}

void writeReaders(Connection& connection, const Library& library)
{
    RowText card(connection, u"dzk",
        u"readercode,name,sex,readerclass,readunit,orderbook,yordercshu,readstatus,term,paperdate,photo,memo,"_s
            + ruleColumns());
    RowText details(connection, u"dzkx", u"readercode,zhenghaolx,zhenghao,dizhi,birthday,email");
    for (const Reader& reader : library.readers) {
        const ReaderClass& type = library.classes[std::size_t(reader.readerclass)];
        card.text(reader.code).text(reader.name).text(reader.sex).text(type.name).text(reader.unit);
        card.number(qint64(reader.openLoans.size())).number(reader.reservations).text(reader.status);
        card.date(reader.term).date(reader.paperdate).text(u"").text(reader.memo);
        addRules(card, type.rules);
        card.send();
        details.text(reader.code).text(reader.documentKind).text(reader.code).text(reader.address);
        details.date(reader.birthday).text(reader.code.toLower() + u"@library.example"_s).send();
    }
}

void writeLoans(Connection& connection, const Library& library)
{
    RowText history(connection, u"jhslsk", u"readercode,barcode,orderdate,yhdate,backdate,operater");
    for (const FinishedLoan& loan : library.history)
        history.text(library.readers[std::size_t(loan.reader)].code)
            .text(library.copies[std::size_t(loan.copy)].barcode)
            .date(loan.ordered)
            .date(loan.due)
            .date(loan.back)
            .text(loan.operater)
            .send();
    RowText open(connection, u"jhsk", u"readercode,barcode,orderdate,yhdate,operater,res");
    for (const Loan& loan : library.loans)
        if (loan.open)
            open.text(library.readers[std::size_t(loan.reader)].code)
                .text(library.copies[std::size_t(loan.copy)].barcode)
                .date(loan.ordered)
                .date(loan.due)
                .text(loan.operater)
                .number(loan.renewals)
                .send();
}

void writeReservations(Connection& connection, const Library& library, const std::vector<qint64>& ids)
{
    RowText row(connection, u"yyk", u"readercode,zskid,barcode,ordertime,oldtime,orderstatus");
    for (const Reservation& reservation : library.reservations) {
        row.text(library.readers[std::size_t(reservation.reader)].code)
            .number(ids[std::size_t(reservation.title)]);
        if (reservation.copy < 0)
            row.null();
        else
            row.text(library.copies[std::size_t(reservation.copy)].barcode);
        row.date(reservation.placed).date(reservation.heldUntil).bit(reservation.copy >= 0).send();
    }
}

void writeFines(Connection& connection, const Library& library)
{
    RowText row(connection, u"fkk",
        u"readercode,name,barcode,bookname,yfmoney,sfmoney,cause,oprater,opratedate,memo");
    for (const Fine& fine : library.fines) {
        const Reader& reader = library.readers[std::size_t(fine.reader)];
        const Copy& copy = library.copies[std::size_t(fine.copy)];
        row.text(reader.code).text(reader.name).text(copy.barcode);
        row.text(library.titles[std::size_t(copy.title)].bookname).money(fine.due).money(fine.taken);
        row.text(fine.cause).text(fine.operater).date(fine.date).text(fine.memo).send();
    }
}

void writeLostReports(Connection& connection, const Library& library)
{
    RowText row(connection, u"diushik", u"readercode,name,readunit,barcode,bookname,yfjine,createdate");
    for (const LostReport& report : library.lostReports) {
        const Reader& reader = library.readers[std::size_t(report.reader)];
        const Copy& copy = library.copies[std::size_t(report.copy)];
        row.text(reader.code).text(reader.name).text(reader.unit).text(copy.barcode);
        row.text(library.titles[std::size_t(copy.title)].bookname)
            .money(report.amount)
            .date(report.date)
            .send();
    }
}

void writeWithdrawals(Connection& connection, const Library& library)
{
    RowText row(connection, u"BookOut", u"bookname,author,barcode,price,cause,memo,outdate,operater");
    for (const Withdrawal& out : library.withdrawals) {
        const Copy& copy = library.copies[std::size_t(out.copy)];
        const Title& title = library.titles[std::size_t(copy.title)];
        row.text(title.bookname).text(title.author).text(copy.barcode).money(title.price).text(out.cause);
        if (out.memo.isNull())
            row.null();
        else
            row.text(out.memo);
        row.date(out.date).text(out.operater).send();
    }
}

void writeHolidays(Connection& connection, const Library& library)
{
    RowText row(connection, u"Global", u"type,code,memo");
    for (const Holiday& holiday : library.holidays)
        row.text(u"holiday")
            .text(isoDate(holiday.first) + u' ' + isoDate(holiday.last))
            .text(holiday.name)
            .send();
}

/// "admin" is there from the first rows; 编目 may not use the desk.
void writeOperators(Connection& connection)
{
    RowText row(connection, u"LibUse", u"userid,username,password,borrow");
    row.number(2).text(DemoOperator).text(DemoPassword).bit(true).send();
    row.number(3).text(u"王芳").text(u"wf2003").bit(true).send();
    row.number(4).text(u"刘敏").text(u"lm2003").bit(true).send();
    row.number(5).text(u"编目").text(u"bm2003").bit(false).send();
}

} // namespace

void writeLibrary(Connection& connection, const Library& library)
{
    const std::vector<qint64> ids = writeTitles(connection, library);
    writeCopies(connection, library, ids);
    writeClasses(connection, library);
    writeReaders(connection, library);
    writeLoans(connection, library);
    writeReservations(connection, library, ids);
    writeFines(connection, library);
    writeLostReports(connection, library);
    writeWithdrawals(connection, library);
    writeHolidays(connection, library);
    writeOperators(connection);
}

} // namespace quilla::demo
