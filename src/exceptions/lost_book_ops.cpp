#include "exceptions/lost_book_ops.h"

#include "platform/core/date_box.h"
#include "platform/core/dates.h"
#include "platform/db/decimal.h"

namespace quilla {

namespace {

LookUp lookUpOf(int index)
{
    switch (index) {
    case LostBox::ReaderCode:
        return lookUpByCode();
    case LostBox::ReaderName:
        return lookUpByName();
    case LostBox::Barcode:
        return {u"Select readercode,name,bookname,lost*price as JinE From jhskV Where barcode='%1'"_s,
            NoSuchBarcode.toString(),
            {{u"readercode"_s, LostBox::ReaderCode}, {u"name"_s, LostBox::ReaderName},
                {u"bookname"_s, LostBox::Title}}};
    default:
        return {u"Select readercode,name,barcode,lost*price as JinE From jhskV Where bookname='%1'"_s,
            NoSuchTitle.toString(),
            {{u"readercode"_s, LostBox::ReaderCode}, {u"name"_s, LostBox::ReaderName},
                {u"barcode"_s, LostBox::Barcode}}};
    }
}

bool isReaderBox(int index)
{
    return index == LostBox::ReaderCode || index == LostBox::ReaderName;
}

} // namespace

QString shownDate(const QString& text)
{
    const auto date = platformDate(text);
    return date ? isoDate(*date) : text;
}

ListSearch lostBookList()
{
    return {.select = u"Select barcode,bookname,readunit,readercode,name,yfjine,createdate From DiushiK"_s};
}

bool confirmLostDeletion(Session& session)
{
    return session.prompt.ask(u"是否确定删除所选的丢失登记资料？"_s, OperationTitle, Icon::Warning);
}

void deleteLostEntries(Session& session, const QStringList& barcodes, const std::function<void()>& gone)
{
    ResumingWork work(session, Opened::Directly);
    for (const QString& barcode : barcodes) {
        work.send(u"Delete From DiuShiK Where barcode='%1'"_s.arg(doubled(barcode)));
        gone();
    }
}

std::optional<Recordset> copiesOutWith(Session& session, const QString& readercode)
{
    return rowsFound(session,
        {.select = u"select barcode,bookname from jhskV Where readercode='%1'"_s.arg(doubled(readercode))});
}

LostEntry::LostEntry(Session& session, BoxView& view)
    : m_session(session)
    , m_view(view)
{
}

/// Reports the refusal. Returns false, so that a check can end with it.
bool LostEntry::refuse(const QString& text, int box)
{
    tell(m_session.prompt, Refusal {.text = text, .box = box}, [this](int index) { m_view.focusBox(index); });
    return false;
}

void LostEntry::empty(int from, int to)
{
    for (int index = from; index <= to; ++index)
        m_view.setBox(index, {});
}

bool LostEntry::Text1_LostFocus(int index)
{
    const QString text = trimBlanks(box(index));
    m_view.setBox(index, text);
    if (text.isEmpty()) return true;
    if (index == LostBox::Date) return checkDate(text);
    if (index >= LoanBox::Count || LookupDone) return true;
    std::optional<Refusal> refusal;
    {
        ResumingWork work(m_session);
        if (!work) return true;
        refusal = lookUp(work, index, text);
        LookupDone = !work.failed(); // set last, since filling the other boxes has cleared it
    }
    return !refusal || refuse(refusal->text, refusal->box);
}

bool LostEntry::checkDate(const QString& text)
{
    if (!CheckDateBox(text, m_session.prompt).refused) return true;
    m_view.focusBox(LostBox::Date);
    return false;
}

/// A reader who is not found empties one box, a book that is not found those that hang on it, and a reader
/// who does not have the book that of the barcode.
std::optional<Refusal> LostEntry::lookUp(ResumingWork& work, int index, const QString& text)
{
    const LookUp rule = lookUpOf(index);
    const auto row = lookUpBox(work, m_view, rule, text);
    if (!row) {
        isReaderBox(index) ? empty(index, index) : empty(LostBox::ReaderCode, LostBox::Amount);
        return Refusal {.text = rule.notFound, .box = index};
    }
    if (!isReaderBox(index))
        m_view.setBox(
            LostBox::Amount, Decimal::read(row->field(u"jine").text()).value_or(Decimal()).fixed(2));
    else if (!isOutWithReader(work, m_view)) {
        m_view.setBox(LostBox::Barcode, {});
        return Refusal {.text = NotOutWithReader.toString(), .box = LostBox::Barcode};
    }
    return {};
}

bool LostEntry::ValidateLostEntry()
{
    for (int index = 0; index < LostBox::Count; ++index) {
        if (!isBlank(box(index))) continue;
        return refuse(u"无效数据输入，取消该操作。"_s, index);
    }
    return EntryMode != u"A" || !isRegistered();
}

/// Also true without a connection, since nothing can be saved then.
bool LostEntry::isRegistered()
{
    {
        ResumingWork work(m_session);
        if (!work) return true;
        const Recordset entry
            = work.select(u"Select barcode From DiuShiK Where readercode='%1' And barcode='%2'"_s.arg(
                doubled(box(LostBox::ReaderCode)), doubled(box(LostBox::Barcode))));
        if (entry.eof()) return false;
    }
    m_session.prompt.inform(u"已经存在此书的丢失登记资料。"_s, OperationTitle);
    empty(0, LostBox::Date);
    m_view.focusBox(LostBox::ReaderCode);
    return true;
}

std::optional<QStringList> LostEntry::SaveNewLostEntry()
{
    QStringList line {box(LostBox::Barcode), box(LostBox::Title), {}, box(LostBox::ReaderCode),
        box(LostBox::ReaderName), box(LostBox::Amount), box(LostBox::Date)};
    {
        ResumingWork work(m_session);
        if (!work) return {};
        const Recordset reader = work.select(
            u"Select readunit From dzk Where readercode='%1'"_s.arg(doubled(line[LostColumn::ReaderCode])));
        if (!reader.eof()) line[LostColumn::Unit] = reader.field(0).text();
        // The columns are not named: other programs of the suite count on these seven in this order.
        const QString insert = u"Insert into diushik Values ('%1','%2','%3','%4','%5',%6,'%7')"_s.arg(
            doubled(line[LostColumn::ReaderCode]), doubled(line[LostColumn::ReaderName]),
            doubled(line[LostColumn::Unit]), doubled(line[LostColumn::Barcode]),
            doubled(line[LostColumn::Title]),
            Decimal::read(line[LostColumn::Amount]).value_or(Decimal()).fixed(2),
            doubled(line[LostColumn::Date]));
        if (work.send(insert)) {
            line[LostColumn::Date] = shownDate(line[LostColumn::Date]);
            return line;
        }
    }
    tellFailure();
    return {};
}

bool LostEntry::SaveLostEntryDate()
{
    {
        ResumingWork work(m_session);
        if (!work) return false;
        if (work.send(u"Update diushik Set createdate='%1' Where barcode='%2' And readercode='%3'"_s.arg(
                doubled(box(LostBox::Date)), doubled(box(LostBox::Barcode)),
                doubled(box(LostBox::ReaderCode)))))
            return true;
    }
    tellFailure();
    return false;
}

/// The message speaks of adding also when an entry was changed; operators know it in this form.
void LostEntry::tellFailure()
{
    m_session.prompt.warn(u"数据添加出错，取消该操作。"_s, OperationTitle);
}

} // namespace quilla
