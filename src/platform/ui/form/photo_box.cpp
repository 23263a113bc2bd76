#include "platform/ui/form/photo_box.h"

#include "platform/core/text.h"
#include "platform/ui/look/theme.h"

#include <QFileInfo>
#include <QImageReader>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

namespace quilla {

namespace {

constexpr QSize PhotoSize {120, 160};

} // namespace

PhotoBox::PhotoBox(QWidget* parent)
    : QLabel(parent)
{
    setFixedSize(PhotoSize);
    setContentsMargins(1, 1, 1, 1); // the frame
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Theme::current().window);
    colours.setColor(QPalette::WindowText, Theme::current().mutedText);
    setPalette(colours);
    setAlignment(Qt::AlignCenter);
    setAccessibleName(u"照片"_s);
}

void PhotoBox::setHint(const QString& hint)
{
    m_hint = hint;
    if (!hasPicture()) setText(hint);
}

void PhotoBox::showFile(const QString& file)
{
    clear(); // an equal text alone would let the picture stand
    setText(m_hint);
    if (!QFileInfo(file).isFile()) return; // a pipe would be waited for
    QImageReader reader(file);
    reader.setAutoTransform(true);
    const QImage photo = reader.read();
    if (photo.isNull()) return;
    const qreal ratio = devicePixelRatioF();
    QPixmap picture = QPixmap::fromImage(
        photo.scaled(contentsRect().size() * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    picture.setDevicePixelRatio(ratio);
    setPixmap(picture);
}

void PhotoBox::paintEvent(QPaintEvent* event)
{
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.lineWidth = 1;
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &frame, &painter, this);
    QLabel::paintEvent(event);
}

void PhotoBox::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) Q_EMIT doubleClicked();
}

} // namespace quilla
