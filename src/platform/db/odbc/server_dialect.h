#pragma once

#include "platform/sql/translator.h"

namespace quilla {

/// The statements that each server behind ODBC gets in its own dialect; null where a server needs none.
///
/// We begin and end transactions by statements of our own. The PostgreSQL driver would begin one late and,
/// after a statement that the server can't parse, would silently give it up and begin another.
struct ServerDialect {
    QStringView product; ///< what the name that the server gives itself holds
    sql::Engine engine;
    const char16_t* setUp; ///< sent once to a new connection
    const char16_t* begin;
    const char16_t* commit;
    const char16_t* rollback;
    /// Where a failing statement ends the transaction: a savepoint in front of the next write, the same in
    /// place of the one before, and the way back to it. `beginAgain` is the way back before any write.
    const char16_t* save;
    const char16_t* saveAgain;
    const char16_t* undo;
    const char16_t* beginAgain;
    /// Sent after many rows were written, to a server that would else plan as if the tables were empty.
    const char16_t* gatherStatistics;
    /// A select of how many transactions are open, for a server that ends them by itself.
    const char16_t* openTransactions;
    bool smallIntegerIsBit; ///< bits are kept as small integers, which nothing else is
};

/// The dialect of the server that gives itself this name. Throws `Error` for one that is unknown.
const ServerDialect& serverDialect(QStringView product);

} // namespace quilla
