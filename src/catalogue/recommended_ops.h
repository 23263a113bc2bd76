#pragma once

#include "frame/session.h"
#include "platform/grid/grid_model.h"
#include "platform/report/report_viewer.h"

namespace quilla {

/// A range of lines of a grid, the last one included.
struct LineRange {
    int first = 1;
    int last = 0;
};

/// Adds these lines of the titles found to the list of recommended books: all of them, or none and a word
/// about it when one of them is listed already. How many were added.
int addRecommended(Prompt& prompt, const GridModel& found, const LineRange& lines, GridModel& list);

/// Asks, then takes the line out of the list. False when the list stays as it is.
bool removeRecommended(Prompt& prompt, GridModel& list, int row);

/// Whether the operator wants the whole list emptied.
bool confirmEmptying(Prompt& prompt);

/// Asks, then shows the listed books as a report, in the order of the database.
void printRecommended(Session& session, ReportViewer& reports, const GridModel& list);

} // namespace quilla
