#pragma once

class QWidget;

namespace quilla {

/// Where the operator is, for what shows next: the active window, or the one that will be active again. For
/// some milliseconds after a box closes none is, and a dialog that then shows without a parent could come up
/// behind the main window.
QWidget* windowInUse();

} // namespace quilla
