#pragma once

class QWidget;

namespace quilla {

/// Moves a window, and makes it smaller where it must be, so that all of it lies on its screen: one that
/// opens low, or has grown, would hide its lowest buttons.
void keepOnScreen(QWidget& window);

} // namespace quilla
