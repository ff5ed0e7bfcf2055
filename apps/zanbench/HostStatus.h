#pragma once

#include <QLabel>
#include <QStatusBar>
#include <QTimer>

#include <cstdint>
#include <functional>
#include <optional>

namespace zan::host {

/// The status bar: the link's state in words, what a connection under way says of itself, the age of the last data,
/// and whether there are changes to save.
class HostStatus : public QStatusBar
{
    Q_OBJECT
public:
    /// Milliseconds of a clock that only goes forward.
    using Clock = std::function<std::int64_t()>;

    explicit HostStatus(Clock clock = {}, QWidget* parent = nullptr);

    /// Nothing is open: all fields are empty.
    void clearSite();
    void setLinkState(int state);
    /// The scheme has no logger that could be connected.
    void setNoLogger();
    /// Whether the values of the logger are made up.
    void setSimulated(bool simulated);
    /// What the logger says while it connects, programs or unloads; empty takes it away.
    void setProgress(const QString& text);
    void dataArrived();
    void setChanged(bool changed);
    /// Whether the controls of the panels stay where they are.
    void setLocked(bool locked);
    /// Brings the age up to date; runs by itself every half second.
    void refreshAge();

private:
    Clock m_clock;
    QLabel* m_simulated;
    QLabel* m_link;
    QLabel* m_age;
    QLabel* m_lock;
    QLabel* m_changed;
    QTimer m_timer;
    std::optional<std::int64_t> m_lastData;
    bool m_siteOpen = false;
};

} // namespace zan::host
