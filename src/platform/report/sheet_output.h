#pragma once

#include "platform/report/report_page.h"

namespace quilla {

/// Writes the rows of a report to a spreadsheet: title, captions, and a line a row; groups follow each other.
/// Totals are left to the spreadsheet. Throws `Error` when the file can't be written; no half file stays
/// then.
void saveSheet(const ReportTable& table, const QString& file);

} // namespace quilla
