// What a graph says: title, legend, values at the pointer, and all of it for who cannot see it.

#include "values/Failure.h"
#include "values/Format.h"
#include "zandata/plot/PlotWidget.h"

#include <QToolButton>

namespace zan::zandata {

namespace {

constexpr std::size_t MostLegend = 16; // channels that the legend and the box at the pointer name
constexpr qsizetype LongestValue = 60; // characters

QString valueText(const Variant& value, const QString& format)
{
    QString text;
    if (!values::attempt([&] { text = values::format(value, format); }))
        return QStringLiteral("?");
    return text.left(LongestValue).simplified();
}

QString numberText(double value, const QString& format)
{
    return valueText(Variant(value), format);
}

} // namespace

QString PlotWidget::title() const
{
    const TimeView& view = m_content->trend.view();
    if (!m_content->trend.state().isEmpty())
        return m_content->trend.state();
    if (view.mode() == TimeView::Mode::Held)
        return QStringLiteral("Held: ") + spanText(view.from(), view.until());
    if (view.mode() == TimeView::Mode::Records)
        return m_content->heading;
    for (const FollowedRange& range : FollowedRanges) {
        if (range.span == view.followedSpan())
            return QString::fromLatin1(range.name);
    }
    return spanText(view.from(), view.until());
}

QString PlotWidget::legendText(const TrendChannel& channel) const
{
    QString text = channel.label;
    if (channel.lastTime != 0)
        text += QLatin1String("  ") + valueText(channel.lastValue, channel.format);
    if (!channel.units.isEmpty())
        text += QLatin1Char(' ') + channel.units;
    return text;
}

bool PlotWidget::isLegendOf(const std::vector<QCPGraph*>& named) const
{
    bool isSame = legend->itemCount() == int(named.size());
    for (std::size_t i = 0; isSame && i < named.size(); ++i) {
        auto* item = qobject_cast<QCPPlottableLegendItem*>(legend->item(int(i)));
        isSame = item && item->plottable() == named[i];
    }
    return isSame;
}

/// As many columns as there is room for; of a low graph one line.
bool PlotWidget::updateLegend()
{
    const QFontMetrics metrics(font());
    const int longest = std::max(width() / 2, 60);
    std::vector<QCPGraph*> named;
    bool haveChanged = false;
    int widest = 1;
    for (const TrendChannel& channel : m_content->trend.channels()) {
        if (!m_lines.contains(channel.number) || named.size() >= MostLegend)
            continue;
        QCPGraph* graph = m_lines.at(channel.number).graph;
        const QString name = metrics.elidedText(legendText(channel), Qt::ElideRight, longest);
        haveChanged = haveChanged || name != graph->name();
        // Words of another width may want other columns.
        m_isStale = m_isStale || metrics.horizontalAdvance(name) != metrics.horizontalAdvance(graph->name());
        graph->setName(name);
        widest = std::max(widest, metrics.horizontalAdvance(graph->name()) + legend->iconSize().width() + 24);
        named.push_back(graph);
    }
    const int columns = std::max((width() - 12) / widest, 1);
    if (height() < RoomForTools && named.size() > std::size_t(columns))
        named.resize(std::size_t(columns));
    if (isLegendOf(named) && columns == m_legendColumns && !m_isStale)
        return haveChanged;
    m_isStale = true;
    m_legendColumns = columns;
    legend->clearItems();
    legend->simplify();
    legend->setWrap(columns);
    for (QCPGraph* graph : named)
        graph->addToLegend(legend);
    legend->setVisible(!named.empty());
    return true;
}

bool PlotWidget::updateWords()
{
    const QString words = title();
    layOut();
    const int room = width() - 12 - (m_tools->isVisibleTo(this) ? m_tools->width() : 0);
    const QString former = m_title->text();
    m_title->setText(QFontMetrics(font()).elidedText(words, Qt::ElideRight, std::max(room, 20)));
    const bool hasTitleChanged = m_title->text() != former;
    const bool isLive = m_content->trend.view().isLive();
    m_live->setText(isLive ? QStringLiteral("Pause") : QStringLiteral("Live"));
    m_live->setToolTip(isLive ? QStringLiteral("Hold what is seen") : QStringLiteral("Follow new records"));
    m_live->setAccessibleName(m_live->toolTip());
    const bool hasLegendChanged = updateLegend();
    setAccessibleName(m_content->heading.isEmpty() ? QStringLiteral("Graph") : m_content->heading);
    setAccessibleDescription(summary());
    return hasTitleChanged || hasLegendChanged;
}

QString PlotWidget::summary() const
{
    const Trend& trend = m_content->trend;
    QString text = title();
    for (const TrendChannel& channel : trend.channels()) {
        if (trend.isShown(channel) && text.size() < 2000)
            text += QLatin1String("; ") + legendText(channel);
    }
    return text;
}

QString PlotWidget::readout(HistoryTime moment) const
{
    const Trend& trend = m_content->trend;
    QString text = timeText(moment - moment % 1000);
    std::size_t lines = 0;
    for (const TrendChannel& channel : trend.channels()) {
        if (!trend.isShown(channel) || ++lines > MostLegend)
            continue;
        text += QLatin1Char('\n') + channel.label + QLatin1String(": ");
        const HistoryPoint* point = trend.pointAt(channel, moment);
        if (!point) {
            text += QLatin1String("no record");
            continue;
        }
        text += numberText(point->minimum, channel.format);
        // Several records share the pixel: what they lay between is all that is known here.
        if (point->maximum != point->minimum)
            text += QLatin1String(" to ") + numberText(point->maximum, channel.format);
        if (!channel.units.isEmpty())
            text += QLatin1Char(' ') + channel.units;
    }
    return text;
}

QString PlotWidget::readoutAt(QPointF place)
{
    if (!area().contains(place.toPoint()))
        return {};
    return readout(HistoryTime(xAxis->pixelToCoord(place.x())));
}

void PlotWidget::setCursorTo(std::optional<HistoryTime> moment)
{
    if (m_cursor == moment)
        return;
    m_cursor = moment;
    layer(QStringLiteral("readout"))->replot();
}

} // namespace zan::zandata
