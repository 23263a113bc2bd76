#include "platform/ui/form/error_form.h"

#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

namespace quilla {

errMessageFrm::errMessageFrm(QWidget* parent)
    : QDialog(parent)
    , labTitle(u"操作失败！"_s)
    , Command1(u"确定(&Q)"_s)
{
    setObjectName(u"errMessageFrm"_s);
    setWindowTitle(u"系统帮助信息"_s);
    QUILLA_NAMES(labTitle, textErrMessage, Command1);
    setTone(labTitle, Tone::Error);
    textErrMessage.setReadOnly(true);
    textErrMessage.setAccessibleName(u"错误详细信息"_s);
    build(*this,
        column(labTitle, group(u"错误详细信息如下"_s, textErrMessage).grow(),
            u"请检查您的操作是否正确；否则请检查系统和网络！"_s,
            u"对于由于此给你带来的工作上的不便，我们表示歉意！"_s, row(stretch(), Command1)),
        AtEscape::Close);
    resize(pixelsOf(6600, *this), pixelsOf(4200, *this));
    onClick(Command1, [this] { close(); });
}

QString failureText(const QString& headline, const QString& detail)
{
    return (headline.isEmpty() ? u"操作失败，详细信息如下："_s : headline) + u"\n\n   "_s + detail;
}

void ShowOperationFailure(QWidget* parent, const QString& headline, const QString& detail)
{
    if (detail.isEmpty()) return;
    errMessageFrm form(parent);
    form.textErrMessage.setPlainText(failureText(headline, detail));
    form.exec();
}

} // namespace quilla
