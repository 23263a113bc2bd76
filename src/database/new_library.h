#pragma once

#include "database/target.h"
#include "platform/db/connection.h"
#include "platform/sql/schema.h"

#include <functional>

namespace quilla {

/// Writes rows into a library, inside the transaction of the caller.
using LibraryFill = std::function<void(Connection&)>;

/// Makes a file that is not there yet, or fills the empty database of a server, with all that `fill` writes
/// or with nothing. Throws `Error`, also when a file or tables are there already.
void makeNew(const Target& target, const sql::Schema& schema, const LibraryFill& fill);

/// Makes a new library as above: tables, views, first rows, one operator without a password, and what `fill`
/// adds.
void makeLibrary(const Target& target, const QString& operatorName, const LibraryFill& fill = {});

/// Fills a library that holds only its first rows; a file that is not there is made with it.
void loadLibrary(const Target& target, const QString& operatorName, const LibraryFill& fill);

} // namespace quilla
