// When a graph is drawn anew: a still picture costs nothing, however many records come.

#include "zandata/plot/PlotWidget.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace zan::zandata {

namespace {

std::int64_t bitsOf(double number)
{
    return std::bit_cast<std::int64_t>(number);
}

std::int64_t wholePixel(double pixel)
{
    constexpr double Farthest = 1e6;
    return std::isfinite(pixel) ? std::llround(std::clamp(pixel, -Farthest, Farthest)) : 0;
}

} // namespace

/// Ends that move by less than half a pixel stay where they are drawn.
void PlotWidget::setRange(QCPAxis& axis, double lower, double upper, int pixels)
{
    const double half = (upper - lower) / std::max(pixels, 1) / 2;
    const QCPRange drawn = axis.range();
    if (std::fabs(lower - drawn.lower) >= half || std::fabs(upper - drawn.upper) >= half)
        axis.setRange(lower, upper);
}

void PlotWidget::addSeen(const TrendChannel& channel, const QCPAxis& axis, SeenPicture& seen) const
{
    const Trend& trend = m_content->trend;
    std::vector<std::int64_t>& numbers = seen.numbers;
    const std::vector<HistoryPoint>& points = channel.cache.points();
    numbers.insert(numbers.end(), {channel.number, lookOf(channel), isSparse(channel)});
    for (const HistoryPoint& point : points) {
        if (point.last < trend.view().from() || point.first >= trend.view().until())
            continue;
        const auto heightOf = [&](double value) { return wholePixel(axis.coordToPixel(value)); };
        numbers.insert(numbers.end(),
                       {wholePixel(pixelOf(point.first)), wholePixel(pixelOf(point.last)), heightOf(point.minimum),
                        heightOf(point.mean), heightOf(point.maximum), point.count > 1});
    }
    for (const Gap& gap : trend.gapsOf(channel))
        numbers.insert(numbers.end(), {-1, wholePixel(pixelOf(gap.from)), wholePixel(pixelOf(gap.until))});
}

SeenPicture PlotWidget::seen() const
{
    SeenPicture seen;
    const QRect place = area();
    seen.numbers = {width(), height(), place.x(), place.y(), place.width(), place.height()};
    for (const QCPAxis* axis : axisRect()->axes()) {
        seen.numbers.insert(seen.numbers.end(),
                            {axis->visible(), bitsOf(axis->range().lower), bitsOf(axis->range().upper)});
        seen.texts.push_back(axis->label());
    }
    for (const TrendChannel& channel : m_content->trend.channels()) {
        const QCPAxis* axis = axisOf(channel);
        if (axis && m_content->trend.isShown(channel))
            addSeen(channel, *axis, seen);
    }
    for (const GraphLimit* limit : {&m_content->upper, &m_content->lower}) {
        seen.numbers.insert(seen.numbers.end(), {limit->isThere(), bitsOf(limit->position)});
        seen.texts.push_back(limit->label);
    }
    return seen;
}

void PlotWidget::present(bool haveWordsChanged)
{
    if (m_isStale || seen() != m_seen) {
        replot(QCustomPlot::rpQueuedRefresh);
        m_isStale = false;
        m_seen = seen(); // by the places that things have now
    } else if (haveWordsChanged) {
        layer(WordsLayer)->replot();
    }
}

} // namespace zan::zandata
