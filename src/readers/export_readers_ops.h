#pragma once

#include "platform/db/connection.h"
#include "readers/import_fields.h"

#include <QIODevice>

namespace quilla {

/// Writes all readers into an open file that `importReaders` reads back. The number of readers. Throws
/// `Error` when a statement fails or the file can't be written.
int exportReaders(Connection& connection, QIODevice& file);

/// The select that brings readers with all that a file can hold, in the order of `ImportField`; a condition
/// may follow it.
QString readerSelect();
/// The values of its current row in the form in which a file has them.
ImportValues readerValues(const Recordset& row);

} // namespace quilla
