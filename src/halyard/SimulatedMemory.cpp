#include "halyard/SimulatedMemory.h"

#include <algorithm>

namespace zan::halyard {

SimulatedMemory::SimulatedMemory(std::uint64_t seed, ByteOrder order, Waves waves)
    : m_seed(seed)
    , m_order(order)
    , m_waves(std::move(waves))
{}

Waveform SimulatedMemory::waveAt(std::int32_t address, site::DataType type) const
{
    const auto found = m_waves.find(address);
    return found == m_waves.end() ? Waveform::natural(m_seed, address, type) : found->second;
}

void SimulatedMemory::setLayout(const MemoryLayout& layout)
{
    m_fields.clear();
    m_fields.reserve(layout.size());
    m_longestField = 1;
    for (const MemoryField& place : layout) {
        m_fields.push_back({place, waveAt(place.address, place.type)});
        m_longestField = std::max(m_longestField, place.length);
    }
}

QByteArray SimulatedMemory::read(std::int32_t address, std::int32_t length, double seconds,
                                 const MemoryImage& written) const
{
    QByteArray bytes(length, '\0');
    std::vector<bool> isCovered(std::size_t(length), false);
    const std::int64_t reach = std::int64_t(address) - m_longestField;
    const std::int64_t end = std::int64_t(address) + length;
    auto field =
        std::upper_bound(m_fields.begin(), m_fields.end(), reach,
                         [](std::int64_t at, const Field& candidate) { return at < candidate.place.address; });
    for (; field != m_fields.end() && field->place.address < end; ++field)
        paint(*field, seconds, address, bytes, isCovered);
    for (std::int32_t i = 0; i < length; ++i) {
        if (isCovered[std::size_t(i)])
            continue;
        const auto type = site::DataType::UnsignedByte;
        storeRaw(type, m_order, waveAt(address + i, type).at(seconds),
                 reinterpret_cast<std::uint8_t*>(bytes.data()) + i);
    }
    written.overlay(address, length, reinterpret_cast<std::uint8_t*>(bytes.data()));
    return bytes;
}

void SimulatedMemory::paint(const Field& field, double seconds, std::int32_t address, QByteArray& bytes,
                            std::vector<bool>& isCovered) const
{
    std::uint8_t number[8] = {};
    QByteArray text;
    const char* source = reinterpret_cast<const char*>(number);
    if (field.place.type == site::DataType::String) {
        text = field.wave.textAt(seconds).toLatin1().leftJustified(field.place.length, '\0', true);
        source = text.constData();
    } else {
        storeRaw(field.place.type, m_order, field.wave.at(seconds), number);
    }
    const std::int64_t from = std::max<std::int64_t>(field.place.address, address);
    const auto end = std::int64_t(address) + bytes.size();
    const auto to = std::min<std::int64_t>(std::int64_t(field.place.address) + field.place.length, end);
    for (std::int64_t at = from; at < to; ++at) {
        bytes[qsizetype(at - address)] = source[at - field.place.address];
        isCovered[std::size_t(at - address)] = true;
    }
}

} // namespace zan::halyard
