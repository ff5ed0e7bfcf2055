#include "zandata/plot/PlotLayers.h"

#include "zandata/plot/GraphColours.h"
#include "zandata/plot/PlotWidget.h"

#include <algorithm>

namespace zan::zandata {

namespace {

constexpr double BandStrength = 0.35; // of the line's colour against the background
constexpr int StripHeight = 5;        // pixels of a single channel's gap

} // namespace

PlotLayer::PlotLayer(PlotWidget& plot, const QString& layer)
    : QCPLayerable(&plot, layer)
    , m_plot(plot)
{}

QRect PlotLayer::clipRect() const
{
    return m_plot.area();
}

// Gaps ---------------------------------------------------------------------------------------------------------

std::vector<Gap> GapLayer::common(std::vector<std::vector<Gap>> lists)
{
    if (lists.empty())
        return {};
    std::vector<Gap> result = std::move(lists.front());
    for (std::size_t i = 1; i < lists.size(); ++i) {
        std::vector<Gap> both;
        auto a = result.begin();
        auto b = lists[i].begin();
        while (a != result.end() && b != lists[i].end()) {
            const Gap shared{std::max(a->from, b->from), std::min(a->until, b->until)};
            if (shared.from < shared.until)
                both.push_back(shared);
            (a->until < b->until ? a : b)++;
        }
        result = std::move(both);
    }
    return result;
}

void GapLayer::draw(QCPPainter* painter)
{
    const QRect area = m_plot.area();
    const Trend& trend = m_plot.content().trend;
    const auto hatch = [&](const Gap& gap, int top, const QColor& colour) {
        const int left = std::max(int(m_plot.pixelOf(gap.from)), area.left() - 1);
        const int right = std::min(int(m_plot.pixelOf(gap.until)), area.right() + 1);
        painter->fillRect(QRect(left, top, std::max(right - left, 1), area.bottom() - top + 1),
                          QBrush(colour, Qt::BDiagPattern));
    };
    std::vector<std::vector<Gap>> lists;
    for (const TrendChannel& channel : trend.channels()) {
        if (!trend.isShown(channel) || channel.cache.points().empty())
            continue;
        lists.push_back(trend.gapsOf(channel));
        for (const Gap& gap : lists.back())
            hatch(gap, area.bottom() - StripHeight, channelColour(m_plot.lookOf(channel), m_plot.back()));
    }
    for (const Gap& gap : common(std::move(lists)))
        hatch(gap, area.top(), mixed(m_plot.back(), m_plot.fore(), 0.45));
}

// Bands --------------------------------------------------------------------------------------------------------

void BandLayer::draw(QCPPainter* painter)
{
    const Trend& trend = m_plot.content().trend;
    for (const TrendChannel& channel : trend.channels()) {
        const QCPAxis* axis = m_plot.axisOf(channel);
        if (!axis || !trend.isShown(channel))
            continue;
        const std::vector<HistoryPoint>& points = channel.cache.points();
        const QColor colour =
            mixed(m_plot.back(), channelColour(m_plot.lookOf(channel), m_plot.back()), BandStrength);
        if (const TrendLine* line = m_plot.lineOf(channel))
            line->drawBetweenDashes(*painter, colour);
        const auto first =
            std::lower_bound(points.begin(), points.end(), trend.view().from(),
                             [](const HistoryPoint& point, HistoryTime time) { return point.last < time; });
        for (auto point = first; point != points.end() && point->first < trend.view().until(); ++point) {
            if (point->count < 2)
                continue;
            const double left = m_plot.pixelOf(point->first);
            const double right = m_plot.pixelOf(point->last);
            const double top = axis->coordToPixel(point->maximum);
            const double bottom = axis->coordToPixel(point->minimum);
            painter->fillRect(QRectF(left, top, std::max(right - left, 1.0), std::max(bottom - top, 1.0)), colour);
        }
    }
}

// Limits -------------------------------------------------------------------------------------------------------

void LimitLayer::draw(QCPPainter* painter)
{
    drawLimit(*painter, m_plot.content().upper, true);
    drawLimit(*painter, m_plot.content().lower, false);
}

void LimitLayer::drawLimit(QCPPainter& painter, const GraphLimit& limit, bool isUpper) const
{
    const QCPAxis* axis = m_plot.firstAxis();
    if (!axis || !limit.isThere())
        return;
    const QRect area = m_plot.area();
    const double height = axis->coordToPixel(limit.position);
    if (!(height >= area.top() - 1 && height <= area.bottom() + 1))
        return;
    const QColor colour = readable(isUpper ? QColor(0xc0, 0x20, 0x20) : QColor(0x20, 0x50, 0xc0), m_plot.back());
    painter.setPen(QPen(colour, 2));
    painter.drawLine(QPointF(area.left(), height), QPointF(area.right(), height));
    if (limit.label.isEmpty())
        return;
    // The label stands on the outer side of its line, or on the other one where there is no room.
    painter.setFont(m_plot.font());
    const QFontMetrics metrics(m_plot.font());
    const QString text = metrics.elidedText(limit.label, Qt::ElideRight, area.width() - 8);
    double top = isUpper ? height - metrics.height() - 2 : height + 2;
    if (top < area.top())
        top = height + 2;
    if (top + metrics.height() > area.bottom())
        top = height - metrics.height() - 2;
    painter.drawText(QRectF(area.left() + 4, top, area.width() - 8, metrics.height()), Qt::AlignLeft, text);
}

// Readout ------------------------------------------------------------------------------------------------------

void ReadoutLayer::draw(QCPPainter* painter)
{
    const std::optional<HistoryTime> moment = m_plot.cursor();
    if (!moment)
        return;
    const QRect area = m_plot.area();
    const double x = m_plot.pixelOf(*moment);
    painter->setPen(QPen(mixed(m_plot.back(), m_plot.fore(), 0.7), 1));
    painter->drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));

    const QString text = m_plot.readout(*moment);
    const QFontMetrics metrics(m_plot.font());
    const QRect needed = metrics.boundingRect(QRect(0, 0, area.width(), 10'000), Qt::AlignLeft, text);
    QRectF box(0, 0, needed.width() + 10, std::min(needed.height() + 6, area.height()));
    box.moveTopLeft(QPointF(x + 8, area.top() + 2));
    if (box.right() > area.right())
        box.moveRight(x - 8);
    if (box.left() < area.left())
        box.moveLeft(area.left());
    painter->fillRect(box, mixed(m_plot.back(), m_plot.fore(), 0.06));
    painter->drawRect(box);
    painter->setFont(m_plot.font());
    painter->setPen(m_plot.fore());
    painter->drawText(box.adjusted(5, 3, -5, -3), Qt::AlignLeft, text);
}

} // namespace zan::zandata
