#pragma once

#include "frame/workplace.h"

namespace quilla {

/// The menu's action: the notices of books that came back for their reservers.
void printReturnNotices(const Workplace& place);

} // namespace quilla
