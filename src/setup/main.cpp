#include "platform/core/dates.h"
#include "platform/db/connection_text.h"
#include "platform/ui/form/dialog_prompt.h"
#include "platform/ui/form/input_rules.h"
#include "platform/ui/look/icons.h"
#include "platform/ui/look/theme.h"
#include "setup/setup_form.h"
#include "setup/setup_gallery.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTextStream>

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

void print(FILE* where, const QString& text)
{
    QTextStream(where) << text;
}

/// Beside this program where both are installed, in the folder next to it where they were built.
QString deskProgram()
{
    const QString folder = QCoreApplication::applicationDirPath();
    for (const QString& place : {folder + u"/quilla"_s, folder + u"/../app/quilla"_s})
        if (QFileInfo(place).isExecutable()) return place;
    return QStandardPaths::findExecutable(u"quilla"_s);
}

int setUp(const QCommandLineParser& parser)
{
    FileSettings settings;
    DialogPrompt prompt;
    bool startsDesk = false;
    int outcome = Left;
    {
        LockFileGuard desk(QFileInfo(embeddedDatabaseFile()).path());
        SetupFrm form({settings, prompt, desk});
        if (parser.isSet(u"gallery"_s)) return drawSetup(form, parser.value(u"gallery"_s)) ? Done : Failed;
        if (form.exec() == QDialog::Accepted) outcome = Done;
        startsDesk = form.startsDesk();
    } // the desk needs the lock
    const QStringList arguments = parser.isSet(u"dark"_s) ? QStringList {u"--dark"_s} : QStringList();
    if (!startsDesk || QProcess::startDetached(deskProgram(), arguments)) return outcome;
    prompt.stop(u"图书馆已经设置好，但是流通台没有打开。请从菜单里打开“青简台”。"_s, OperationTitle);
    return Failed;
}

} // namespace

int main(int argc, char** argv)
{
    settleTimeZone();
    QCommandLineParser parser;
    parser.addOptions(
        {{u"help"_s, {}}, {u"version"_s, {}}, {u"dark"_s, {}}, {u"gallery"_s, {}, u"文件夹"_s}});
    QStringList line;
    for (int i = 0; i < argc; ++i)
        line.append(QString::fromLocal8Bit(argv[i]));
    const bool known = parser.parse(line) && parser.positionalArguments().isEmpty();
    if (!known) return print(stderr, u"命令行有误。用 --help 查看用法。\n"_s), Failed;
    if (parser.isSet(u"help"_s)) return print(stdout, Help.toString()), Done;
    if (parser.isSet(u"version"_s))
        return print(stdout, QStringLiteral("quilla-setup " QUILLA_VERSION "\n")), Done;

    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"quilla-setup"_s);
    QGuiApplication::setDesktopFileName(u"org.qingjian.quilla.setup"_s);
    applyTheme(application, parser.isSet(u"dark"_s) ? Shade::Dark : desktopShade());
    applyInputRules(application);
    QApplication::setWindowIcon(applicationIcon());
    return setUp(parser);
}
