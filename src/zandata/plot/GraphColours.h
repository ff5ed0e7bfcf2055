#pragma once

#include <QColor>
#include <QList>
#include <QPen>

namespace zan::zandata {

/// How the line of a channel looks: told apart by colour, by people who see no colours by its dashes, and on a light
/// background as well as on a dark one.
QColor channelColour(std::int32_t number, const QColor& back);
QPen channelPen(std::int32_t number, const QColor& back);

/// Whether a place of a line lies in a dash: lengths of dashes and gaps in turn, beginning with a dash at 0.
bool isInDash(double place, const QList<qreal>& lengths);

/// The colour itself where it stands out from the background enough, else a lighter or darker one that does.
QColor readable(const QColor& colour, const QColor& back);
/// From 1 (the same) to 21 (black and white).
double contrast(const QColor& a, const QColor& b);
/// Least contrast of lines.
inline constexpr double LeastContrast = 3.0;

/// A mixture: 0 is the first colour, 1 the second.
QColor mixed(const QColor& a, const QColor& b, double share);

} // namespace zan::zandata
