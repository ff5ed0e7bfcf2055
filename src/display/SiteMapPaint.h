#pragma once

#include "display/SiteChart.h"

#include <QColor>
#include <QPalette>

class QPainter;

namespace zan::display::SiteMapPaint {

/// What a chart is painted with besides its own colours.
struct Colours
{
    QPalette system; ///< for system colours
    QColor text;     ///< of the labels
};

/// Paints what a region of the chart shows: lines first, then each site's box and label in their order, so that of two
/// at one place the later one is on top. The painter's origin is the chart's.
void paint(QPainter& painter, const QRect& region, const SiteChart& chart, const Colours& colours,
           surface::TextPainter& text);

} // namespace zan::display::SiteMapPaint
