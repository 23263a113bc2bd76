#pragma once

#include "platform/db/connection.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace quilla {

/// How a row is put right.
struct Mend {
    QString becomes; ///< a "caption=value" piece, for the operator
    QString statement;
};

/// A row that breaks an invariant.
struct FoundRow {
    QString text; ///< "caption=value" pieces
    std::optional<Mend> mend; ///< nullopt where a person has to decide
};

/// One invariant of the library that does not hold.
struct Finding {
    QString rule; ///< short name of the invariant, ASCII
    QString what; ///< what is wrong, for the operator
    std::vector<FoundRow> rows;

    QStringList texts() const;
};

/// Tests what the desk keeps by hand: loans, copies, counters, reservations and the withdrawal ledger
/// agree with each other. Reads only. Empty when all is well. Throws `Error` when a table is missing.
std::vector<Finding> checkLibrary(Connection& connection);

/// Puts right what can be derived from other tables: counters from the rows that they count, the state of a
/// copy from its loan. In one transaction of its own. No desk may work meanwhile, since a counter that a desk
/// moves in the same moment would end wrong. Throws `Error`; nothing is changed then.
void repairLibrary(Connection& connection, const std::vector<Finding>& findings);

/// Adds indexes that refuse a second loan of a copy, a second card with a code and a second copy with a
/// barcode, or makes them anew. Not part of a new library, since other programs of the suite expect none.
/// All of them or none, in a transaction of its own. Throws `Error` when rows stand in the way, another desk
/// writes or the right is missing.
void guardLibrary(Connection& connection);
/// The same for a library that has none yet; in the transaction of the caller.
void guardNewLibrary(Connection& connection);
/// Takes these indexes away, in a transaction of its own; it does not matter whether they are there. Throws
/// `Error` when another desk writes or the right is missing: they stand as they were then.
void unguardLibrary(Connection& connection);

} // namespace quilla
