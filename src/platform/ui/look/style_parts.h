#pragma once

#include "platform/ui/look/theme.h"

#include <QStyleOption>

class QPainter;
class QStyle;

namespace quilla {

/// The parts of the style that are whole controls of their own.

/// A tick, or a line where only some of it is chosen.
void paintCheck(QPainter& painter, const QStyleOption& option, const Theme& theme);
void paintRadio(QPainter& painter, const QStyleOption& option, const Theme& theme);

/// A scroll bar is a handle in a groove, without arrow buttons; the handle is never shorter than a finger's
/// width.
QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part);
void paintScrollBar(QPainter& painter, const QStyleOptionSlider& bar, const Theme& theme);

/// The title of a window inside the main window: its icon and name at the left, the buttons at the right.
QRect titleBarPart(const QStyleOptionTitleBar& bar, QStyle::SubControl part);
void paintTitleBar(QPainter& painter, const QStyleOptionTitleBar& bar, const Theme& theme);

/// The same buttons in the menu bar, while that window fills the client area.
QSize windowButtonsSize();
QRect windowButtonPart(const QStyleOptionComplex& bar, QStyle::SubControl part);
void paintWindowButtons(QPainter& painter, const QStyleOptionComplex& bar, const Theme& theme);

} // namespace quilla
