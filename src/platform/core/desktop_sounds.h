#pragma once

#include "platform/core/sounds.h"

#include <functional>
#include <memory>

namespace quilla {

/// The sounds of the desktop's theme, by the library that knows it. Where that is missing, or there is no
/// sound device, it is silent. Everything happens on a thread of its own, which begins with the first sound:
/// a sound server that does not answer keeps nobody waiting.
class DesktopSounds final : public Sounds {
public:
    /// `isOn` is asked before each sound.
    explicit DesktopSounds(std::function<bool()> isOn);
    ~DesktopSounds() override;

    void play(Sound sound) override;

private:
    class Player;

    std::function<bool()> m_isOn;
    std::shared_ptr<Player> m_player;
};

} // namespace quilla
