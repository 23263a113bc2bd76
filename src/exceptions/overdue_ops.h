#pragma once

#include "frame/search.h"
#include "platform/report/report_viewer.h"

#include <QStringList>

namespace quilla {

/// What the overdue list shows before it is narrowed.
ListSearch overdueList();
/// The same for the overdue statistics, which also show the author.
ListSearch overdueStatistics();

/// Shows the report of overdue loans that a list's statement finds. For an empty statement the operator is
/// told that there is nothing to print; a statement without rows opens a report without lines.
void printOverdue(Session& session, ReportViewer& reports, const QString& statement);

/// What the overdue statistics are narrowed to; a part that is not asked for is nullopt.
struct OverdueFilter {
    std::optional<QString> reader {}; ///< part of a name or of a reader code, never of a barcode
    std::optional<QString> unit {};
    std::optional<QString> type {};
};

/// The parts that are asked for after the condition handed in, which gets no brackets.
QString overdueCondition(const OverdueFilter& filter, const QString& given);

/// What can be chosen from, in the order of entry.
QStringList unitsToChoose(Session& session);
QStringList typesToChoose(Session& session);

} // namespace quilla
