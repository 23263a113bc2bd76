#pragma once

#include "quilla-db/arguments.h"

#include <QTextStream>

namespace quilla {

/// What the process returns.
enum class Outcome { Done = 0, Findings = 1, Failed = 2 };

/// Runs the command and writes to `out` what it did. Throws `Error` when it fails or is unknown.
Outcome runCommand(const Arguments& arguments, QTextStream& out);

} // namespace quilla
