#include "platform/ui/form/activation.h"

#include <QEvent>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace quilla {

namespace {

class ActivationWatch final : public QObject {
public:
    ActivationWatch(QWidget& screen, std::function<void()> step)
        : QObject(&screen)
        , m_step(std::move(step))
    {
        screen.installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Show && !event->spontaneous()) {
            watchArea(static_cast<QWidget*>(watched));
            m_step();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    /// The area also signals a window that becomes active again after a message box; only a change counts.
    void watchArea(QWidget* screen)
    {
        auto* window = qobject_cast<QMdiSubWindow*>(screen->parentWidget());
        if (!window || !window->mdiArea() || m_front) return;
        m_front = window;
        connect(window->mdiArea(), &QMdiArea::subWindowActivated, this, [this, window](QMdiSubWindow* front) {
            if (!front || front == m_front) return;
            m_front = front;
            if (front == window) m_step();
        });
    }

    std::function<void()> m_step;
    const QMdiSubWindow* m_front = nullptr; ///< the window that was activated last
};

} // namespace

void onActivation(QWidget& screen, std::function<void()> step)
{
    new ActivationWatch(screen, std::move(step));
}

} // namespace quilla
