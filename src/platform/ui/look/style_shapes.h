#pragma once

#include "platform/ui/look/theme.h"

#include <QStyleOption>

class QPainter;

namespace quilla {

/// Flat shapes in place of shaded ones.
constexpr qreal FrameCorner = 3;

void paintGroupFrame(QPainter& painter, const QRect& rect, const Theme& theme);
/// In the colour of the focus while it has the focus.
void paintListFrame(QPainter& painter, const QStyleOption& option, const Theme& theme);

/// The face of a caption.
void paintHeaderSection(QPainter& painter, const QRect& rect, const Theme& theme);
/// Over the caption of a sorted column.
void paintSortArrow(QPainter& painter, const QStyleOptionHeader& header, const Theme& theme);

/// The page of the tab that is chosen is one face with its tab, under a line in the accent's colour.
void paintTab(QPainter& painter, const QStyleOptionTab& tab, const Theme& theme);
void paintTabPage(QPainter& painter, const QRect& page, const Theme& theme);

/// A small arrow in the middle of the option's rectangle.
void paintArrow(QPainter& painter, const QStyleOption& option, Qt::ArrowType direction);

/// How much of the work is done.
void paintProgress(QPainter& painter, const QStyleOptionProgressBar& bar, const Theme& theme);

} // namespace quilla
