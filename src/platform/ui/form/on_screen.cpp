#include "platform/ui/form/on_screen.h"

#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace quilla {

QRect placedWithin(QRect place, const QRect& room)
{
    place.setSize(place.size().boundedTo(room.size()));
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    place.moveTopLeft({std::max(place.left(), room.left()), std::max(place.top(), room.top())});
    return place;
}

void keepOnScreen(QWidget& window)
{
    if (window.isMaximized() || window.isFullScreen()) return;
    const QRect room = window.screen()->availableGeometry();
    // asked of the system: what the widget knows may be from before it had a frame
    const QMargins frame = window.windowHandle() ? window.windowHandle()->frameMargins() : QMargins();
    window.resize(window.size().boundedTo(room.marginsRemoved(frame).size()));
    const QRect place = window.geometry().marginsAdded(frame);
    if (!room.contains(place)) window.move(placedWithin(place, room).topLeft());
}

} // namespace quilla
