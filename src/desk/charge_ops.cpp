#include "desk/charge_ops.h"

#include "desk/desk_pages.h"
#include "desk/due_date_ops.h"
#include "frame/refusal.h"
#include "frame/sublib.h"
#include "frame/work.h"

#include <limits>

namespace quilla {

namespace {

constexpr int DefaultDays = 30;

/// Where a charge and the new charge of a renewal differ.
struct Manner {
    QString unknownReader;
    QString copySelect; ///< "%1" is the barcode
    std::optional<qint16> renewals; ///< the count on the loan; nullopt for a first charge
};

const Manner FirstCharge {u"没有找到该读者的信息！请确定该读者是否办理了读者证！"_s,
    u"select borrowstatus,bookstatus from SCK  where bookstatus<>'丢失' and  bookstatus<>'注销' and barcode='%1'"_s,
    {}};

Manner renewalManner(qint16 count)
{
    return {u"请先输入读者"_s,
        u"select sckid,borrowstatus,bookstatus from SCK where bookstatus<>'丢失' and  bookstatus<>'注销' and  barcode='%1'"_s,
        count};
}

struct Reader {
    QString status;
    std::optional<Moment> term;
    std::optional<qint64> quota; ///< nullopt: no limit
    qint16 days = 0;
    bool mayHoldOverdue = false;
};

struct Copy {
    bool lendable = false;
    QString status;
};

struct Hold {
    QString readercode;
    QString name;
    QString readerclass;
};

/// What a charge does to the reservation that the copy is held for.
enum class Reservation { None, Postponed, Fulfilled };

struct Loan {
    QString barcode; ///< quotes doubled
    QString readercode; ///< quotes doubled
    qint16 days = DefaultDays;
    Reservation reservation = Reservation::None;
    std::optional<qint16> renewals; ///< nullopt: the column's default
};

/// Where the operator goes on after a refusal.
enum Place { ReaderBox, BarcodeBox, PageOfReturns };

/// Why this copy is not charged to this reader.
struct Objection {
    ChargeResult result;
    Refusal refusal;
};
using Verdict = std::optional<Objection>;

const QString OwnTitle; ///< null: the application title
const QString Hint = HintTitle.toString();

/// The period as a small whole number; what is unreadable or too large for one counts as none.
qint16 readDays(const Value& value)
{
    const qint64 days = value.integer().value_or(0);
    using Limits = std::numeric_limits<qint16>;
    return days >= Limits::min() && days <= Limits::max() ? static_cast<qint16>(days) : 0;
}

std::optional<Reader> readReader(ResumingWork& reads, const QString& readercode)
{
    const Recordset row = reads.select(
        u"select readstatus,term,bookcount,orderbook,daycount,ifcanre from DZK  where ReaderCode='%1'"_s.arg(
            readercode));
    if (row.eof()) return {};
    Reader reader;
    reader.status = row.field(u"readstatus").text();
    reader.term = row.field(u"term").moment();
    const auto most = row.field(u"bookcount").integer();
    const auto held = row.field(u"orderbook").integer();
    if (most && held) reader.quota = *most - *held;
    reader.days = readDays(row.field(u"daycount"));
    reader.mayHoldOverdue = row.field(u"ifcanre").isTrue();
    return reader;
}

/// The time of day is compared on purpose: a card whose last day is today has expired.
bool hasExpired(Session& session, const Reader& reader)
{
    const Moment now = GetServerDate(session);
    return reader.term && *reader.term < now;
}

QString cardFault(Session& session, const Reader& reader)
{
    if (sameText(reader.status, u"挂失")) return u"该读者证在挂失中。。。"_s;
    if (sameText(reader.status, u"无效")) return u"该读者证已注销！"_s;
    return hasExpired(session, reader) ? u"该读者证已过期"_s : u"读者证过期或无效！"_s;
}

Verdict checkCard(Session& session, const Reader& reader)
{
    const bool expired = hasExpired(session, reader);
    if (sameText(reader.status, u"有效") && !expired) return {};
    return Objection {NotAvailable, {cardFault(session, reader), Hint}};
}

/// The discharge page follows, where the reader can give a book back.
Verdict checkQuota(const Reader& reader)
{
    if (!reader.quota || *reader.quota > 0) return {};
    return Objection {
        QuotaUsedUp, {u"此读者借书额已满，不能再借新书！"_s, OwnTitle, Icon::Warning, PageOfReturns}};
}

/// The time of day is compared on purpose: a loan that is due today is overdue.
Verdict checkOverdue(ResumingWork& reads, const Reader& reader, const QString& readercode)
{
    if (reader.mayHoldOverdue) return {};
    const QString now = localeDateText(GetServerDate(reads.session()));
    const Recordset row = reads.select(
        u"Select count(jhskid) From jhsk Where readercode='%1' And yhdate<'%2'"_s.arg(readercode, now));
    const qint64 count = row.eof() ? 0 : row.field(0).integer().value_or(0);
    if (count <= 0) return {};
    // the line feed stands before the carriage return, as in every program of the suite
    return Objection {HoldsOverdue,
        {u"该读者存在%1册过期书刊。\n\r(该读者有过期书刊时不可继续借阅书刊)"_s.arg(count),
            OperationTitle.toString(), Icon::Warning, BarcodeBox}};
}

Verdict checkReader(
    ResumingWork& reads, const std::optional<Reader>& reader, const Manner& manner, const QString& readercode)
{
    if (!reader) return Objection {NoSuchReader, {manner.unknownReader, Hint, Icon::Warning, ReaderBox}};
    if (const auto objection = checkCard(reads.session(), *reader)) return objection;
    if (const auto objection = checkQuota(*reader)) return objection;
    return checkOverdue(reads, *reader, readercode);
}

/// Lost and withdrawn copies behave as unknown to the desk.
std::optional<Copy> readCopy(ResumingWork& reads, const Manner& manner, const QString& barcode)
{
    const Recordset row = reads.select(manner.copySelect.arg(barcode));
    if (row.eof()) return {};
    return Copy {row.field(u"borrowstatus").isTrue(), row.field(u"bookstatus").text()};
}

Verdict refuseCopy(ChargeResult result, const QString& text, const QString& title = Hint)
{
    return Objection {result, {text, title, Icon::Information, BarcodeBox}};
}

Verdict checkCopy(const std::optional<Copy>& copy)
{
    if (!copy) return refuseCopy(NoSuchCopy, u"书库没有此书的记录"_s);
    const bool reference = sameText(copy->status, u"典藏");
    if (copy->lendable)
        return reference ? refuseCopy(ReferenceCopy, u"此书是典藏书，不能外借"_s) : std::nullopt;
    if (sameText(copy->status, u"借出")) return refuseCopy(NotAvailable, u"此书当前已借出"_s, OwnTitle);
    // The select leaves lost and withdrawn copies out, so these two are not reached; they complete the
    // states.
    if (sameText(copy->status, u"丢失")) return refuseCopy(NotAvailable, u"此书已标记为丢失"_s, OwnTitle);
    if (sameText(copy->status, u"注销")) return refuseCopy(NotAvailable, u"此书已标记为注销"_s, OwnTitle);
    return refuseCopy(NotAvailable, u"此书当前不可借"_s);
}

/// The hold on this copy, if its last day still lies ahead. Only the first reservation is looked at. The time
/// of day is compared on purpose: a hold that ends today is over.
std::optional<Hold> findLiveHold(ResumingWork& reads, const QString& barcode)
{
    const Recordset row = reads.select(
        u"select barcode,oldtime,yyk.readercode,barcode,name,readerclass from yyk  join dzk on yyk.readercode=dzk.readercode where yyk.barcode='%1'"_s
            .arg(barcode));
    if (row.eof() || row.field(u"barcode").text().isEmpty()) return {};
    const auto lastDay = row.field(u"oldtime").moment();
    if (!lastDay || *lastDay < GetServerDate(reads.session())) return {};
    return Hold {
        row.field(u"readercode").text(), row.field(u"name").text(), row.field(u"readerclass").text()};
}

bool lendInSpiteOf(Session& session, DeskView& desk, const Hold& hold)
{
    desk.asking();
    const QString question
        = u"这本书已经有人预约了！预约读者资料如下：\n读者证号：%1\n读者姓名：%2\n读者类型：%3\n仍然要借出本书吗？(y/n)"_s
              .arg(hold.readercode, hold.name, hold.readerclass);
    if (session.prompt.ask(question, {}, Icon::Information, Answer::No)) return true;
    desk.refusing(u"已为读者 %1 保留，没有借出"_s.arg(hold.readercode));
    return false;
}

QString loanInsert(const Session& session, const Loan& loan, const QString& today, const QString& due)
{
    // A loan of a held copy starts its count of renewals anew.
    if (!loan.renewals || loan.reservation != Reservation::None)
        return u"insert into JHSK(readercode,barcode,orderdate,yhdate,operater) Values('%1','%2','%3','%4','%5')"_s
            .arg(loan.readercode, loan.barcode, today, due, session.OperatorName);
    return u"insert into JHSK(readercode,barcode,orderdate,yhdate,operater,res) Values('%1','%2','%3','%4','%5',%6)"_s
        .arg(
            loan.readercode, loan.barcode, today, due, session.OperatorName, QString::number(*loan.renewals));
}

/// Writes loan, copy and reader, and ends the reservation where there is one. Returns whether the writes may
/// stand: the copy has changed and the due date is certain.
bool sendLoan(ResumingWork& writes, const Loan& loan)
{
    Session& session = writes.session();
    if (loan.reservation == Reservation::Postponed)
        writes.send(u"update yyk set barcode='',orderstatus=0 where barcode='%1'"_s.arg(loan.barcode));
    const QString today = isoDate(GetServerDate(session));
    const DueDate due = dueDateFor(session, loan.days);
    writes.endTransactionOnFailure(); // not earlier: asking for the two dates clears any error before them
    writes.send(loanInsert(session, loan, today, isoDate(due.date)));
    const auto changed = writes.send(
        u"update SCK set borrowstatus=0,bookstatus='借出' where bookstatus<>'丢失' and  bookstatus<>'注销' and barcode='%1'"_s
            .arg(loan.barcode));
    const bool fulfilled = loan.reservation == Reservation::Fulfilled;
    const QString reserved = fulfilled ? u",yordercshu=yordercshu-1"_s : QString();
    writes.send(
        u"update DZK set orderbook=orderbook+1%1 where ReaderCode='%2'"_s.arg(reserved, loan.readercode));
    if (fulfilled) writes.send(u"delete yyk where barCode='%1'"_s.arg(loan.barcode));
    return changed.value_or(0) > 0 && due.certain;
}

ChargeResult writeLoan(Session& session, const Loan& loan)
{
    ResumingWork writes(session);
    if (!writes) return Charged;
    return writes.transact([&] { return sendLoan(writes, loan); }) ? Charged : NotCharged;
}

/// The checks in their order. Takes the period of the loan from the reader.
Verdict examine(ResumingWork& reads, const Manner& manner, Loan& loan)
{
    const auto reader = readReader(reads, loan.readercode);
    if (const auto objection = checkReader(reads, reader, manner, loan.readercode)) return objection;
    if (!manner.renewals && reader->days >= 1) loan.days = reader->days;
    return checkCopy(readCopy(reads, manner, loan.barcode));
}

ChargeResult refuse(Session& session, DeskView& desk, const Objection& objection)
{
    desk.refusing(objection.refusal.text);
    tell(session.prompt, objection.refusal, [&](int place) {
        if (place == ReaderBox)
            desk.focusReaderCode();
        else if (place == BarcodeBox)
            desk.selectBarCode();
        else
            desk.showPage(DischargePage);
    });
    return objection.result;
}

ChargeResult charge(
    Session& session, DeskView& desk, const Manner& manner, const QString& barcode, const QString& readercode)
{
    if (readercode.isEmpty() || barcode.isEmpty()) return Incomplete;
    ResumingWork reads(session);
    if (!reads) return Charged;
    Loan loan {.barcode = doubled(barcode), .readercode = doubled(readercode), .renewals = manner.renewals};
    if (const auto objection = examine(reads, manner, loan)) return refuse(session, desk, *objection);
    if (const auto hold = findLiveHold(reads, loan.barcode)) {
        const bool own = sameText(hold->readercode, readercode);
        if (!own && !lendInSpiteOf(session, desk, *hold)) return NotCharged;
        loan.reservation = own ? Reservation::Fulfilled : Reservation::Postponed;
    }
    return writeLoan(session, loan);
}

} // namespace

ChargeResult ChargeBook(Session& session, DeskView& desk, const QString& barcode, const QString& readercode)
{
    return charge(session, desk, FirstCharge, barcode, readercode);
}

ChargeResult RechargeBook(
    Session& session, DeskView& desk, qint16 count, const QString& barcode, const QString& readercode)
{
    return charge(session, desk, renewalManner(count), barcode, readercode);
}

} // namespace quilla
