#pragma once

#include "frame/session.h"
#include "platform/report/report_design.h"
#include "platform/report/report_viewer.h"

namespace quilla {

/// A report with something to show.
struct ReportSample {
    ReportDesign design;
    Recordset rows;
    ReportTexts texts;
};

/// Every design with rows of the stored library, in the order of the catalogue. What can't be read is left
/// out, and the last such failure stays in the session's error.
std::vector<ReportSample> reportSamples(Session& session);

} // namespace quilla
