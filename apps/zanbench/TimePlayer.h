#pragma once

#include "site/History.h"

#include <array>
#include <functional>

namespace zan::host {

/// How far a walk through recorded time has come, at the pace of real time or faster. It goes by a clock and not by how
/// often it is asked: who asks late gets what is due then.
class TimePlayer
{
public:
    /// Milliseconds from any beginning, never backwards.
    using Clock = std::function<std::int64_t()>;
    static constexpr std::array<int, 8> Speeds{1, 2, 5, 10, 60, 100, 600, 1000};

    /// Without a clock of its own it goes by the machine's.
    explicit TimePlayer(Clock clock = {});

    void play(site::HistoryTime from);
    void stop() noexcept { m_isPlaying = false; }
    bool isPlaying() const noexcept { return m_isPlaying; }
    /// How many times as fast as real time; goes on from where it is.
    void setSpeed(int speed);
    int speed() const noexcept { return m_speed; }
    /// Where it is now, while it plays; else where it stopped.
    site::HistoryTime moment() const;

private:
    Clock m_clock;
    site::HistoryTime m_from = 0;
    std::int64_t m_since = 0;
    int m_speed = 1;
    bool m_isPlaying = false;
};

} // namespace zan::host
