#pragma once

#include "platform/db/sqlite/sqlite_functions.h"
#include "platform/sql/translator.h"

namespace quilla::test {

/// The clock of the cases: 2004-03-09 08:05:03.
class CaseClock final : public Clock {
public:
    QDateTime now() const override { return QDateTime(QDate(2004, 3, 9), QTime(8, 5, 3)); }
};

/// A base in memory with the driver's functions, to run translations on.
class SqliteBase {
public:
    SqliteBase();

    /// The rows as "a|b;c|d", null as "NULL"; of a statement without rows the number of rows it changed.
    /// Throws `Error` when a literal is not of its kind or the engine fails.
    QString run(const sql::Translation& statement, const std::vector<sql::Literal>& literals = {});
    void run(const char* text) { m_base.run(text); }

private:
    CaseClock m_clock;
    StatementTime m_time;
    SqliteHandle m_base;
};

} // namespace quilla::test
