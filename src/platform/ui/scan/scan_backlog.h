#pragma once

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <deque>
#include <functional>
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

/// What the operator reads about scans that went to no control.
QString unservedNotice(const QStringList& scans);

/// Keeps what was scanned while a box barred the window, and hands it over once no box is in the way: one
/// scan in each turn of the event loop, each to the control it was scanned into if that is still visible.
/// What is typed into the window meanwhile waits behind these scans and goes to the control that has the
/// focus then, so that no two scans mix. The window owns its backlog.
class ScanBacklog final : public QObject {
    Q_OBJECT

public:
    /// The window's backlog.
    static ScanBacklog& of(QWidget& window);

    /// Shows the operator the scans whose control is no longer visible.
    using Tell = std::function<void(const QStringList& scans)>;

    /// A scan for `target`, or the beginning of one that the keys to come go on with.
    void append(const Scan& scan, QWidget* target, const Tell& tellUnserved);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /// These scans went to no control; a message about them comes next.
    void unserved(const QStringList& scans);

private:
    struct Waiting {
        ScanKey key;
        bool bound = false; ///< to `target`, which may be gone; else to where the focus is
        QPointer<QWidget> target {};
    };

    explicit ScanBacklog(QWidget& window);
    void serve();
    bool serveNext();
    void tellRest();
    std::vector<Waiting> takeScan();

    QWidget& m_window;
    std::deque<Waiting> m_keys;
    QStringList m_unserved;
    Tell m_tellUnserved;
    QTimer m_next;
    bool m_serving = false; ///< the window is at work on a scan
};

} // namespace quilla
