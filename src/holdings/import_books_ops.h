#pragma once

#include "holdings/book_fields.h"
#include "platform/core/progress.h"
#include "platform/db/connection.h"

namespace quilla {

struct BookImportOptions {
    bool dryRun = false; ///< everything is done and taken back
    bool skipRefused = false; ///< what is refused does not keep the other records out
    BookFormat format = BookFormat::Unknown; ///< unknown: recognised from the file, as is the code page
    CodePage codePage = CodePage::Unknown;
    BookFields fields;
};

struct BookImportReport {
    int records = 0; ///< read
    int refused = 0;
    int repaired = 0; ///< records whose lengths were wrong
    int titles = 0; ///< new ones
    int copies = 0; ///< new ones
    int joined = 0; ///< records whose copies went to a title that was there
    int numbered = 0; ///< titles that were given a running number of their class
    int loansLeftOut = 0; ///< copies on loan that came as copies on the shelf
    int goneCopies = 0; ///< lost and withdrawn copies that were left out
    bool written = false;
    bool stopped = false; ///< the progress asked for the end
    bool byLines = false; ///< records are counted by lines
    QStringList unknownHeadings; ///< of columns that were left out
};

/// Called for each record that was refused, in the order of the file.
using RefusedBook = std::function<void(const BookRecord& book, const QString& reason)>;

/// Enters the titles and copies of a file. All in one transaction of this connection; nothing is written when
/// a record is refused, unless that is asked for, and when the progress asks for the end. A record is taken
/// whole or refused whole. Copies join the title that has the same ISBN and title. Throws `Error` for a file
/// that can't be read and for a failing statement; nothing is written then either.
BookImportReport importBooks(Connection& connection, const sql::Schema& schema, const QString& file,
    const BookImportOptions& options, const RefusedBook& refused, Progress& progress);

} // namespace quilla
