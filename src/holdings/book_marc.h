#pragma once

#include "holdings/book_fields.h"

namespace quilla {

/// A title with its copies as records that the built-in mapping reads back: several when there are many
/// copies, which join again. The texts are UTF-8 or GB18030. Throws `Error` when a field is too long for the
/// format or has characters that the code page lacks.
QByteArray marcOf(const BookRecord& book, BookFormat format, CodePage codePage, const BookFields& fields);

} // namespace quilla
