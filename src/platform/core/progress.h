#pragma once

#include <QtGlobal>

namespace quilla {

/// Shows the operator how far long work is, and hears whether the operator wants it to end.
class Progress {
public:
    virtual ~Progress() = default;
    virtual void begin() = 0;
    virtual void setTotal(qsizetype rows) = 0;
    virtual void setDone(qsizetype rows) = 0;
    /// Lets the system serve its events. False when the work is to end.
    virtual bool goOn() = 0;
    virtual void end() = 0;
};

} // namespace quilla
