#pragma once

#include "platform/core/dates.h"
#include "platform/db/moment.h"

#include <sqlite3.h>

#include <optional>

namespace quilla {

/// The time that `getdate()` answers: read once a statement.
class StatementTime {
public:
    explicit StatementTime(const Clock& clock)
        : m_clock(clock)
    {
    }
    void startStatement() { m_now.reset(); }
    const CanonicalMoment& now()
    {
        if (!m_now) m_now.emplace(m_clock.now());
        return *m_now;
    }

private:
    const Clock& m_clock;
    std::optional<CanonicalMoment> m_now;
};

/// Registers the collation and the functions that translated statements use (platform/sql/functions.h).
/// `time` must outlive the connection. A date that can't be read makes the statement fail with
/// SQLITE_MISMATCH and words for the operator. The result code of SQLite.
int registerFunctions(sqlite3* database, StatementTime& time);

/// By which order texts compare: that of this program, or that of libraries of version 1.
enum class TextOrder { Pinyin, CodePoint };

/// Registers the collation anew. No statement may be running. The result code of SQLite.
int registerOrder(sqlite3* database, TextOrder order);

} // namespace quilla
