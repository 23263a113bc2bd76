#pragma once

#include "database/demo/library.h"
#include "database/demo/random.h"
#include "database/demo/words.h"

namespace quilla::demo {

/// Invents reader types with their parameters, units and `readers` reader cards of a college library.
/// Every state of a card occurs; only valid ones run beyond `library.today`.
void makeReaders(Library& library, const Words& words, Random& random, int readers);

} // namespace quilla::demo
