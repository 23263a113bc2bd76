#pragma once

#include "database/demo/library.h"
#include "database/demo/random.h"

namespace quilla::demo {

/// Lends and takes back, day by day over the three years up to `library.today`, by the rules of the desk:
/// states of copies, loans, fines, losses, withdrawals and reservations come out consistent.
void circulate(Library& library, Random& random);

} // namespace quilla::demo
