#include "frame/screen_keys.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMdiSubWindow>
#include <QShortcutEvent>

namespace quilla {

namespace {

QAbstractButton* buttonOf(const QWidget& screen, const QKeySequence& key)
{
    const auto buttons = screen.findChildren<QAbstractButton*>();
    const auto found = std::find_if(buttons.begin(), buttons.end(), [&](const QAbstractButton* button) {
        return button->isVisible() && button->isEnabled() && button->shortcut() == key;
    });
    return found == buttons.end() ? nullptr : *found;
}

} // namespace

ScreenKeys::ScreenKeys(QMdiArea& screens)
    : QObject(&screens)
    , m_screens(screens)
{
    qApp->installEventFilter(this);
}

bool ScreenKeys::eventFilter(QObject*, QEvent* event)
{
    if (event->type() != QEvent::Shortcut) return false;
    const auto* pressed = static_cast<QShortcutEvent*>(event);
    const QMdiSubWindow* front = m_screens.activeSubWindow();
    if (!pressed->isAmbiguous() || !front || !front->isActiveWindow()) return false;
    QAbstractButton* button = buttonOf(*front, pressed->key());
    if (button) button->click();
    return button != nullptr;
}

} // namespace quilla
