#pragma once

#include "frame/session.h"
#include "platform/report/report_viewer.h"

namespace quilla {

/// What becomes of a print whose select finds no row.
enum class NoRows {
    Told, ///< the operator is told that there is nothing to print
    Silent, ///< nothing happens
    Printed, ///< the report opens without lines
};

/// What a failing select does to a print: counts as one without rows, or ends in the run-time error box.
enum class PrintErrors { Resumed, Strict };

/// A report on what a list shows.
struct ListPrint {
    QString design;
    QString select; ///< empty when the list has nothing to print
    QString nothing; ///< the message when there is nothing to print; empty for none
    QString hint {}; ///< a message about the printer, shown before the select runs
    NoRows noRows = NoRows::Told;
    PrintErrors errors = PrintErrors::Resumed;
    std::function<ReportTexts()> texts {}; ///< asked once there are rows
};

/// Runs the select again and shows its rows as a report. True when the report was shown; a select that failed
/// shows none. Throws `Error` with strict errors.
bool printList(Session& session, ReportViewer& reports, const ListPrint& print);

} // namespace quilla
