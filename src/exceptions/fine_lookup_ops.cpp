#include "exceptions/fine_ops.h"
#include "frame/sublib.h"
#include "platform/db/decimal.h"

namespace quilla {

namespace {

/// How one of the first four boxes is looked up. Of several rows the first counts.
struct LookUp {
    QString statement;
    QString notFound;
    std::vector<std::pair<QString, int>> found; ///< fields and the boxes that take them
};

LookUp lookUpOf(int index)
{
    switch (index) {
    case FineBox::ReaderCode:
        return {u"Select name From dzk Where readercode='%1'"_s, u"无效读者证号，取消该操作。"_s,
            {{u"name"_s, FineBox::ReaderName}}};
    case FineBox::ReaderName:
        return {u"Select readercode From dzk Where name='%1'"_s, u"无效读者姓名，取消该操作。"_s,
            {{u"readercode"_s, FineBox::ReaderCode}}};
    case FineBox::Barcode:
        return {u"Select readercode,name,bookname  From jhskV Where barcode='%1'"_s,
            u"此条形码不存在 或 不存在借阅信息。"_s,
            {{u"readercode"_s, FineBox::ReaderCode}, {u"name"_s, FineBox::ReaderName},
                {u"bookname"_s, FineBox::Title}}};
    default:
        return {u"Select readercode,name,barcode From jhskV Where bookname='%1'"_s,
            u"此图书名不存在 或 不存在借阅信息。"_s,
            {{u"readercode"_s, FineBox::ReaderCode}, {u"name"_s, FineBox::ReaderName},
                {u"barcode"_s, FineBox::Barcode}}};
    }
}

bool isTakenAmount(int index)
{
    return std::any_of(std::begin(FineKinds), std::end(FineKinds),
        [index](FineKind kind) { return index == FineBox::taken(kind); });
}

} // namespace

void FineHandling::Text1_LostFocus(int index)
{
    const QString text = boxText(index).trimmed();
    m_view.setBox(index, text);
    if (text.isEmpty()) return;
    if (isTakenAmount(index)) return checkAmount(index, text);
    if (index >= FineBox::FirstOfKinds || LookupDone) return;
    Connection conn;
    if (OpenDbConnection(m_session, conn) != GoOn) return;
    lookUp(index, conn, text);
    LookupDone = !m_session.error.isSet();
    m_session.error.clear();
}

void FineHandling::checkAmount(int index, const QString& text)
{
    if (const auto amount = Decimal::read(text)) return m_view.setBox(index, amount->fixed(2));
    warn(u"无效数字格式，取消该操作。"_s);
    m_view.setBox(index, {});
    m_view.focusBox(index);
}

void FineHandling::lookUp(int index, Connection& conn, const QString& text)
{
    const LookUp rule = lookUpOf(index);
    const Recordset row = openOrEmpty(m_session, conn, rule.statement.arg(doubled(text)));
    if (row.eof()) {
        warn(rule.notFound);
        return resetScreen(index);
    }
    for (const auto& [field, box] : rule.found)
        m_view.setBox(box, row.field(field).text().trimmed());
    if (index == FineBox::ReaderCode || index == FineBox::ReaderName)
        checkReader(conn);
    else
        checkBook();
}

/// The reader was looked up: the book that stands there already must be out with this reader.
void FineHandling::checkReader(Connection& conn)
{
    const QString readercode = boxText(FineBox::ReaderCode);
    if (!sameText(readercode, GridReader)) ReloadReaderHistory(readercode, {});
    const QString barcode = boxText(FineBox::Barcode);
    if (barcode.isEmpty()) return;
    const Recordset loan = openOrEmpty(m_session, conn,
        u"Select barcode From jhsk Where barcode='%1' And readercode='%2'"_s.arg(
            doubled(barcode), doubled(readercode)));
    if (!loan.eof()) return;
    warn(u"该读者并不存在此书刊的节阅信息。"_s);
    clearBoxes(FineBox::Barcode);
    clearKinds();
    clearWorkings();
    m_view.focusBox(FineBox::Barcode);
}

/// The book was looked up: its fines are worked out anew.
void FineHandling::checkBook()
{
    const QString readercode = boxText(FineBox::ReaderCode);
    const QString barcode = boxText(FineBox::Barcode);
    if (!sameText(readercode, GridReader)) ReloadReaderHistory(readercode, barcode);
    clearKinds();
    ComputeOverdueFine(readercode, barcode);
}

void FineHandling::resetScreen(int index)
{
    clearBoxes(FineBox::ReaderCode);
    clearKinds();
    clearWorkings();
    GridReader.clear();
    Recordset none;
    m_view.showLoans(none);
    m_view.showFines(none);
    m_view.focusBox(index);
}

void FineHandling::ReloadReaderHistory(const QString& readercode, const QString& barcode)
{
    if (readercode.isEmpty()) return;
    Connection conn;
    if (OpenDbConnection(m_session, conn) != GoOn) return;
    QString condition = u" where readercode='"_s + doubled(readercode) + u'\'';
    if (!barcode.isEmpty()) condition += u" and barcode='"_s + doubled(barcode) + u'\'';
    Recordset loans
        = openOrEmpty(m_session, conn, u"Select barcode,bookname,orderdate,yhdate From jhskV "_s + condition);
    m_view.showLoans(loans);
    Recordset fines = openOrEmpty(
        m_session, conn, u"Select barcode,bookname,cause,sfmoney,opratedate From FKK "_s + condition);
    m_view.showFines(fines);
    GridReader = readercode;
}

} // namespace quilla
