#pragma once

#include "desk/scan_log.h"
#include "frame/session.h"

namespace quilla {

/// Adds what the database knows of a scan: title, name of the reader, due date or sum of the fines. A scan
/// that is said to be done although nothing is stored, as after a database that did not open, becomes a
/// failed one. Shows no box.
void completeScan(Session& session, ScanEntry& entry);

/// Those scans as rows of a report.
Recordset scanRows(const std::vector<ScanEntry>& entries);

/// Name of the report design that lists scans.
inline constexpr QStringView ScanReport = u"ScanReport";

} // namespace quilla
