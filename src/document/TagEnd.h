#pragma once

#include <QByteArrayView>

#include <array>
#include <cstdint>
#include <cstring>

namespace zan::document {

/// A name with the > behind it, to be found in a text by comparing words instead of bytes.
class TagEnd
{
public:
    static constexpr std::size_t Longest = 32; ///< bytes that a look reaches at the most

    /// A name that is too long stands nowhere.
    explicit TagEnd(QByteArrayView name)
    {
        const auto size = std::size_t(name.size()) + 1;
        if (size > Longest)
            return;
        m_size = std::uint8_t(size);
        m_count = std::uint8_t((size + sizeof(Word) - 1) / sizeof(Word));
        std::memset(&m_lastMask, 0xFF, (size - 1) % sizeof(Word) + 1);
        std::array<char, Longest> bytes{};
        std::memcpy(bytes.data(), name.data(), size - 1);
        bytes[size - 1] = '>';
        std::memcpy(m_words.data(), bytes.data(), Longest);
    }

    std::size_t size() const noexcept { return m_size; }
    /// Whether it stands here; as many bytes as the longest one has can be read.
    bool standsAt(const char* at) const noexcept
    {
        std::size_t i = 0;
        for (; i + 1 < m_count; ++i) {
            if (wordAt(at, i) != m_words[i])
                return false;
        }
        return ((wordAt(at, i) ^ m_words[i]) & m_lastMask) == 0 && m_size != 0;
    }

private:
    using Word = std::uint64_t;
    static Word wordAt(const char* at, std::size_t place) noexcept
    {
        Word word = 0;
        std::memcpy(&word, at + place * sizeof word, sizeof word);
        return word;
    }

    std::array<Word, Longest / sizeof(Word)> m_words{};
    Word m_lastMask = 0;      ///< the bytes of the last word that belong to the name
    std::uint8_t m_size = 0;  ///< 0 for a name that is too long
    std::uint8_t m_count = 0; ///< words
};

} // namespace zan::document
