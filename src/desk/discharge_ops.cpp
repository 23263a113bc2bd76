#include "desk/discharge_ops.h"

#include "desk/desk_transaction.h"
#include "frame/sublib.h"

namespace quilla {

namespace {

constexpr qint64 DefaultHoldDays = 10;

struct Loan {
    QString number; ///< jhskid
    QString readercode;
    QDateTime due;
};

struct Claim {
    QString readercode;
    QString zskid;
};

/// The first loan of the copy; more are ignored.
std::optional<Loan> findLoan(Session& session, Connection& conn, const QString& barcode)
{
    const Recordset row = openOrEmpty(session, conn,
        u"select jhskid,readercode,yhdate from JHSK where barcode='%1'"_s.arg(doubled(barcode)));
    if (row.eof()) return {};
    return Loan {row.field(u"jhskid").text(), row.field(u"readercode").text(), row.field(u"yhdate").moment()};
}

/// The loan goes into the history, reader and copy get their counts and state back. The number of copy
/// rows that changed.
int closeLoan(Session& session, Connection& conn, const Loan& loan, const QString& barcode)
{
    LastError& error = session.error;
    const QString today = isoDate(GetServerDate(session));
    conn.endTransactionOnFailure(); // what fails from here on is never committed
    const auto send = [&](const QString& tsql) { return error.attempt([&] { return conn.execute(tsql); }); };
    send(
        u"insert into JHSLSK(readercode,barcode,orderdate,yhdate,backdate,operater) select readercode,barcode,orderdate,yhdate,'%1','%2' from JHSK where jhskid=%3"_s
            .arg(today, session.OperatorName, loan.number));
    send(u"update DZK set orderbook=orderbook-1 where readercode='%1'"_s.arg(doubled(loan.readercode)));
    const auto changed = send(
        u"update SCK set borrowstatus=1,bookstatus='库本' where bookstatus<>'丢失' and  bookstatus<>'注销' and barcode='%1' And bookstatus<>'注销'"_s
            .arg(doubled(barcode)));
    send(u"delete from JHSK where jhskid=%1"_s.arg(loan.number));
    return changed.value_or(0);
}

/// The earliest reservation of the copy's title, if it has no copy yet. When it has one, no later
/// reservation is looked at.
std::optional<Claim> earliestClaim(Session& session, Connection& conn, const QString& barcode)
{
    const Recordset row = openOrEmpty(session, conn,
        u"select top 1 yyk.zskid,readercode,yyk.barcode from yyk join sck on  yyk.zskid=sck.zskid and sck.bookstatus<>'丢失' and  sck.bookstatus<>'注销' and sck.barcode='%1' order by ordertime asc"_s
            .arg(barcode));
    if (row.eof() || !row.field(u"barcode").text().isEmpty()) return {};
    return Claim {row.field(u"readercode").text(), row.field(u"zskid").text()};
}

qint64 holdDays(Session& session, Connection& conn, const QString& readercode)
{
    const Recordset row = openOrEmpty(session, conn,
        u"select orderday,yordercshu from dzk where readercode='%1'"_s.arg(doubled(readercode)));
    return row.eof() ? DefaultHoldDays : row.field(u"orderday").integer().value_or(0);
}

/// Outside the transaction: the return stands whatever becomes of the offer.
void offerToReservation(Session& session, Connection& conn, const QString& barcode)
{
    const auto claim = earliestClaim(session, conn, barcode);
    if (!claim) return;
    const qint64 days = holdDays(session, conn, claim->readercode);
    const QString question
        = u"读者证号为【"_s + claim->readercode + u"】的读者最先预约了这本书。是否将这本书预约给这位读者？"_s;
    if (!session.prompt.ask(question, OperationTitle)) return;
    const QString holdEnd = isoDate(GetServerDate(session).addDays(days));
    session.error.attempt([&] {
        conn.execute(
            u"update yyk set oldtime='%1',barcode='%2',orderstatus=1 where readercode='%3' and zskid=%4"_s
                .arg(holdEnd, barcode, doubled(claim->readercode), claim->zskid));
    });
    if (session.error.isSet())
        session.prompt.inform(u"预约失败！原因如下：\n"_s + session.error.text(), OperationTitle);
}

DischargeResult dischargeInTime(Session& session, Connection& reads, const Loan& loan, const QString& barcode)
{
    Connection writes;
    if (OpenDbConnection(session, writes) != GoOn) return Discharged;
    const bool written
        = inTransaction(session, writes, [&] { return closeLoan(session, writes, loan, barcode); });
    if (!written) return NotDischarged;
    offerToReservation(session, reads, barcode);
    return Discharged;
}

} // namespace

DischargeResult DischargeBook(Session& session, DeskView& desk, FineDialog& fines, const QString& barcode)
{
    if (barcode.isEmpty()) return Discharged;
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return Discharged;

    const auto loan = findLoan(session, conn, barcode);
    if (!loan) {
        session.prompt.inform(u"查找不到此书的借书记录"_s);
        session.error.clear();
        return NoLoan;
    }
    desk.setReaderCode(loan->readercode);
    // Against the server's time of day: a copy brought back on its due date is overdue.
    if (loan->due.isValid() && loan->due < GetServerDate(session)) {
        desk.untickRenewal();
        return fines.settle(barcode) ? Discharged : FineDeclined;
    }
    const DischargeResult result = dischargeInTime(session, conn, *loan, barcode);
    session.error.clear();
    return result;
}

} // namespace quilla
