#pragma once

#include "platform/core/error.h"
#include "platform/core/prompt.h"

namespace quilla {

/// A benchmark measures charges that succeed: any message box ends it.
class NoPrompt final : public Prompt {
public:
    Answer show(const Message& message) override
    {
        throw Error(1, u"bench"_s, u"unexpected message: "_s + message.text);
    }
};

} // namespace quilla
