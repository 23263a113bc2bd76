#pragma once

#include "platform/sql/translator.h"
#include "support/postgres_database.h"

namespace quilla::test {

/// A database on the test server to run translations on, as the driver does: parameters are texts whose type
/// the statement tells.
class PostgresBase {
public:
    /// The rows as "a|b;c|d", null as "NULL", numbers without the zeros at the end of their fraction, dates
    /// in their canonical form; of a statement without rows the number of rows it changed. Throws `Error`
    /// when a literal is not of its kind or the engine fails.
    QString run(const sql::Translation& statement, const std::vector<sql::Literal>& literals = {});
    void run(const char* text) { m_database.run(text); }

private:
    PostgresDatabase m_database;
};

} // namespace quilla::test
