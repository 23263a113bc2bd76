#pragma once

#include "platform/db/connection.h"

#include <QStringList>

#include <vector>

namespace quilla {

/// One invariant of the library that does not hold.
struct Finding {
    QString rule; ///< short name of the invariant, ASCII
    QString what; ///< what is wrong, for the operator
    QStringList rows; ///< the offending rows, "caption=value" pieces
};

/// Tests what the desk keeps by hand: loans, copies, counters, reservations and the withdrawal ledger
/// agree with each other. Reads only. Empty when all is well. Throws `Error` when a table is missing.
std::vector<Finding> checkLibrary(Connection& connection);

} // namespace quilla
