#pragma once

#include "frame/session.h"
#include "platform/report/report_viewer.h"

namespace quilla {

/// Which overdue loans a list shows, as its screen keeps it: each empty, or what stands after "where" and
/// "order by".
struct OverdueSelection {
    QString condition {};
    QString order {};
};

/// The statement of the notices for a reader each ("readercode") or for a unit each ("readunit").
QString dunningStatement(const QString& groupField, const OverdueSelection& selection);

/// Shows the dunning notices of the selection, grouped by "readercode" or "readunit". A database failure is
/// passed over in silence, and then no report opens.
void PrintDunningNotices(
    Session& session, ReportViewer& reports, const QString& groupField, const OverdueSelection& selection);

} // namespace quilla
