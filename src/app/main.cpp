#include "app/application.h"
#include "app/desk_application.h"
#include "app/gallery_command.h"
#include "platform/core/dates.h"
#include "platform/ui/form/dialog_prompt.h"
#include "platform/ui/form/input_rules.h"
#include "platform/ui/look/icons.h"
#include "platform/ui/look/theme.h"

using namespace quilla;

int main(int argc, char** argv)
{
    settleTimeZone();
    GuardedApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"quilla"_s);
    QCoreApplication::setApplicationVersion(u"4.1"_s);
    QGuiApplication::setDesktopFileName(u"org.qingjian.quilla"_s);
    QStringList arguments = QCoreApplication::arguments();
    // for a desktop that Qt cannot ask
    const bool dark = arguments.removeAll(u"--dark"_s) > 0;
    applyTheme(application, dark ? Shade::Dark : desktopShade());
    applyInputRules(application);
    QApplication::setWindowIcon(applicationIcon());
    if (arguments.size() == 3 && arguments[1] == u"--gallery") {
        SilentPrompt silent;
        DeskApplication desk(silent);
        return renderGallery(desk, arguments[2]);
    }
    DialogPrompt prompt;
    return DeskApplication(prompt).run();
}
