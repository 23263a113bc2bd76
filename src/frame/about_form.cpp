#include "frame/about_form.h"

#include "platform/core/prompt.h"
#include "platform/ui/form/form.h"
#include "platform/ui/look/icons.h"

#include <QCoreApplication>

namespace quilla {

AboutFrm::AboutFrm()
    : cmdOK(u"确定(&Q)"_s)
{
    QUILLA_NAMES(cmdOK);
    setObjectName(u"AboutFrm"_s);
    setWindowTitle(u"关于系统"_s);
    auto* picture = new QLabel;
    picture->setPixmap(applicationIcon().pixmap(64, 64));
    build(*this,
        column(row(*picture, room(12),
                   column(ApplicationTitle.toString(), u"青简文库流通子系统"_s,
                       u"版本："_s + QCoreApplication::applicationVersion()),
                   stretch()),
            stretch(), row(stretch(), cmdOK)));
    onClick(cmdOK, [this] { closeScreen(*this); });
}

} // namespace quilla
