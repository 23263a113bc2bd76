#pragma once

#include <QWidget>

namespace quilla {

/// Closes a screen together with the window of the client area around it.
inline void closeScreen(QWidget& screen)
{
    screen.parentWidget() ? screen.parentWidget()->close() : screen.close();
}

} // namespace quilla
