#pragma once

#include "database/demo_library.h"
#include "database/target.h"

namespace quilla {

/// Where a library to try lies or is to lie: the user's own database file when it is one already, else a file
/// beside it, so that the usual place stays free for a library of one's own.
Target demoTarget();

/// Makes the library to try unless it is there.
void makeDemo(const Target& target);

} // namespace quilla
