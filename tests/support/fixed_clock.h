#pragma once

#include "platform/core/dates.h"

namespace quilla {

/// A clock that stands where the test puts it.
class FixedClock final : public Clock {
public:
    explicit FixedClock(const Moment& at)
        : moment(at)
    {
    }
    Moment now() const override { return moment; }
    Moment moment;
};

} // namespace quilla
