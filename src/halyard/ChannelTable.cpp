#include "halyard/ChannelTable.h"

#include <algorithm>
#include <cstring>

namespace zan::halyard {

namespace {

/// Runs a call into a scheme, which may be the host's own: what it refuses is not there.
template <class Call>
auto ask(Call call) -> decltype(call())
{
    try {
        return call();
    } catch (const values::RuntimeError&) {
        return {};
    }
}

} // namespace

bool ChannelTable::refresh(const Ref<site::Scheme>& scheme)
{
    const auto windows = ask([&] { return scheme ? scheme->Windows() : Ref<site::SchemeWindows>(); });
    if (windows && hasSameShape(windows))
        return refreshSlice();
    rebuild(windows);
    return true;
}

bool ChannelTable::hasSameShape(const Ref<site::SchemeWindows>& windows) const
{
    if (std::size_t(ask([&] { return windows->Count(); })) != m_windows.size())
        return false;
    for (std::size_t i = 0; i < m_windows.size(); ++i) {
        const auto window = ask([&] { return windows->Item(Variant(std::int32_t(i + 1))); });
        if (window != m_windows[i].window)
            return false;
        if (window && ask([&] { return window->Count(); }) != m_windows[i].count)
            return false;
    }
    return true;
}

void ChannelTable::rebuild(const Ref<site::SchemeWindows>& windows)
{
    m_windows.clear();
    m_rows.clear();
    m_nextWindow = m_nextRow = 0;
    m_nextIndex = 0;
    ++m_generation;
    const std::int32_t count = windows ? ask([&] { return windows->Count(); }) : 0;
    for (std::int32_t i = 1; i <= count; ++i) {
        Window entry;
        entry.window = ask([&] { return windows->Item(Variant(i)); });
        if (entry.window)
            entry.count = std::max(0, ask([&] { return entry.window->Count(); }));
        for (std::int32_t index = 1; index <= entry.count; ++index)
            refreshRow(m_rows.emplace_back(), entry, index);
        m_windows.push_back(entry);
    }
}

bool ChannelTable::refreshSlice()
{
    bool hasChanged = false;
    const std::size_t slice = std::min(SliceSize, m_rows.size());
    for (std::size_t done = 0; done < slice; ++done) {
        if (m_nextRow == m_rows.size())
            m_nextRow = m_nextWindow = 0, m_nextIndex = 0;
        while (m_nextIndex >= m_windows[m_nextWindow].count) {
            ++m_nextWindow;
            m_nextIndex = 0;
        }
        ++m_nextIndex;
        hasChanged |= refreshRow(m_rows[m_nextRow], m_windows[m_nextWindow], m_nextIndex);
        ++m_nextRow;
    }
    return hasChanged;
}

bool ChannelTable::refreshRow(Row& row, const Window& window, std::int32_t index)
{
    Row now;
    now.channel = ask([&] { return window.window->Item(Variant(index)); });
    if (now.channel) {
        now.address = ask([&] { return now.channel->BaseAddress(); });
        now.format = ask([&] { return rawFormat(*now.channel, m_order); });
    }
    if (now.channel == row.channel && now.address == row.address && now.format == row.format)
        return false;
    if (now.channel != row.channel || now.isActive() != row.isActive())
        ++m_generation;
    row = now;
    return true;
}

MemoryLayout ChannelTable::layout() const
{
    MemoryLayout layout;
    layout.reserve(m_rows.size());
    for (const Row& row : m_rows) {
        if (row.isActive())
            layout.push_back({row.address, row.format.length, row.format.type});
    }
    sortLayout(layout);
    return layout;
}

void ChannelTable::update(const MemoryImage& image)
{
    // By index: a host's channel may do anything in setValue, a refresh of this table included.
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].isActive())
            updateRow(m_rows[i], image);
    }
}

void ChannelTable::updateRow(Row& row, const MemoryImage& image)
{
    const auto length = std::size_t(row.format.length);
    if (m_buffer.size() < length)
        m_buffer.resize(length);
    std::uint8_t* bytes = m_buffer.data();
    Variant value;
    if (!image.read(row.address, row.format.length, bytes)) {
        if (row.raw == Row::Raw::Unknown)
            return;
        row.raw = Row::Raw::Unknown;
    } else if (row.format.type == DataType::String) {
        const auto raw = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes), row.format.length);
        if (row.raw == Row::Raw::Known && raw == row.bytes)
            return;
        row.bytes = QByteArray(raw.constData(), raw.size());
        row.raw = Row::Raw::Known;
        value = decodeRaw(row.format, bytes);
    } else {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, length);
        if (row.raw == Row::Raw::Known && word == row.word)
            return;
        row.word = word;
        row.raw = Row::Raw::Known;
        value = decodeRaw(row.format, bytes);
    }
    const Ref<Channel> channel = row.channel; // the row may be another one before the call returns
    try {
        channel->setValue(value);
    } catch (const values::RuntimeError&) {
        // A host's channel that refuses a value keeps the one it has; the others still get theirs.
    }
}

void ChannelTable::forgetRaw()
{
    for (Row& row : m_rows)
        row.raw = Row::Raw::Unset;
}

std::vector<Ref<Channel>> ChannelTable::activeChannels() const
{
    std::vector<Ref<Channel>> channels;
    channels.reserve(m_rows.size());
    for (const Row& row : m_rows) {
        if (row.isActive())
            channels.push_back(row.channel);
    }
    return channels;
}

site::HistoryColumns ChannelTable::historyColumns(std::int64_t period) const
{
    site::HistoryColumns columns;
    std::size_t row = 0;
    for (const Window& window : m_windows) {
        const QString key = ask([&] { return window.window ? window.window->Key() : QString(); });
        for (std::int32_t i = 0; i < window.count && row < m_rows.size(); ++i, ++row) {
            if (!m_rows[row].isActive())
                continue;
            const Ref<Channel> channel = m_rows[row].channel;
            columns.push_back({0, key, ask([&] { return channel->Key(); }), ask([&] { return channel->Label(); }),
                               ask([&] { return channel->Units(); }), ask([&] { return channel->Format(); }),
                               period});
        }
    }
    return columns;
}

std::vector<Variant> ChannelTable::decoded(const MemoryImage& image) const
{
    std::vector<Variant> values;
    values.reserve(m_rows.size());
    std::vector<std::uint8_t> buffer;
    for (const Row& row : m_rows) {
        if (!row.isActive())
            continue;
        buffer.resize(std::max(buffer.size(), std::size_t(row.format.length)));
        values.push_back(image.read(row.address, row.format.length, buffer.data())
                             ? decodeRaw(row.format, buffer.data())
                             : Variant());
    }
    return values;
}

} // namespace zan::halyard
