#include "platform/ui/photo_box.h"

#include "platform/core/text.h"
#include "platform/ui/theme.h"

#include <QImageReader>
#include <QMouseEvent>

namespace quilla {

namespace {

constexpr QSize PhotoSize {120, 160};

} // namespace

PhotoBox::PhotoBox(QWidget* parent)
    : QLabel(parent)
{
    setFixedSize(PhotoSize);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    QPalette border = palette();
    border.setColor(QPalette::WindowText, Theme().border);
    setPalette(border);
    setAlignment(Qt::AlignCenter);
    setAccessibleName(u"照片"_s);
}

void PhotoBox::setHint(const QString& hint)
{
    m_hint = hint;
    QPalette muted = palette();
    muted.setColor(QPalette::Text, Theme().mutedText);
    setPalette(muted);
    setForegroundRole(QPalette::Text);
    if (!hasPicture()) setText(hint);
}

void PhotoBox::showFile(const QString& file)
{
    setText(m_hint);
    if (file.isEmpty()) return;
    QImageReader reader(file);
    reader.setAutoTransform(true);
    const QImage photo = reader.read();
    if (photo.isNull()) return;
    const qreal ratio = devicePixelRatioF();
    QPixmap picture
        = QPixmap::fromImage(photo.scaled(PhotoSize * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    picture.setDevicePixelRatio(ratio);
    setPixmap(picture);
}

void PhotoBox::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) Q_EMIT doubleClicked();
}

} // namespace quilla
