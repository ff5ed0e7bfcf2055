#pragma once

#include "zandata/plot/GraphView.h"

#include <qcustomplot.h>

namespace zan::zandata {

class PlotWidget;

/// Something that a plot draws by itself, clipped to the plot's area.
class PlotLayer : public QCPLayerable
{
public:
    PlotLayer(PlotWidget& plot, const QString& layer);

protected:
    void applyDefaultAntialiasingHint(QCPPainter* painter) const override { painter->setAntialiasing(false); }
    QRect clipRect() const override;
    PlotWidget& m_plot;
};

/// Where no channel has records, hatched over the whole height; where one channel alone has none, a hatched strip in
/// its colour at the foot. What was not read yet stays plain.
class GapLayer : public PlotLayer
{
public:
    using PlotLayer::PlotLayer;
    /// Gaps that all channels of a list have in common; each list in order of time.
    static std::vector<Gap> common(std::vector<std::vector<Gap>> lists);

protected:
    void draw(QCPPainter* painter) override;
};

/// From the least to the greatest value of records that share a pixel.
class BandLayer : public PlotLayer
{
public:
    using PlotLayer::PlotLayer;

protected:
    void draw(QCPPainter* painter) override;
};

class LimitLayer : public PlotLayer
{
public:
    using PlotLayer::PlotLayer;

protected:
    void draw(QCPPainter* painter) override;

private:
    void drawLimit(QCPPainter& painter, const GraphLimit& limit, bool isUpper) const;
};

/// The line and the box of values at the pointer.
class ReadoutLayer : public PlotLayer
{
public:
    using PlotLayer::PlotLayer;

protected:
    void draw(QCPPainter* painter) override;
};

} // namespace zan::zandata
