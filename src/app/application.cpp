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
        // What fails on the way out must not ask a second time.
        if (m_failed) return false;
        m_failed = true;
        DialogPrompt().stop(u"实时错误 '%1'：\n\n%2"_s.arg(QString::number(error.number), error.text));
        exit(1);
        return false;
    }
}

} // namespace quilla
