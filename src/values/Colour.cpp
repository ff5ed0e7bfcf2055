#include "values/Colour.h"

#include <QPalette>

#include <array>

namespace zan::values {

namespace {

/// What each classic system colour is in the palette of today, by index.
constexpr std::array SystemRoles{
    QPalette::Mid,             // 0 scroll bars
    QPalette::Window,          // 1 desktop
    QPalette::Highlight,       // 2 active title bar
    QPalette::Mid,             // 3 inactive title bar
    QPalette::Window,          // 4 menu bar
    QPalette::Base,            // 5 window background
    QPalette::Shadow,          // 6 window frame
    QPalette::WindowText,      // 7 menu text
    QPalette::Text,            // 8 window text
    QPalette::HighlightedText, // 9 active title bar text
    QPalette::Button,          // 10 active border
    QPalette::Button,          // 11 inactive border
    QPalette::Dark,            // 12 application workspace
    QPalette::Highlight,       // 13 highlight
    QPalette::HighlightedText, // 14 highlighted text
    QPalette::Button,          // 15 button face
    QPalette::Dark,            // 16 button shadow
    QPalette::PlaceholderText, // 17 disabled text
    QPalette::ButtonText,      // 18 button text
    QPalette::WindowText,      // 19 inactive title bar text
    QPalette::Light,           // 20 button highlight
    QPalette::Shadow,          // 21 button dark shadow
    QPalette::Midlight,        // 22 button light shadow
    QPalette::ToolTipText,     // 23 tool tip text
    QPalette::ToolTipBase,     // 24 tool tip background
};
constexpr std::uint32_t DisabledText = 17;

} // namespace

QColor toQColor(Colour colour, const QPalette& palette)
{
    const auto code = std::uint32_t(colour.code);
    if (!colour.isSystem())
        return QColor(int(code & 0xff), int(code >> 8 & 0xff), int(code >> 16 & 0xff));
    const std::uint32_t index = code & 0xff;
    if (index >= SystemRoles.size())
        return QColor(0, 0, 0);
    if (index == DisabledText)
        return palette.color(QPalette::Disabled, QPalette::Text);
    return palette.color(QPalette::Active, SystemRoles[index]);
}

Colour fromQColor(const QColor& colour) noexcept
{
    const QRgb plain = colour.rgb();
    return rgb(qRed(plain), qGreen(plain), qBlue(plain));
}

} // namespace zan::values
