#pragma once

#include "platform/db/connection.h"
#include "platform/sql/schema.h"
#include "readers/delimited_text.h"

namespace quilla {

struct ImportOptions {
    bool dryRun = false; ///< everything is done and taken back
    bool skipRefused = false; ///< what is refused does not keep the other lines out
    bool addUnits = false; ///< units that are not listed yet are entered
    bool update = false; ///< known codes are changed, not refused
};

/// A line that did not become a reader.
struct RefusedLine {
    TextRecord record;
    QString reason; ///< all that is wrong with it
};

struct ImportReport {
    int lines = 0; ///< read, headings not counted
    int readers = 0; ///< new ones; 0 when nothing was to be written because of a refused line
    int changed = 0; ///< readers who were there
    QStringList newUnits;
    QStringList unknownHeadings; ///< of columns that were left out
    std::vector<RefusedLine> refused;
    TextRecord headings;
    QChar delimiter;
};

/// Enters the readers of a delimited file, whose first line has the headings, with what a new card in the
/// editor has where the file says nothing: the parameters of its type, today, one year, "有效". With `update`
/// readers who are there are changed instead of refused; what their line leaves empty stays. All in one
/// transaction of this connection; nothing is written when a line is refused, unless that is asked for.
/// Throws `Error` for a file that can't be read and for a failing statement; nothing is written then either.
ImportReport importReaders(
    Connection& connection, const sql::Schema& schema, const QByteArray& file, const ImportOptions& options);

/// The refused lines as they came, with the reason in front of each, as a file that can be mended and
/// imported again.
QByteArray refusedFile(const ImportReport& report);

} // namespace quilla
