#pragma once

#include "halyard/Driver.h"
#include "halyard/MemoryImage.h"
#include "halyard/RawValue.h"
#include "halyard/Waveform.h"

#include <unordered_map>

namespace zan::halyard {

/// Memory that looks like that of a site at work. Its bytes follow from the seed, the waveforms, the layout and the
/// time alone; what has been written stays as it was written until reset().
class SimulatedMemory
{
public:
    using Waves = std::unordered_map<std::int32_t, Waveform>;

    /// `waves`: by address, for those that do not do what comes naturally.
    SimulatedMemory(std::uint64_t seed, ByteOrder order, Waves waves);

    /// Which values lie where. Bytes outside every field are each an unsigned byte of their own.
    void setLayout(const MemoryLayout& layout);
    void write(std::int32_t address, const QByteArray& bytes) { m_written.store(address, bytes); }
    /// Forgets what has been written.
    void reset() { m_written.clear(); }
    QByteArray read(std::int32_t address, std::int32_t length, double seconds) const
    {
        return read(address, length, seconds, m_written);
    }
    /// The same with what had been written at some other time.
    QByteArray read(std::int32_t address, std::int32_t length, double seconds, const MemoryImage& written) const;
    const MemoryImage& written() const noexcept { return m_written; }

private:
    struct Field
    {
        MemoryField place;
        Waveform wave;
    };
    Waveform waveAt(std::int32_t address, site::DataType type) const;
    void paint(const Field& field, double seconds, std::int32_t address, QByteArray& bytes,
               std::vector<bool>& isCovered) const;

    std::uint64_t m_seed;
    ByteOrder m_order;
    Waves m_waves;
    std::vector<Field> m_fields; // in order of address; a later one lies on top of an earlier one
    std::int32_t m_longestField = 1;
    MemoryImage m_written;
};

} // namespace zan::halyard
