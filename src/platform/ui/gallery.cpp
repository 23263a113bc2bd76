#include "platform/ui/gallery.h"

#include <QApplication>
#include <QLayout>
#include <QWidget>

namespace quilla {

QImage picture(QWidget& window, double scale)
{
    window.ensurePolished();
    if (window.layout()) window.layout()->activate();
    QCoreApplication::sendPostedEvents();
    QImage image((QSizeF(window.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(window.palette().color(QPalette::Window));
    window.render(&image);
    return image;
}

bool renderPng(QWidget& window, const QString& file, double scale) { return picture(window, scale).save(file, "PNG"); }

} // namespace quilla
