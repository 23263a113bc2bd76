#pragma once

#include "platform/db/connection.h"
#include "platform/db/cursor.h"
#include "platform/sql/translator.h"

#include <memory>
#include <vector>

namespace quilla {

/// One physical connection to a database. Each engine's way of being called derives from it; all throw
/// `Error` with the engine's number and, after a sentence for the operator, the engine's own words.
///
/// A statement that fails inside a transaction leaves the transaction open and as it was before the
/// statement, unless it began with `OnFailure::EndTransaction`. When an engine gives up the whole transaction
/// by itself, each further statement must fail until `rollback`, lest it stand alone.
class Driver {
public:
    virtual ~Driver() = default;

    virtual sql::Engine engine() const = 0;
    /// One transaction at a time writes to the whole database: a second one could only wait for the first.
    virtual bool hasOneWriter() const = 0;
    /// Whether the connection can still be lent. Asked when it is idle; cheap: what may take a while is
    /// asked only after a while.
    virtual bool isAlive() = 0;
    /// Whether a call that failed has shown that the connection is gone for good. What it should have done
    /// may or may not have been done. Asks nothing.
    virtual bool isLost() const { return false; }

    /// The number of rows that the statement changed; rows that it brings are dropped.
    virtual int execute(const sql::Translation& statement, const std::vector<sql::Literal>& literals) = 0;
    /// The cursor must not outlive the driver. Other statements may run while it is open.
    virtual std::unique_ptr<Cursor> query(
        const sql::Translation& statement, const std::vector<sql::Literal>& literals)
        = 0;

    virtual void begin(OnFailure onFailure) = 0;
    /// The open transaction goes on as if it had begun with `OnFailure::EndTransaction`. Nothing to do where
    /// the way back to before a statement costs nothing.
    virtual void endTransactionOnFailure() { }
    /// Throws when the changes could not be made lasting; the transaction is rolled back then.
    virtual void commit() = 0;
    /// Nothing happens when no transaction is open.
    virtual void rollback() = 0;

    /// Lets the engine look at its tables, so that its plans fit them. Outside of a transaction.
    virtual void gatherStatistics() { }
};

} // namespace quilla
