#pragma once

#include <QImage>

class QWidget;

namespace quilla {

/// A picture of a window as it stands, its layout settled, at `scale` times its size on the screen (1, 1.5,
/// 2). Text and drawings are rendered at that scale, not enlarged; a pixmap that a control keeps has the
/// screen's own scale, which QT_SCALE_FACTOR sets.
QImage picture(QWidget& window, double scale = 1);

/// Writes that picture as PNG. False when the file can't be written.
bool renderPng(QWidget& window, const QString& file, double scale = 1);

} // namespace quilla
