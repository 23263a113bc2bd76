#include "platform/db/sources.h"

#include "platform/core/error.h"

namespace quilla {

namespace {

Error noCurrentRow()
{
    return Error(ErrorNumber::NoCurrentRow, u"Recordset"_s, u"没有当前记录。"_s);
}

QString textOf(const Cell& cell)
{
    return QString::fromUtf8(cell.text.data(), qsizetype(cell.text.size()));
}

Moment momentOf(qint64 milliseconds)
{
    return {QDate::fromJulianDay(milliseconds / MillisecondsPerDay),
        QTime::fromMSecsSinceStartOfDay(int(milliseconds % MillisecondsPerDay))};
}

Value valueOf(const Cell& cell)
{
    switch (cell.form) {
    case Cell::Form::Null:
        return Value();
    case Cell::Form::Text:
        return Value(textOf(cell));
    case Cell::Form::Integer:
        return Value(cell.number);
    case Cell::Form::Bit:
        return Value(cell.number != 0);
    case Cell::Form::Decimal:
        return Value(DecimalText {textOf(cell)});
    case Cell::Form::Date:
        return Value(momentOf(cell.number));
    }
    return Value();
}

} // namespace

Recordset::Source::Source(Fields fields)
    : m_fields(std::move(fields))
    , m_slots(m_fields->size())
{
}

void Recordset::Source::forgetRow()
{
    for (Slot& slot : m_slots)
        slot.known = false;
}

void Recordset::Source::next()
{
    if (eof()) throw noCurrentRow();
    forgetRow();
    moveNext();
}

void Recordset::Source::first()
{
    forgetRow();
    moveFirst();
}

const Value& Recordset::Source::field(int index)
{
    const auto at = std::size_t(index);
    if (index < 0 || at >= m_slots.size())
        throw Error(ErrorNumber::NoSuchField, u"Recordset"_s, u"没有第 %1 个字段。"_s.arg(index));
    if (eof()) throw noCurrentRow();
    Slot& slot = m_slots[at];
    if (!slot.known) {
        slot.value = valueOf(cell(index));
        slot.known = true;
    }
    return slot.value;
}

Recordset Recordset::Source::child(QStringView name) const
{
    throw Error(ErrorNumber::NoSuchField, u"Recordset"_s, u"没有子记录集 %1。"_s.arg(name));
}

KeysetSource::KeysetSource(Cursor& cursor)
    : Source(cursor.fields())
    , m_rows(cursor)
{
}

ForwardSource::ForwardSource(std::unique_ptr<Cursor> cursor, std::function<void()> released)
    : Source(cursor->fields())
    , m_cursor(std::move(cursor))
    , m_released(std::move(released))
{
    moveNext();
}

ForwardSource::~ForwardSource()
{
    release();
}

void ForwardSource::release()
{
    if (!m_cursor) return;
    m_cursor.reset();
    m_released();
}

void ForwardSource::moveNext()
{
    try {
        if (!m_cursor->step()) release();
    } catch (...) {
        release();
        throw;
    }
}

void ForwardSource::moveFirst()
{
    throw Error(ErrorNumber::NoCurrentRow, u"Recordset"_s, u"只进记录集不能回到第一条记录。"_s);
}

} // namespace quilla
