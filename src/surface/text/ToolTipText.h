#pragma once

#include <QString>
#include <QTextDocument>

namespace zan::surface {

/// A text for a tool tip that is shown as it stands, even when it looks like markup.
inline QString plainToolTip(const QString& whole)
{
    constexpr qsizetype Longest = 4000; // more fills the screen
    const QString text = whole.size() > Longest ? whole.left(Longest) + QStringLiteral("...") : whole;
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

} // namespace zan::surface
