#pragma once

#include "platform/db/driver.h"
#include "platform/db/sqlite/sqlite_functions.h"
#include "platform/db/sqlite/sqlite_handle.h"
#include "platform/db/sqlite/sqlite_statement.h"
#include "platform/db/sqlite/write_queue.h"

#include <chrono>

namespace quilla {

/// A connection to an embedded database file.
class SqliteDriver final : public Driver {
public:
    enum class As {
        Library, ///< a finished library of this program's schema version, or an error says what it is
        AnyFile, ///< whatever is in the file
        SoleUse, ///< the same, and nobody else may have it open before the connection ends
        NewFile, ///< makes the file; nothing is kept beside it, and a crash leaves it unusable
    };

    /// How long a statement waits for another desk's transaction.
    static constexpr int BusyMilliseconds = 10'000;

    /// `clock` must outlive the driver.
    SqliteDriver(const QString& path, const Clock& clock, As as = As::Library,
        int busyMilliseconds = BusyMilliseconds);

    sql::Engine engine() const override { return sql::Engine::Sqlite; }
    bool hasOneWriter() const override { return true; }
    bool isAlive() override;

    int execute(const sql::Translation& statement, const std::vector<sql::Literal>& literals) override;
    std::unique_ptr<Cursor> query(
        const sql::Translation& statement, const std::vector<sql::Literal>& literals) override;

    void begin(OnFailure onFailure) override;
    void commit() override;
    void rollback() override;

    /// Throws `Error` when the file holds no library of this program's schema version.
    void refuseForeignFile() const;
    /// The same, but takes a library of an earlier version too.
    void refuseUnknownFile() const;
    /// Whether it is a library of an earlier version, whose texts are in the order of that version.
    bool isOfEarlierVersion() const;
    const SqliteHandle& handle() const { return m_handle; }

private:
    void setUp(As as);
    void takeAlone() const;
    static int waitForTurn(void* driver, int timesAsked);
    const WriteQueue* queue() const;
    SqliteStatementLoan start(const sql::Translation& statement, const std::vector<sql::Literal>& literals);
    void refuseAfterLostTransaction() const;
    void run(SqliteStatement& statement);
    bool wasMoved() const;
    bool wasMovedLately();
    void refuseMovedFile() const;

    StatementTime m_time;
    std::chrono::milliseconds m_patience;
    std::chrono::steady_clock::time_point m_waitingSince;
    std::chrono::steady_clock::time_point m_lookedAt; ///< when the file was last seen in its place
    SqliteHandle m_handle;
    std::optional<WriteQueue> m_queue; ///< of a library that several desks share
    SqliteStatementCache m_statements {m_handle};
    std::unique_ptr<SqliteStatement> m_begin;
    std::unique_ptr<SqliteStatement> m_commit;
    std::unique_ptr<SqliteStatement> m_rollback;
    bool m_inTransaction = false; ///< as far as the caller knows
};

/// What marks the file of a library, in the file's own header.
constexpr int LibraryApplicationId = 0x514a5144;

} // namespace quilla
