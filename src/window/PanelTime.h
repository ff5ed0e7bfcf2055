#pragma once

#include "site/History.h"

#include <QPointer>
#include <QString>

#include <cstdint>
#include <optional>

namespace zan::surface {
class Surface;
}

namespace zan::window {

class BenchWindow;
class PastFrame;

/// The time that a panel shows: now, or a moment of the past. In the past its controls show what was stored, framed and
/// stamped, and nothing acts: no click, no script, no edit.
///
/// A history is code of the host: while it is asked, it may go live, to another moment, or end the panel. What came last
/// stands, and the call that was under way ends quietly.
class PanelTime
{
public:
    PanelTime(BenchWindow& panel, surface::Surface& surface);
    ~PanelTime();
    PanelTime(const PanelTime&) = delete;
    PanelTime& operator=(const PanelTime&) = delete;

    bool isLive() const noexcept { return !m_moment; }
    /// Nothing while live.
    const std::optional<site::HistoryTime>& moment() const noexcept { return m_moment; }
    /// Shows a moment. Raises 91 without a logger or once the panel has ended, 5 while the layout is being edited, for
    /// a logger that keeps no history and for a moment that is still to come, and what logger and history raise; the
    /// panel shows what it showed before then.
    void showAt(site::HistoryTime moment);
    void showLive();
    /// Reads the moment that is shown again, or refreshes what is live.
    void refresh();
    /// The panel has other controls.
    void documentChanged();
    /// The panel has ended.
    void end();

    /// How often the panel has left the present. An action that was under way at another count is not carried on.
    std::uint32_t departures() const noexcept { return m_departures; }
    /// Raises 5 in the past, where this cannot be done.
    void requireLive(const QString& what) const;

private:
    void follow();

    BenchWindow& m_panel;
    surface::Surface& m_surface;
    std::optional<site::HistoryTime> m_moment;
    QPointer<PastFrame> m_frame;
    std::uint32_t m_travels = 0; ///< calls that go anywhere
    std::uint32_t m_departures = 0;
};

/// A moment as people write it: "14 Nov 2026 03:20:15", local time, in the language of the locale.
QString momentText(site::HistoryTime moment);

} // namespace zan::window
