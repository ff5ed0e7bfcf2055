#pragma once

#include "zanbench/PanelPages.h"
#include "zanbench/TimePlayer.h"

#include "site/History.h"

#include <QObject>
#include <QTimer>

#include <optional>

namespace zan::host {

class TimeBar;

/// The time that the panels of the open site show together, led by the bar: now, or a moment of the history.
class TimeTravel : public QObject
{
    Q_OBJECT
public:
    /// Pages and bar must outlive it.
    TimeTravel(PanelPages& pages, TimeBar& bar, TimePlayer::Clock clock, QObject* parent = nullptr);

    /// Begins with the history of a site that has been opened; Nothing for one without.
    void begin(const Ref<site::History>& history);
    /// The site is about to go.
    void end();
    bool isPossible() const noexcept { return bool(m_history); }
    bool isPast() const noexcept { return m_moment.has_value(); }
    const std::optional<site::HistoryTime>& moment() const noexcept { return m_moment; }

    /// Shows a moment, within the history.
    void goTo(site::HistoryTime moment);
    void goLive();
    /// To the record before, or to the next one.
    void step(int by);
    void play(bool plays);
    /// Shows what is due by now; nothing while nothing is played.
    void advance();
    /// Another panel is in front: it shows what the others show.
    void followPage();
    /// The bar is shown: it tells what there is.
    void refresh();

Q_SIGNALS:
    /// Live or not has changed.
    void changed();
    void failed(const QString& text);

private:
    void show(site::HistoryTime moment, bool everywhere);
    bool showOn(window::BenchWindow& panel);
    site::HistorySpan span() const;

    PanelPages& m_pages;
    TimeBar& m_bar;
    Ref<site::History> m_history;
    TimePlayer m_player;
    QTimer m_tick;
    QTimer m_look; ///< runs while nothing is known to be stored
    std::optional<site::HistoryTime> m_moment;
};

} // namespace zan::host
