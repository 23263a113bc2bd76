#include "desk/reader_panel_ops.h"

#include "frame/sublib.h"
#include "frame/work.h"

namespace quilla {

namespace {

QString shown(const Recordset& row, QStringView field)
{
    return trimBlanks(row.field(field).text());
}

QString freeLoans(const Recordset& row)
{
    const auto most = row.field(u"bookcount").integer();
    const auto held = row.field(u"orderbook").integer();
    return most && held ? QString::number(*most - *held) : QString();
}

ReaderPanel panelOf(const Recordset& row)
{
    ReaderPanel panel;
    panel[PanelLabel::Code] = shown(row, u"ReaderCode");
    panel[PanelLabel::Name] = shown(row, u"Name");
    panel[PanelLabel::Sex] = shown(row, u"Sex");
    panel[PanelLabel::Class] = shown(row, u"ReaderClass");
    panel[PanelLabel::Unit] = shown(row, u"readunit");
    panel[PanelLabel::Quota] = shown(row, u"bookcount");
    panel[PanelLabel::OnLoan] = shown(row, u"orderbook");
    panel[PanelLabel::Free] = freeLoans(row);
    panel[PanelLabel::Status] = shown(row, u"readstatus");
    panel[PanelLabel::Term] = isoDate(row.field(u"term").moment());
    return panel;
}

void repairStatus(ResumingWork& work, DeskView& desk, const Recordset& row, const QString& readercode)
{
    const QString status = row.field(u"readstatus").text();
    const auto term = row.field(u"term").moment();
    if (!term) return;
    const bool expired = *term < GetServerDate(work.session());
    const QString before = expired ? u"有效"_s : u"超期"_s;
    const QString after = expired ? u"超期"_s : u"有效"_s;
    if (!sameText(status, before)) return;
    desk.showReaderStatus(after);
    work.send(u"update dzk set readstatus='%1' where readercode='%2'"_s.arg(after, readercode));
}

} // namespace

void ShowReader(Session& session, DeskView& desk, const QString& readercode)
{
    desk.clearReaderPanel();
    ResumingWork work(session);
    if (!work) return;
    const QString code = doubled(readercode);
    const Recordset row = work.select(
        u"select ReaderCode,Name,Sex,ReaderClass,readunit,bookcount,orderbook,readstatus,term from DZK where readercode='%1'"_s
            .arg(code));
    if (row.eof()) {
        desk.refusing(u"无效读者号"_s);
        session.prompt.warn(u"无效读者号，取消该操作。"_s, OperationTitle);
        desk.emptyReaderCode();
        desk.focusReaderCode();
        return;
    }
    desk.emptyAndFocusBarCode();
    desk.fillReaderPanel(panelOf(row));
    repairStatus(work, desk, row, code);
}

void ShowLoans(Session& session, DeskView& desk, const QString& readercode)
{
    desk.setUpLoans();
    if (readercode.isEmpty()) return;
    ResumingWork work(session);
    if (!work) return;
    Recordset loans = work.select(
        u"select a.jhskid,a.barcode,b.bookname,b.author,a.orderdate,a.yhdate,a.operater from jhsk a join sck c on a.barcode=c.barcode join zsk b on b.zskid=c.zskid and c.bookstatus<>'丢失' and  c.bookstatus<>'注销'  where a.ReaderCode='%1'"_s
            .arg(doubled(readercode)));
    if (!loans.eof()) desk.bindLoans(loans);
}

void ShowReturns(Session& session, DeskView& desk, const QString& readercode, Returns which)
{
    desk.setUpReturns();
    if (readercode.isEmpty()) return;
    QString select
        = u"select a.jhslsk,a.barcode,c.bookname,a.orderdate,a.yhdate,a.backdate,a.operater from  JHSLSK  a join sck b on a.barcode=b.barcode and b.bookstatus<>'丢失' and  b.bookstatus<>'注销' join zsk c on b.zskid=c.zskid where a.ReaderCode='%1'"_s
              .arg(doubled(readercode));
    if (which == Returns::Today)
        select
            += u" And year(a.backdate)=year(getdate()) And month(a.backdate)=month(getdate()) And day(a.backdate)=day(getdate())"_s;
    select += u" order by a.jhslsk desc"_s;
    ResumingWork work(session);
    if (!work) return;
    Recordset returns = work.select(select);
    if (!returns.eof()) desk.bindReturns(returns);
}

QString bookDetails(Session& session, const QString& barcode)
{
    if (isBlank(barcode)) return {};
    ResumingWork work(session);
    if (!work) return {};
    const Recordset row = work.select(
        u"Select bookname as [书    名],author as [作    者],publisher as [出 版 者],ztc as [主 题 词],classcode as [分 类 号],catatime as [入库日期],docclass as [文献类型],pubdate as [出版日期],books as [丛 书 名],booksauthor as [丛书作者],edition as [版    本],pubplace as [出 版 地],pages as [页    数],authorcode as [作 者 号],lagclass as [语    种] From SCK Left Join ZSK ON sck.zskid=zsk.zskid and sck.bookstatus<>'丢失' and  sck.bookstatus<>'注销' Where sck.barcode='%1'"_s
            .arg(doubled(barcode)));
    QStringList lines;
    for (int field = 0; !row.eof() && field < row.fieldCount(); ++field)
        lines.append(row.fieldName(field) + u':' + row.field(field).text());
    return lines.join(u'\n');
}

} // namespace quilla
