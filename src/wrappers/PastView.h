#pragma once

#include "site/Channel.h"
#include "site/History.h"

#include <QHash>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace zan::wrappers {

using binding::Ref;
using binding::Variant;

class PastChannel;

/// What a history says of one moment.
struct PastReading
{
    site::HistoryTime moment = 0;
    std::vector<site::HistorySeries> series;
    std::vector<site::History::Past> values; ///< in the order of the series; may be fewer
};

/// Asks a history for a moment: one question, however many channels there are. Raises what the history raises, which
/// may do anything else meanwhile.
PastReading readPast(const Ref<site::History>& history, site::HistoryTime moment);

/// A panel's channels as they were at a moment of the past. A channel has its stored value if that is no older than the
/// time from one record to the next may be; behind a gap, and before the first record, its value is Empty.
///
/// Who reads a value that is not there is noted: what a control shows of it is no value of that moment.
class PastView
{
public:
    PastView();
    ~PastView();
    PastView(const PastView&) = delete;
    PastView& operator=(const PastView&) = delete;

    /// Goes to the moment of a reading.
    void go(PastReading reading);
    site::HistoryTime moment() const noexcept { return m_moment; }

    /// The channel as it was, if channel() has made it before.
    Ref<site::Channel> known(const site::Channel& now) const;
    /// The channel as it was. `bindString` names it where it does not know its own window.
    Ref<site::Channel> channel(const Ref<site::Channel>& now, const QString& bindString);
    /// The word that a logger's memory held for a channel of channel()'s, made of the value that was stored. Nothing,
    /// which is noted, where that cannot be told: for a formula, for texts and for what is no whole number.
    std::optional<double> rawWord(const site::Channel& channel);

    /// Something was asked that nothing is stored of.
    void noteMissing() noexcept { *m_isMissing = true; }
    /// Whether that has happened since the last call.
    bool takeMissing() noexcept { return std::exchange(*m_isMissing, false); }

private:
    struct Known
    {
        Ref<site::Channel> now; ///< held, so that no other channel takes its address
        Ref<PastChannel> past;
        QString name;
    };
    Variant valueOf(const QString& name) const;

    site::HistoryTime m_moment = 0;
    std::vector<std::int64_t> m_series;   ///< ids, as they were listed when m_places was made
    QHash<QString, std::size_t> m_places; ///< of the series, by folded name
    std::vector<Variant> m_values;        ///< by place; Empty for none
    QHash<const site::Channel*, Known> m_known;
    std::shared_ptr<bool> m_isMissing = std::make_shared<bool>(false);
};

} // namespace zan::wrappers
