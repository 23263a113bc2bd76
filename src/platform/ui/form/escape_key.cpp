#include "platform/ui/form/escape_key.h"

#include <QDialog>
#include <QKeyEvent>

namespace quilla {

namespace {

/// Takes the key that no control wanted, before the dialog sees it.
class EscapeFilter final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject*, QEvent* event) override
    {
        return event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    }
};

} // namespace

void keepOpenAtEscape(QDialog& dialog)
{
    dialog.installEventFilter(new EscapeFilter(&dialog));
}

} // namespace quilla
