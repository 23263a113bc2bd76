#include "platform/core/sounds.h"

namespace quilla {

namespace {

class Silence final : public Sounds {
    void play(Sound) override { }
};

} // namespace

Sounds& silence()
{
    static Silence sounds;
    return sounds;
}

} // namespace quilla
