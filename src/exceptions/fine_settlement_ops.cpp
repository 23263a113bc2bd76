#include "exceptions/fine_ops.h"
#include "frame/sublib.h"
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

} // namespace

bool FineHandling::ValidateFine()
{
    for (int index = FineBox::ReaderCode; index <= FineBox::Title; ++index) {
        if (!boxText(index).isEmpty()) continue;
        refuse(u"无效数据，数据输入不能为空。"_s, index);
        return false;
    }
    const bool anyKind = std::any_of(
        std::begin(FineKinds), std::end(FineKinds), [this](FineKind kind) { return m_view.isTicked(kind); });
    if (!anyKind) {
        warn(u"请选择罚款类别（罚款原因）。"_s);
        m_view.focusKind(FineKind::Defile);
        return false;
    }
    Connection conn;
    if (OpenDbConnection(m_session, conn) != GoOn) return false;
    const Recordset loan = openOrEmpty(m_session, conn,
        u"Select readercode from jhskv Where barcode='%1'"_s.arg(doubled(boxText(FineBox::Barcode))));
    m_session.error.clear();
    if (loan.eof()) refuse(u"无效条形码，取消该操作。"_s, FineBox::Barcode);
    return !loan.eof();
}

void FineHandling::SaveFine(int index)
{
    Connection conn;
    if (OpenDbConnection(m_session, conn) != GoOn) return;
    try {
        conn.begin(OnFailure::EndTransaction);
        sendSettlement(conn);
        conn.commit();
    } catch (const Error&) {
        m_session.error.attempt([&] { conn.rollback(); });
        m_session.error.clear();
        return warn(u"数据保存出错，取消该操作。"_s);
    }
    conn.close();
    goOnAfterSaving(index);
    SavedFlag = u"yes"_s;
}

/// The order is fixed: the ledger takes the copy while its state is still the old one, the history takes
/// the loan before it goes.
void FineHandling::sendSettlement(Connection& conn)
{
    for (const FineKind kind : FineKinds)
        if (m_view.isTicked(kind)) insertFine(conn, kind);
    if (m_view.isTicked(FineKind::Lost))
        insertLedgerRow(conn);
    else
        offerToReservation(conn);
    closeLoan(conn);
}

void FineHandling::insertFine(Connection& conn, FineKind kind)
{
    const QString fine
        = u"insert into FKK(readercode,name,barcode,bookname,yfmoney,sfmoney,cause,oprater,opratedate,memo) Values('%1','%2','%3','%4',%5,%6,'%7','%8',"_s
              .arg(doubled(boxText(FineBox::ReaderCode)), doubled(boxText(FineBox::ReaderName)),
                  doubled(boxText(FineBox::Barcode)), doubled(boxText(FineBox::Title)),
                  bareAmount(boxText(FineBox::due(kind))), bareAmount(boxText(FineBox::taken(kind))),
                  causeOf(kind), doubled(m_session.OperatorName));
    conn.execute(fine + u"'%1','%2')"_s.arg(today(m_session), doubled(boxText(FineBox::remark(kind)))));
}

void FineHandling::insertLedgerRow(Connection& conn)
{
    conn.execute(
        u"insert into BookOut(bookname,author,barcode,price,cause,outdate,operater) select bookname,author,barcode,price,'丢失','%1','%2' from sck Left Join zsk on sck.zskid=zsk.zskid and sck.bookstatus<>'丢失' and  sck.bookstatus<>'注销' where sck.barcode='%3'"_s
            .arg(today(m_session), doubled(m_session.OperatorName), doubled(boxText(FineBox::Barcode))));
}

/// A copy that comes back goes to the earliest reservation of its title, unless that one has a copy. The
/// question stands inside the open transaction, and a hold that is made here has no last day.
void FineHandling::offerToReservation(Connection& conn)
{
    const QString barcode = doubled(boxText(FineBox::Barcode));
    const Recordset row = conn.open(
        u"select top 1 yyk.zskid,readercode,yyk.barcode from yyk join sck on  yyk.zskid=sck.zskid and (sck.bookstatus<>'丢失' and  sck.bookstatus<>'注销') and sck.barcode='%1' order by ordertime asc"_s
            .arg(barcode));
    if (row.eof() || !row.field(u"barcode").text().isEmpty()) return;
    const QString readercode = row.field(u"readercode").text();
    const QString question
        = u"读者证号为【"_s + readercode + u"】的读者最先预约了这本书。是否将这本书预约给这位读者？"_s;
    if (!m_session.prompt.ask(question, OperationTitle, Icon::Warning)) return;
    conn.execute(u"update yyk set barcode='%1',orderstatus=1 where readercode='%2' and zskid=%3"_s.arg(
        barcode, doubled(readercode), row.field(u"zskid").text()));
}

void FineHandling::closeLoan(Connection& conn)
{
    const QString barcode = doubled(boxText(FineBox::Barcode));
    conn.execute(
        u"insert into JHSLSK(readercode,barcode,orderdate,yhdate,backdate,operater) select readercode,barcode,orderdate,yhdate,'%1','%2' from JHSK where barcode='%3'"_s
            .arg(today(m_session), doubled(m_session.OperatorName), barcode));
    conn.execute(u"update DZK set orderbook=orderbook-1 where readercode='%1'"_s.arg(
        doubled(boxText(FineBox::ReaderCode))));
    conn.execute(m_view.isTicked(FineKind::Lost)
            ? u"update SCK set borrowstatus=0,bookstatus='丢失' where bookstatus<>'丢失' and  bookstatus<>'注销' and barcode='%1'"_s
                  .arg(barcode)
            : u"update SCK set borrowstatus=1,bookstatus='库本' where bookstatus<>'丢失' and  bookstatus<>'注销' and barcode='%1' And bookstatus<>'注销'"_s
                  .arg(barcode));
    conn.execute(u"delete from JHSK where barcode='%1'"_s.arg(barcode));
}

/// The first button of the menu's screen keeps the reader for the next fine.
void FineHandling::goOnAfterSaving(int index)
{
    if (EntryMode == u"E" || index == 1) return m_view.closeScreen();
    clearBoxes(FineBox::Barcode);
    clearKinds();
    clearWorkings();
    ReloadReaderHistory(boxText(FineBox::ReaderCode), boxText(FineBox::Barcode));
    m_session.error.clear();
    m_view.focusBox(FineBox::ReaderCode);
}

} // namespace quilla
