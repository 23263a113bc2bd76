#pragma once

#include "quilla-db/commands.h"

namespace quilla {

/// Brings a library to the version of this program, and tells how far it is and where the old one was saved.
Outcome upgrade(const Arguments& arguments, QTextStream& out);

} // namespace quilla
