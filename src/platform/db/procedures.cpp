#include "platform/db/procedures.h"

#include "platform/db/sources.h"

namespace quilla {

namespace {

/// `room` keeps the text that the cell points to.
Cell cellOf(const Value& value, QByteArray& room)
{
    const auto textCell = [&](Cell::Form form) {
        room = value.text().toUtf8();
        return Cell {form, 0, {room.constData(), std::size_t(room.size())}};
    };
    switch (value.kind()) {
    case sql::Kind::Unknown:
        return Cell();
    case sql::Kind::Text:
        return textCell(Cell::Form::Text);
    case sql::Kind::Decimal:
        return textCell(Cell::Form::Decimal);
    case sql::Kind::Integer:
        return {Cell::Form::Integer, *value.integer(), {}};
    case sql::Kind::Bit:
        return {Cell::Form::Bit, value.isTrue(), {}};
    case sql::Kind::Date:
        return dateCell(*value.plainMoment());
    }
    return Cell();
}

/// Rows that are there already.
class WorkedOutCursor final : public Cursor {
public:
    WorkedOutCursor(std::vector<Field> fields, std::vector<Value> values)
        : m_fields(std::make_shared<const std::vector<Field>>(std::move(fields)))
        , m_values(std::move(values))
    {
        Q_ASSERT(m_fields->empty() ? m_values.empty() : m_values.size() % m_fields->size() == 0);
    }

    Fields fields() const override { return m_fields; }
    bool step() override
    {
        return std::size_t(++m_row + 1) * m_fields->size() <= m_values.size() && !m_fields->empty();
    }
    Cell cell(int column) override
    {
        return cellOf(m_values[std::size_t(m_row) * m_fields->size() + std::size_t(column)], m_text);
    }

private:
    Fields m_fields;
    std::vector<Value> m_values;
    QByteArray m_text;
    qsizetype m_row = -1;
};

} // namespace

Recordset recordsetOf(std::vector<Field> fields, std::vector<Value> values)
{
    WorkedOutCursor cursor(std::move(fields), std::move(values));
    return Recordset(std::make_unique<KeysetSource>(cursor));
}

} // namespace quilla
