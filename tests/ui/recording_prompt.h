#pragma once

#include "platform/core/prompt.h"

#include <vector>

namespace quilla {

/// Keeps what was shown and answers as it was told to.
class RecordingPrompt final : public Prompt {
public:
    Answer show(const Message& message) override
    {
        shown.push_back(message);
        return message.question ? answer : Answer::Ok;
    }

    std::vector<Message> shown;
    Answer answer = Answer::No;
};

} // namespace quilla
