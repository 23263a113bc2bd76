#pragma once

#include "platform/ui/scan/blocked_keys.h"
#include "platform/ui/scan/scan_backlog.h"

#include <QPointer>

namespace quilla {

/// Keeps a scanner from answering a message box, or the window of the fine that a scan opens.
///
/// A scanner is a keyboard that never looks at the screen: while a box waits, the letters of the next
/// barcode could press its buttons and the Enter after them its default one. A run of characters too
/// fast for a hand is therefore held back, with its Enter, and given to the control that had the focus below,
/// once the box is gone, one scan after the other. If that control is no longer visible, a message lists the
/// scans instead: on another page they would mean something else. A single key, and an Enter by itself, reach
/// the box. What was scanned before the box had the focus, also while the operation below was at work, never
/// answers it. Where the operator writes a text in the box, only a run that is as long as a code and ends
/// with an Enter is a scan.
class ScanGuard final : public QObject {
    Q_OBJECT

public:
    /// Guards `box` for as long as it lives; it must end before the box.
    ScanGuard(QWidget& box, ScanBacklog::Tell tellUnserved);
    /// Hands on what was held back: to the window below, or to the guard of that window.
    ~ScanGuard() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void handOn(QWidget& below) const;
    bool hold(const QKeyEvent& event);
    void holdEarly(const QKeyEvent& event);
    void release();
    bool isHeldDown(const QKeyEvent& event) const;
    bool takesText() const;
    bool isTyped(const QKeyEvent& event) const;
    void letThrough(const Scan& keys);

    QWidget& m_box;
    QPointer<QWidget> m_desk; ///< the window that was active before the box
    QPointer<QWidget> m_target; ///< the control in it that the scans are for
    ScanBacklog::Tell m_tellUnserved;
    QTimer m_pause;
    Scan m_held; ///< of the run that is coming in
    std::vector<Scan> m_scans;
    quint64 m_enterUp = 0; ///< when an Enter was last let go, as the system counts milliseconds; 0: unknown
    bool m_letting = false; ///< what was typed by hand is on its way to the box
    bool m_heldEarly = false; ///< the run that is coming in began before the box had the focus
    BlockedKeys m_blocked; ///< what comes in until then
};

} // namespace quilla
