#include "script/builtins/CodePage.h"

namespace zan::script {

namespace {

/// Codes 128 to 159; all others are those of Latin-1.
constexpr char16_t Upper[32] = {
    0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008d, 0x017d, 0x008f, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178,
};

} // namespace

char16_t fromCodePage(std::uint8_t code) noexcept
{
    return code >= 128 && code < 160 ? Upper[code - 128] : char16_t(code);
}

std::uint8_t toCodePage(char16_t character) noexcept
{
    if (character < 128 || (character >= 160 && character < 256))
        return std::uint8_t(character);
    for (int place = 0; place < 32; ++place) {
        if (Upper[place] == character)
            return std::uint8_t(128 + place);
    }
    return '?';
}

} // namespace zan::script
