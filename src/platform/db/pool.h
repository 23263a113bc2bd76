#pragma once

#include "platform/db/connection.h"
#include "platform/db/driver.h"
#include "platform/db/procedure_runner.h"

#include <array>
#include <functional>
#include <memory>
#include <vector>

namespace quilla {

/// A physical connection in the pool, shared by the leases that read on it.
struct Physical {
    std::unique_ptr<Driver> driver;
    const Connection::Lease* transaction = nullptr; ///< who has its transaction open on it
    int leases = 0;
    int cursors = 0; ///< forward recordsets being read: they hold one state of the database for all

    bool isIdle() const { return leases == 0 && cursors == 0; }
    /// For reads of any lease, also beside a transaction.
    bool servesReads() const { return cursors == 0 && !driver->isLost(); }
    /// For a transaction, or for a write that stands alone.
    bool isFree() const { return servesReads() && !transaction; }
};

/// What all pools of a factory share.
struct PoolContext {
    std::function<sql::Translator&(sql::Engine)> translatorOf;
    StatementHook hook;
    ProcedureRunner procedures;
};

/// The physical connections behind one connection text, and what their statements need. Not thread safe:
/// the client works on one thread.
///
/// All leases read on one connection as long as they can; writes find their way by these rules:
/// - Nothing but a lease's own transaction runs beside an open forward recordset, since every statement on
///   that connection would see the database as it was when the recordset was opened.
/// - Two transactions never meet on one connection. On an engine with one writer the second one is refused
///   at once: on this thread nobody could end the first while the second waits.
/// - There a single write of another lease joins the open transaction, where it could not get in either.
/// - Reads of other leases share the transaction's connection on every engine. On a server a second
/// connection
///   would cost a seventh of a charge more, and would wait for the locks of the transaction, which nobody
///   could end on this thread. They see what is not committed yet, as on the embedded database.
/// - A connection that turns out to be gone is left for a new one. A select outside a transaction and the
///   begin of one, which have no effect yet, are sent again there, once. A write is not: nobody knows whether
///   it was done.
class Pool : public std::enable_shared_from_this<Pool> {
public:
    using Open = std::function<std::unique_ptr<Driver>()>;

    /// `context` must outlive the pool and all that it lends.
    Pool(Open open, const PoolContext& context);

    std::unique_ptr<Connection::Lease> lend();
    void drain();

private:
    friend class Connection::Lease;
    using Shared = std::shared_ptr<Physical>;

    Shared forReading();
    Shared forWriting(const Shared& current);
    Shared forTransaction(const Shared& current);
    const Shared* openTransaction() const;
    Shared add();
    void dropDead();

    Open m_open;
    const PoolContext& m_context;
    std::vector<Shared> m_physicals;
    std::vector<sql::Literal> m_literals; ///< of the statement being sent
};

/// One logical connection on the pool.
class Connection::Lease {
public:
    Lease(std::shared_ptr<Pool> pool, std::shared_ptr<Physical> physical);
    ~Lease();
    Q_DISABLE_COPY_MOVE(Lease)

    bool keepsProcedures() const;
    int execute(QStringView tsql);
    Recordset open(QStringView tsql, CursorType cursor);
    void prepareEmptyBase();
    void withOwnNumbers(const sql::Table& table, qint64 given, const std::function<void()>& fill);
    qint64 lastNumber(const sql::Table& table);
    void begin(OnFailure onFailure);
    void endTransactionOnFailure();
    void commit();
    void gatherStatistics() { m_physical->driver->gatherStatistics(); }
    void rollback();

private:
    bool inTransaction() const { return m_physical->transaction == this; }
    const sql::Translation& prepare(QStringView tsql);
    void sendAll(const std::vector<sql::Translation>& statements);
    Recordset read(const sql::Translation& statement, CursorType cursor);
    Recordset openForward(const sql::Translation& statement);
    void startTransaction(OnFailure onFailure);
    bool isProcedure(const sql::Translation& statement) const;
    Recordset runProcedure(const sql::Translation& statement);
    void announce(QStringView statement) const;
    void moveTo(const std::shared_ptr<Physical>& physical);
    void giveUpTransaction() noexcept;

    std::shared_ptr<Pool> m_pool;
    std::shared_ptr<Physical> m_physical;
};

} // namespace quilla
