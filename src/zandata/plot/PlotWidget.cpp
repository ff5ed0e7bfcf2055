#include "zandata/plot/PlotWidget.h"

#include "zandata/plot/GraphColours.h"

#include <QHBoxLayout>
#include <QPrinter>
#include <QToolButton>

#include <cmath>
#include <limits>

namespace zan::zandata {

namespace {

constexpr qint64 TurnBudget = 12;   // milliseconds of reading before a picture is due
constexpr std::size_t MostAxes = 8; // further units share the last one

/// Marks of the time axis by the local clock.
class TimeTicker : public QCPAxisTicker
{
public:
    int labelWidth = 60;
    int pixels = 300;

    void generate(const QCPRange& range, const QLocale&, QChar, int, QVector<double>& ticks,
                  QVector<double>* subTicks, QVector<QString>* labels) override
    {
        const TimeTicks marks(HistoryTime(range.lower), HistoryTime(range.upper),
                              std::max(pixels / std::max(labelWidth, 1), 1));
        ticks.clear();
        if (subTicks)
            subTicks->clear();
        if (labels)
            labels->clear();
        for (const HistoryTime time : marks.times()) {
            ticks.append(double(time));
            if (labels)
                labels->append(marks.label(time));
        }
    }
};

} // namespace

GraphView* makeGraphView(QWidget* parent, std::shared_ptr<GraphContent> content,
                         std::function<void(GraphCommand)> command)
{
    return new PlotWidget(parent, std::move(content), std::move(command));
}

GraphView* graphViewOf(QWidget* widget)
{
    return dynamic_cast<PlotWidget*>(widget);
}

// Making -------------------------------------------------------------------------------------------------------

PlotWidget::PlotWidget(QWidget* parent, std::shared_ptr<GraphContent> content,
                       std::function<void(GraphCommand)> command)
    : QCustomPlot(parent)
    , m_content(std::move(content))
    , m_command(std::move(command))
{
    setLocale(QLocale::c());
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setNoAntialiasingOnDrag(false);
    setAutoAddPlottableToLegend(false);
    // The line and box at the pointer are drawn anew without the rest.
    addLayer(QStringLiteral("readout"), layer(layerCount() - 1));
    layer(QStringLiteral("readout"))->setMode(QCPLayer::lmBuffered);
    layer(WordsLayer)->setMode(QCPLayer::lmBuffered);
    // The plot owns them.
    new GapLayer(*this, QStringLiteral("background"));
    new BandLayer(*this, QStringLiteral("grid"));
    new LimitLayer(*this, QStringLiteral("axes"));
    new ReadoutLayer(*this, QStringLiteral("readout"));

    xAxis->setTicker(QSharedPointer<QCPAxisTicker>(new TimeTicker));
    xAxis->grid()->setSubGridVisible(false);
    axisRect()->setupFullAxesBox();
    xAxis2->setTicks(false);
    xAxis2->setTickLabels(false);
    yAxis2->setTicks(false);
    yAxis2->setTickLabels(false);

    m_title = new QCPTextElement(this, QString());
    m_title->setLayer(WordsLayer);
    m_title->setTextFlags(Qt::AlignLeft | Qt::AlignVCenter);
    plotLayout()->insertRow(0);
    plotLayout()->addElement(0, 0, m_title);
    plotLayout()->setRowSpacing(2);
    axisRect()->setMinimumMargins(QMargins(8, 4, 8, 2));
    axisRect()->insetLayout()->take(legend);
    plotLayout()->addElement(2, 0, legend);
    plotLayout()->setRowStretchFactor(2, 0.001);
    legend->setBorderPen(Qt::NoPen);
    legend->setFillOrder(QCPLayoutGrid::foColumnsFirst);
    legend->setMargins(QMargins(6, 0, 6, 2));
    legend->setRowSpacing(0);

    m_turn.setSingleShot(true);
    m_turn.setInterval(0);
    connect(&m_turn, &QTimer::timeout, this, [this] { turn(); });
    makeTools();
    restyle();
    refresh();
}

QToolButton* PlotWidget::addTool(const QString& text, const QString& help, const std::function<void()>& action)
{
    auto* button = new QToolButton(m_tools);
    button->setText(text);
    button->setToolTip(help);
    button->setAccessibleName(help);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus); // each has a key of its own on the graph
    connect(button, &QToolButton::clicked, this, action);
    m_tools->layout()->addWidget(button);
    return button;
}

void PlotWidget::makeTools()
{
    m_tools = new QWidget(this);
    auto* row = new QHBoxLayout(m_tools);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    m_live = addTool(QString(), QString(), [this] { answerKey(Qt::Key_Space, false); });
    for (const FollowedRange& range : FollowedRanges)
        addTool(QString::fromLatin1(range.button), QString::fromLatin1(range.name),
                [this, span = range.span] { look([span](TimeView& view) { view.followSpan(span); }); });
    addTool(QStringLiteral("CSV"), QStringLiteral("Save what is seen as a table"),
            [this] { m_command(GraphCommand::SaveCsv); });
    addTool(QStringLiteral("PNG"), QStringLiteral("Save what is seen as a picture"),
            [this] { m_command(GraphCommand::SavePicture); });
    addTool(QStringLiteral("Print"), QStringLiteral("Print what is seen"),
            [this] { m_command(GraphCommand::Print); });
}

void PlotWidget::restyle()
{
    m_isStale = true;
    setBackground(QBrush(back()));
    const QColor faint = mixed(back(), fore(), 0.2);
    for (QCPAxis* axis : axisRect()->axes()) {
        axis->setBasePen(QPen(fore()));
        axis->setTickPen(QPen(fore()));
        axis->setSubTickPen(QPen(fore())); // a faint one would cut the axis that it stands on
        axis->setTickLabelColor(fore());
        axis->setLabelColor(fore());
        axis->setTickLabelFont(font());
        axis->setLabelFont(font());
        axis->grid()->setPen(QPen(faint, 1, Qt::DotLine));
        axis->grid()->setZeroLinePen(Qt::NoPen);
    }
    m_title->setFont(font());
    m_title->setTextColor(fore());
    legend->setFont(font());
    legend->setTextColor(fore());
    legend->setBrush(Qt::NoBrush);
    const int line = QFontMetrics(font()).height();
    legend->setIconSize(line * 2, line + 2); // as high as its row, which cuts the ends of letters otherwise
    for (QWidget* child : m_tools->findChildren<QWidget*>())
        child->setFont(font());
    m_live->setMinimumWidth(QFontMetrics(font()).horizontalAdvance(QStringLiteral("Pause")) + line);
    layOut();
}

/// Title and tools above, legend below. A low graph shows its tools while it is used.
void PlotWidget::layOut()
{
    m_tools->adjustSize();
    m_tools->move(width() - m_tools->width() - 2, 1);
    const bool fits = width() > m_tools->sizeHint().width() + 40;
    const bool isUsed = height() >= RoomForTools || underMouse() || hasFocus();
    m_tools->setVisible(fits && isUsed);
    const int line = QFontMetrics(font()).height();
    m_title->setMinimumSize(0, height() >= RoomForTools ? std::max(line, m_tools->height()) : line);
    m_title->setMargins(QMargins(4, 1, 4, 0));
}

// Drawing ------------------------------------------------------------------------------------------------------

void PlotWidget::refresh()
{
    m_turn.start();
}

void PlotWidget::turn()
{
    QElapsedTimer clock;
    clock.start();
    const bool isDone = m_content->trend.read(width(), [&] { return clock.elapsed() >= TurnBudget; });
    redraw();
    if (!isDone)
        m_turn.start();
}

void PlotWidget::complete()
{
    m_content->trend.read(width(), [] { return false; });
    m_turn.stop();
    redraw();
}

void PlotWidget::redraw()
{
    updateAxes();
    updateLooks();
    updateLines();
    updateRanges();
    present(updateWords());
}

QCPAxis* PlotWidget::axisOf(const TrendChannel& channel) const
{
    const auto unit = std::find(m_units.begin(), m_units.end(), channel.units);
    const auto place = std::size_t(unit - m_units.begin());
    if (m_axes.empty())
        return nullptr;
    return m_axes[std::min(place, m_axes.size() - 1)];
}

QCPAxis* PlotWidget::firstAxis() const
{
    return m_axes.empty() ? nullptr : m_axes.front().data();
}

/// One axis for each unit of the channels that are shown, in turn on the left and on the right.
void PlotWidget::updateAxes()
{
    const Trend& trend = m_content->trend;
    std::vector<QString> units;
    for (const TrendChannel& channel : trend.channels()) {
        if (trend.isShown(channel) && std::find(units.begin(), units.end(), channel.units) == units.end())
            units.push_back(channel.units);
    }
    if (units == m_units && !m_axes.empty() == !units.empty())
        return;
    clearGraphs();
    m_lines.clear();
    for (const QPointer<QCPAxis>& axis : m_axes) {
        if (axis && axis != yAxis && axis != yAxis2)
            axisRect()->removeAxis(axis);
    }
    m_axes.clear();
    m_units = std::move(units);
    for (std::size_t i = 0; i < std::min(m_units.size(), MostAxes); ++i) {
        const QCPAxis::AxisType side = i % 2 == 0 ? QCPAxis::atLeft : QCPAxis::atRight;
        QCPAxis* axis = i == 0 ? yAxis : i == 1 ? yAxis2 : axisRect()->addAxis(side);
        axis->setVisible(true);
        axis->setTicks(true);
        axis->setTickLabels(true);
        axis->setLabel(m_units.size() > MostAxes && i + 1 == MostAxes ? QStringLiteral("other") : m_units[i]);
        axis->grid()->setVisible(i == 0);
        m_axes.emplace_back(axis);
    }
    if (m_axes.size() < 2) {
        yAxis2->setTicks(false);
        yAxis2->setTickLabels(false);
        yAxis2->setLabel(QString());
    }
    restyle();
}

/// Means as a line that breaks at gaps; what lies around them is the bands'.
void PlotWidget::fill(const TrendChannel& channel, QCPGraph& graph) const
{
    const std::vector<HistoryPoint>& points = channel.cache.points();
    const std::int64_t patience = Trend::patience(channel);
    QVector<QCPGraphData> line;
    line.reserve(qsizetype(points.size()) + 8);
    for (const HistoryPoint& point : points) {
        if (!line.isEmpty()) {
            const HistoryPoint& before = *(&point - 1);
            if (point.first - before.last > patience)
                line.append({double(before.last) + 0.5, std::numeric_limits<double>::quiet_NaN()});
        }
        line.append({(double(point.first) + double(point.last)) / 2, point.mean});
    }
    graph.data()->set(line, true);
}

std::int32_t PlotWidget::lookOf(const TrendChannel& channel) const
{
    const auto found = m_looks.find(channel.number);
    return found == m_looks.end() ? channel.number : found->second;
}

const TrendLine* PlotWidget::lineOf(const TrendChannel& channel) const
{
    const auto found = m_lines.find(channel.number);
    return found == m_lines.end() ? nullptr : found->second.graph;
}

/// Of the channels that are shown no two look alike while there are looks; each keeps the one that it has.
void PlotWidget::updateLooks()
{
    const Trend& trend = m_content->trend;
    std::vector<std::int32_t> due;
    std::vector<std::int32_t> taken;
    for (const TrendChannel& channel : trend.channels()) {
        if (!trend.isShown(channel))
            continue;
        const auto found = m_looks.find(channel.number);
        const bool isFree =
            found != m_looks.end() && std::find(taken.begin(), taken.end(), found->second) == taken.end();
        if (isFree)
            taken.push_back(found->second);
        else
            due.push_back(channel.number);
    }
    std::int32_t next = 1;
    for (const std::int32_t number : due) {
        while (std::find(taken.begin(), taken.end(), next) != taken.end())
            ++next;
        m_looks[number] = next;
        taken.push_back(next);
    }
}

void PlotWidget::updateLines()
{
    const Trend& trend = m_content->trend;
    std::map<std::int32_t, Line> next;
    for (const TrendChannel& channel : trend.channels()) {
        QCPAxis* axis = axisOf(channel);
        if (!trend.isShown(channel) || !axis)
            continue;
        Line line = m_lines.contains(channel.number) ? m_lines.at(channel.number) : Line{};
        if (line.graph && line.axis != axis) {
            removeGraph(line.graph);
            line = {};
        }
        if (!line.graph)
            line = {new TrendLine(xAxis, axis), axis}; // the plot owns it
        line.graph->setPen(channelPen(lookOf(channel), back()));
        // A single record is a dot: no line would show it.
        line.graph->setScatterStyle(isSparse(channel) ? QCPScatterStyle(QCPScatterStyle::ssDisc, 4)
                                                      : QCPScatterStyle());
        fill(channel, *line.graph);
        next[channel.number] = line;
    }
    for (const auto& [number, line] : m_lines) {
        if (!next.contains(number))
            removeGraph(line.graph);
    }
    m_lines = std::move(next);
}

/// The time that is shown, and on each axis the values that are seen, limits included.
void PlotWidget::updateRanges()
{
    const Trend& trend = m_content->trend;
    setRange(*xAxis, double(trend.view().from()), double(trend.view().until()), area().width());
    const auto ticker = xAxis->ticker().staticCast<TimeTicker>();
    ticker->labelWidth = QFontMetrics(font()).horizontalAdvance(TimeTicks::widestLabel()) * 5 / 4;
    ticker->pixels = std::max(width() - 120, width() / 2); // what the axes beside it leave

    std::map<const QCPAxis*, std::pair<double, double>> seen;
    const auto include = [&](const QCPAxis* axis, double low, double high) {
        const auto [entry, isNew] = seen.try_emplace(axis, low, high);
        if (!isNew)
            entry->second = {std::min(entry->second.first, low), std::max(entry->second.second, high)};
    };
    for (const TrendChannel& channel : trend.channels()) {
        const QCPAxis* axis = axisOf(channel);
        if (!axis || !trend.isShown(channel))
            continue;
        const std::vector<HistoryPoint>& points = channel.cache.points();
        const auto first =
            std::lower_bound(points.begin(), points.end(), trend.view().from(),
                             [](const HistoryPoint& point, HistoryTime time) { return point.last < time; });
        for (auto point = first; point != points.end() && point->first < trend.view().until(); ++point)
            include(axis, point->minimum, point->maximum);
    }
    for (const GraphLimit* limit : {&m_content->upper, &m_content->lower}) {
        if (firstAxis() && limit->isThere())
            include(firstAxis(), limit->position, limit->position);
    }
    for (const QPointer<QCPAxis>& axis : m_axes) {
        const auto found = seen.find(axis);
        auto [low, high] = found == seen.end() ? std::pair(0.0, 1.0) : found->second;
        low = std::clamp(low, -1e200, 1e200);
        high = std::clamp(high, -1e200, 1e200);
        // A constant value lies in the middle.
        const double room = high > low ? (high - low) * 0.06 : std::max(std::fabs(high) * 0.05, 1e-3);
        setRange(*axis, low - room, high + room, area().height());
    }
}

} // namespace zan::zandata
