#include "desk/discharge_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"

namespace quilla {

namespace {

constexpr qint64 DefaultHoldDays = 10;

struct Loan {
    QString number; ///< jhskid
    QString readercode;
    std::optional<Moment> due;
};

struct Claim {
    QString readercode;
    QString zskid;
};

/// The first loan of the copy; more are ignored.
std::optional<Loan> findLoan(ResumingWork& reads, const QString& barcode)
{
    const Recordset row = reads.select(
        u"select jhskid,readercode,yhdate from JHSK where barcode='%1'"_s.arg(doubled(barcode)));
    if (row.eof()) return {};
    return Loan {row.field(u"jhskid").text(), row.field(u"readercode").text(), row.field(u"yhdate").moment()};
}

/// Moves the loan into the history and sets the counts of the reader and the state of the copy. Returns
/// whether the copy changed.
bool closeLoan(ResumingWork& writes, const Loan& loan, const QString& barcode)
{
    const QString today = isoDate(GetServerDate(writes.session()));
    writes.endTransactionOnFailure();
    writes.send(
        u"insert into JHSLSK(readercode,barcode,orderdate,yhdate,backdate,operater) select readercode,barcode,orderdate,yhdate,'%1','%2' from JHSK where jhskid=%3"_s
            .arg(today, writes.session().OperatorName, loan.number));
    writes.send(
        u"update DZK set orderbook=orderbook-1 where readercode='%1'"_s.arg(doubled(loan.readercode)));
    // 注销 is tested twice: the statement is the one that every program of the suite sends here
    const auto changed = writes.send(
        u"update SCK set borrowstatus=1,bookstatus='库本' where bookstatus<>'丢失' and  bookstatus<>'注销' and barcode='%1' And bookstatus<>'注销'"_s
            .arg(doubled(barcode)));
    writes.send(u"delete from JHSK where jhskid=%1"_s.arg(loan.number));
    return changed.value_or(0) > 0;
}

/// The earliest reservation of the copy's title, if it has no copy yet. When it has one, no later
/// reservation is looked at. The barcode is sent as it is, here and in the update: a copy whose barcode holds
/// a quote is returned, and its reservations are then served by hand.
std::optional<Claim> earliestClaim(ResumingWork& reads, const QString& barcode)
{
    const Recordset row = reads.select(
        u"select top 1 yyk.zskid,readercode,yyk.barcode from yyk join sck on  yyk.zskid=sck.zskid and sck.bookstatus<>'丢失' and  sck.bookstatus<>'注销' and sck.barcode='%1' order by ordertime asc"_s
            .arg(barcode));
    if (row.eof() || !row.field(u"barcode").text().isEmpty()) return {};
    return Claim {row.field(u"readercode").text(), row.field(u"zskid").text()};
}

qint64 holdDays(ResumingWork& reads, const QString& readercode)
{
    const Recordset row = reads.select(
        u"select orderday,yordercshu from dzk where readercode='%1'"_s.arg(doubled(readercode)));
    return row.eof() ? DefaultHoldDays : row.field(u"orderday").integer().value_or(DefaultHoldDays);
}

/// Outside the transaction: the return stands whatever becomes of the offer.
void offerToReservation(ResumingWork& work, DeskView& desk, const QString& barcode)
{
    Session& session = work.session();
    const auto claim = earliestClaim(work, barcode);
    if (!claim) return;
    const qint64 days = holdDays(work, claim->readercode);
    const QString question
        = u"读者证号为【"_s + claim->readercode + u"】的读者最先预约了这本书。是否将这本书预约给这位读者？"_s;
    desk.asking();
    if (!session.prompt.ask(question, OperationTitle)) return;
    const QString holdEnd = isoDate(GetServerDate(session).addDays(days));
    work.send(
        u"update yyk set oldtime='%1',barcode='%2',orderstatus=1 where readercode='%3' and zskid=%4"_s.arg(
            holdEnd, barcode, doubled(claim->readercode), claim->zskid));
    if (work.failed())
        session.prompt.inform(u"预约失败！原因如下：\n"_s + session.error.text(), OperationTitle);
}

DischargeResult dischargeInTime(ResumingWork& reads, DeskView& desk, const Loan& loan, const QString& barcode)
{
    ResumingWork writes(reads.session());
    if (!writes) return Discharged;
    if (!writes.transact([&] { return closeLoan(writes, loan, barcode); })) return NotDischarged;
    offerToReservation(reads, desk, barcode);
    return Discharged;
}

/// The time of day is compared on purpose: a copy brought back on its due date is overdue.
bool isOverdue(Session& session, const Loan& loan)
{
    return loan.due && *loan.due < GetServerDate(session);
}

} // namespace

DischargeResult DischargeBook(Session& session, DeskView& desk, FineDialog& fines, const QString& barcode)
{
    if (barcode.isEmpty()) return Discharged;
    ResumingWork reads(session);
    if (!reads) return Discharged;
    const auto loan = findLoan(reads, barcode);
    if (!loan) {
        desk.refusing(u"查找不到此书的借书记录"_s);
        session.prompt.inform(u"查找不到此书的借书记录"_s);
        return NoLoan;
    }
    desk.setReaderCode(loan->readercode);
    if (!isOverdue(session, *loan)) return dischargeInTime(reads, desk, *loan, barcode);
    desk.untickRenewal();
    desk.asking();
    return fines.settle(barcode) ? Discharged : FineDeclined;
}

} // namespace quilla
