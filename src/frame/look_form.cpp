#include "frame/look_form.h"

#include "platform/ui/form/form.h"
#include "platform/ui/look/icons.h"
#include "platform/ui/look/theme.h"

#include <QEvent>

namespace quilla {

frmLook::frmLook(const QString& title, QWidget& area)
    : QWidget(&area)
    , lMain(title)
{
    QUILLA_NAMES(lMain);
    QFont font = lMain.font();
    font.setPointSizeF(font.pointSizeF() * 2);
    lMain.setFont(font);
    lMain.setForegroundRole(QPalette::PlaceholderText);
    auto* picture = new QLabel;
    picture->setPixmap(applicationIcon().pixmap(96, 96));
    build(*this,
        column(stretch(), row(stretch(), *picture, stretch()), room(16), row(stretch(), lMain, stretch()),
            stretch()));
    resize(area.size());
    lower();
    area.installEventFilter(this);
    show();
}

bool frmLook::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize) resize(parentWidget()->size());
    return QWidget::eventFilter(watched, event);
}

} // namespace quilla
