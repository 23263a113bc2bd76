#pragma once

#include "database/demo/library.h"
#include "platform/db/connection.h"

namespace quilla::demo {

/// Writes the rows. The tables must be empty but for the first rows of a new base.
void writeLibrary(Connection& connection, const Library& library);

} // namespace quilla::demo
