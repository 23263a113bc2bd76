#include "platform/ui/form/dialog_prompt.h"

#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/form/window_in_use.h"
#include "platform/ui/scan/scan_guard.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace quilla {

namespace {

QMessageBox::Icon pictureOf(Icon icon)
{
    switch (icon) {
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Warning:
        return QMessageBox::Warning;
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

void addAnswers(QMessageBox& box, const Message& message)
{
    if (!message.question) {
        box.addButton(u"确定"_s, QMessageBox::AcceptRole);
        return;
    }
    QPushButton* yes = box.addButton(u"是(&Y)"_s, QMessageBox::YesRole);
    QPushButton* no = box.addButton(u"否(&N)"_s, QMessageBox::NoRole);
    box.setDefaultButton(message.preset == Answer::No ? no : yes);
    box.setEscapeButton(no);
}

Answer answerOf(const QMessageBox& box, const Message& message)
{
    if (!message.question) return Answer::Ok;
    const bool yes = box.clickedButton() && box.buttonRole(box.clickedButton()) == QMessageBox::YesRole;
    return yes ? Answer::Yes : Answer::No;
}

void tellUnserved(const QStringList& scans)
{
    DialogPrompt().warn(unservedNotice(scans), OperationTitle);
}

} // namespace

Answer DialogPrompt::show(const Message& message)
{
    const ArrowCursor arrow;
    QMessageBox box(windowInUse());
    box.setWindowTitle(message.shownTitle());
    box.setTextFormat(Qt::PlainText);
    box.setText(message.text);
    box.setIcon(pictureOf(message.icon));
    addAnswers(box, message);
    const ScanGuard guard(box, tellUnserved);
    box.exec();
    return answerOf(box, message);
}

} // namespace quilla
