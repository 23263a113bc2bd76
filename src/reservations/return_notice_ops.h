#pragma once

#include "frame/session.h"
#include "platform/report/report_viewer.h"

namespace quilla {

/// Reads the day of the notices, and asks the operator to set up the printer. Server date, yyyy-mm-dd.
QString prepareReturnNotices(Session& session);

/// The select of the notices of that day.
QString returnNotices(const QString& today);

/// Shows as a report the copies that came back for their reservers and are held on that day or longer. A
/// reservation without a last day is not among them, nor one whose copy was last returned after that day.
void PrintReturnNotices(Session& session, ReportViewer& reports, const QString& today);

} // namespace quilla
