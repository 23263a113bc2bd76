#pragma once

#include "platform/sql/translator.h"

#include <sqlite3.h>

namespace quilla::test {

/// A base in memory with the functions that the translator's SQLite text needs, to run translations on.
class SqliteBase {
public:
    SqliteBase();
    ~SqliteBase();
    SqliteBase(const SqliteBase&) = delete;
    SqliteBase& operator=(const SqliteBase&) = delete;

    /// The rows as "a|b;c|d", null as "NULL". Throws `Error` when a literal is not of its kind or the engine
    /// fails.
    QString run(const sql::Translation& statement, const std::vector<sql::Literal>& literals = {});
    void run(const QByteArray& text);

private:
    sqlite3* m_base = nullptr;
};

} // namespace quilla::test
