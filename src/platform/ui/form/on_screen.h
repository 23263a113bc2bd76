#pragma once

class QRect;
class QWidget;

namespace quilla {

/// The place moved into the room, and made smaller where it must be.
QRect placedWithin(QRect place, const QRect& room);

/// Moves a window, and makes it smaller where it must be, so that all of it lies on its screen: one that
/// opens low, or has grown, would hide its lowest buttons.
void keepOnScreen(QWidget& window);

} // namespace quilla
