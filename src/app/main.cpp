#include "app/application.h"
#include "app/desk_application.h"
#include "app/gallery_command.h"
#include "platform/core/dates.h"
#include "platform/core/window_command_line.h"
#include "platform/ui/form/dialog_prompt.h"
#include "platform/ui/form/input_rules.h"
#include "platform/ui/look/icons.h"
#include "platform/ui/look/theme.h"

using namespace quilla;

namespace {

constexpr QStringView Help = uR"(图书馆流通台。
用法：quilla [选项]

选项：
  --help              显示这些说明
  --version           显示版本
  --dark              深色的窗口
  --gallery 文件夹    用所连接的数据库把每个窗口画成图片，然后结束

打开哪个图书馆，用 quilla-setup 设置；数据库工具是 quilla-db。
)";

} // namespace

int main(int argc, char** argv)
{
    settleTimeZone();
    const WindowCommandLine line
        = WindowCommandLine::read(argc, argv, Help.toString(), u"quilla " QUILLA_VERSION ""_s);
    if (line.ended) return *line.ended;

    GuardedApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"quilla"_s);
    QCoreApplication::setApplicationVersion(u"" QUILLA_VERSION ""_s);
    QGuiApplication::setDesktopFileName(u"org.qingjian.quilla"_s);
    applyTheme(application, line.isDark ? Shade::Dark : desktopShade()); // some desktops can't be asked
    applyInputRules(application);
    QApplication::setWindowIcon(applicationIcon());
    if (!line.gallery.isEmpty()) {
        SilentPrompt silent;
        DeskApplication desk(silent);
        return renderGallery(desk, line.gallery);
    }
    DialogPrompt prompt;
    return DeskApplication(prompt).run();
}
