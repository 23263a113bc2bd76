#pragma once

#include "statistics/circulation_ops.h"

namespace quilla {

class ReportViewer;

const QueryTriple& fineTriple();

/// The search of the fines. Unlike the other statistics it puts the condition in brackets, after the dates.
ListSearch fineSearch(const std::optional<DateLimits>& dates, const QString& condition, const QString& order);

/// Opens the report. False when it did not open.
bool reportFines(Session& session, ReportViewer& reports, const ListSearch& search);

} // namespace quilla
