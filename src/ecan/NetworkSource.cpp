#include "ecan/NetworkSource.h"

#include "ecan/Address.h"
#include "ecan/Restrictions.h"
#include "ecan/RestrictionsPage.h"
#include "values/RuntimeError.h"

#include <QNetworkAccessManager>
#include <QPointer>

#include <algorithm>
#include <utility>

namespace zan::ecan {

using State = Answer::State;

namespace {

NetworkSource::Clock machineClock()
{
    return {[] {
                return std::chrono::duration_cast<std::chrono::milliseconds>(
                    std::chrono::steady_clock::now().time_since_epoch());
            },
            [] { return QDateTime::currentDateTime(); }};
}

/// What a body is as this kind; a failure when it is something else.
Answer answerOf(Kind kind, const Fetched& fetched)
{
    Answer answer;
    if (kind == Kind::Document)
        answer.document = Restrictions::read(fetched);
    else
        answer.page = RestrictionsPage::read(fetched);
    answer.state = answer.document || answer.page ? State::Here : State::Failed;
    return answer;
}

/// The pause after so many failures in a row.
std::chrono::milliseconds pauseAfter(int failures) noexcept
{
    std::chrono::milliseconds pause = NetworkSource::ShortestPause;
    for (int i = 1; i < failures && pause < NetworkSource::LongestPause; ++i)
        pause *= 2;
    return std::min(pause, NetworkSource::LongestPause);
}

} // namespace

NetworkSource::NetworkSource(const FetchLimits& limits)
    : m_limits(limits)
    , m_clock(machineClock())
{}

NetworkSource::~NetworkSource()
{
    stop();
}

void NetworkSource::setHost(const QString& host)
{
    const QString wanted = host.trimmed();
    if (!wanted.isEmpty() && !isHost(wanted))
        values::raise(
            values::ErrorNumber::InvalidPropertyValue,
            QStringLiteral("'%1' is no server: write host, host:port, or http:// or https:// before that.")
                .arg(wanted.left(200)));
    if (wanted == m_host)
        return;
    m_host = wanted;
    stop();
}

void NetworkSource::forgetAnswers()
{
    m_entries.removeIf([](const QHash<Key, Entry>::iterator& entry) {
        return entry->answer.state == State::Here && !entry->isOfNoUse;
    });
}

void NetworkSource::stop()
{
    m_queue.clear();
    m_running = 0;
    for (const Entry& entry : std::as_const(m_entries))
        delete entry.fetch;
    m_entries.clear();
}

// Asking -------------------------------------------------------------------------------------------------------

Answer NetworkSource::ask(Kind kind, const QString& address)
{
    const Key key{kind, address};
    const auto known = m_entries.find(key);
    if (known != m_entries.end()) {
        const bool rests = known->answer.state == State::Failed || known->isOfNoUse;
        if (!rests || m_clock.elapsed() < known->due)
            return known->answer;
        begin(key, *known);
        return known->answer;
    }
    if (!webAddress(address).isValid())
        return {}; // asking again and again costs nothing
    prune();
    Entry& entry = m_entries[key];
    begin(key, entry);
    return entry.answer;
}

void NetworkSource::wasOfNoUse(Kind kind, const QString& address) noexcept
{
    const auto known = m_entries.find(Key{kind, address});
    if (known == m_entries.end() || known->answer.state != State::Here || known->isOfNoUse)
        return;
    known->isOfNoUse = true;
    noteFailure(*known);
}

void NetworkSource::noteFailure(Entry& entry) noexcept
{
    ++entry.failures;
    entry.due = m_clock.elapsed() + pauseAfter(entry.failures);
}

/// What has failed and may be fetched anew is kept for its count alone. Looked through each time the list has doubled.
void NetworkSource::prune()
{
    if (m_entries.size() < m_pruneAt)
        return;
    const std::chrono::milliseconds old = m_clock.elapsed() - LongestPause;
    m_entries.removeIf([&](const QHash<Key, Entry>::iterator& entry) {
        return entry->answer.state != State::UnderWay && entry->due < old;
    });
    m_pruneAt = std::max<qsizetype>(64, m_entries.size() * 2);
}

// Fetching -----------------------------------------------------------------------------------------------------

void NetworkSource::begin(const Key& key, Entry& entry)
{
    entry.answer = {State::UnderWay, nullptr, nullptr};
    entry.isTold = entry.isOfNoUse = false;
    m_queue.push_back(key);
    startNext();
}

void NetworkSource::startNext()
{
    while (m_running < MostAtOnce && !m_queue.empty()) {
        const Key key = m_queue.front();
        m_queue.pop_front();
        const auto entry = m_entries.find(key);
        if (entry == m_entries.end())
            continue;
        if (!m_manager)
            m_manager = std::make_unique<QNetworkAccessManager>();
        ++m_running;
        entry->fetch = new HttpFetch(*m_manager, m_limits, this);
        connect(entry->fetch, &HttpFetch::ended, this, [this, key] { fetchEnded(key); });
        entry->fetch->start(webAddress(key.address));
    }
}

void NetworkSource::fetchEnded(const Key& key)
{
    const auto entry = m_entries.find(key);
    if (entry == m_entries.end())
        return;
    --m_running;
    const std::optional<Fetched> fetched = entry->fetch->result();
    entry->answer = fetched ? answerOf(key.kind, *fetched) : Answer();
    if (entry->answer.state == State::Failed)
        noteFailure(*entry);
    std::exchange(entry->fetch, nullptr)->deleteLater(); // it is in the middle of its own signal
    startNext();
    tellLater();
}

void NetworkSource::tellLater()
{
    if (!std::exchange(m_isTelling, true))
        QMetaObject::invokeMethod(
            this, [this] { tell(); }, Qt::QueuedConnection);
}

void NetworkSource::tell()
{
    m_isTelling = false;
    for (Entry& entry : m_entries)
        entry.isTold = entry.answer.state == State::Here;
    const QPointer<NetworkSource> alive(this);
    Q_EMIT ended();
    if (!alive)
        return;
    m_entries.removeIf([](const QHash<Key, Entry>::iterator& entry) { return entry->isTold && !entry->isOfNoUse; });
}

} // namespace zan::ecan
