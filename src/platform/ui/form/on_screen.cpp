#include "platform/ui/form/on_screen.h"

#include <QScreen>
#include <QWidget>

namespace quilla {

void keepOnScreen(QWidget& window)
{
    const QRect room = window.screen()->availableGeometry();
    const QSize around = window.frameGeometry().size() - window.size();
    if (!window.isMaximized()) window.resize(window.size().boundedTo(room.size() - around));
    QRect place = window.frameGeometry();
    if (room.contains(place)) return;
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    window.move(std::max(place.left(), room.left()), std::max(place.top(), room.top()));
}

} // namespace quilla
