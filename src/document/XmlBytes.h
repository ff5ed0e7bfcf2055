#pragma once

#include "document/Tape.h"

#include <array>
#include <cstdint>
#include <cstring>

/// What the sources of the XML reader share: what it says, and what bytes are to it.
namespace zan::document::xml {

inline constexpr const char* ClosesAnother = "The end tag does not close the element that is open here.";
inline constexpr const char* EndsEarly = "The text ends before every element is closed.";
inline constexpr const char* MalformedAttribute = "An attribute is not well formed; it is written name=\"value\".";
inline constexpr const char* MalformedInstruction = "A processing instruction is not well formed; it ends with ?>.";
inline constexpr const char* NoDoctype = "A document type declaration is not allowed; remove the <!DOCTYPE ...>.";
inline constexpr const char* MalformedStartTag = "A start tag is not well formed.";
inline constexpr const char* OutsideElement = "Text stands outside the outermost element.";
inline constexpr const char* TooManyElements = "The document has too many elements.";

// What a byte is to the reader.
inline constexpr std::uint8_t Halts = 1;      // a text cannot be passed over without looking at it
inline constexpr std::uint8_t HaltsValue = 2; // nor can an attribute's value
inline constexpr std::uint8_t IsCoded = 4;
inline constexpr std::uint8_t IsWide = 8;
inline constexpr std::uint8_t IsBlank = 16;
inline constexpr std::uint8_t IsOther = 32; // no blank
inline constexpr std::uint8_t StartsName = 64;
inline constexpr std::uint8_t ContinuesName = 128;
inline constexpr std::uint16_t HasAngle = 256; // met a > in a text

constexpr std::array<std::uint8_t, 256> makeByteClasses()
{
    std::array<std::uint8_t, 256> classes{};
    for (int byte = 0; byte < 256; ++byte) {
        std::uint8_t is = IsOther;
        if (byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r')
            is = IsBlank;
        if (byte == '\r')
            is |= IsCoded;
        if (byte == 0 || byte == '<' || byte == '&' || byte == '>')
            is |= Halts;
        if (byte == 0 || byte == '<' || byte == '&' || byte == '"' || byte == '\'')
            is |= HaltsValue;
        if (byte >= 0x80)
            is |= IsWide;
        const bool isLetter = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
        if (isLetter || byte == '_' || byte == ':' || byte >= 0x80)
            is |= StartsName | ContinuesName;
        if ((byte >= '0' && byte <= '9') || byte == '-' || byte == '.')
            is |= ContinuesName;
        classes[std::size_t(byte)] = is;
    }
    return classes;
}
inline constexpr std::array<std::uint8_t, 256> ByteClasses = makeByteClasses();

inline std::uint8_t classOf(char byte) noexcept
{
    return ByteClasses[static_cast<unsigned char>(byte)];
}

inline std::uint8_t marksOf(std::uint16_t met) noexcept
{
    return std::uint8_t(((met & IsCoded) ? Tape::Coded : 0) | ((met & IsWide) ? Tape::Wide : 0) |
                        ((met & HasAngle) ? Tape::Angle : 0));
}

inline bool startsWith(const char* at, const char* text) noexcept
{
    return std::strncmp(at, text, std::strlen(text)) == 0;
}

} // namespace zan::document::xml
