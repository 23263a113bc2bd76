#include "platform/ui/form/control_keys.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace quilla {

namespace {

bool isEnter(const QEvent& event)
{
    if (event.type() != QEvent::KeyPress) return false;
    const int key = static_cast<const QKeyEvent&>(event).key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// The focus that comes or goes with a window, a menu or a message box is not the operator's.
bool isOwnStep(const QEvent& event)
{
    const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason
        && reason != Qt::MenuBarFocusReason;
}

bool takesLines(const QWidget& control)
{
    return qobject_cast<const QPlainTextEdit*>(&control) || qobject_cast<const QTextEdit*>(&control);
}

} // namespace

ControlKeys& ControlKeys::of(QWidget& control)
{
    if (auto* keys = control.findChild<ControlKeys*>({}, Qt::FindDirectChildrenOnly)) return *keys;
    return *new ControlKeys(control);
}

ControlKeys::ControlKeys(QWidget& control)
    : QObject(&control)
    , m_control(control)
{
    control.installEventFilter(this);
    // of an editable list the keys go to the box inside
    if (auto* list = qobject_cast<QComboBox*>(&control); list && list->lineEdit())
        list->lineEdit()->installEventFilter(this);
}

void ControlKeys::runWaitingLeaves(QWidget& control)
{
    for (ControlKeys* keys : control.window()->findChildren<ControlKeys*>())
        QCoreApplication::sendPostedEvents(keys, QEvent::MetaCall);
}

bool ControlKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (isEnter(*event)) return takeEnter();
    if (watched != &m_control) return false;
    if (event->type() == QEvent::FocusIn && entered && isOwnStep(*event)) entered();
    if (event->type() == QEvent::FocusOut && left && isOwnStep(*event)) waitToLeave();
    return false;
}

/// The step of the screen comes first; the focus moves on unless that step has moved it.
bool ControlKeys::takeEnter()
{
    if (!enter && !enterIsTab) return false;
    if (auto* list = qobject_cast<QComboBox*>(&m_control); list && list->view()->isVisible()) return false;
    const QPointer<ControlKeys> self(this); // the step may close the form
    runWaitingLeaves(m_control);
    if (enter) enter();
    if (!self) return true;
    if (enterIsTab && m_control.hasFocus()) moveOn();
    // Enter inside a text of several lines would break the line that was just left
    return !enterIsTab || takesLines(m_control);
}

void ControlKeys::moveOn()
{
    QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
    QCoreApplication::sendEvent(&m_control, &tab);
}

/// A step that ran at once could show a message in the middle of the click that took the focus away. It runs
/// as soon as that click has reached its control, or before a command of the form.
void ControlKeys::waitToLeave()
{
    QMetaObject::invokeMethod(
        this, [this] { left(); }, Qt::QueuedConnection);
}

} // namespace quilla
