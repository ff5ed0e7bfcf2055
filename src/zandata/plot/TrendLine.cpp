#include "zandata/plot/TrendLine.h"

#include "zandata/plot/GraphColours.h"

#include <algorithm>
#include <cmath>

namespace zan::zandata {

namespace {

/// Pixels of the device in one of the painter.
double ratioOf(const QPainter& painter)
{
    const QTransform& transform = painter.deviceTransform();
    return std::clamp(std::hypot(transform.m11(), transform.m12()), 0.25, 8.0);
}

/// A stroke with soft ends: the pixels that it covers in part get a part of its colour.
void fillColumn(QPainter& painter, double left, double top, double bottom, double pixel, const QColor& colour)
{
    const double firstWhole = std::ceil(top);
    const double endOfWhole = std::floor(bottom);
    const auto fill = [&](double from, double height, double share) {
        if (share < 0.02)
            return;
        QColor part = colour;
        part.setAlphaF(float(colour.alphaF() * std::min(share, 1.0)));
        painter.fillRect(QRectF(left * pixel, from * pixel, pixel, height * pixel), part);
    };
    if (firstWhole > endOfWhole) { // within one pixel
        fill(endOfWhole, 1, bottom - top);
        return;
    }
    if (endOfWhole > firstWhole)
        fill(firstWhole, endOfWhole - firstWhole, 1);
    fill(firstWhole - 1, 1, firstWhole - top);
    fill(endOfWhole, 1, bottom - endOfWhole);
}

} // namespace

TrendLine::TrendLine(QCPAxis* time, QCPAxis* values)
    : QCPGraph(time, values)
{}

void TrendLine::Column::include(double a, double b)
{
    const auto [low, high] = std::minmax(a, b);
    top = isEmpty ? low : std::min(top, low);
    bottom = isEmpty ? high : std::max(bottom, high);
    isEmpty = false;
}

/// The places of the points that are seen and of one on either side; what is not a number parts the line.
std::vector<QPointF> TrendLine::corners() const
{
    std::vector<QPointF> result;
    if (!mKeyAxis || !mValueAxis || mKeyAxis->axisRect()->rect().isEmpty())
        return result;
    const QCPRange seen = mKeyAxis->range();
    const auto end = mDataContainer->findEnd(seen.upper);
    for (auto point = mDataContainer->findBegin(seen.lower); point != end; ++point)
        result.emplace_back(mKeyAxis->coordToPixel(point->key), mValueAxis->coordToPixel(point->value));
    return result;
}

bool TrendLine::isLong(const std::vector<QPointF>& corners) const
{
    double length = 0;
    for (std::size_t i = 1; i < corners.size(); ++i) {
        const QPointF step = corners[i] - corners[i - 1];
        if (std::isfinite(step.y()))
            length += std::hypot(step.x(), step.y());
    }
    const double width = mKeyAxis ? mKeyAxis->axisRect()->width() : 0;
    return length > width * LongestInWidths || double(corners.size()) * 3 > width;
}

/// The lowest and the highest place of the line in each column of the plot's area.
std::vector<TrendLine::Column> TrendLine::columnsOf(const std::vector<QPointF>& corners, double ratio) const
{
    const QRect area = mKeyAxis->axisRect()->rect();
    const double left = area.left() * ratio;
    // Beyond these a line cannot be seen; numbers stay small.
    const auto height = [&](double y) {
        return std::clamp(y * ratio, (area.top() - 100.0) * ratio, (area.bottom() + 100.0) * ratio);
    };
    std::vector<Column> columns(std::size_t(std::ceil(area.width() * ratio)) + 1);
    const double last = double(columns.size()) - 1;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        if (!std::isfinite(corners[i].y()))
            continue;
        const bool isAlone = i == 0 || !std::isfinite(corners[i - 1].y());
        const QPointF& before = isAlone ? corners[i] : corners[i - 1];
        const double x0 = before.x() * ratio - left;
        const double x1 = corners[i].x() * ratio - left;
        if (x1 < 0 || x0 > last)
            continue;
        const double y0 = height(before.y());
        const double slope = x1 > x0 ? (height(corners[i].y()) - y0) / (x1 - x0) : 0;
        const double first = std::floor(std::max(x0, 0.0));
        const double end = std::min(std::floor(x1), last);
        for (double column = first; column <= end; ++column) {
            const double from = std::max(column, x0);
            const double until = std::min(column + 1, x1);
            columns[std::size_t(column)].include(y0 + (from - x0) * slope, y0 + (until - x0) * slope);
        }
        if (x1 <= last)
            columns[std::size_t(std::max(end, 0.0))].include(height(corners[i].y()), height(corners[i].y()));
    }
    return columns;
}

/// Pixels from the beginning of time to the left edge, at the scale of the picture.
double TrendLine::timeInPixels() const
{
    const QCPRange seen = mKeyAxis->range();
    return seen.size() > 0 ? seen.lower / seen.size() * mKeyAxis->axisRect()->width() : 0;
}

void TrendLine::drawColumns(QCPPainter& painter, const std::vector<QPointF>& corners, Part part,
                            const QColor& colour) const
{
    const double ratio = ratioOf(painter);
    const double width = mPen.widthF();
    QList<qreal> lengths = mPen.style() == Qt::SolidLine ? QList<qreal>{} : mPen.dashPattern();
    for (qreal& length : lengths)
        length *= width;
    const QRect area = mKeyAxis->axisRect()->rect();
    const std::vector<Column> columns = columnsOf(corners, ratio);
    const double before = timeInPixels();
    painter.setAntialiasing(false);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const Column& column = columns[i];
        if (column.isEmpty || isInDash(before + double(i) / ratio, lengths) != (part == Part::Dashes))
            continue;
        const double half = width / 2 * ratio;
        fillColumn(painter, std::round(area.left() * ratio) + double(i), column.top - half, column.bottom + half,
                   1 / ratio, colour);
    }
}

void TrendLine::draw(QCPPainter* painter)
{
    const std::vector<QPointF> places = corners();
    // Prints are drawn by printers, whose dashes cost nothing here.
    if (places.empty() || painter->modes().testFlag(QCPPainter::pmVectorized) || !isLong(places)) {
        QCPGraph::draw(painter);
        return;
    }
    drawColumns(*painter, places, Part::Dashes, mPen.color());
    if (mScatterStyle.isNone())
        return;
    QVector<QPointF> dots;
    getScatters(&dots, mDataContainer->dataRange());
    drawScatterPlot(painter, dots, mScatterStyle);
}

void TrendLine::drawBetweenDashes(QCPPainter& painter, const QColor& colour) const
{
    if (mPen.style() == Qt::SolidLine || painter.modes().testFlag(QCPPainter::pmVectorized))
        return;
    const std::vector<QPointF> places = corners();
    if (!places.empty() && isLong(places))
        drawColumns(painter, places, Part::Gaps, colour);
}

} // namespace zan::zandata
