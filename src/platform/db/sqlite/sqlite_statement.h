#pragma once

#include "platform/db/cursor.h"
#include "platform/db/decimal.h"
#include "platform/db/sqlite/sqlite_handle.h"
#include "platform/db/statement_cache.h"
#include "platform/sql/translator.h"

#include <string>

namespace quilla {

/// One prepared statement.
class SqliteStatement : public CachedStatement {
public:
    SqliteStatement(const SqliteHandle& handle, const QByteArray& text, StatementLife life);
    ~SqliteStatement();
    Q_DISABLE_COPY_MOVE(SqliteStatement)

    void bind(const sql::Translation& statement, const std::vector<sql::Literal>& literals);
    /// True for a row, false at the end.
    bool step();
    void reset() noexcept { sqlite3_reset(m_statement); }

    /// The columns of the result; kinds from the translation, else from the column's declaration.
    const Fields& fields(const sql::Translation& statement);
    sqlite3_stmt* get() const { return m_statement; }

private:
    char* bindOne(int place, const sql::Literal& literal, const sql::Parameter& parameter, char* room);
    void bindNumber(int place, const sql::Literal& literal, const sql::Parameter& parameter);

    const SqliteHandle& m_handle;
    sqlite3_stmt* m_statement = nullptr;
    std::string m_texts; ///< what the bound texts point to
    Fields m_fields;
};

using SqliteStatementLoan = StatementLoan<SqliteStatement>;
using SqliteStatementCache = StatementCache<SqliteStatement, SqliteHandle>;

/// The rows of a select on SQLite.
class SqliteCursor final : public Cursor {
public:
    SqliteCursor(SqliteStatementLoan statement, Fields fields);

    Fields fields() const override { return m_fields; }
    bool step() override { return m_statement->step(); }
    Cell cell(int column) override;

private:
    Cell text(int column, sql::Kind kind);

    SqliteStatementLoan m_statement;
    Fields m_fields;
    DecimalDigits m_digits; ///< of the number read last
};

} // namespace quilla
