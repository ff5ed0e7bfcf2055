#include "history/HistoryStore.h"

namespace zan::history {

namespace {

/// Milliseconds between two attempts to open a store that cannot be opened.
constexpr qint64 RestBetweenOpenings = 1000;

bool isSame(const HistorySeries& left, const HistorySeries& right)
{
    return left.label == right.label && left.units == right.units && left.format == right.format &&
           left.period == right.period;
}

StoreWriter::Limits limitsOf(const HistoryPlace& place)
{
    StoreWriter::Limits limits;
    limits.days = place.days;
    limits.megabytes = place.megabytes;
    return limits;
}

} // namespace

HistoryStore::HistoryStore(const HistoryPlace& place, Access access)
    : m_place(place)
{
    if (access == Access::ReadWrite && place.kind != HistoryPlace::Kind::None)
        m_writer = std::make_unique<WriterThread>(place, limitsOf(place));
}

HistoryStore::HistoryStore(const HistoryPlace& place, const StoreWriter::Limits& limits)
    : m_place(place)
    , m_writer(std::make_unique<WriterThread>(place, limits))
{}

HistoryStore::~HistoryStore() = default;

void HistoryStore::learn(const std::shared_ptr<const site::HistoryColumns>& columns)
{
    auto places = std::make_shared<std::vector<std::int32_t>>();
    places->reserve(columns->size());
    for (const HistorySeries& facts : *columns) {
        const std::pair key(facts.window, facts.key);
        auto known = m_known.find(key);
        if (known == m_known.end() || !isSame(known->facts, facts)) {
            known = m_known.insert(key, {m_seriesCount++, facts});
            m_newSeries.push_back(facts);
        }
        places->push_back(known->place);
    }
    m_columns = columns;
    m_places = places;
}

void HistoryStore::keep(HistoryTime time, const std::shared_ptr<const site::HistoryColumns>& columns,
                        const std::vector<Variant>& values)
{
    if (!m_writer || !columns || columns->size() != values.size() || columns->empty())
        return;
    if (columns != m_columns)
        learn(columns);
    QueuedRecord record{time, m_places, {}};
    record.values.reserve(qsizetype(values.size()) * 9);
    for (const Variant& value : values)
        putValue(record.values, value);
    m_writer->add(std::move(record), std::exchange(m_newSeries, {}));
}

bool HistoryStore::flush(std::chrono::milliseconds patience)
{
    return m_writer && m_writer->flush(patience);
}

std::int64_t HistoryStore::storedCount() const
{
    return m_writer ? m_writer->status().stored : 0;
}

QString HistoryStore::State() const
{
    QStringList parts;
    if (m_writer) {
        const WriterThread::Status status = m_writer->status();
        parts = {status.notice, status.problem};
        if (status.lost > 0)
            parts.append(QStringLiteral("%1 records could not be stored in time and are lost.").arg(status.lost));
    }
    parts.append(m_readProblem);
    parts.removeAll(QString());
    return parts.join(u' ');
}

bool HistoryStore::openReader() const
{
    const int epoch = m_writer ? m_writer->status().epoch : 1;
    if (m_place.kind == HistoryPlace::Kind::None || epoch == 0)
        return false;
    if (m_reader && epoch == m_readerEpoch)
        return true;
    const bool isSoonAgain =
        epoch == m_readerEpoch && m_sinceOpening.isValid() && !m_sinceOpening.hasExpired(RestBetweenOpenings);
    if (isSoonAgain)
        return false;
    m_reader.reset();
    m_readerEpoch = epoch;
    m_sinceOpening.start();
    m_reader = std::make_unique<StoreReader>(m_place);
    m_readProblem.clear();
    return true;
}

template <class Call>
auto HistoryStore::ask(Call call) const -> decltype(call(std::declval<StoreReader&>()))
{
    try {
        if (!openReader())
            return {};
        auto answer = call(*m_reader);
        m_readProblem.clear();
        return answer;
    } catch (const StoreFailure& failure) {
        m_readProblem = QStringLiteral("The history in %1 cannot be read (%2).").arg(m_place.text(), failure.text);
        // What is damaged may be one channel alone: the others are read on over the same connection.
        if (failure.reason != StoreFailure::Reason::Damaged)
            m_reader.reset();
        else if (m_writer)
            m_writer->suspect();
    }
    return {};
}

std::vector<HistorySeries> HistoryStore::series() const
{
    return ask([](StoreReader& reader) { return reader.series(); });
}

HistorySpan HistoryStore::span() const
{
    return ask([](StoreReader& reader) { return reader.span(); });
}

std::vector<HistoryPoint> HistoryStore::points(std::int64_t series, HistoryTime from, HistoryTime until,
                                               std::int32_t most) const
{
    return ask([&](StoreReader& reader) { return reader.points(series, from, until, most); });
}

std::vector<site::History::Past> HistoryStore::valuesAt(HistoryTime moment) const
{
    return ask([&](StoreReader& reader) { return reader.valuesAt(moment); });
}

std::int64_t HistoryStore::rowCount() const
{
    return ask([](StoreReader& reader) { return reader.rowCount(); });
}

std::vector<HistoryRow> HistoryStore::rows(std::int64_t place, std::int32_t most,
                                           const std::vector<std::int64_t>& series) const
{
    return ask([&](StoreReader& reader) { return reader.rows(place, most, series); });
}

std::int64_t HistoryStore::placeOf(HistoryTime moment) const
{
    return ask([&](StoreReader& reader) { return reader.placeOf(moment); });
}

} // namespace zan::history
