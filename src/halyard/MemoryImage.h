#pragma once

#include <QByteArray>

#include <array>
#include <bitset>
#include <cstdint>
#include <memory>
#include <unordered_map>

namespace zan::halyard {

/// What is known of a logger's memory, byte by byte: the last data read and what has been written since. Addresses
/// run from 0 to the greatest 32-bit signed number; whatever lies outside is never known.
class MemoryImage
{
public:
    MemoryImage() = default;
    MemoryImage(const MemoryImage& other);
    MemoryImage& operator=(MemoryImage other) noexcept;

    void store(std::int32_t address, const QByteArray& bytes);
    /// Makes bytes unknown again.
    void forget(std::int32_t address, std::int32_t length);
    void clear();
    /// Copies bytes out; false, and the target spoilt, unless every one of them is known.
    bool read(std::int32_t address, std::int32_t length, std::uint8_t* target) const;
    /// Copies those bytes that are known and leaves the others of the target as they are.
    void overlay(std::int32_t address, std::int32_t length, std::uint8_t* target) const;

private:
    static constexpr std::int32_t PageSize = 1024;
    struct Page
    {
        std::array<std::uint8_t, PageSize> bytes{};
        std::bitset<PageSize> known;
    };
    const Page* pageOf(std::int32_t number) const;

    std::unordered_map<std::int32_t, std::unique_ptr<Page>> m_pages; // by address divided by the page's size
    mutable std::int32_t m_lastNumber = -1;                          // neighbours are read one after the other
    mutable const Page* m_lastPage = nullptr;
};

} // namespace zan::halyard
