#include "platform/db/odbc/odbc_statement.h"

#include "platform/core/text.h"
#include "platform/db/literals.h"

#include <limits>

namespace quilla {

namespace {

/// Beyond that a server's text is a "long" one.
constexpr std::size_t LongestText = 4000;
/// Longer than nearly all that a desk sends.
constexpr std::size_t UsualText = 64;

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

/// PostgreSQL's text names the type of each parameter, so that all but whole numbers may be sent as texts.
void OdbcStatement::bindOne(SQLUSMALLINT place, const sql::Literal& literal, const sql::Parameter& parameter)
{
    switch (parameter.kind) {
    case sql::Kind::Bit:
        return bindWhole(place, bitOf(literal), SQL_SMALLINT);
    case sql::Kind::Integer:
    case sql::Kind::Decimal:
        return bindNumber(place, literal, parameter);
    case sql::Kind::Date: {
        const CanonicalMoment moment(momentOf(literal));
        return bindText(place, QString::fromLatin1(moment.text, qsizetype(moment.length)));
    }
    case sql::Kind::Unknown:
    case sql::Kind::Text:
        break;
    }
    if (literal.text.contains(QChar(u'\0'))) throw cannotKeep();
    if (!literal.hasDoubledQuote) return bindText(place, literal.text);
    bindText(place, literal.text.toString().replace(u"''"_s, u"'"_s));
}

void OdbcStatement::bindNumber(
    SQLUSMALLINT place, const sql::Literal& literal, const sql::Parameter& parameter)
{
    const bool integer = parameter.kind == sql::Kind::Integer;
    const auto whole = integer ? wholeNumberOf(literal) : std::nullopt;
    const bool limited = parameter.range.kind != sql::Kind::Unknown;
    if (limited)
        refuseOutside(parameter.range, literal, whole, whole ? 0 : numberOf(literal, parameter.scale));
    if (whole) return bindWhole(place, *whole, SQL_BIGINT);
    bindDigits(place, decimalOf(literal, integer ? -1 : parameter.scale));
}

void OdbcStatement::bindWhole(SQLUSMALLINT place, qint64 number, SQLSMALLINT type)
{
    Slot& slot = m_slots[place - 1u];
    slot.number = number;
    slot.bytes = sizeof slot.number;
    // SQL Server has functions that take no wider number.
    const bool narrow = m_connection.dialect().engine == sql::Engine::SqlServer && fitsInteger(number);
    const SQLSMALLINT wanted = narrow ? SQLSMALLINT(SQL_INTEGER) : type;
    if (slot.type != wanted) bindSlot(place, SQL_C_SBIGINT, wanted, 0, 0);
}

void OdbcStatement::bindText(SQLUSMALLINT place, QStringView text)
{
    Slot& slot = m_slots[place - 1u];
    const auto size = std::size_t(text.size());
    const SQLSMALLINT wanted = size > LongestText ? SQL_WLONGVARCHAR : SQL_WVARCHAR;
    const bool fits = slot.type == wanted && size <= slot.text.size();
    if (!fits) slot.text.resize(size > LongestText ? size : size > UsualText ? LongestText : UsualText);
    std::copy(text.utf16(), text.utf16() + size, slot.text.data());
    slot.bytes = SQLLEN(size * sizeof(char16_t));
    if (!fits) bindSlot(place, SQL_C_WCHAR, wanted, slot.text.size(), 0);
}

/// Binds a decimal digit for digit, with its own number of digits: SQL Server would else assume those of a
/// column.
void OdbcStatement::bindDigits(SQLUSMALLINT place, const QString& digits)
{
    if (m_connection.dialect().engine != sql::Engine::SqlServer) return bindText(place, digits);
    constexpr SQLULEN most = 38;
    Slot& slot = m_slots[place - 1u];
    slot.text = digits.toStdU16String();
    slot.bytes = digits.size() * SQLLEN(sizeof(char16_t));
    const qsizetype point = digits.indexOf(u'.');
    const auto scale = SQLSMALLINT(point < 0 ? 0 : digits.size() - point - 1);
    bindSlot(place, SQL_C_WCHAR, SQL_DECIMAL, std::min(most, SQLULEN(digits.size())), scale);
}

void OdbcStatement::bindSlot(
    SQLUSMALLINT place, SQLSMALLINT as, SQLSMALLINT type, SQLULEN size, SQLSMALLINT scale)
{
    Slot& slot = m_slots[place - 1u];
    SQLPOINTER value = as == SQL_C_SBIGINT ? static_cast<SQLPOINTER>(&slot.number) : slot.text.data();
    slot.type = SQL_UNKNOWN_TYPE;
    m_connection.check(SQLBindParameter(m_handle.get(), place, SQL_PARAM_INPUT, as, type, size, scale, value,
                           slot.bytes, &slot.bytes),
        m_handle.get());
    slot.type = type;
}

void OdbcStatement::run()
{
    spent = true; // when it fails: what it was prepared from may have changed
    m_connection.check(SQLExecute(m_handle.get()), m_handle.get());
    m_connection.noteAnswer();
    spent = false;
}

int OdbcStatement::rowCount() const
{
    SQLLEN rows = 0;
    SQLRowCount(m_handle.get(), &rows);
    return int(std::max<SQLLEN>(rows, 0));
}

} // namespace quilla
