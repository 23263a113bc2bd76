#pragma once

#include "statistics/circulation_ops.h"

namespace quilla {

class ReportViewer;

/// By what the loans and the returns are counted.
enum class CountBy { Reader, Unit, Type, Title, Copy };

/// What the query dialog offers for it.
const QueryTriple& countTriple(CountBy by);

/// The statement: every reader, unit, type, title or copy with its loans and its returns, both empty where
/// there are none. `dates` limits the loans by their date and the returns by theirs.
QString countStatement(CountBy by, const QString& condition, const std::optional<DateLimits>& dates);

/// Opens the report. False when it did not open.
bool reportCounts(Session& session, ReportViewer& reports, CountBy by, const QString& statement);

/// The limits when both texts are dates; nullopt else.
std::optional<DateLimits> limitsOf(const QString& from, const QString& to);

} // namespace quilla
