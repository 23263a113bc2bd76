#pragma once

namespace quilla {

/// What a sound says to an operator who looks at the book and not at the screen.
enum class Sound { Done, Refused, Attention };

/// Plays sounds. Never waits: a desk without a sound device is as fast as one with it.
class Sounds {
public:
    virtual ~Sounds() = default;
    virtual void play(Sound sound) = 0;
};

/// Plays nothing.
Sounds& silence();

} // namespace quilla
