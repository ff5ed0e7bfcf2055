#include "halyard/RecentRecords.h"

#include "site/FormattedRecords.h"

#include <algorithm>

namespace zan::halyard {

namespace {

class RecordTable final : public site::FormattedRecords
{
public:
    explicit RecordTable(const std::deque<std::shared_ptr<const LogRecord>>& records)
        : m_records(records.begin(), records.end())
    {
        if (!m_records.empty())
            m_columns = m_records.back()->columns;
    }

    std::int32_t rowCount() const override { return std::int32_t(m_records.size()); }
    std::int32_t columnCount() const override { return m_columns ? std::int32_t(m_columns->count()) + 1 : 1; }
    QString columnLabel(std::int32_t column) const override
    {
        if (column == 0)
            return QStringLiteral("Time");
        const site::Channel* channel = channelOf(column);
        return channel ? channel->Label() : QString();
    }
    QString columnUnits(std::int32_t column) const override
    {
        const site::Channel* channel = channelOf(column);
        return channel ? channel->Units() : QString();
    }
    QString columnFormat(std::int32_t column) const override
    {
        const site::Channel* channel = channelOf(column);
        return channel ? channel->Format() : QString();
    }
    Variant cell(std::int32_t row, std::int32_t column) const override
    {
        if (row < 0 || row >= rowCount() || column < 0 || column >= columnCount())
            return {};
        const LogRecord& record = *m_records[std::size_t(row)];
        if (column == 0)
            return record.time;
        // An older record may have been made of other channels.
        const std::ptrdiff_t place =
            record.columns == m_columns ? column - 1 : record.columns->placeOf(channelOf(column));
        return place < 0 ? Variant() : record.cells[std::size_t(place)];
    }

private:
    const site::Channel* channelOf(std::int32_t column) const
    {
        if (column < 1 || column >= columnCount())
            return nullptr;
        return m_columns->channel(std::size_t(column - 1)).get();
    }

    std::vector<std::shared_ptr<const LogRecord>> m_records;
    std::shared_ptr<const LogColumns> m_columns;
};

} // namespace

void RecentRecords::add(values::Date time, const std::shared_ptr<const LogColumns>& columns)
{
    auto record = std::make_shared<LogRecord>();
    record->time = time;
    record->columns = columns;
    record->cells.reserve(columns->count());
    for (std::size_t i = 0; i < columns->count(); ++i)
        record->cells.push_back(columns->channel(i)->Value());
    m_records.push_back(std::move(record));

    const std::size_t affordable = std::max<std::size_t>(MostCells / (columns->count() + 1), 1);
    while (m_records.size() > std::min<std::size_t>(std::size_t(m_capacity), affordable))
        m_records.pop_front();
}

Ref<site::LogRecords> RecentRecords::Records()
{
    return values::make<RecordTable>(m_records);
}

Ref<site::LogBuffer> RecentBuffers::Item(std::int32_t index)
{
    if (index != 1)
        values::raise(values::ErrorNumber::SubscriptOutOfRange);
    return m_records;
}

} // namespace zan::halyard
