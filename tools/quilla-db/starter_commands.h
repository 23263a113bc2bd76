#pragma once

#include "quilla-db/commands.h"

namespace quilla {

Outcome loadStarterOf(const Arguments& arguments, QTextStream& out);
Outcome writeStarterOf(const Arguments& arguments, QTextStream& out);

} // namespace quilla
