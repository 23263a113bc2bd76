#include "platform/ui/scan/scan_backlog.h"

#include "platform/core/text.h"

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

QString unservedNotice(const QStringList& scans)
{
    return u"窗口或提示框打开期间扫描的条码没有处理：\n%1\n原来的输入框已不在当前页面，请重新扫描。"_s.arg(
        scans.join(u'\n'));
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

void ScanBacklog::append(const Scan& scan, QWidget* target, const Tell& tellUnserved)
{
    for (const ScanKey& key : scan)
        m_keys.push_back({key, target != nullptr, target});
    m_tellUnserved = tellUnserved;
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
    m_keys.push_back({{key.key(), key.text()}});
    return true;
}

void ScanBacklog::serve()
{
    const QWidget* modal = QApplication::activeModalWidget();
    if (m_serving || (modal && modal != &m_window)) return m_next.start(BoxPause);
    const QPointer<ScanBacklog> self(this);
    m_serving = true;
    if (!serveNext() || !self) return;
    m_serving = false;
    if (!m_keys.empty()) return m_next.start(0);
    qApp->removeEventFilter(this);
    tellRest();
}

/// False when the window went with the scan.
bool ScanBacklog::serveNext()
{
    const std::vector<Waiting> scan = takeScan();
    const bool bound = scan.front().bound;
    const QPointer<QWidget> target = scan.front().target;
    if (bound && (!target || !target->isVisible())) {
        QString text;
        for (const Waiting& each : scan)
            if (!isEnter(each.key.code)) text += each.key.text;
        if (!text.isEmpty()) m_unserved.append(text);
        return true;
    }
    if (bound) target->setFocus(); // it selects its text, and the scan takes its place
    const QPointer<ScanBacklog> self(this);
    for (const Waiting& each : scan) {
        if (QWidget* control = bound ? target.data() : m_window.focusWidget()) pressKey(*control, each.key);
        if (!self) return false;
    }
    return true;
}

void ScanBacklog::tellRest()
{
    const QStringList scans = std::exchange(m_unserved, {});
    if (scans.isEmpty()) return;
    Q_EMIT unserved(scans);
    if (m_tellUnserved) m_tellUnserved(scans);
}

std::vector<ScanBacklog::Waiting> ScanBacklog::takeScan()
{
    std::vector<Waiting> scan;
    while (!m_keys.empty() && (scan.empty() || !isEnter(scan.back().key.code))) {
        scan.push_back(std::move(m_keys.front()));
        m_keys.pop_front();
    }
    return scan;
}

} // namespace quilla
