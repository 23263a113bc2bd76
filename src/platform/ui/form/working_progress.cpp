#include "platform/ui/form/working_progress.h"

#include <QCoreApplication>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace quilla {

namespace {

/// Whether no other screen was gone to.
bool isInFront(const QWidget& screen)
{
    for (const QWidget* around = &screen; around; around = around->parentWidget())
        if (const auto* window = qobject_cast<const QMdiSubWindow*>(around))
            return !window->mdiArea() || window->mdiArea()->currentSubWindow() == window;
    return true;
}

} // namespace

void WorkingProgress::begin()
{
    m_hourglass.emplace();
    if (m_owner) {
        m_focus = m_owner->focusWidget();
        m_owner->setEnabled(false);
    }
    m_form = new WorkingFrm(m_owner); // after that, since it would be disabled with its owner
    if (!m_title.isEmpty()) m_form->setWindowTitle(m_title);
    QCoreApplication::processEvents();
}

void WorkingProgress::setTotal(qsizetype rows)
{
    if (m_form) m_form->setTotal(rows);
}

void WorkingProgress::setDone(qsizetype rows)
{
    if (m_form) m_form->setDone(rows);
}

bool WorkingProgress::goOn()
{
    QCoreApplication::processEvents();
    return m_form && !m_form->cancelRequested();
}

void WorkingProgress::end()
{
    delete m_form;
    if (m_owner) m_owner->setEnabled(true);
    if (m_owner && m_focus && isInFront(*m_owner)) m_focus->setFocus();
    m_hourglass.reset();
}

} // namespace quilla
