#include "sql/sqlite_base.h"

#include "platform/core/text.h"
#include "sql/literal_text.h"

namespace quilla::test {

namespace {

/// Binds what the translator promised.
void bind(sqlite3_stmt* prepared, int at, const sql::Parameter& parameter, const sql::Literal& literal)
{
    const QString text = boundText(parameter, literal);
    switch (parameter.kind) {
    case sql::Kind::Integer:
    case sql::Kind::Bit:
        sqlite3_bind_int64(prepared, at, text.toLongLong());
        break;
    case sql::Kind::Decimal:
        sqlite3_bind_double(prepared, at, text.toDouble());
        break;
    default: {
        const QByteArray utf8 = text.toUtf8();
        sqlite3_bind_text(prepared, at, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    }
    }
}

QString shown(sqlite3_stmt* row, int column)
{
    if (sqlite3_column_type(row, column) == SQLITE_FLOAT)
        return QString::number(sqlite3_column_double(row, column), 'g', 15);
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
    return text ? QString::fromUtf8(text) : u"NULL"_s;
}

} // namespace

SqliteBase::SqliteBase()
    : m_time(m_clock)
    , m_base(u":memory:"_s, SqliteHandle::Mode::Create)
{
    registerFunctions(m_base, m_time);
    sqlite3_db_config(m_base.get(), SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
}

QString SqliteBase::run(const sql::Translation& statement, const std::vector<sql::Literal>& literals)
{
    sqlite3* const base = m_base.get();
    sqlite3_stmt* raw = nullptr;
    m_base.check(sqlite3_prepare_v2(base, statement.text.constData(), -1, &raw, nullptr));
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> prepared(raw, sqlite3_finalize);
    for (int i = 0; i < int(statement.parameters.size()); ++i)
        bind(raw, i + 1, statement.parameters[i], literals[statement.parameters[i].literal]);
    const int before = sqlite3_total_changes(base);
    QStringList rows;
    int state = SQLITE_ROW;
    while ((state = sqlite3_step(raw)) == SQLITE_ROW) {
        QStringList fields;
        for (int i = 0; i < sqlite3_column_count(raw); ++i) {
            fields.append(shown(raw, i));
        }
        rows.append(fields.join(u'|'));
    }
    if (state != SQLITE_DONE) m_base.fail(state);
    return statement.returnsRows ? rows.join(u';') : QString::number(sqlite3_total_changes(base) - before);
}

} // namespace quilla::test
