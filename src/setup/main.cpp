#include "platform/core/dates.h"
#include "platform/core/window_command_line.h"
#include "platform/db/connection_text.h"
#include "platform/ui/form/dialog_prompt.h"
#include "platform/ui/form/input_rules.h"
#include "platform/ui/look/icons.h"
#include "platform/ui/look/theme.h"
#include "setup/setup_form.h"
#include "setup/setup_gallery.h"

#include <QApplication>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

using namespace quilla;

namespace {

constexpr QStringView Help = uR"(设置青简台打开哪个图书馆：试用、新建、打开文件，或者连接数据库服务器。
用法：quilla-setup [选项]

选项：
  --help              显示这些说明
  --version           显示版本
  --dark              深色的窗口
  --gallery 文件夹    把每一页画成图片，然后结束

返回值：0 已经设置，1 没有设置，2 失败。
)";

enum Outcome { Done = 0, Left = 1, Failed = 2 };

/// Beside this program where both are installed, in the folder next to it where they were built.
QString deskProgram()
{
    const QString folder = QCoreApplication::applicationDirPath();
    for (const QString& place : {folder + u"/quilla"_s, folder + u"/../app/quilla"_s})
        if (QFileInfo(place).isExecutable()) return place;
    return QStandardPaths::findExecutable(u"quilla"_s);
}

int setUp(const WindowCommandLine& line)
{
    FileSettings settings;
    DialogPrompt prompt;
    if (line.gallery.isEmpty() && !prepareSettings(settings, prompt)) return Failed;
    bool startsDesk = false;
    int outcome = Left;
    {
        LockFileGuard desk(QFileInfo(embeddedDatabaseFile()).path());
        SetupFrm form({settings, prompt, desk});
        if (!line.gallery.isEmpty()) return drawSetup(form, line.gallery) ? Done : Failed;
        if (form.exec() == QDialog::Accepted) outcome = Done;
        startsDesk = form.startsDesk();
    } // the desk needs the lock
    const QStringList arguments = line.isDark ? QStringList {u"--dark"_s} : QStringList();
    if (!startsDesk || QProcess::startDetached(deskProgram(), arguments)) return outcome;
    prompt.stop(u"图书馆已经设置好，但是流通台没有打开。请从菜单里打开“青简台”。"_s, OperationTitle);
    return Failed;
}

} // namespace

int main(int argc, char** argv)
{
    settleTimeZone();
    const WindowCommandLine line
        = WindowCommandLine::read(argc, argv, Help.toString(), u"quilla-setup " QUILLA_VERSION ""_s);
    if (line.ended) return *line.ended;

    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"quilla-setup"_s);
    QGuiApplication::setDesktopFileName(u"org.qingjian.quilla.setup"_s);
    applyTheme(application, line.isDark ? Shade::Dark : desktopShade());
    applyInputRules(application);
    QApplication::setWindowIcon(applicationIcon());
    return setUp(line);
}
