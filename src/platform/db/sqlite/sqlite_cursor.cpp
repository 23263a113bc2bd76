#include "platform/db/sqlite/sqlite_statement.h"

#include "platform/db/moment.h"

#include <charconv>
#include <cmath>

namespace quilla {

using sql::Kind;

SqliteCursor::SqliteCursor(SqliteStatementLoan statement, Fields fields)
    : m_statement(std::move(statement))
    , m_fields(std::move(fields))
{
}

Cell SqliteCursor::cell(int column)
{
    const Kind kind = (*m_fields)[std::size_t(column)].kind;
    switch (sqlite3_column_type(m_statement->get(), column)) {
    case SQLITE_INTEGER:
        return wholeNumber(sqlite3_column_int64(m_statement->get(), column), kind);
    case SQLITE_FLOAT:
        return fraction(sqlite3_column_double(m_statement->get(), column), kind);
    case SQLITE_NULL:
        return Cell();
    default:
        return text(column, kind);
    }
}

Cell SqliteCursor::wholeNumber(qint64 number, Kind kind)
{
    if (kind == Kind::Bit) return {Cell::Form::Bit, number != 0, {}};
    if (kind != Kind::Decimal && kind != Kind::Text) return {Cell::Form::Integer, number, {}};
    const auto end = std::to_chars(m_digits.text, m_digits.text + sizeof m_digits.text, number).ptr;
    const std::string_view digits(m_digits.text, std::size_t(end - m_digits.text));
    return {kind == Kind::Text ? Cell::Form::Text : Cell::Form::Decimal, 0, digits};
}

Cell SqliteCursor::fraction(double number, Kind kind)
{
    if (kind == Kind::Bit) return {Cell::Form::Bit, number != 0, {}};
    if (kind == Kind::Integer && number == std::trunc(number) && std::abs(number) < 9e18)
        return {Cell::Form::Integer, qint64(number), {}};
    m_digits = DecimalDigits(number);
    return {kind == Kind::Text ? Cell::Form::Text : Cell::Form::Decimal, 0, m_digits.view()};
}

Cell SqliteCursor::text(int column, Kind kind)
{
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(m_statement->get(), column));
    const std::string_view text(bytes, std::size_t(sqlite3_column_bytes(m_statement->get(), column)));
    if (kind == Kind::Date)
        if (const auto moment = readMoment(text)) return dateCell(*moment);
    return {Cell::Form::Text, 0, text};
}

} // namespace quilla
