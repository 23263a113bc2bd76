#include "exceptions/fine_settlement_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"
#include "platform/db/decimal.h"

namespace quilla {

namespace {

QString causeOf(FineKind kind)
{
    switch (kind) {
    case FineKind::Overdue:
        return u"超期"_s;
    case FineKind::Defile:
        return u"污损"_s;
    default:
        return u"丢失"_s;
    }
}

/// An amount as it stands without quotes in a statement. What is no number leaves a hole there, which the
/// database refuses: nothing else of the box ever reaches it.
QString bareAmount(const QString& text)
{
    const auto amount = Decimal::read(text);
    return amount ? amount->fixed(2) : QString();
}

QString today(Session& session)
{
    return isoDate(GetServerDate(session));
}

Refusal objection(const QString& text, int box)
{
    return {text, OperationTitle.toString(), Icon::Warning, box};
}

void insertFine(StrictWork& work, const FineView& view, FineKind kind)
{
    const QString fine
        = u"insert into FKK(readercode,name,barcode,bookname,yfmoney,sfmoney,cause,oprater,opratedate,memo) Values('%1','%2','%3','%4',%5,%6,'%7','%8',"_s
              .arg(doubled(view.box(FineBox::ReaderCode)), doubled(view.box(FineBox::ReaderName)),
                  doubled(view.box(FineBox::Barcode)), doubled(view.box(FineBox::Title)),
                  bareAmount(view.box(FineBox::due(kind))), bareAmount(view.box(FineBox::taken(kind))),
                  causeOf(kind), doubled(work.session().OperatorName));
    work.execute(fine + u"'%1','%2')"_s.arg(today(work.session()), doubled(view.box(FineBox::remark(kind)))));
}

void insertLedgerRow(StrictWork& work, const FineView& view)
{
    work.execute(
        u"insert into BookOut(bookname,author,barcode,price,cause,outdate,operater) select bookname,author,barcode,price,'丢失','%1','%2' from sck Left Join zsk on sck.zskid=zsk.zskid and sck.bookstatus<>'丢失' and  sck.bookstatus<>'注销' where sck.barcode='%3'"_s
            .arg(today(work.session()), doubled(work.session().OperatorName),
                doubled(view.box(FineBox::Barcode))));
}

/// A copy that comes back goes to the earliest reservation of its title, unless that one has a copy. The
/// question stands inside the open transaction, and a hold that is made here has no last day.
void offerToReservation(StrictWork& work, const FineView& view)
{
    const QString barcode = doubled(view.box(FineBox::Barcode));
    const Recordset row = work.open(
        u"select top 1 yyk.zskid,readercode,yyk.barcode from yyk join sck on  yyk.zskid=sck.zskid and (sck.bookstatus<>'丢失' and  sck.bookstatus<>'注销') and sck.barcode='%1' order by ordertime asc"_s
            .arg(barcode));
    if (row.eof() || !row.field(u"barcode").text().isEmpty()) return;
    const QString readercode = row.field(u"readercode").text();
    const QString question
        = u"读者证号为【"_s + readercode + u"】的读者最先预约了这本书。是否将这本书预约给这位读者？"_s;
    if (!work.session().prompt.ask(question, OperationTitle, Icon::Warning)) return;
    work.execute(u"update yyk set barcode='%1',orderstatus=1 where readercode='%2' and zskid=%3"_s.arg(
        barcode, doubled(readercode), row.field(u"zskid").text()));
}

void closeLoan(StrictWork& work, const FineView& view)
{
    const QString barcode = doubled(view.box(FineBox::Barcode));
    work.execute(
        u"insert into JHSLSK(readercode,barcode,orderdate,yhdate,backdate,operater) select readercode,barcode,orderdate,yhdate,'%1','%2' from JHSK where barcode='%3'"_s
            .arg(today(work.session()), doubled(work.session().OperatorName), barcode));
    work.execute(u"update DZK set orderbook=orderbook-1 where readercode='%1'"_s.arg(
        doubled(view.box(FineBox::ReaderCode))));
    // 注销 is tested twice: the statement is the one that every program of the suite sends here
    work.execute(view.isTicked(FineKind::Lost)
            ? u"update SCK set borrowstatus=0,bookstatus='丢失' where bookstatus<>'丢失' and  bookstatus<>'注销' and barcode='%1'"_s
                  .arg(barcode)
            : u"update SCK set borrowstatus=1,bookstatus='库本' where bookstatus<>'丢失' and  bookstatus<>'注销' and barcode='%1' And bookstatus<>'注销'"_s
                  .arg(barcode));
    work.execute(u"delete from JHSK where barcode='%1'"_s.arg(barcode));
}

/// The order is fixed: the ledger takes the copy while its state is still the old one, the history takes
/// the loan before it goes.
void sendSettlement(StrictWork& work, const FineView& view)
{
    for (const FineKind kind : FineKinds)
        if (view.isTicked(kind)) insertFine(work, view, kind);
    if (view.isTicked(FineKind::Lost))
        insertLedgerRow(work, view);
    else
        offerToReservation(work, view);
    closeLoan(work, view);
}

} // namespace

std::optional<Refusal> ValidateFine(Session& session, const FineView& view)
{
    for (int index = FineBox::ReaderCode; index <= FineBox::Title; ++index)
        if (view.box(index).isEmpty()) return objection(u"无效数据，数据输入不能为空。"_s, index);
    const bool anyKind = std::any_of(
        std::begin(FineKinds), std::end(FineKinds), [&](FineKind kind) { return view.isTicked(kind); });
    if (!anyKind) return objection(u"请选择罚款类别（罚款原因）。"_s, FineBox::ofKind(FineKind::Defile));
    ResumingWork work(session);
    if (!work) return Refusal();
    const Recordset loan = work.select(
        u"Select readercode from jhskv Where barcode='%1'"_s.arg(doubled(view.box(FineBox::Barcode))));
    if (loan.eof()) return objection(u"无效条形码，取消该操作。"_s, FineBox::Barcode);
    return {};
}

bool SaveFine(Session& session, const FineView& view)
{
    return handled(
        session, Opened::Asking,
        [&](StrictWork& work) { work.transact([&] { sendSettlement(work, view); }); },
        [&](const Error&) { session.prompt.warn(u"数据保存出错，取消该操作。"_s, OperationTitle); });
}

} // namespace quilla
