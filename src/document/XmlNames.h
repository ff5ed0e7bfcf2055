#pragma once

#include <QStringView>

namespace zan::document {

/// Whether XML 1.0 allows the character in a document at all.
constexpr bool isXmlCharacter(char32_t character) noexcept
{
    if (character < 0x20)
        return character == '\t' || character == '\n' || character == '\r';
    return (character < 0xD800 || character > 0xDFFF) && character != 0xFFFE && character != 0xFFFF &&
           character <= 0x10FFFF;
}

/// Whether XML counts the character as a blank.
constexpr bool isXmlBlank(char16_t character) noexcept
{
    return character == ' ' || character == '\n' || character == '\t' || character == '\r';
}

/// Whether the text is made of blanks only; true for no text.
bool isXmlBlank(QStringView text) noexcept;

/// Whether the text can be the name of an element, an attribute or an instruction.
bool isXmlName(QStringView text) noexcept;

} // namespace zan::document
