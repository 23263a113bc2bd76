#include "platform/ui/look/gallery.h"

#include <QApplication>
#include <QLayout>
#include <QWidget>

namespace quilla {

QImage picture(QWidget& window, double scale)
{
    window.ensurePolished();
    if (!window.testAttribute(Qt::WA_Resized)) window.adjustSize();
    if (window.layout()) window.layout()->activate();
    QCoreApplication::sendPostedEvents();
    const double pixels = window.devicePixelRatioF() * scale;
    QImage image((QSizeF(window.size()) * pixels).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(pixels);
    // A hidden window learns its size when it is drawn, and its grids settle their scroll bars after that.
    // One bar takes the room that calls up the other, and gives it back.
    for (int pass = 0; pass < 3; ++pass) {
        window.render(&image);
        QCoreApplication::processEvents();
    }
    image.fill(window.palette().color(QPalette::Window));
    window.render(&image);
    return image;
}

bool renderPng(QWidget& window, const QString& file, double scale)
{
    return picture(window, scale).save(file, "PNG");
}

} // namespace quilla
