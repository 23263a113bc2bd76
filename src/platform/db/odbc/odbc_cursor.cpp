#include "platform/core/text.h"
#include "platform/db/odbc/odbc_statement.h"

#include <QStringEncoder>

#include <charconv>

namespace quilla {

using sql::Kind;

namespace {

Kind kindOf(SQLSMALLINT type, bool smallIntegerIsBit)
{
    switch (type) {
    case SQL_BIT:
        return Kind::Bit;
    case SQL_SMALLINT:
        return smallIntegerIsBit ? Kind::Bit : Kind::Integer;
    case SQL_TINYINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
        return Kind::Integer;
    case SQL_NUMERIC:
    case SQL_DECIMAL:
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return Kind::Decimal;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
        return Kind::Date;
    default:
        return Kind::Text;
    }
}

bool isExact(SQLSMALLINT type)
{
    return type == SQL_NUMERIC || type == SQL_DECIMAL;
}

/// In what form the driver is asked for a column.
SQLSMALLINT formOf(SQLSMALLINT type)
{
    if (isExact(type)) return SQL_C_WCHAR;
    switch (kindOf(type, false)) {
    case Kind::Bit:
    case Kind::Integer:
        return SQL_C_SBIGINT;
    case Kind::Decimal:
        return SQL_C_DOUBLE;
    case Kind::Date:
        return SQL_C_TYPE_TIMESTAMP;
    default:
        return SQL_C_WCHAR;
    }
}

Cell momentCell(const SQL_TIMESTAMP_STRUCT& moment)
{
    constexpr int NanosecondsPerMillisecond = 1'000'000;
    const QDate date(moment.year, moment.month, moment.day);
    if (!date.isValid()) return Cell();
    return dateCell({date,
        QTime(moment.hour, moment.minute, moment.second, int(moment.fraction / NanosecondsPerMillisecond))});
}

void writeUtf8(QStringView text, std::string& out)
{
    out.resize(std::size_t(text.size()) * 3);
    char* at = out.data();
    const char16_t* in = text.utf16();
    const char16_t* const end = in + text.size();
    for (; in != end && *in < 0x80; ++in)
        *at++ = char(*in);
    if (in != end) {
        QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
        at = encoder.appendToBuffer(at, QStringView(in, end));
    }
    out.resize(std::size_t(at - out.data()));
}

/// ".50" is "0.5", "20.00" is "20": as the value is written without its column's scale.
void tidyDigits(std::string& digits)
{
    if (digits.find('.') == std::string::npos) return;
    while (digits.back() == '0')
        digits.pop_back();
    if (digits.back() == '.') digits.pop_back();
    const std::size_t first = !digits.empty() && digits[0] == '-' ? 1 : 0;
    if (first == digits.size() || digits[first] == '.') digits.insert(first, 1, '0');
    if (digits == "-0") digits = "0";
}

} // namespace

/// The columns of the first result that has any; what a procedure counts before it is passed over.
int OdbcStatement::skipToRows()
{
    SQLSMALLINT count = 0;
    do {
        m_connection.check(SQLNumResultCols(m_handle.get(), &count), m_handle.get());
    } while (count == 0 && SQL_SUCCEEDED(SQLMoreResults(m_handle.get())));
    return count;
}

const Fields& OdbcStatement::fields(const sql::Translation& statement)
{
    if (m_fields && statement.procedure.isEmpty()) return m_fields;
    const auto count = std::size_t(skipToRows());
    if (m_fields && m_fields->size() == count) return m_fields;
    m_columns = std::vector<Column>(count);
    std::vector<Field> fields;
    for (std::size_t i = 0; i < count; ++i) {
        fields.push_back(describe(int(i)));
        if (statement.columns.size() == count) describeByStatement(fields.back(), statement, i);
    }
    m_fields = std::make_shared<const std::vector<Field>>(std::move(fields));
    return m_fields;
}

Field OdbcStatement::describe(int column)
{
    SQLWCHAR name[300] {};
    SQLSMALLINT length = 0;
    SQLSMALLINT type = 0;
    SQLULEN size = 0;
    m_connection.check(SQLDescribeColW(m_handle.get(), SQLUSMALLINT(column + 1), name,
                           SQLSMALLINT(std::size(name)), &length, &type, &size, nullptr, nullptr),
        m_handle.get());
    m_columns[std::size_t(column)].as = formOf(type);
    m_columns[std::size_t(column)].isDigits = isExact(type);
    makeRoom(column, size);
    return {textOf(name, std::min<qsizetype>(length, std::size(name) - 1)),
        kindOf(type, m_connection.dialect().smallIntegerIsBit)};
}

/// Bound columns are filled without a further call a field. A text of unknown or great width has room for
/// what most of them hold, when the driver lets it be read again.
void OdbcStatement::makeRoom(int number, SQLULEN size)
{
    constexpr SQLULEN Widest = 500;
    constexpr SQLULEN Digits = 60;
    Column& column = m_columns[std::size_t(number)];
    SQLPOINTER place = &column.number;
    SQLLEN bytes = sizeof column.moment;
    if (column.as == SQL_C_WCHAR) {
        const bool fits = column.isDigits || (size > 0 && size <= Widest);
        column.bound = fits || m_connection.readsBoundColumns();
        // A character beyond the basic plane takes two units.
        if (column.bound) column.text.resize(2 * (column.isDigits ? Digits : fits ? size : Widest / 2) + 1);
        place = column.text.data();
        bytes = SQLLEN(column.text.size() * sizeof(char16_t));
    }
    if (!column.bound) return;
    m_connection.check(
        SQLBindCol(m_handle.get(), SQLUSMALLINT(number + 1), column.as, place, bytes, &column.length),
        m_handle.get());
}

bool OdbcStatement::step()
{
    const SQLRETURN result = SQLFetch(m_handle.get());
    if (result == SQL_NO_DATA) return false;
    m_connection.check(result, m_handle.get());
    return true;
}

Cell OdbcStatement::cell(int number)
{
    const Column& column = m_columns[std::size_t(number)];
    const Kind kind = (*m_fields)[std::size_t(number)].kind;
    if (column.bound && column.length == SQL_NULL_DATA) return Cell();
    switch (column.as) {
    case SQL_C_SBIGINT:
        return wholeNumberCell(column.number, kind, m_digits);
    case SQL_C_DOUBLE:
        return fractionCell(column.fraction, kind, m_digits);
    case SQL_C_TYPE_TIMESTAMP:
        return momentCell(column.moment);
    default:
        break;
    }
    const QStringView read = text(number);
    if (read.isNull()) return Cell();
    return column.isDigits ? digitsCell(read, kind) : textCell(read, kind);
}

/// Null for a null.
QStringView OdbcStatement::text(int number)
{
    const Column& column = m_columns[std::size_t(number)];
    constexpr auto Unit = SQLLEN(sizeof(char16_t));
    const bool whole = column.bound && column.length != SQL_NO_TOTAL
        && column.length <= SQLLEN(column.text.size() - 1) * Unit;
    if (whole) return QStringView(column.text.data(), column.length / Unit);
    return longText(number);
}

QStringView OdbcStatement::longText(int number)
{
    constexpr std::size_t FirstRoom = 2000;
    constexpr std::size_t Unit = sizeof(char16_t);
    std::size_t at = 0;
    m_long.resize(FirstRoom);
    for (;;) {
        SQLLEN bytes = 0;
        const std::size_t room = m_long.size() - at;
        const SQLRETURN result = SQLGetData(m_handle.get(), SQLUSMALLINT(number + 1), SQL_C_WCHAR,
            m_long.data() + at, SQLLEN(room * Unit), &bytes);
        m_connection.check(result, m_handle.get());
        if (bytes == SQL_NULL_DATA) return QStringView();
        if (result == SQL_NO_DATA) break;
        const bool cut = bytes == SQL_NO_TOTAL || std::size_t(bytes) > (room - 1) * Unit;
        at += cut ? room - 1 : std::size_t(bytes) / Unit;
        if (!cut) break;
        m_long.resize(bytes == SQL_NO_TOTAL ? 2 * m_long.size() : m_long.size() + std::size_t(bytes) / Unit);
    }
    return QStringView(m_long.data(), qsizetype(at));
}

Cell OdbcStatement::textCell(QStringView text, Kind kind)
{
    if (kind == Kind::Date)
        if (const auto moment = readMoment(text)) return dateCell(*moment);
    writeUtf8(text, m_utf8);
    return {Cell::Form::Text, 0, m_utf8};
}

Cell OdbcStatement::digitsCell(QStringView digits, Kind kind)
{
    writeUtf8(digits, m_utf8);
    tidyDigits(m_utf8);
    const bool wanted = kind == Kind::Integer || kind == Kind::Bit;
    qint64 number = 0;
    const auto [end, fault] = std::from_chars(m_utf8.data(), m_utf8.data() + m_utf8.size(), number);
    if (wanted && fault == std::errc() && end == m_utf8.data() + m_utf8.size())
        return wholeNumberCell(number, kind, m_digits);
    return {kind == Kind::Text ? Cell::Form::Text : Cell::Form::Decimal, 0, m_utf8};
}

OdbcCursor::OdbcCursor(OdbcStatementLoan statement, Fields fields)
    : m_statement(std::move(statement))
    , m_fields(std::move(fields))
{
}

} // namespace quilla
