#include "platform/ui/scan/scan_backlog.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

namespace quilla {

namespace {

constexpr int BoxPause = 50; // milliseconds between two looks whether a box is still in the way

} // namespace

bool isScanned(const QKeyEvent& event)
{
    const bool command = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return !command && !event.text().isEmpty() && event.text()[0].isPrint();
}

bool isEnter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

void pressKey(QWidget& control, const ScanKey& key)
{
    const QPointer<QWidget> pressed(&control);
    QKeyEvent down(QEvent::KeyPress, key.code, Qt::NoModifier, key.text);
    QCoreApplication::sendEvent(&control, &down);
    if (!pressed) return;
    QKeyEvent up(QEvent::KeyRelease, key.code, Qt::NoModifier, key.text);
    QCoreApplication::sendEvent(&control, &up);
}

ScanBacklog& ScanBacklog::of(QWidget& window)
{
    auto* backlog = window.findChild<ScanBacklog*>(QString(), Qt::FindDirectChildrenOnly);
    return backlog ? *backlog : *new ScanBacklog(window);
}

ScanBacklog::ScanBacklog(QWidget& window)
    : QObject(&window)
    , m_window(window)
{
    m_next.setSingleShot(true);
    connect(&m_next, &QTimer::timeout, this, &ScanBacklog::serve);
}

void ScanBacklog::append(const Scan& scan)
{
    m_keys.insert(m_keys.end(), scan.begin(), scan.end());
    qApp->installEventFilter(this);
    m_next.start(0);
}

bool ScanBacklog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || !event->spontaneous()) return false;
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget || widget->window() != &m_window) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (!isScanned(key) && !isEnter(key.key())) return false;
    m_keys.push_back({key.key(), key.text()});
    return true;
}

void ScanBacklog::serve()
{
    const QWidget* modal = QApplication::activeModalWidget();
    if (m_serving || (modal && modal != &m_window)) return m_next.start(BoxPause);
    const QPointer<ScanBacklog> self(this);
    m_serving = true;
    for (const ScanKey& key : takeScan()) {
        if (QWidget* control = m_window.focusWidget()) pressKey(*control, key);
        if (!self) return;
    }
    m_serving = false;
    if (m_keys.empty())
        qApp->removeEventFilter(this);
    else
        m_next.start(0);
}

Scan ScanBacklog::takeScan()
{
    Scan scan;
    while (!m_keys.empty() && (scan.empty() || !isEnter(scan.back().code))) {
        scan.push_back(std::move(m_keys.front()));
        m_keys.pop_front();
    }
    return scan;
}

} // namespace quilla
