#include "zanbench/TimePlayer.h"

#include <algorithm>
#include <chrono>

namespace zan::host {

namespace {

std::int64_t machineTime()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

} // namespace

TimePlayer::TimePlayer(Clock clock)
    : m_clock(clock ? std::move(clock) : Clock(machineTime))
{}

void TimePlayer::play(site::HistoryTime from)
{
    m_from = from;
    m_since = m_clock();
    m_isPlaying = true;
}

void TimePlayer::setSpeed(int speed)
{
    const bool wasPlaying = m_isPlaying;
    const site::HistoryTime reached = moment();
    m_speed = std::clamp(speed, Speeds.front(), Speeds.back());
    if (wasPlaying)
        play(reached);
}

site::HistoryTime TimePlayer::moment() const
{
    return m_isPlaying ? m_from + (m_clock() - m_since) * m_speed : m_from;
}

} // namespace zan::host
