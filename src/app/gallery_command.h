#pragma once

#include "platform/core/prompt.h"

namespace quilla {

class DeskApplication;

/// Answers every box without showing it, a question with No.
class SilentPrompt final : public Prompt {
public:
    Answer show(const Message& message) override { return message.question ? Answer::No : Answer::Ok; }
};

/// Renders every screen with the data of the stored connection to PNG files in `folder`, at 100, 150 and
/// 200 %. The exit status.
int renderGallery(DeskApplication& desk, const QString& folder);

} // namespace quilla
