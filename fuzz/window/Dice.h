#pragma once

#include "values/Variant.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <span>

namespace zan::fuzz {

/// Takes choices from the fuzzer's bytes, one after the other. When they are used up every choice is the first one, so
/// that each beginning of an input is an input too.
class Dice
{
public:
    Dice(const std::uint8_t* data, std::size_t size)
        : m_bytes(data, size)
    {}

    bool isUsedUp() const { return m_bytes.empty(); }
    std::uint8_t byte()
    {
        if (m_bytes.empty())
            return 0;
        const std::uint8_t first = m_bytes.front();
        m_bytes = m_bytes.subspan(1);
        return first;
    }
    /// A number below a limit of at most 65,536.
    std::size_t below(std::size_t limit)
    {
        if (limit < 2)
            return 0;
        const std::size_t number = limit <= 256 ? byte() : byte() * 256u + byte();
        return number % limit;
    }
    bool oneIn(std::size_t chances) { return below(chances) == chances - 1; }
    template <class List>
    decltype(auto) pick(const List& list)
    {
        return list[below(std::size(list))];
    }
    /// Some of the bytes as they are.
    QString raw(std::size_t most)
    {
        QString text;
        for (std::size_t left = below(most + 1); left > 0 && !isUsedUp(); --left)
            text += QChar(byte());
        return text;
    }

private:
    std::span<const std::uint8_t> m_bytes;
};

} // namespace zan::fuzz
