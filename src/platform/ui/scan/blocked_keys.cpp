#include "platform/ui/scan/blocked_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWindow>

#include <qpa/qwindowsysteminterface_p.h>

namespace quilla {

using System = QWindowSystemInterfacePrivate;

class BlockedKeys::Handler final : public QWindowSystemEventHandler {
public:
    Handler(QWidget& box, std::function<void(const QKeyEvent&)> take)
        : m_box(box)
        , m_take(std::move(take))
        , m_around(std::exchange(System::eventHandler, this))
    {
    }
    ~Handler() override { System::eventHandler = m_around; }

    bool sendEvent(System::WindowSystemEvent* event) override
    {
        const bool mayBeBarred = event->type == System::Key && QApplication::activeModalWidget() == &m_box;
        if (!mayBeBarred) return QWindowSystemEventHandler::sendEvent(event);
        const auto& key = static_cast<const System::KeyEvent&>(*event);
        if (isOfBox(key.window)) return QWindowSystemEventHandler::sendEvent(event);
        if (key.keyType == QEvent::KeyPress)
            m_take(QKeyEvent(key.keyType, key.key, key.modifiers, key.unicode));
        return true;
    }

private:
    /// The box itself, or a window that was opened over it, such as the manual.
    bool isOfBox(const QWindow* window) const
    {
        const QWindow* box = m_box.windowHandle();
        return window == box || (box && box->isAncestorOf(window, QWindow::IncludeTransients));
    }

    QWidget& m_box;
    std::function<void(const QKeyEvent&)> m_take;
    QWindowSystemEventHandler* m_around;
};

BlockedKeys::BlockedKeys(QWidget& box, std::function<void(const QKeyEvent&)> take)
    : m_handler(std::make_unique<Handler>(box, std::move(take)))
{
}

BlockedKeys::~BlockedKeys() = default;

} // namespace quilla
