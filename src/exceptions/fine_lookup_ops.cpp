#include "exceptions/fine_lookup_ops.h"

#include "exceptions/fine_amount_ops.h"
#include "frame/sublib.h"
#include "frame/work.h"
#include "platform/db/decimal.h"

namespace quilla {

namespace {

LookUp lookUpOf(int index)
{
    switch (index) {
    case FineBox::ReaderCode:
        return lookUpByCode();
    case FineBox::ReaderName:
        return lookUpByName();
    case FineBox::Barcode:
        return {u"Select readercode,name,bookname  From jhskV Where barcode='%1'"_s, NoSuchBarcode.toString(),
            {{u"readercode"_s, FineBox::ReaderCode}, {u"name"_s, FineBox::ReaderName},
                {u"bookname"_s, FineBox::Title}}};
    default:
        return {u"Select readercode,name,barcode From jhskV Where bookname='%1'"_s, NoSuchTitle.toString(),
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

FineLookup::FineLookup(Session& session, FineView& view)
    : m_session(session)
    , m_view(view)
{
}

void FineLookup::Text1_LostFocus(int index)
{
    const QString text = trimBlanks(m_view.box(index));
    m_view.setBox(index, text);
    if (text.isEmpty()) return;
    if (isTakenAmount(index)) return checkAmount(index, text);
    if (index >= FineBox::FirstOfKinds || LookupDone) return;
    ResumingWork work(m_session);
    if (work) LookupDone = lookUp(work, index, text);
}

void FineLookup::checkAmount(int index, const QString& text)
{
    if (const auto amount = Decimal::read(text)) return m_view.setBox(index, amount->fixed(2));
    warn(u"无效数字格式，取消该操作。"_s);
    m_view.setBox(index, {});
    m_view.focusBox(index);
}

bool FineLookup::lookUp(ResumingWork& work, int index, const QString& text)
{
    const LookUp rule = lookUpOf(index);
    if (!lookUpBox(work, m_view, rule, text)) {
        warn(rule.notFound);
        resetScreen(index);
        return !work.failed();
    }
    const bool byReader = index == FineBox::ReaderCode || index == FineBox::ReaderName;
    return byReader ? checkReader(work) : checkBook();
}

/// The reader was looked up: the book that stands there already must be out with this reader.
bool FineLookup::checkReader(ResumingWork& work)
{
    const QString readercode = m_view.box(FineBox::ReaderCode);
    const bool listed = sameText(readercode, GridReader) || ReloadReaderHistory(readercode, {});
    if (!isOutWithReader(work, m_view)) {
        warn(NotOutWithReader.toString());
        clearFine(m_view, FineBox::Barcode);
        m_view.focusBox(FineBox::Barcode);
    }
    return listed && !work.failed();
}

/// The book was looked up: its fines are worked out anew.
bool FineLookup::checkBook()
{
    const QString readercode = m_view.box(FineBox::ReaderCode);
    const QString barcode = m_view.box(FineBox::Barcode);
    if (!sameText(readercode, GridReader)) ReloadReaderHistory(readercode, barcode);
    clearKinds(m_view);
    return ComputeOverdueFine(m_session, m_view, readercode, barcode);
}

void FineLookup::resetScreen(int index)
{
    clearFine(m_view, FineBox::ReaderCode);
    GridReader.clear();
    Recordset none;
    m_view.showLoans(none);
    m_view.showFines(none);
    m_view.focusBox(index);
}

bool FineLookup::ReloadReaderHistory(const QString& readercode, const QString& barcode)
{
    if (readercode.isEmpty()) return true;
    ResumingWork work(m_session);
    if (!work) return true;
    QString condition = u" where readercode='"_s + doubled(readercode) + u'\'';
    if (!barcode.isEmpty()) condition += u" and barcode='"_s + doubled(barcode) + u'\'';
    Recordset loans = work.select(u"Select barcode,bookname,orderdate,yhdate From jhskV "_s + condition);
    m_view.showLoans(loans);
    Recordset fines
        = work.select(u"Select barcode,bookname,cause,sfmoney,opratedate From FKK "_s + condition);
    m_view.showFines(fines);
    GridReader = readercode;
    return !work.failed();
}

void FineLookup::warn(const QString& text)
{
    m_session.prompt.warn(text, OperationTitle);
}

} // namespace quilla
