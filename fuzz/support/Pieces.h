#pragma once

#include <QByteArrayView>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace zan::fuzz {

/// Takes an input apart from its front; behind its end there are zeros and nothing else.
class Pieces
{
public:
    Pieces(const std::uint8_t* data, std::size_t size)
        : m_at(data)
        , m_end(data + size)
    {}
    bool isAtEnd() const { return m_at == m_end; }
    std::uint8_t byte() { return isAtEnd() ? 0 : *m_at++; }
    /// A number of so many bytes, the greatest first.
    std::uint64_t number(int bytes)
    {
        std::uint64_t result = 0;
        for (int i = 0; i < bytes; ++i)
            result = result << 8 | byte();
        return result;
    }
    /// At most so many bytes of the input, as they lie there.
    QByteArrayView bytes(std::size_t most)
    {
        const std::size_t length = std::min(most, std::size_t(m_end - m_at));
        const QByteArrayView result(reinterpret_cast<const char*>(m_at), qsizetype(length));
        m_at += length;
        return result;
    }

private:
    const std::uint8_t* m_at;
    const std::uint8_t* m_end;
};

} // namespace zan::fuzz
