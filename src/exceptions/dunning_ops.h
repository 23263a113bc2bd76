#pragma once

#include "frame/search.h"
#include "platform/report/report_viewer.h"

namespace quilla {

/// The statement of the notices for a reader each ("readercode") or for a unit each ("readunit").
/// Of the list's search the condition and the order count.
QString dunningStatement(const QString& groupField, const ListSearch& list);

/// Shows the dunning notices of what a list shows, grouped by "readercode" or "readunit". A database failure
/// is passed over in silence, and then no report opens.
void PrintDunningNotices(
    Session& session, ReportViewer& reports, const QString& groupField, const ListSearch& list);

/// What the screen says when notices of that kind were shown earlier today; empty for the first time. It is
/// known for this run of the program alone, since no table keeps it.
QString noticesShownEarlier(const Session& session, const QString& groupField);

} // namespace quilla
