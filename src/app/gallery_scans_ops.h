#pragma once

#include "desk/scan_log.h"
#include "frame/session.h"

namespace quilla {

/// A session list for pictures: scans of every kind and outcome, of copies that are on loan, the last ones of
/// this reader, the oldest first. Nothing is stored. Empty when the library has no loans.
std::vector<ScanEntry> scanSamples(Session& session, const QString& readercode);

} // namespace quilla
