#include "app/application.h"

#include "platform/core/error.h"
#include "platform/ui/form/dialog_prompt.h"

namespace quilla {

GuardedApplication::GuardedApplication(int& argc, char** argv)
    : QApplication(argc, argv)
{
}

bool GuardedApplication::notify(QObject* receiver, QEvent* event)
{
    try {
        return QApplication::notify(receiver, event);
    } catch (const Error& error) {
        endAfter(error);
    } catch (const std::exception& error) {
        constexpr int outOfMemory = 7; // there is hardly another cause
        endAfter(Error(outOfMemory, u"quilla"_s,
            u"内存不足，请退出其他程序再重新启动。\n%1"_s.arg(QString::fromLocal8Bit(error.what()))));
    }
    return false;
}

void GuardedApplication::endAfter(const Error& error)
{
    // What fails on the way out must not ask a second time.
    if (m_failed) return;
    m_failed = true;
    DialogPrompt().stop(u"实时错误 '%1'：\n\n%2"_s.arg(QString::number(error.number), error.text));
    exit(1);
}

} // namespace quilla
