#include "platform/ui/scan/scan_guard.h"

#include "platform/ui/form/window_in_use.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace quilla {

namespace {

/// The longest time between two characters of one scan; no hand types that fast.
constexpr int ScannerPause = 50; // milliseconds

/// Between letting a key go and pressing it again a hand takes longer.
constexpr quint64 Instant = 20; // milliseconds

/// The shortest scan that is told from a text typed by hand.
constexpr std::size_t ShortestCode = 4;

} // namespace

ScanGuard::ScanGuard(QWidget& box, ScanBacklog::Tell tellUnserved)
    : QObject(&box)
    , m_box(box)
    , m_desk(windowInUse())
    , m_target(m_desk ? m_desk->focusWidget() : nullptr)
    , m_tellUnserved(std::move(tellUnserved))
    , m_blocked(box, [this](const QKeyEvent& event) { holdEarly(event); })
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(ScannerPause);
    connect(&m_pause, &QTimer::timeout, this, &ScanGuard::release);
    qApp->installEventFilter(this);
}

ScanGuard::~ScanGuard()
{
    if (!m_held.empty()) m_scans.push_back(std::move(m_held));
    if (m_desk) handOn(*m_desk);
}

void ScanGuard::handOn(QWidget& below) const
{
    if (auto* guard = below.findChild<ScanGuard*>({}, Qt::FindDirectChildrenOnly)) {
        guard->m_scans.insert(guard->m_scans.end(), m_scans.begin(), m_scans.end());
        return;
    }
    for (const Scan& scan : m_scans)
        ScanBacklog::of(below).append(scan, m_target, m_tellUnserved);
}

bool ScanGuard::eventFilter(QObject* watched, QEvent* event)
{
    if (m_letting || (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease)) return false;
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || widget->window() != &m_box) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (event->type() == QEvent::KeyRelease) {
        if (isEnter(key.key())) m_enterUp = key.timestamp();
        return (isScanned(key) && key.key() != Qt::Key_Space) || (isEnter(key.key()) && !m_scans.empty());
    }
    return hold(key);
}

/// Whether the Enter that opened the box is still down, which is no answer to it. The system reports the
/// first repetition to a new window as a key let go and pressed again in the same moment. The keys that come
/// by way of a screen reader have no time.
bool ScanGuard::isHeldDown(const QKeyEvent& event) const
{
    if (!isEnter(event.key())) return false;
    return event.isAutoRepeat() || (m_enterUp > 0 && event.timestamp() - m_enterUp < Instant);
}

bool ScanGuard::hold(const QKeyEvent& event)
{
    if (m_held.empty() && isHeldDown(event)) return true;
    if (takesText() && isTyped(event)) {
        release();
        return false;
    }
    const bool ends = isEnter(event.key());
    // A blank by itself presses the button that has the focus.
    if (m_held.empty() && event.key() == Qt::Key_Space) return false;
    if (!isScanned(event) && !(ends && !m_held.empty())) return false;
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

bool ScanGuard::takesText() const
{
    const QWidget* control = m_box.focusWidget();
    return control && control->testAttribute(Qt::WA_InputMethodEnabled);
}

/// A key that no scanner sends, one that is held down, or an Enter after less than a code.
bool ScanGuard::isTyped(const QKeyEvent& event) const
{
    if (isEnter(event.key())) return m_held.size() < ShortestCode;
    return !isScanned(event) || event.isAutoRepeat();
}

void ScanGuard::holdEarly(const QKeyEvent& event)
{
    if (hold(event)) m_heldEarly = !m_held.empty();
}

/// The run has paused without an Enter: a text, or one character for a button, was typed by hand; else it is
/// kept.
void ScanGuard::release()
{
    m_pause.stop();
    const Scan run = std::exchange(m_held, {});
    const bool early = std::exchange(m_heldEarly, false);
    if (run.empty()) return;
    if (early || (run.size() > 1 && !takesText())) return m_scans.push_back(run);
    letThrough(run);
}

void ScanGuard::letThrough(const Scan& keys)
{
    m_letting = true;
    for (const ScanKey& key : keys)
        pressKey(m_box.focusWidget() ? *m_box.focusWidget() : m_box, key);
    m_letting = false;
}

} // namespace quilla
