#pragma once

#include "halyard/LogColumns.h"
#include "site/Logger.h"

#include <deque>
#include <memory>

namespace zan::halyard {

/// The log buffer of a logger's recent data: a ring of records in memory, the oldest going when it is full.
class RecentRecords final : public site::LogBuffer
{
public:
    /// Most cells that the ring holds, whatever the number of records asked for: some 32 MB.
    static constexpr std::size_t MostCells = 2'000'000;

    /// `capacity`: records, 1 to 32,767.
    explicit RecentRecords(std::int32_t capacity)
        : m_capacity(capacity)
    {}

    /// Adds the present values of the channels as a record of that time.
    void add(values::Date time, const std::shared_ptr<const LogColumns>& columns);

    std::int16_t RecordCount() const override { return std::int16_t(m_records.size()); }
    /// The records of this moment: later ones need another call. Columns are the channels of the latest record.
    Ref<site::LogRecords> Records() override;

private:
    std::int32_t m_capacity;
    std::deque<std::shared_ptr<const LogRecord>> m_records;
};

/// The one-buffer list of a logger.
class RecentBuffers final : public site::LogBuffers
{
public:
    explicit RecentBuffers(const Ref<RecentRecords>& records)
        : m_records(records)
    {}

    std::int32_t Count() const override { return 1; }
    Ref<site::LogBuffer> Item(std::int32_t index) override;

private:
    Ref<RecentRecords> m_records;
};

} // namespace zan::halyard
