#include "document/XmlNames.h"

#include <QChar>

#include <algorithm>
#include <iterator>

namespace zan::document {

namespace {

struct Range
{
    char32_t first;
    char32_t last;
};

constexpr Range StartRanges[] = {{':', ':'},       {'A', 'Z'},       {'_', '_'},       {'a', 'z'},
                                 {0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2FF},    {0x370, 0x37D},
                                 {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F}, {0x2C00, 0x2FEF},
                                 {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF}};
constexpr Range FurtherRanges[] = {{'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}};

template <std::size_t Count>
bool isIn(const Range (&ranges)[Count], char32_t character) noexcept
{
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [&](const Range& range) { return character >= range.first && character <= range.last; });
}

bool isAsciiNameStart(char16_t unit) noexcept
{
    return (unit >= 'A' && unit <= 'Z') || (unit >= 'a' && unit <= 'z') || unit == '_' || unit == ':';
}

bool isAsciiNameRest(char16_t unit) noexcept
{
    return isAsciiNameStart(unit) || (unit >= '0' && unit <= '9') || unit == '-' || unit == '.';
}

} // namespace

bool isXmlBlank(QStringView text) noexcept
{
    return std::all_of(text.utf16(), text.utf16() + text.size(), [](char16_t unit) { return isXmlBlank(unit); });
}

bool isXmlName(QStringView text) noexcept
{
    if (text.isEmpty())
        return false;
    const char16_t* units = text.utf16();
    if (isAsciiNameStart(units[0]) && std::all_of(units + 1, units + text.size(), isAsciiNameRest))
        return true;
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t character = units[i]; // half a surrogate pair is in no range
        const bool isFirst = i == 0;
        if (QChar::isHighSurrogate(units[i]) && i + 1 < text.size() && QChar::isLowSurrogate(units[i + 1]))
            character = QChar::surrogateToUcs4(units[i], units[i + 1]), ++i;
        if (!isIn(StartRanges, character) && (isFirst || !isIn(FurtherRanges, character)))
            return false;
    }
    return true;
}

} // namespace zan::document
