#include "holdings/holdings_writer_ops.h"

#include "platform/core/dates.h"
#include "platform/core/text.h"
#include "readers/import_lists_ops.h"

namespace quilla {

namespace {

QString titleColumns()
{
    QStringList columns {u"zskid"_s, u"bookcount"_s};
    for (int field = 0; field < TitleField::Count; ++field)
        columns.append(titleField(field).column);
    return columns.join(u',');
}

} // namespace

HoldingsWriter::HoldingsWriter(Connection& connection, HoldingsLists& lists, qint64 lastTitle)
    : m_connection(connection)
    , m_lists(lists)
    , m_title(connection, u"zsk", titleColumns())
    , m_copy(connection, u"sck", u"zskid,barcode,rollcode,bookplace,price,bookstatus,borrowstatus")
    , m_lastTitle(lastTitle)
{
}

void HoldingsWriter::write(const BookRecord& book)
{
    const Digest digest = titleDigest(book.title);
    const auto known = m_lists.titles.constFind(digest);
    qint64 zskid = 0;
    if (known == m_lists.titles.constEnd()) {
        zskid = writeTitle(book);
        m_lists.titles.insert(digest, zskid);
    } else {
        zskid = *known;
        m_moreCopies[zskid] += int(book.copies.size());
        ++m_joined;
    }
    for (const CopyValues& copy : book.copies)
        writeCopy(zskid, copy);
}

qint64 HoldingsWriter::writeTitle(const BookRecord& book)
{
    const qint64 zskid = ++m_lastTitle;
    m_title.number(zskid).number(qint64(book.copies.size()));
    for (int field = 0; field < TitleField::Count; ++field) {
        const QString& text = book.title[std::size_t(field)];
        if (field == TitleField::Number)
            m_title.number(text.toInt());
        else if (field == TitleField::Catalogued)
            m_title.date(readDay(text).value_or(QDate()));
        else
            m_title.text(text);
    }
    m_title.send();
    noteNumber(zskid, book.title);
    ++m_titles;
    return zskid;
}

void HoldingsWriter::noteNumber(qint64 zskid, const TitleValues& title)
{
    const QString& classcode = title[TitleField::Class];
    if (classcode.isEmpty()) return;
    if (title[TitleField::Number].isEmpty()) {
        m_unnumbered.push_back({zskid, comparable(classcode)});
        return;
    }
    int& last = m_lists.lastNumbers[comparable(classcode)];
    last = std::max(last, title[TitleField::Number].toInt());
}

void HoldingsWriter::writeCopy(qint64 zskid, const CopyValues& copy)
{
    m_copy.number(zskid).text(copy[CopyField::Barcode]).text(copy[CopyField::Volume]);
    m_copy.text(copy[CopyField::Location]);
    if (copy[CopyField::Price].isEmpty())
        m_copy.null();
    else
        m_copy.value(Value(DecimalText {copy[CopyField::Price]}));
    m_copy.text(copy[CopyField::State]).bit(true).send();
    ++m_copies;
}

void HoldingsWriter::finish()
{
    for (const Unnumbered& title : m_unnumbered)
        m_connection.execute(
            u"update zsk set zch=%1 where zskid=%2"_s.arg(++m_lists.lastNumbers[title.classcode])
                .arg(title.zskid));
    for (auto more = m_moreCopies.cbegin(); more != m_moreCopies.cend(); ++more)
        m_connection.execute(
            u"update zsk set bookcount=isnull(bookcount,0)+%1 where zskid=%2"_s.arg(*more).arg(more.key()));
}

} // namespace quilla
