#pragma once

#include "holdings/book_record.h"
#include "platform/core/progress.h"
#include "platform/db/connection.h"

#include <QIODevice>

namespace quilla {

struct BookExportOptions {
    BookFormat format = BookFormat::Csv;
    CodePage codePage = CodePage::Utf8; ///< UTF-8 or GB18030
};

struct BookExportReport {
    int titles = 0;
    int copies = 0;
};

/// Writes all titles and copies into an open file that `importBooks` reads back, a delimited one when the
/// format is unknown. Throws `Error` when something has no place in that format or can't be written.
BookExportReport exportBooks(
    Connection& connection, QIODevice& file, const BookExportOptions& options, Progress& progress);

} // namespace quilla
