#include "frame/help_key.h"

#include "frame/manual_form.h"
#include "platform/core/text.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace quilla {

namespace {

/// A main window whose focus is in its menu or nowhere stands for the screen in front of it.
QWidget* screenInFront(QWidget* widget)
{
    const auto* main = qobject_cast<QMainWindow*>(widget);
    const auto* area = main ? qobject_cast<QMdiArea*>(main->centralWidget()) : nullptr;
    const QMdiSubWindow* window = area ? area->activeSubWindow() : nullptr;
    return window ? window->widget() : nullptr;
}

/// The nearest widget around the focus that has a section in the manual.
QString sectionOf(QWidget* focus)
{
    for (QWidget* widget = focus; widget; widget = widget->parentWidget()) {
        const QWidget* screen = screenInFront(widget);
        for (const QString& name : {screen ? screen->objectName() : QString(), widget->objectName()})
            if (!name.isEmpty() && findSection(name)) return name;
    }
    return {};
}

} // namespace

HelpKey::HelpKey(Session& session, FormPrinter& printer)
    : m_session(session)
    , m_printer(printer)
{
    qApp->installEventFilter(this);
}

void HelpKey::open(QWidget* focus)
{
    QWidget* owner = QApplication::activeModalWidget();
    if (!owner) owner = focus ? focus->window() : nullptr;
    if (m_manual && m_manual->parentWidget() != owner) m_manual->close();
    if (!m_manual || !m_manual->isVisible()) m_manual = new ManualFrm(m_session, m_printer, owner);
    m_manual->showSection(sectionOf(focus));
    m_manual->show();
    m_manual->raise();
    m_manual->activateWindow();
    m_manual->Text.setFocus();
}

bool HelpKey::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) return false;
    auto* focus = static_cast<QWidget*>(watched);
    if (focus->window() != m_manual) open(focus);
    return true;
}

} // namespace quilla
