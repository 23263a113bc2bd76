#pragma once

#include "quilla-db/commands.h"

namespace quilla {

/// Imports the books of a file, and lists which records were refused. `Findings` when there were any.
Outcome importBooksOf(const Arguments& arguments, QTextStream& out);
Outcome exportBooksOf(const Arguments& arguments, QTextStream& out);
/// Writes the built-in mapping of MARC fields out, to be changed.
Outcome writeBookFields(const Arguments& arguments, QTextStream& out);

} // namespace quilla
