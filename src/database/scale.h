#pragma once

#include "platform/db/connection.h"

#include <QDate>

namespace quilla {

/// How much data a benchmark wants.
struct ScaleOptions {
    int readers = 10000;
    int copies = 200000; ///< two of each title
    int history = 100000; ///< finished loans, spread over the ten years before `today`
    int loans = 20000; ///< open ones; no more than there are copies
    QDate today;
};

/// Fills a new library, which holds only its first rows, with regular rows: readers "R0000001"...,
/// copies "B00000001"... of which the first `loans` are out, a tenth of them overdue, twenty closing
/// periods, and a held reservation for one reader in fifty. The invariants of `checkLibrary` hold. Runs in
/// the caller's transaction. Throws `Error` when there are titles or readers already.
void fillScaleData(Connection& connection, const ScaleOptions& options);

/// The codes of the rows that `fillScaleData` makes, counted from 1.
QString scaleReaderCode(int number);
QString scaleBarcode(int number);

} // namespace quilla
