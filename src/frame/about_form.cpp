#include "frame/about_form.h"

#include "frame/about_ops.h"
#include "platform/ui/form/form.h"
#include "platform/ui/look/icons.h"
#include "platform/ui/look/theme.h"

#include <QClipboard>
#include <QGuiApplication>

namespace quilla {

namespace {

QLabel* programName()
{
    auto* name = new QLabel(ApplicationTitle.toString());
    QFont font = name->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.6);
    name->setFont(font);
    return name;
}

} // namespace

AboutFrm::AboutFrm(const Session& session)
    : labFacts(aboutLines(session).join(u'\n'))
    , cmdCopy(u"复制(&C)"_s)
    , cmdOK(u"确定(&Q)"_s)
{
    QUILLA_NAMES(labFacts, labCopied, cmdCopy, cmdOK);
    setObjectName(u"AboutFrm"_s);
    setWindowTitle(u"关于系统"_s);
    auto* picture = new QLabel;
    picture->setPixmap(applicationIcon().pixmap(64, 64));
    labFacts.setTextFormat(Qt::PlainText);
    labFacts.setTextInteractionFlags(Qt::TextSelectableByMouse);
    labFacts.setWordWrap(true);
    labFacts.setMinimumWidth(pixelsOf(6600, *this));
    setTone(labCopied, Tone::Ok);
    build(*this,
        column(row(*picture, room(12), column(*programName(), u"青简文库流通子系统"_s), stretch()), room(8),
            labFacts, stretch(), row(labCopied, stretch(), cmdCopy, cmdOK)));
    onClick(cmdCopy, [this] { copyFacts(); });
    onClick(cmdOK, [this] { closeScreen(*this); });
}

void AboutFrm::copyFacts()
{
    QGuiApplication::clipboard()->setText(ApplicationTitle.toString() + u" 流通子系统\n"_s + labFacts.text());
    labCopied.setText(u"已复制，可以粘贴到邮件里"_s);
}

} // namespace quilla
