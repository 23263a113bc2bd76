#pragma once

#include "holdings/book_record.h"

namespace quilla {

/// The headings of a delimited file of books.
QString bookHeadings(QChar delimiter, bool withReason = false);

/// A title as a line for each copy, or one line when it has none, that an import reads back. A reason stands
/// in front where there is one.
QString bookLines(const BookRecord& book, QChar delimiter, const QString& reason = {});

} // namespace quilla
