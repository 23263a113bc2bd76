#include "platform/ui/form/window_in_use.h"

#include <QApplication>
#include <QWidget>

namespace quilla {

QWidget* windowInUse()
{
    if (QWidget* active = QApplication::activeWindow()) return active;
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto main = std::ranges::find_if(windows, [](const QWidget* each) {
        return each->isVisible() && !each->parentWidget() && each->windowType() == Qt::Window;
    });
    return main != windows.end() ? *main : nullptr;
}

} // namespace quilla
