#pragma once

#include <qcustomplot.h>

#include <vector>

namespace zan::zandata {

/// The line of a channel's means.
///
/// A line that is much longer than the picture is wide, because its values swing or its points stand close, is drawn
/// column by column: one upright stroke for each column of pixels, from the lowest to the highest place that the line
/// has there. What it costs then goes by the width of the picture and not by the length of the line, and its dashes are
/// counted in columns. They stay with the time that they stand over, so that they move with the picture. In the gaps of
/// such dashes the line is there, in the colour of the bands and below all lines, lest a single high record hide in one.
class TrendLine final : public QCPGraph
{
public:
    TrendLine(QCPAxis* time, QCPAxis* values);
    /// What lies in the gaps of the dashes, in this colour; nothing where the line is not drawn by columns.
    void drawBetweenDashes(QCPPainter& painter, const QColor& colour) const;

    /// A line of more widths of the picture than this is drawn by columns.
    static constexpr double LongestInWidths = 4;

protected:
    void draw(QCPPainter* painter) override;

private:
    enum class Part { Dashes, Gaps };
    /// An upright stroke, in pixels of the device.
    struct Column
    {
        double top = 0;
        double bottom = 0;
        bool isEmpty = true;
        void include(double a, double b);
    };
    std::vector<QPointF> corners() const;
    bool isLong(const std::vector<QPointF>& corners) const;
    void drawColumns(QCPPainter& painter, const std::vector<QPointF>& corners, Part part,
                     const QColor& colour) const;
    std::vector<Column> columnsOf(const std::vector<QPointF>& corners, double ratio) const;
    double timeInPixels() const;
};

} // namespace zan::zandata
