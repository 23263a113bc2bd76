#include "platform/ui/scan_guard.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace quilla {

namespace {

/// The longest time between two characters of one scan; no hand types that fast.
constexpr int ScannerPause = 50; // milliseconds

bool isEnter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

bool isCharacter(const QKeyEvent& event)
{
    const bool command = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return !command && !event.text().isEmpty() && event.text()[0].isPrint();
}

void press(QWidget& control, int key, const QString& text)
{
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&control, &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&control, &up);
}

} // namespace

ScanGuard::ScanGuard(QWidget& box)
    : m_box(box)
    , m_desk(QApplication::activeWindow())
    , m_modal(QApplication::activeModalWidget())
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(ScannerPause);
    connect(&m_pause, &QTimer::timeout, this, &ScanGuard::release);
    qApp->installEventFilter(this);
}

ScanGuard::~ScanGuard()
{
    if (!m_held.empty()) m_scans.push_back(std::move(m_held));
    if (!m_scans.empty()) replay(m_desk, std::move(m_scans));
}

void ScanGuard::takeWaiting()
{
    m_early = true;
    QCoreApplication::processEvents();
    m_early = false;
    m_heldEarly = !m_held.empty();
}

/// True for what must not reach the desk in the midst of its operation.
bool ScanGuard::takeEarly(QEvent& event)
{
    switch (event.type()) {
    case QEvent::KeyPress:
        hold(static_cast<const QKeyEvent&>(event));
        return true;
    case QEvent::ShortcutOverride: // an Alt key would press a button
        event.accept();
        return true;
    case QEvent::Close:
        event.ignore();
        return true;
    case QEvent::KeyRelease:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
        return true;
    default:
        return false;
    }
}

bool ScanGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (m_early) return QApplication::activeModalWidget() == m_modal && takeEarly(*event);
    if (m_letting || (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)) return false;
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || widget->window() != &m_box) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (event->type() == QEvent::KeyRelease)
        return (isCharacter(key) && key.key() != Qt::Key_Space) || (isEnter(key.key()) && !m_scans.empty());
    return hold(key);
}

bool ScanGuard::hold(const QKeyEvent& event)
{
    const bool ends = isEnter(event.key());
    // A blank by itself presses the button that has the focus.
    if (m_held.empty() && event.key() == Qt::Key_Space) return false;
    if (!isCharacter(event) && !(ends && !m_held.empty())) return false;
    m_held.push_back({event.key(), event.text()});
    if (ends) {
        m_pause.stop();
        m_scans.push_back(std::exchange(m_held, {}));
        m_heldEarly = false;
    } else {
        m_pause.start();
    }
    return true;
}

/// The run has paused without an Enter: one character was typed by hand, more of them are kept.
void ScanGuard::release()
{
    Scan run = std::exchange(m_held, {});
    if (run.size() > 1 || std::exchange(m_heldEarly, false)) return m_scans.push_back(std::move(run));
    QWidget* control = m_box.focusWidget() ? m_box.focusWidget() : &m_box;
    m_letting = true;
    press(*control, run.front().code, run.front().text);
    m_letting = false;
}

/// One scan a turn of the event loop, each to where the one before it left the focus; not over the head
/// of another box that has come up meanwhile.
void ScanGuard::replay(QPointer<QWidget> desk, std::deque<Scan> scans)
{
    QTimer::singleShot(ScannerPause, qApp, [desk, scans = std::move(scans)]() mutable {
        if (!desk) return;
        const QWidget* modal = QApplication::activeModalWidget();
        if (modal && modal != desk) return replay(desk, std::move(scans));
        const Scan scan = std::move(scans.front());
        scans.pop_front();
        if (!scans.empty()) replay(desk, std::move(scans));
        for (const Key& key : scan) {
            if (QWidget* control = desk->focusWidget()) press(*control, key.code, key.text);
        }
    });
}

} // namespace quilla
