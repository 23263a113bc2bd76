#pragma once

#include <QObject>
#include <QTimer>

namespace quilla {

/// Whether the operator was told a fault by the very click or key that is under way. Leaving a box can tell
/// one; the command whose button took the focus then stays undone, and does not tell the same again.
class JustTold final : public QObject {
public:
    void now()
    {
        m_told = true;
        QTimer::singleShot(0, this, [this] { m_told = false; });
    }
    explicit operator bool() const { return m_told; }

private:
    bool m_told = false;
};

} // namespace quilla
