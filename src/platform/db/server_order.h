#pragma once

#include "platform/db/connection_text.h"

namespace quilla {

/// Brings the texts of a library on a PostgreSQL server into the order of this program: where an earlier
/// program made the library, and where the server has another ICU now than the one that made the indexes. All
/// in one transaction, in which nobody else can use the tables. False when there was nothing to do, as on
/// servers that have their order by themselves. Throws `Error` and leaves the library as it was when that
/// fails.
bool renewServerOrder(const ConnectionItems& items);

} // namespace quilla
