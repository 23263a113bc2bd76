#pragma once

#include "quilla-db/commands.h"

namespace quilla {

/// Brings a library to the version of this program. Shows how far the work is and where the old library was
/// saved.
Outcome upgrade(const Arguments& arguments, QTextStream& out);

} // namespace quilla
