#pragma once

#include "frame/screens.h"
#include "platform/report/report_viewer.h"

namespace quilla {

/// The screens of this program. What the menu names beyond them is shown disabled: this is the one place
/// that says which screens there are. `reports` shows what they print.
ScreenCatalog allScreens(ReportViewer& reports);

} // namespace quilla
