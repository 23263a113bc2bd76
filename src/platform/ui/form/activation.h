#pragma once

#include <functional>

class QWidget;

namespace quilla {

/// Runs `step` each time the screen comes to the front: when it is shown, and when its window is chosen again
/// after another one of the client area. A message box that closes does not count, nor does the program that
/// gets the focus back from another one.
void onActivation(QWidget& screen, std::function<void()> step);

} // namespace quilla
