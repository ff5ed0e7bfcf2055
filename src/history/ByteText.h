#pragma once

#include <QByteArray>

#include <bit>
#include <cstdint>
#include <cstring>

namespace zan::history {

// Numbers as they lie in a store: whole ones in seven bits a byte, the last with its top bit clear; fixed ones in the
// order of the least significant byte first, whatever the machine.

inline void putNumber(QByteArray& bytes, std::uint64_t number)
{
    while (number >= 0x80) {
        bytes.append(char(number | 0x80));
        number >>= 7;
    }
    bytes.append(char(number));
}

inline void putFixed(QByteArray& bytes, std::uint64_t bits, int length)
{
    for (int i = 0; i < length; ++i)
        bytes.append(char(bits >> (8 * i)));
}

inline void putReal(QByteArray& bytes, double number)
{
    putFixed(bytes, std::bit_cast<std::uint64_t>(number), 8);
}

/// Reads what was put; a store may be damaged, so that each read can fail. After a failure every further one fails.
class ByteReader
{
public:
    ByteReader(const char* begin, const char* end)
        : m_at(begin)
        , m_end(end)
    {}
    explicit ByteReader(const QByteArray& bytes)
        : ByteReader(bytes.constData(), bytes.constData() + bytes.size())
    {}

    bool isAtEnd() const noexcept { return m_at == m_end; }
    bool hasFailed() const noexcept { return m_hasFailed; }
    const char* at() const noexcept { return m_at; }

    std::uint64_t number()
    {
        std::uint64_t result = 0;
        for (int shift = 0; shift < 64; shift += 7) {
            if (m_at == m_end)
                break;
            const auto byte = std::uint8_t(*m_at++);
            result |= std::uint64_t(byte & 0x7F) << shift;
            if (byte < 0x80)
                return result;
        }
        return fail();
    }
    std::uint64_t fixed(int length)
    {
        if (m_end - m_at < length)
            return fail();
        std::uint64_t bits = 0;
        for (int i = 0; i < length; ++i)
            bits |= std::uint64_t(std::uint8_t(m_at[i])) << (8 * i);
        m_at += length;
        return bits;
    }
    double real() { return std::bit_cast<double>(fixed(8)); }
    void skip(std::uint64_t length)
    {
        if (length > std::uint64_t(m_end - m_at))
            fail();
        else
            m_at += length;
    }
    std::uint64_t fail()
    {
        m_hasFailed = true;
        m_at = m_end;
        return 0;
    }

private:
    const char* m_at;
    const char* m_end;
    bool m_hasFailed = false;
};

} // namespace zan::history
