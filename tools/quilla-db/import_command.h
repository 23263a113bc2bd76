#pragma once

#include "quilla-db/commands.h"

namespace quilla {

/// Imports the readers of a file, and lists which lines were refused. `Findings` when there were any.
Outcome importReadersOf(const Arguments& arguments, QTextStream& out);
/// Exports all readers into a new file.
Outcome exportReadersOf(const Arguments& arguments, QTextStream& out);

} // namespace quilla
