#include "script/machine/Budget.h"

#include "script/machine/EngineSettings.h"

#include <QString>

namespace zan::script {

using values::ErrorNumber;

namespace {

constexpr int UserInterrupt = 18;
/// Calls to code outside the machine between two looks at the clock.
constexpr int CallsPerLook = 16;
/// Objects that hear Class_Terminate after a limit has ended the run, each until its first loop or call.
constexpr int LastWordsAfterStop = 20000;

} // namespace

Budget::Scope::Scope(Budget& budget)
    : m_budget(budget)
    , m_wasRunning(budget.m_isClockRunning)
{
    if (m_budget.m_scopes++ == 0) {
        m_budget.m_spent = {};
        m_budget.m_nextBusy = m_budget.m_settings.limits.busyInterval;
        m_budget.m_calls = CallsPerLook;
        m_budget.m_memoryAtStart.reset();
        m_budget.m_unchecked = 0;
    }
    m_budget.setClockRunning(true);
}

Budget::Scope::~Scope()
{
    if (--m_budget.m_scopes > 0) {
        m_budget.setClockRunning(m_wasRunning);
    } else {
        m_budget.m_isClockRunning = false;
        m_budget.m_stop.reset();
    }
}

/// Starts or stops the clock; returns whether it was running.
bool Budget::setClockRunning(bool running)
{
    if (running == m_isClockRunning)
        return running;
    const std::chrono::nanoseconds now = m_settings.clock();
    if (running)
        m_since = now;
    else
        m_spent += now - m_since;
    m_isClockRunning = running;
    return !running;
}

std::chrono::nanoseconds Budget::spent() const
{
    return m_isClockRunning ? m_spent + (m_settings.clock() - m_since) : m_spent;
}

void Budget::stop(const StopError& error)
{
    if (!m_stop) {
        m_stop = error;
        m_lastWords = LastWordsAfterStop;
    }
    m_calls = 0;
    throw StopError(*m_stop);
}

void Budget::look()
{
    if (m_stop)
        stop(*m_stop);
    m_calls = CallsPerLook;
    const std::chrono::nanoseconds elapsed = spent();
    const std::chrono::milliseconds runTime = m_settings.limits.runTime;
    if (elapsed > runTime) {
        const double seconds = std::chrono::duration<double>(runTime).count();
        stop(StopError(UserInterrupt,
                       QStringLiteral("The script was stopped: it ran longer than %1 seconds").arg(seconds)));
    }
    if (elapsed >= m_nextBusy && m_settings.host)
        askHost(elapsed);
}

void Budget::askHost(std::chrono::nanoseconds elapsed)
{
    m_nextBusy = elapsed + m_settings.limits.busyInterval; // for a script that is set off meanwhile, too
    bool goOn = true;
    {
        const Pause pause(*this);
        goOn = m_settings.host->busy(std::chrono::duration_cast<std::chrono::milliseconds>(elapsed));
    }
    if (!goOn)
        stop(StopError(UserInterrupt, QStringLiteral("The script was cancelled")));
    if (m_stop)
        stop(*m_stop);
}

void Budget::lookAtMemory(std::size_t more)
{
    m_unchecked = 0;
    const std::size_t used = m_settings.memoryInUse();
    if (!m_memoryAtStart) // measuring costs: a short run never does
        m_memoryAtStart = used;
    const std::size_t grown = used > *m_memoryAtStart ? used - *m_memoryAtStart : 0;
    if (grown > m_settings.limits.memory)
        stop(StopError(ErrorNumber::OutOfMemory));
    if (grown + more > m_settings.limits.memory) // not taken yet, so the script may go on without it
        values::raise(ErrorNumber::OutOfMemory);
}

} // namespace zan::script
