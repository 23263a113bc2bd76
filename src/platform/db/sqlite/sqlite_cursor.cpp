#include "platform/db/sqlite/sqlite_statement.h"

#include "platform/db/moment.h"

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
        return wholeNumberCell(sqlite3_column_int64(m_statement->get(), column), kind, m_digits);
    case SQLITE_FLOAT:
        return fractionCell(sqlite3_column_double(m_statement->get(), column), kind, m_digits);
    case SQLITE_NULL:
        return Cell();
    default:
        return text(column, kind);
    }
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
