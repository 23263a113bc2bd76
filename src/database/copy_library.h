#pragma once

#include "platform/db/connection.h"

#include <functional>

namespace quilla {

/// Called after each table, with its name and the number of its rows.
using TableCopied = std::function<void(const QString& table, qint64 rows)>;

/// Makes a library on the empty database `to` and copies every row of `from` into it, with the numbers that
/// the rows have. Runs in the caller's transactions, which keep both as they stand. Throws `Error` that names
/// the table when a row is refused or a table does not arrive whole; nothing of it may be committed then.
void copyLibrary(Connection& from, Connection& to, const TableCopied& copied);

} // namespace quilla
