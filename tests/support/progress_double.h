#pragma once

#include "platform/core/progress.h"

namespace quilla {

/// Shows nothing; ends the work when it has done so much.
class CountedProgress final : public Progress {
public:
    void begin() override { ++begun; }
    void setTotal(qsizetype rows) override { total = rows; }
    void setDone(qsizetype rows) override { done = rows; }
    bool goOn() override { return done < endAt; }
    void end() override { ++ended; }
    int begun = 0;
    int ended = 0;
    qsizetype total = -1;
    qsizetype done = 0;
    qsizetype endAt = 1'000'000;
};

} // namespace quilla
