#pragma once

#include <QObject>
#include <QTimer>

namespace quilla {

/// Whether the click or key that is being handled has already shown a fault. Leaving a box can show one; the
/// command whose button took the focus is then not carried out, and does not show the same fault again.
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
