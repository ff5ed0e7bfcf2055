#pragma once

#include "halyard/BlockPlan.h"
#include "halyard/MemoryImage.h"
#include "halyard/RawValue.h"
#include "site/HistoryKeeper.h"
#include "site/Scheme.h"

#include <QByteArray>

#include <cstdint>
#include <memory>
#include <vector>

namespace zan::halyard {

using values::Ref;

/// The channels that a logger reads: those of every window of its scheme, and how their bytes become values.
///
/// A scheme does not tell when a channel changes, and asking 10,000 channels for six parameters before each poll
/// would cost more than all the rest. So each refresh looks at the number of windows and of channels, and at the
/// parameters of one slice of the channels, the next slice at the next refresh. A scheme of ordinary size is one
/// slice: there every edit takes effect with the next poll.
class ChannelTable
{
public:
    /// Channels whose parameters one refresh looks at.
    static constexpr std::size_t SliceSize = 2000;

    explicit ChannelTable(ByteOrder order)
        : m_order(order)
    {}

    /// Catches up with the scheme. True when the memory to be read may be another now.
    bool refresh(const Ref<site::Scheme>& scheme);
    /// The memory of all channels, sorted.
    MemoryLayout layout() const;
    /// Gives every channel whose bytes have changed its value; Empty where bytes are not known.
    void update(const MemoryImage& image);
    /// Makes the next update set every value.
    void forgetRaw();
    /// The channels that are read, in order of windows and channels.
    std::vector<Ref<Channel>> activeChannels() const;
    /// What a history has to know of these channels, in the same order.
    site::HistoryColumns historyColumns(std::int64_t period) const;
    /// The values that these channels have in a memory, in the same order; their own do not change.
    std::vector<Variant> decoded(const MemoryImage& image) const;
    /// Counts up whenever the set or the order of the channels changes.
    std::uint32_t generation() const noexcept { return m_generation; }

private:
    struct Row
    {
        Ref<Channel> channel; // null when the scheme refused to give it
        RawFormat format;
        std::int32_t address = -1;
        enum class Raw : std::uint8_t { Unset, Unknown, Known } raw = Raw::Unset;
        QByteArray bytes;       // of a text
        std::uint64_t word = 0; // bytes of a number as they lie

        bool isActive() const noexcept { return channel && address >= 0 && format.length > 0; }
    };
    struct Window
    {
        Ref<site::SchemeWindow> window;
        std::int32_t count = 0;
    };

    bool hasSameShape(const Ref<site::SchemeWindows>& windows) const;
    void rebuild(const Ref<site::SchemeWindows>& windows);
    bool refreshSlice();
    /// Fetches one channel and its parameters; true when something is different.
    bool refreshRow(Row& row, const Window& window, std::int32_t index);
    void updateRow(Row& row, const MemoryImage& image);

    ByteOrder m_order;
    std::vector<Window> m_windows;
    std::vector<Row> m_rows; // the windows' channels, one window after the other
    std::size_t m_nextWindow = 0;
    std::int32_t m_nextIndex = 0;
    std::size_t m_nextRow = 0;
    std::uint32_t m_generation = 0;
    std::vector<std::uint8_t> m_buffer;
};

} // namespace zan::halyard
