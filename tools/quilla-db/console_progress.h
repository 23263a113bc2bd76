#pragma once

#include "platform/core/progress.h"

namespace quilla {

/// How far the work is, in one line of the terminal; silent where there is none.
class ConsoleProgress final : public Progress {
public:
    ConsoleProgress();
    void begin() override { }
    void setTotal(qsizetype rows) override { m_total = rows; }
    void setDone(qsizetype rows) override;
    bool goOn() override { return true; }
    void end() override;

private:
    bool m_shown = false; ///< whether there is a terminal
    qsizetype m_total = 0;
    int m_percent = -1;
};

} // namespace quilla
