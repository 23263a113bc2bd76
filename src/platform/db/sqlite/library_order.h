#pragma once

#include "platform/db/sqlite/sqlite_driver.h"

namespace quilla {

/// Whether the indexes of a library of this version are in the order of this program. They are not when a
/// program with another ICU made them.
bool isInOrder(const SqliteHandle& handle);

/// Notes in the file that its indexes are in the order of this program. Inside the transaction that made
/// them.
void noteOrder(const SqliteHandle& handle);

/// Called before each index and after the last one, with how many are done and of how many.
using IndexesDone = std::function<void(qsizetype done, qsizetype all)>;

/// Makes the indexes of a library anew in the order of this program, and notes order and version in the file:
/// all in one transaction, which a crash undoes. The driver must have the file for sole use. Throws `Error`
/// and leaves the file as it was when that fails or when the engine finds a fault in what was made.
void sortAnew(SqliteDriver& sole, const IndexesDone& progress);

/// Opens a library of this version; its indexes are made anew first when another ICU made them. Nobody else
/// may have the file open then, since what sorts differently must not write into the same index; an `Error`
/// says so.
std::unique_ptr<SqliteDriver> openLibraryFile(const QString& path, const Clock& clock);

} // namespace quilla
