#include "platform/db/sqlite/sqlite_statement.h"

#include "platform/core/text.h"
#include "platform/db/literals.h"

namespace quilla {

namespace {

/// What a column is declared as, by the words that our schema and usual tools use.
sql::Kind declaredKind(const char* declaration)
{
    const QString type = QString::fromUtf8(declaration).toLower();
    if (type.startsWith(u"bit") || type.startsWith(u"bool")) return sql::Kind::Bit;
    if (type.contains(u"date")) return sql::Kind::Date;
    if (type.contains(u"int")) return sql::Kind::Integer;
    if (type.contains(u"char") || type.contains(u"text")) return sql::Kind::Text;
    for (const QStringView word : {u"dec", u"num", u"money", u"real", u"float", u"double"})
        if (type.contains(word)) return sql::Kind::Decimal;
    return sql::Kind::Unknown;
}

std::size_t textRoom(const sql::Translation& statement, const std::vector<sql::Literal>& literals)
{
    std::size_t room = 0;
    for (const sql::Parameter& parameter : statement.parameters) {
        const sql::Literal& literal = literals[std::size_t(parameter.literal)];
        room += parameter.kind == sql::Kind::Date ? sizeof(CanonicalMoment::text) : utf8Bound(literal);
    }
    return room;
}

} // namespace

SqliteStatement::SqliteStatement(const SqliteHandle& handle, const QByteArray& text, StatementLife life_)
    : CachedStatement(life_)
    , m_handle(handle)
{
    const unsigned flags = life == StatementLife::Kept ? SQLITE_PREPARE_PERSISTENT : 0;
    m_handle.check(
        sqlite3_prepare_v3(handle.get(), text.constData(), int(text.size()), flags, &m_statement, nullptr));
}

SqliteStatement::~SqliteStatement()
{
    sqlite3_finalize(m_statement);
}

void SqliteStatement::bind(const sql::Translation& statement, const std::vector<sql::Literal>& literals)
{
    const std::size_t room = textRoom(statement, literals);
    if (m_texts.size() < room) m_texts.resize(room);
    char* at = m_texts.data();
    int place = 0;
    for (const sql::Parameter& parameter : statement.parameters)
        at = bindOne(++place, literals[std::size_t(parameter.literal)], parameter, at);
}

/// Texts are written to `room` and stay there; the end of what was written.
char* SqliteStatement::bindOne(
    int place, const sql::Literal& literal, const sql::Parameter& parameter, char* room)
{
    char* end = room;
    switch (parameter.kind) {
    case sql::Kind::Bit:
        m_handle.check(sqlite3_bind_int64(m_statement, place, bitOf(literal)));
        return end;
    case sql::Kind::Integer:
    case sql::Kind::Decimal:
        bindNumber(place, literal, parameter);
        return end;
    case sql::Kind::Date: {
        const CanonicalMoment moment(momentOf(literal));
        end = std::copy_n(moment.text, moment.length, room);
        break;
    }
    case sql::Kind::Unknown:
        if (!literal.quoted) {
            bindNumber(place, literal, parameter);
            return end;
        }
        [[fallthrough]];
    case sql::Kind::Text:
        end = writeUtf8(literal, room);
    }
    m_handle.check(sqlite3_bind_text(m_statement, place, room, int(end - room), SQLITE_STATIC));
    return end;
}

void SqliteStatement::bindNumber(int place, const sql::Literal& literal, const sql::Parameter& parameter)
{
    const auto whole = parameter.kind == sql::Kind::Integer ? wholeNumberOf(literal) : exactWholeOf(literal);
    const double number = whole ? 0 : numberOf(literal, parameter.scale);
    refuseOutside(parameter.range, literal, whole, number);
    m_handle.check(whole ? sqlite3_bind_int64(m_statement, place, *whole)
                         : sqlite3_bind_double(m_statement, place, number));
}

bool SqliteStatement::step()
{
    const int code = sqlite3_step(m_statement);
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) m_handle.fail(code);
    return false;
}

const Fields& SqliteStatement::fields(const sql::Translation& statement)
{
    if (m_fields) return m_fields;
    const std::size_t count = std::size_t(sqlite3_column_count(m_statement));
    std::vector<Field> fields(count);
    for (std::size_t i = 0; i < count; ++i) {
        Field& field = fields[i];
        field.name = QString::fromUtf8(sqlite3_column_name(m_statement, int(i)));
        if (statement.columns.size() == count) describeByStatement(field, statement, i);
        if (field.kind == sql::Kind::Unknown)
            field.kind = declaredKind(sqlite3_column_decltype(m_statement, int(i)));
    }
    m_fields = std::make_shared<const std::vector<Field>>(std::move(fields));
    return m_fields;
}

} // namespace quilla
