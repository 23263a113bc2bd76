#pragma once

#include "platform/core/prompt.h"

namespace quilla {

/// Message boxes on the screen, modal to the active window. A text is shown as it stands, without markup.
class DialogPrompt final : public Prompt {
public:
    Answer show(const Message& message) override;
};

} // namespace quilla
