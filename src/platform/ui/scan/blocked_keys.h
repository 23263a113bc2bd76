#pragma once

#include <functional>
#include <memory>

class QKeyEvent;
class QWidget;

namespace quilla {

/// The keys that come for another window while a box is up. A box bars the other windows from the moment it
/// shows, yet the system sends it the keys only once it has the focus, some milliseconds later; what comes
/// between is dropped before any control or event filter sees it.
class BlockedKeys {
public:
    /// Hands the presses among them to `take` as long as it lives. Those that live at the same time end in
    /// the reverse order of their beginnings.
    BlockedKeys(QWidget& box, std::function<void(const QKeyEvent&)> take);
    ~BlockedKeys();
    BlockedKeys(const BlockedKeys&) = delete;
    BlockedKeys& operator=(const BlockedKeys&) = delete;

private:
    class Handler;
    std::unique_ptr<Handler> m_handler;
};

} // namespace quilla
