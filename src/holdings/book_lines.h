#pragma once

#include "holdings/book_record.h"

#include <QRegularExpression>

namespace quilla {

/// The headings of a delimited file of books.
QString bookHeadings(QChar delimiter, bool withReason = false);

/// What stands between the barcodes of a line that has several: "A1;A2" are two.
const QRegularExpression& betweenBarcodes();

/// A title as a line for each copy, or one line when it has none, that an import reads back. A reason stands
/// in front where there is one.
QString bookLines(const BookRecord& book, QChar delimiter, const QString& reason = {});

} // namespace quilla
