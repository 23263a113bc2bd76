#pragma once

#include "platform/report/report_design.h"

namespace quilla {

/// The edges of the columns between `left` and `left + width` in twips, one more than there are columns: by
/// what they hold, texts sharing what is left.
std::vector<double> columnEdges(const ReportDesign& design, double left, double width);

/// Where the texts of a column stand.
Place placeOf(Content content);

} // namespace quilla
