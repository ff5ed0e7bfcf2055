#include "BarePlot.h"

#include "FastHistory.h"

#include <qcustomplot.h>

namespace zan::bench {

struct BarePlot::Parts
{
    QCustomPlot plot;
};

BarePlot::BarePlot(std::int64_t series, std::int64_t records, QSize size)
    : m_parts(std::make_unique<Parts>())
{
    QCustomPlot& plot = m_parts->plot;
    plot.resize(size);
    for (std::int64_t id = 1; id <= series; ++id) {
        QCPGraph* graph = plot.addGraph();
        graph->setPen(QPen(QColor::fromHsv(int(id) * 40 % 360, 200, 160), 1.6));
        QVector<QCPGraphData> points;
        points.reserve(qsizetype(records));
        for (std::int64_t record = 0; record < records; ++record)
            points.append({double(record), recordValue(id, record)});
        graph->data()->set(points, true);
    }
}

BarePlot::~BarePlot() = default;

void BarePlot::show(double first, double end)
{
    QCustomPlot& plot = m_parts->plot;
    plot.xAxis->setRange(first, end);
    for (int i = 0; i < plot.graphCount(); ++i)
        plot.graph(i)->rescaleValueAxis(i > 0, true);
    plot.replot(QCustomPlot::rpQueuedRefresh);
    plot.grab();
}

void BarePlot::append(std::int64_t record)
{
    QCustomPlot& plot = m_parts->plot;
    for (int i = 0; i < plot.graphCount(); ++i)
        plot.graph(i)->addData(double(record), recordValue(i + 1, record));
}

} // namespace zan::bench
