#pragma once

#include "database/demo/library.h"
#include "database/demo/random.h"
#include "database/demo/words.h"

namespace quilla::demo {

/// Invents about `titles` titles with `copies` copies (at least one each), in the order in which they were
/// catalogued over the ten years before `library.today`.
void makeCollection(Library& library, const Words& words, Random& random, int titles, int copies);

/// A person's name, "男" or "女" with it.
struct Person {
    QString name;
    QString sex;
    QChar letter; ///< of the surname's reading
};
Person makePerson(const Words& words, Random& random);

} // namespace quilla::demo
