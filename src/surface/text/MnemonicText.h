#pragma once

#include <QString>

namespace zan::surface {

/// What a widget is given of a caption: more than this is never seen, and the toolkit lays out all that it gets.
inline QString widgetCaption(const QString& caption)
{
    constexpr qsizetype Longest = 10'000;
    return caption.size() > Longest ? caption.left(Longest) : caption;
}

/// The text without its mnemonic marks: "&File" is "File", "A && B" is "A & B".
inline QString withoutMnemonic(const QString& text)
{
    QString plain;
    plain.reserve(text.size());
    for (qsizetype place = 0; place < text.size(); ++place) {
        if (text[place] == QLatin1Char('&') && ++place >= text.size())
            break;
        plain.append(text[place]);
    }
    return plain;
}

} // namespace zan::surface
