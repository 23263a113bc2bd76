#pragma once

#include "platform/sql/translator.h"

namespace quilla {

/// What the servers behind ODBC want to be told in their own words; null where a server needs none.
///
/// Transactions are statements of ours: the PostgreSQL driver begins one late and, at a statement that the
/// server can't parse, gives it up without a word and begins another.
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
    const char16_t* settle; ///< for tables that were filled, where the server looks at them only later
    const char16_t*
        openTransactions; ///< a select of how many are open, for a server that ends them by itself
    bool smallIntegerIsBit; ///< bits are kept as small integers, which nothing else is
};

/// The dialect of the server that gives itself this name. Throws `Error` for one that is unknown.
const ServerDialect& serverDialect(QStringView product);

} // namespace quilla
