#include "ui/sample_forms.h"

#include "platform/ui/dialog_prompt.h"
#include "platform/ui/error_form.h"
#include "platform/ui/gallery.h"
#include "platform/ui/icons.h"
#include "platform/ui/working_form.h"

#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QTimer>
#include <QToolBar>

using namespace quilla;

namespace {

QString folder;

void draw(QWidget& window, const QString& name, QWidget* focus = nullptr)
{
    window.show();
    window.activateWindow();
    if (focus) focus->setFocus();
    QCoreApplication::processEvents();
    for (const double scale : {1.0, 1.5, 2.0})
        renderPng(window, u"%1/%2-%3.png"_s.arg(folder, name).arg(int(scale * 100)), scale);
    window.hide();
}

void drawMessages()
{
    for (const Icon icon : {Icon::Information, Icon::Warning, Icon::Critical, Icon::Question}) {
        QTimer::singleShot(0, [icon] {
            QWidget* box = QApplication::activeModalWidget();
            renderPng(*box, u"%1/message%2-150.png"_s.arg(folder).arg(int(icon)), 1.5);
            box->close();
        });
        DialogPrompt().ask(
            u"你确定要删除读者:R2004001 吗？(Y/N)"_s, OperationTitle.toString(), icon, Answer::No);
    }
}

void drawToolbar()
{
    QToolBar bar;
    bar.setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    bar.setIconSize({32, 32});
    bar.addAction(applicationIcon(), u"青简台"_s);
    for (const QString& key :
        {u"JHBook"_s, u"Reader"_s, u"Tj"_s, u"Fkcl"_s, u"BookOut"_s, u"Jycs"_s, u"Password"_s, u"Quit"_s})
        bar.addAction(toolbarIcon(key), key);
    bar.addAction(toolbarIcon(u"Reader"_s), u"off"_s)->setEnabled(false);
    draw(bar, u"toolbar"_s);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    applyTheme(application);
    folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : u"."_s;
    QDir().mkpath(folder);
    sample::CardForm card;
    draw(card, u"card"_s, &card.Text1[1]);
    sample::OverdueList list;
    list.show(40);
    draw(list, u"list"_s, &list.Grid1);
    sample::DeskForm desk;
    draw(desk, u"desk"_s, &desk.TxtBarCode);
    desk.SSTab1.setCurrentIndex(1);
    draw(desk, u"desk2"_s);
    errMessageFrm failure;
    failure.textErrMessage.setPlainText(failureText({}, u"列名 'x' 无效。"_s));
    draw(failure, u"error"_s);
    WorkingFrm working;
    working.setTotal(50000);
    working.setDone(21000);
    draw(working, u"working"_s);
    drawMessages();
    drawToolbar();
}
