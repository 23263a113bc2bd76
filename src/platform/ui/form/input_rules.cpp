#include "platform/ui/form/input_rules.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QShortcutEvent>
#include <QTabBar>

namespace quilla {

namespace {

/// Whether a turn of the wheel gives the control another value.
bool isTurned(const QWidget& control)
{
    return qobject_cast<const QComboBox*>(&control) || qobject_cast<const QAbstractSpinBox*>(&control)
        || qobject_cast<const QTabBar*>(&control)
        || (qobject_cast<const QAbstractSlider*>(&control) && !qobject_cast<const QScrollBar*>(&control));
}

/// Alt alone with a key that has a character. Other keys with Alt are the window's.
bool wouldType(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    return modifiers.testFlag(Qt::AltModifier) && !modifiers.testFlag(Qt::ControlModifier)
        && !event.text().isEmpty() && event.text().front().isPrint();
}

/// The screen under the operator's hands: a dialog, or a screen inside the main window.
QWidget* screenInUse()
{
    for (QWidget* around = QApplication::focusWidget(); around; around = around->parentWidget())
        if (around->isWindow() || qobject_cast<QMdiSubWindow*>(around)) return around;
    return QApplication::activeWindow();
}

/// Where an access key of the control leads: a button to itself, a label to the box it names. In that box the
/// key leads on, so that a button with the same letter can be reached.
QWidget* ledTo(QWidget& control, const QKeySequence& key)
{
    if (const auto* button = qobject_cast<QAbstractButton*>(&control))
        return button->shortcut() == key ? &control : nullptr;
    const auto* label = qobject_cast<QLabel*>(&control);
    if (!label || QKeySequence::mnemonic(label->text()) != key) return nullptr;
    return label->buddy() && !label->buddy()->hasFocus() ? label->buddy() : nullptr;
}

/// The first control of the screen, in the order of Tab, that the key leads to.
QWidget* firstFor(const QKeySequence& key, QWidget& screen)
{
    QWidgetList targets;
    for (QWidget* control : screen.findChildren<QWidget*>())
        if (QWidget* target = ledTo(*control, key); target && target->isEnabled() && target->isVisible())
            targets.append(target);
    QWidget* next = screen.window();
    do {
        if (targets.contains(next)) return next;
        next = next->nextInFocusChain();
    } while (next != screen.window());
    return nullptr;
}

class InputRules final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::Polish:
            keepFocusFromWheel(watched);
            return false;
        case QEvent::Wheel:
            return passesWheelOn(watched, *event);
        case QEvent::KeyPress:
            return watched->isWidgetType() && wouldType(static_cast<QKeyEvent&>(*event));
        case QEvent::Shortcut:
            return watched->isWidgetType() && press(static_cast<QShortcutEvent&>(*event));
        default:
            return false;
        }
    }

private:
    static void keepFocusFromWheel(QObject* watched)
    {
        auto* control = qobject_cast<QWidget*>(watched);
        if (control && control->focusPolicy() == Qt::WheelFocus && isTurned(*control))
            control->setFocusPolicy(Qt::StrongFocus);
    }
    /// What stands around the control may scroll.
    static bool passesWheelOn(QObject* watched, QEvent& event)
    {
        const auto* control = qobject_cast<QWidget*>(watched);
        if (!control || !isTurned(*control) || control->hasFocus()) return false;
        event.ignore();
        return true;
    }
    static bool press(const QShortcutEvent& event)
    {
        QWidget* const screen = screenInUse();
        if (!event.isAmbiguous() || !screen) return false;
        QWidget* const target = firstFor(event.key(), *screen);
        if (!target) return false;
        if (auto* button = qobject_cast<QAbstractButton*>(target))
            button->animateClick();
        else
            target->setFocus(Qt::ShortcutFocusReason);
        return true;
    }
};

} // namespace

void applyInputRules(QCoreApplication& application)
{
    application.installEventFilter(new InputRules(&application));
}

} // namespace quilla
