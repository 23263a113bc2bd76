#include "platform/db/odbc/odbc_statement.h"

#include "platform/core/text.h"
#include "platform/db/literals.h"

#include <limits>

namespace quilla {

namespace {

/// Beyond that a server's text is a "long" one.
constexpr SQLULEN LongestText = 4000;

Error cannotKeep()
{
    return Error(ErrorNumber::CannotConvert, u"ODBC"_s, u"文字里有不能保存的字符（NUL）。"_s);
}

bool fitsInteger(qint64 number)
{
    return number >= std::numeric_limits<qint32>::min() && number <= std::numeric_limits<qint32>::max();
}

} // namespace

OdbcStatement::OdbcStatement(const OdbcConnection& connection, const QByteArray& text, StatementLife life_)
    : CachedStatement(life_)
    , m_connection(connection)
    , m_handle(SQL_HANDLE_STMT, connection.get())
{
    SQLSetStmtAttrW(
        m_handle.get(), SQL_ATTR_NOSCAN, reinterpret_cast<SQLPOINTER>(SQL_NOSCAN_ON), SQL_IS_UINTEGER);
    const QString sql = QString::fromUtf8(text);
    m_connection.check(SQLPrepareW(m_handle.get(), const_cast<SQLWCHAR*>(wide(sql)), SQLINTEGER(sql.size())),
        m_handle.get());
}

void OdbcStatement::bind(const sql::Translation& statement, const std::vector<sql::Literal>& literals)
{
    m_slots.resize(statement.parameters.size());
    SQLUSMALLINT place = 0;
    for (const sql::Parameter& parameter : statement.parameters)
        bindOne(++place, literals[std::size_t(parameter.literal)], parameter);
}

/// PostgreSQL's text tells the type of each parameter, so that all but whole numbers may come as texts.
void OdbcStatement::bindOne(SQLUSMALLINT place, const sql::Literal& literal, const sql::Parameter& parameter)
{
    switch (parameter.kind) {
    case sql::Kind::Bit:
        return bindWhole(place, bitOf(literal), SQL_SMALLINT);
    case sql::Kind::Integer:
        if (const auto whole = wholeNumberOf(literal)) return bindWhole(place, *whole, SQL_BIGINT);
        return bindDigits(place, decimalOf(literal));
    case sql::Kind::Decimal:
        return bindDigits(place, decimalOf(literal, parameter.scale));
    case sql::Kind::Date: {
        const CanonicalMoment moment(momentOf(literal));
        QString& text = m_slots[place - 1u].text;
        text = QString::fromLatin1(moment.text, qsizetype(moment.length));
        return bindText(place, text);
    }
    case sql::Kind::Unknown:
    case sql::Kind::Text:
        break;
    }
    if (literal.text.contains(QChar(u'\0'))) throw cannotKeep();
    if (!literal.hasDoubledQuote) return bindText(place, literal.text);
    QString& text = m_slots[place - 1u].text;
    text = literal.text.toString().replace(u"''"_s, u"'"_s);
    bindText(place, text);
}

void OdbcStatement::bindWhole(SQLUSMALLINT place, qint64 number, SQLSMALLINT type)
{
    Slot& slot = m_slots[place - 1u];
    slot.number = number;
    // SQL Server has functions that take no wider number.
    const bool narrow = m_connection.dialect().engine == sql::Engine::SqlServer && fitsInteger(number);
    bindValue(
        place, SQL_C_SBIGINT, narrow ? SQLSMALLINT(SQL_INTEGER) : type, 0, &slot.number, sizeof slot.number);
}

void OdbcStatement::bindText(SQLUSMALLINT place, QStringView text)
{
    const auto size = SQLULEN(text.size());
    const auto* begin = text.isEmpty() ? u"" : text.utf16();
    bindValue(place, SQL_C_WCHAR, size > LongestText ? SQL_WLONGVARCHAR : SQL_WVARCHAR,
        std::max<SQLULEN>(size, 1), const_cast<char16_t*>(begin), SQLLEN(size * sizeof(char16_t)));
}

/// A decimal, digit for digit; SQL Server is told how many there are, lest it takes those of a column.
void OdbcStatement::bindDigits(SQLUSMALLINT place, const QString& digits)
{
    Slot& slot = m_slots[place - 1u];
    slot.text = digits;
    if (m_connection.dialect().engine != sql::Engine::SqlServer) return bindText(place, slot.text);
    constexpr SQLULEN most = 38;
    const qsizetype point = digits.indexOf(u'.');
    const auto scale = SQLSMALLINT(point < 0 ? 0 : digits.size() - point - 1);
    slot.bytes = digits.size() * SQLLEN(sizeof(char16_t));
    m_connection.check(
        SQLBindParameter(m_handle.get(), place, SQL_PARAM_INPUT, SQL_C_WCHAR, SQL_DECIMAL,
            std::min(most, SQLULEN(digits.size())), scale, slot.text.data(), slot.bytes, &slot.bytes),
        m_handle.get());
}

void OdbcStatement::bindValue(
    SQLUSMALLINT place, SQLSMALLINT as, SQLSMALLINT type, SQLULEN size, SQLPOINTER value, SQLLEN bytes)
{
    SQLLEN& length = m_slots[place - 1u].bytes;
    length = bytes;
    m_connection.check(
        SQLBindParameter(m_handle.get(), place, SQL_PARAM_INPUT, as, type, size, 0, value, bytes, &length),
        m_handle.get());
}

void OdbcStatement::run()
{
    spent = true; // when it fails: what it was prepared from may have changed
    m_connection.check(SQLExecute(m_handle.get()), m_handle.get());
    spent = false;
}

int OdbcStatement::rowCount() const
{
    SQLLEN rows = 0;
    SQLRowCount(m_handle.get(), &rows);
    return int(std::max<SQLLEN>(rows, 0));
}

} // namespace quilla
