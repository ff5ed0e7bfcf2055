#include "halyard/MemoryImage.h"

#include <algorithm>
#include <cstring>
#include <limits>

namespace zan::halyard {

namespace {

/// Calls `use(page number, offset in the page, length, offset in the range)` for each page that a range touches,
/// until it returns false. False also for a range that leaves the memory.
template <class Use>
bool forEachPage(std::int32_t pageSize, std::int64_t address, std::int64_t length, Use use)
{
    const std::int64_t end = address + length;
    if (address < 0 || length < 0 || end > std::int64_t(std::numeric_limits<std::int32_t>::max()) + 1)
        return false;
    for (std::int64_t at = address; at < end;) {
        const auto offset = std::int32_t(at % pageSize);
        const auto piece = std::int32_t(std::min<std::int64_t>(pageSize - offset, end - at));
        if (!use(std::int32_t(at / pageSize), offset, piece, std::int32_t(at - address)))
            return false;
        at += piece;
    }
    return true;
}

} // namespace

MemoryImage::MemoryImage(const MemoryImage& other)
{
    for (const auto& [number, page] : other.m_pages)
        m_pages.emplace(number, std::make_unique<Page>(*page));
}

MemoryImage& MemoryImage::operator=(MemoryImage other) noexcept
{
    m_pages.swap(other.m_pages);
    m_lastNumber = -1;
    m_lastPage = nullptr;
    return *this;
}

void MemoryImage::store(std::int32_t address, const QByteArray& bytes)
{
    m_lastNumber = -1;
    forEachPage(PageSize, address, bytes.size(), [&](auto number, auto offset, auto length, auto from) {
        std::unique_ptr<Page>& page = m_pages[number];
        if (!page)
            page = std::make_unique<Page>();
        std::memcpy(page->bytes.data() + offset, bytes.constData() + from, std::size_t(length));
        for (std::int32_t i = 0; i < length; ++i)
            page->known.set(std::size_t(offset + i));
        return true;
    });
}

void MemoryImage::forget(std::int32_t address, std::int32_t length)
{
    forEachPage(PageSize, address, length, [&](auto number, auto offset, auto piece, auto) {
        if (const auto found = m_pages.find(number); found != m_pages.end()) {
            for (std::int32_t i = 0; i < piece; ++i)
                found->second->known.reset(std::size_t(offset + i));
        }
        return true;
    });
}

void MemoryImage::clear()
{
    m_pages.clear();
    m_lastNumber = -1;
}

const MemoryImage::Page* MemoryImage::pageOf(std::int32_t number) const
{
    if (number != m_lastNumber) {
        const auto found = m_pages.find(number);
        m_lastPage = found == m_pages.end() ? nullptr : found->second.get();
        m_lastNumber = number;
    }
    return m_lastPage;
}

bool MemoryImage::read(std::int32_t address, std::int32_t length, std::uint8_t* target) const
{
    return forEachPage(PageSize, address, length, [&](auto number, auto offset, auto piece, auto from) {
        const Page* page = pageOf(number);
        if (!page)
            return false;
        for (std::int32_t i = 0; i < piece; ++i) {
            if (!page->known.test(std::size_t(offset + i)))
                return false;
        }
        std::memcpy(target + from, page->bytes.data() + offset, std::size_t(piece));
        return true;
    });
}

void MemoryImage::overlay(std::int32_t address, std::int32_t length, std::uint8_t* target) const
{
    forEachPage(PageSize, address, length, [&](auto number, auto offset, auto piece, auto from) {
        const Page* page = pageOf(number);
        for (std::int32_t i = 0; page && i < piece; ++i) {
            if (page->known.test(std::size_t(offset + i)))
                target[from + i] = page->bytes[std::size_t(offset + i)];
        }
        return true;
    });
}

} // namespace zan::halyard
