#include "platform/ui/form/access_keys.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace quilla {

namespace {

bool isAccessKey(const QKeyEvent& event)
{
    const auto modifiers = event.modifiers() & ~Qt::KeypadModifier & ~Qt::ShiftModifier;
    return modifiers == Qt::AltModifier && !event.text().isEmpty() && event.text()[0].isPrint();
}

/// Where a letter is looked for first: the dialog, or the active screen of the main window.
QWidget* formInUse()
{
    QWidget* window = QApplication::activeWindow();
    const auto* area = window ? window->findChild<QMdiArea*>() : nullptr;
    if (!area) return window;
    const QMdiSubWindow* screen = area->activeSubWindow();
    return screen && !screen->isMinimized() ? screen->widget() : nullptr;
}

QString captionOf(const QWidget& control)
{
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) return button->text();
    const auto* label = qobject_cast<const QLabel*>(&control);
    return label && label->buddy() ? label->text() : QString();
}

bool answers(const QWidget& control, int key)
{
    if (!control.isVisible() || !control.isEnabled()) return false;
    const auto* label = qobject_cast<const QLabel*>(&control);
    if (label && label->buddy() && !label->buddy()->isEnabled()) return false;
    return QKeySequence::mnemonic(captionOf(control)) == QKeySequence(int(Qt::ALT) | key);
}

QWidget* controlOf(QWidget& form, int key)
{
    for (QWidget* control = form.nextInFocusChain(); control != &form; control = control->nextInFocusChain())
        if (form.isAncestorOf(control) && answers(*control, key)) return control;
    return nullptr;
}

void use(QWidget& control)
{
    if (auto* button = qobject_cast<QAbstractButton*>(&control)) return button->click();
    if (auto* label = qobject_cast<QLabel*>(&control)) label->buddy()->setFocus(Qt::ShortcutFocusReason);
}

} // namespace

AccessKeys::AccessKeys()
{
    qApp->installEventFilter(this);
}

/// A key is announced before it may open a menu; who accepts it then gets it as a press.
bool AccessKeys::eventFilter(QObject* watched, QEvent* event)
{
    const bool announced = event->type() == QEvent::ShortcutOverride;
    if (!announced && event->type() != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (!qobject_cast<QWidget*>(watched) || !isAccessKey(key) || QApplication::activePopupWidget())
        return false;
    QWidget* form = formInUse();
    QWidget* control = form ? controlOf(*form, key.key()) : nullptr;
    if (announced && !control) return false; // the menu's
    event->accept();
    if (!announced && control) use(*control);
    return true;
}

} // namespace quilla
