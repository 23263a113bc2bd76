#include "platform/core/desktop_sounds.h"

#include <QLibrary>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace quilla {

namespace {

/// What is used of libcanberra, found when it is needed: the program runs without it as well.
struct Canberra {
    using Create = int (*)(void** context);
    using Play = int (*)(void* context, unsigned id, ...);

    Canberra()
        : library(QStringLiteral("canberra"), 0)
        , create(reinterpret_cast<Create>(library.resolve("ca_context_create")))
        , play(reinterpret_cast<Play>(library.resolve("ca_context_play")))
    {
        if (create && play && create(&context) != 0) context = nullptr;
    }

    QLibrary library;
    Create create;
    Play play;
    void* context = nullptr; ///< nullptr: no sound
};

/// By the names that sound themes share.
const char* nameOf(Sound sound)
{
    switch (sound) {
    case Sound::Done:
        return "complete";
    case Sound::Refused:
        return "dialog-error";
    case Sound::Attention:
        break;
    }
    return "dialog-warning";
}

constexpr std::size_t MostWaiting = 3; ///< older ones are about scans long gone

} // namespace

/// The queue of sounds; its thread keeps it alive until it has ended.
class DesktopSounds::Player {
public:
    void add(Sound sound)
    {
        const std::lock_guard lock(m_guard);
        m_waiting.push_back(sound);
        if (m_waiting.size() > MostWaiting) m_waiting.pop_front();
        m_changed.notify_one();
    }

    void end()
    {
        const std::lock_guard lock(m_guard);
        m_ended = true;
        m_changed.notify_one();
    }

    void run()
    {
        const Canberra canberra;
        while (const auto sound = next())
            if (canberra.context)
                canberra.play(
                    canberra.context, 0, "event.id", nameOf(*sound), "canberra.enable", "1", nullptr);
    }

private:
    /// nullopt at the end.
    std::optional<Sound> next()
    {
        std::unique_lock lock(m_guard);
        m_changed.wait(lock, [this] { return m_ended || !m_waiting.empty(); });
        if (m_ended) return {};
        const Sound sound = m_waiting.front();
        m_waiting.pop_front();
        return sound;
    }

    std::mutex m_guard;
    std::condition_variable m_changed;
    std::deque<Sound> m_waiting;
    bool m_ended = false;
};

DesktopSounds::DesktopSounds(std::function<bool()> isOn)
    : m_isOn(std::move(isOn))
{
}

/// Waits for nobody: the thread may hang in a sound server.
DesktopSounds::~DesktopSounds()
{
    if (m_player) m_player->end();
}

void DesktopSounds::play(Sound sound)
{
    if (!m_isOn()) return;
    if (!m_player) {
        m_player = std::make_shared<Player>();
        std::thread([player = m_player] { player->run(); }).detach();
    }
    m_player->add(sound);
}

} // namespace quilla
