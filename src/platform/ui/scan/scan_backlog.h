#pragma once

#include <QObject>
#include <QTimer>

#include <deque>
#include <vector>

class QKeyEvent;
class QWidget;

namespace quilla {

/// A key as it is given to a control.
struct ScanKey {
    int code;
    QString text;
};
using Scan = std::vector<ScanKey>;

/// A key of a barcode, other than the Enter at its end.
bool isScanned(const QKeyEvent& event);
bool isEnter(int key);
void pressKey(QWidget& control, const ScanKey& key);

/// What was scanned while a window was not to be reached, given to it once no box is in the way: one scan a
/// turn of the event loop, each to where the one before it left the focus. What is typed into the window
/// meanwhile goes behind, so that no two scans mix. Belongs to the window.
class ScanBacklog final : public QObject {
    Q_OBJECT

public:
    /// The window's backlog.
    static ScanBacklog& of(QWidget& window);

    /// A scan, or the beginning of one that the keys to come go on with.
    void append(const Scan& scan);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit ScanBacklog(QWidget& window);
    void serve();
    Scan takeScan();

    QWidget& m_window;
    std::deque<ScanKey> m_keys;
    QTimer m_next;
    bool m_serving = false; ///< the window is at work on a scan
};

} // namespace quilla
