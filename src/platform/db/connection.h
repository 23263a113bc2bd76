#pragma once

#include "platform/core/error.h"
#include "platform/db/recordset.h"

#include <functional>
#include <memory>

namespace quilla {

/// What becomes of a transaction in which a statement fails.
enum class OnFailure {
    KeepTransaction, ///< it stands as it was before that statement
    EndTransaction, ///< nothing of it may be committed; on a server half the price of a write
};

/// One logical connection: what an operation opens, works on and drops.
///
/// It is lent from the factory's pool and goes back when the object ends or is assigned anew; a
/// transaction that was left open is rolled back then. A connection that was never opened throws
/// `ErrorNumber::NotOpen` at each use.
class Connection {
public:
    class Lease; ///< what the factory lends

    Connection();
    explicit Connection(std::unique_ptr<Lease> lease);
    ~Connection();
    Connection(Connection&&) noexcept;
    Connection& operator=(Connection&&) noexcept;

    bool isOpen() const;
    void close();
    /// Whether the database keeps stored procedures of its own; a `ProcedureRunner` answers for one that
    /// does not.
    bool keepsProcedures() const;

    /// Sends a statement of the dialect and drops the rows it may bring. The number of rows affected.
    int execute(QStringView tsql);
    /// Sends a select; see `Recordset`.
    Recordset open(QStringView tsql, CursorType cursor = CursorType::Keyset);
    /// Sends a statement of the shaping service, which no engine has: its select is sent, and the rows are
    /// put into groups here. See `shapeRecords` and `Recordset::child`.
    Recordset openShaped(QStringView shape);

    /// Brings into an empty database what its engine needs before the first table: the order of texts, types
    /// and functions. Does nothing where the engine has them. Throws `Error`, also when they are there
    /// already.
    void prepareEmptyBase();
    /// Runs `fill`, whose rows bring their own numbers into the identity column of `table`. The next number
    /// comes after theirs and after `given`.
    void withOwnNumbers(const sql::Table& table, qint64 given, const std::function<void()>& fill);
    /// The highest number that the identity column of a table ever gave, also to a row that is gone.
    qint64 lastNumber(const sql::Table& table);

    /// Takes the write lock at once where the engine has one for the whole database.
    void begin(OnFailure onFailure = OnFailure::KeepTransaction);
    /// From here on each statement stands or falls with the whole transaction, as if it had begun so. For
    /// an operation that forgives the failure of its first steps only.
    void endTransactionOnFailure();
    void commit();
    void rollback();

    /// Lets a server look at its tables. Call it after very many rows were written and committed: until then
    /// the server plans as if the tables were empty. Takes seconds on a large base.
    void gatherStatistics();

private:
    std::unique_ptr<Lease> m_lease;
};

/// Makes connections from a stored connection text.
class ConnectionFactory {
public:
    virtual ~ConnectionFactory() = default;
    /// Throws `Error` (its text fit for the operator) when the database can't be opened.
    virtual Connection open(const QString& connectionText) = 0;
};

/// Called with each statement before it is sent, also with "begin", "commit" and "rollback"; what it
/// throws is the statement's failure. For fault tests and traces.
using StatementHook = std::function<void(QStringView)>;

} // namespace quilla
