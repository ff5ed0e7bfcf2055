#pragma once

#include "ecan/HttpFetch.h"
#include "ecan/Source.h"

#include <QHash>
#include <QObject>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>

class QNetworkAccessManager;

namespace zan::ecan {

/// Restriction data over the network, for all labels of one panel: each address is fetched once at a time, however many
/// ask for it.
///
/// An answer is there for the turn of the event loop in which ended() tells of it, so that everyone who waits takes the
/// same one; who asks later has it fetched anew. A failure stands, and is told to everyone who asks, until a pause is
/// over that grows with each failure in a row; so does an answer that was of no use to somebody.
class NetworkSource : public QObject, public Source
{
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds ShortestPause{1000};
    static constexpr std::chrono::milliseconds LongestPause{5 * 60 * 1000};
    /// Fetches that are under way at once; more wait for their turn.
    static constexpr std::size_t MostAtOnce = 6;

    struct Clock
    {
        std::function<std::chrono::milliseconds()> elapsed; ///< steady, from anywhere
        std::function<QDateTime()> now;
    };

    explicit NetworkSource(const FetchLimits& limits = {});
    ~NetworkSource() override;

    /// The clock of the machine by default.
    void setClock(const Clock& clock) { m_clock = clock; }
    /// Raises 380 for a text that is neither empty nor a host. Another host than before drops all that is under way and
    /// all that is known.
    void setHost(const QString& host);
    /// Nobody who has asked so far is waiting any more: answers that are here are dropped. Pauses go on, and so do
    /// fetches, whose answers are for whoever waits then.
    void forgetAnswers();
    /// Drops all that is under way and all that is known.
    void stop();

    QString host() const override { return m_host; }
    Answer ask(Kind kind, const QString& address) override;
    void wasOfNoUse(Kind kind, const QString& address) noexcept override;
    QDateTime now() const override { return m_clock.now(); }

Q_SIGNALS:
    /// Fetches have ended: whoever waits may ask again. Comes from the event loop. Whoever hears of it may end the source.
    void ended();

private:
    struct Key
    {
        Kind kind;
        QString address;
        bool operator==(const Key&) const = default;
        friend std::size_t qHash(const Key& key, std::size_t seed) noexcept
        {
            return qHashMulti(seed, int(key.kind), key.address);
        }
    };
    struct Entry
    {
        Answer answer;
        HttpFetch* fetch = nullptr;       ///< while it is under way: a child of the source
        int failures = 0;                 ///< in a row
        std::chrono::milliseconds due{0}; ///< when the next fetch may begin
        bool isTold = false;              ///< ended() has told of the answer
        bool isOfNoUse = false;           ///< the answer was, to somebody
    };

    void begin(const Key& key, Entry& entry);
    void startNext();
    void fetchEnded(const Key& key);
    void noteFailure(Entry& entry) noexcept;
    void tell();
    void tellLater();
    void prune();

    FetchLimits m_limits;
    Clock m_clock;
    QString m_host;
    std::unique_ptr<QNetworkAccessManager> m_manager; // made for the first fetch
    QHash<Key, Entry> m_entries;
    std::deque<Key> m_queue;
    std::size_t m_running = 0;
    qsizetype m_pruneAt = 64;
    bool m_isTelling = false;
};

} // namespace zan::ecan
