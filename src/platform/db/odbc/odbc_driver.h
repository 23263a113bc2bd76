#pragma once

#include "platform/db/driver.h"
#include "platform/db/odbc/odbc_statement.h"

namespace quilla {

/// A connection to a database server.
///
/// A failing statement leaves the transaction as it was before it. PostgreSQL gives up the whole transaction
/// at the first failing statement, so there a savepoint stands before every statement that follows a write,
/// as long as the transaction outlives a failure (`OnFailure`): each costs a way to the server and back.
class OdbcDriver final : public Driver {
public:
    /// Connects; see `OdbcConnection`.
    explicit OdbcDriver(const ConnectionItems& items);

    sql::Engine engine() const override { return m_connection.dialect().engine; }
    bool hasOneWriter() const override { return false; }
    /// After a silence the server is asked.
    bool isAlive() override;
    bool isLost() const override { return m_connection.isLost() || m_stuck; }

    /// The whole number of the one row that a select in the server's own words brings. Throws `Error`.
    qint64 number(QStringView select) const { return m_connection.number(select); }

    int execute(const sql::Translation& statement, const std::vector<sql::Literal>& literals) override;
    std::unique_ptr<Cursor> query(
        const sql::Translation& statement, const std::vector<sql::Literal>& literals) override;

    void begin(OnFailure onFailure) override;
    void endTransactionOnFailure() override { m_onFailure = OnFailure::EndTransaction; }
    void commit() override;
    void rollback() override;
    void gatherStatistics() override;

private:
    enum class Transaction { None, Open, GivenUp };

    OdbcStatementLoan prepare(const sql::Translation& statement, const std::vector<sql::Literal>& literals);
    template <typename Step> auto guarded(bool writes, Step step);
    void protect();
    void undo() noexcept;
    void refuseAfterLostTransaction() const;

    OdbcConnection m_connection;
    StatementCache<OdbcStatement, OdbcConnection> m_statements {m_connection};
    Transaction m_transaction = Transaction::None;
    OnFailure m_onFailure = OnFailure::KeepTransaction;
    bool m_wrote = false; ///< since the transaction began or the last savepoint
    bool m_saved = false; ///< a savepoint stands
    bool m_stuck = false; ///< in a state that we could not end
};

} // namespace quilla
