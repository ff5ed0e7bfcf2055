#include "zanbench/TimeTravel.h"

#include "zanbench/ErrorBar.h"
#include "zanbench/TimeBar.h"

#include "values/Failure.h"
#include "window/BenchWindow.h"

#include <algorithm>

namespace zan::host {

using site::HistoryTime;

namespace {

constexpr int TickMilliseconds = 33;  // how often a picture is due; how far time has come by then is the clock's
constexpr int LookMilliseconds = 500; // until a history that is being opened, or that has no record yet, has some
const QString EndOfRecords = QStringLiteral("End of the records");

} // namespace

TimeTravel::TimeTravel(PanelPages& pages, TimeBar& bar, TimePlayer::Clock clock, QObject* parent)
    : QObject(parent)
    , m_pages(pages)
    , m_bar(bar)
    , m_player(std::move(clock))
{
    m_tick.setInterval(TickMilliseconds);
    connect(&m_tick, &QTimer::timeout, this, &TimeTravel::advance);
    m_look.setInterval(LookMilliseconds);
    connect(&m_look, &QTimer::timeout, this, &TimeTravel::refresh);
    connect(&m_bar, &TimeBar::momentAsked, this, [this](std::int64_t moment) { goTo(moment); });
    connect(&m_bar, &TimeBar::stepAsked, this, &TimeTravel::step);
    connect(&m_bar, &TimeBar::playAsked, this, &TimeTravel::play);
    connect(&m_bar, &TimeBar::speedAsked, this, [this](int speed) { m_player.setSpeed(speed); });
    connect(&m_bar, &TimeBar::liveAsked, this, &TimeTravel::goLive);
    connect(&m_pages, &PanelPages::shownChanged, this, &TimeTravel::followPage);
}

void TimeTravel::begin(const Ref<site::History>& history)
{
    end();
    m_history = history;
    if (m_history)
        m_look.start();
    refresh();
    Q_EMIT changed();
}

void TimeTravel::end()
{
    goLive();
    m_look.stop();
    m_history = nullptr;
}

site::HistorySpan TimeTravel::span() const
{
    site::HistorySpan span;
    values::attempt([&] {
        if (m_history)
            span = m_history->span();
    });
    return span;
}

void TimeTravel::refresh()
{
    const site::HistorySpan known = span();
    if (!known.isEmpty)
        m_look.stop();
    m_bar.setSpan(known);
    m_bar.setMoment(m_moment);
    m_bar.setWord(known.isEmpty ? QStringLiteral("Nothing is stored yet") : QString());
}

void TimeTravel::goTo(HistoryTime moment)
{
    m_player.stop();
    m_tick.stop();
    m_bar.setPlaying(false);
    const site::HistorySpan known = span();
    if (known.isEmpty)
        return refresh();
    m_bar.setSpan(known);
    m_bar.setWord({});
    show(std::clamp(moment, known.first, known.last), true);
}

void TimeTravel::goLive()
{
    m_player.stop();
    m_tick.stop();
    const bool wasPast = m_moment.has_value();
    m_moment.reset();
    for (const QPointer<window::BenchWindow>& panel : m_pages.panels())
        if (panel)
            panel->ShowLive();
    m_bar.setPlaying(false);
    refresh();
    if (wasPast)
        Q_EMIT changed();
}

void TimeTravel::step(int by)
{
    if (!m_history)
        return;
    const HistoryTime from = m_moment.value_or(span().last);
    std::optional<HistoryTime> found;
    values::attempt([&] {
        const std::int64_t place = by < 0 ? m_history->placeOf(from) - 1 : m_history->placeOf(from + 1);
        const std::vector<site::HistoryRow> rows =
            place < 0 ? std::vector<site::HistoryRow>() : m_history->rows(place, 1, {});
        if (!rows.empty())
            found = rows.front().time;
    });
    goTo(found.value_or(from));
    if (!found)
        m_bar.setWord(by < 0 ? QStringLiteral("First record") : EndOfRecords);
}

void TimeTravel::play(bool plays)
{
    const site::HistorySpan known = span();
    if (!plays || known.isEmpty) {
        goTo(m_moment.value_or(known.last));
        return;
    }
    // At the end, and from live, there is nothing to play but everything from the beginning.
    const HistoryTime from = m_moment && *m_moment < known.last ? *m_moment : known.first;
    m_bar.setSpan(known);
    m_bar.setWord({});
    m_bar.setPlaying(true);
    m_player.setSpeed(m_bar.speed());
    m_player.play(from);
    m_tick.start();
    show(from, true);
}

void TimeTravel::advance()
{
    if (!m_player.isPlaying())
        return;
    const site::HistorySpan known = span();
    const HistoryTime due = m_player.moment();
    if (known.isEmpty || due >= known.last) {
        goTo(known.last);
        m_bar.setWord(EndOfRecords);
        return;
    }
    m_bar.setSpan(known);
    show(due, false);
}

void TimeTravel::followPage()
{
    window::BenchWindow* panel = m_pages.currentPanel();
    if (m_moment && panel)
        showOn(*panel);
}

/// While it plays, the panel in front alone follows each tick; the others do when they come to the front.
void TimeTravel::show(HistoryTime moment, bool everywhere)
{
    const bool wasPast = m_moment.has_value();
    m_moment = moment;
    const QPointer<window::BenchWindow> front = m_pages.currentPanel();
    for (const QPointer<window::BenchWindow>& panel : m_pages.panels()) {
        if (panel && (everywhere || panel == front) && m_moment == moment && !showOn(*panel))
            return;
    }
    m_bar.setMoment(m_moment);
    if (!wasPast)
        Q_EMIT changed();
}

/// A panel that cannot follow would show something else than it says: then all go back to live.
bool TimeTravel::showOn(window::BenchWindow& panel)
{
    QString problem;
    const auto report = [&](const values::RuntimeError& error) {
        problem = ErrorBar::numbered(error.number(), error.description());
    };
    const HistoryTime moment = *m_moment;
    if (values::atBoundary([&] { panel.showMoment(moment); }, report))
        return true;
    goLive();
    Q_EMIT failed(QStringLiteral("The past could not be shown: %1").arg(problem));
    return false;
}

} // namespace zan::host
