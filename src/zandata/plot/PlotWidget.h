#pragma once

#include "zandata/data/TimeTicks.h"
#include "zandata/plot/PlotLayers.h"
#include "zandata/plot/SeenPicture.h"
#include "zandata/plot/TrendLine.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include <map>

class QToolButton;

namespace zan::zandata {

/// A graph drawn by the plotting widget. It holds the points of its pictures alone, never the records: the trend reads
/// them, a little at a turn of the event loop, and every burst of moves ends in one picture.
class PlotWidget final : public QCustomPlot, public GraphView
{
public:
    PlotWidget(QWidget* parent, std::shared_ptr<GraphContent> content, std::function<void(GraphCommand)> command);

    QWidget& widget() override { return *this; }
    void refresh() override;
    void complete() override;
    QImage picture(double scale) override;
    void print(QPrinter& printer) override;
    QString summary() const override;
    QString readoutAt(QPointF place) override;

    // For the layers.
    const GraphContent& content() const { return *m_content; }
    QRect area() const { return axisRect()->rect(); }
    double pixelOf(HistoryTime time) const { return xAxis->coordToPixel(double(time)); }
    /// Null for a channel that has no axis.
    QCPAxis* axisOf(const TrendChannel& channel) const;
    /// The axis of the limit lines; null while there is no channel.
    QCPAxis* firstAxis() const;
    QColor back() const { return palette().color(QPalette::Base); }
    QColor fore() const { return palette().color(QPalette::Text); }
    /// Null for a channel that is not drawn.
    const TrendLine* lineOf(const TrendChannel& channel) const;
    /// Number of the colour and dashes of a channel.
    std::int32_t lookOf(const TrendChannel& channel) const;
    const std::optional<HistoryTime>& cursor() const { return m_cursor; }
    /// Time and values of the channels that are shown, a line each.
    QString readout(HistoryTime moment) const;

    /// Pixels of height below which the tools are shown only while the graph is used.
    static constexpr int RoomForTools = 150;
    /// Title and legend are drawn by themselves when nothing but their words changes.
    static inline const QString WordsLayer = QStringLiteral("legend");

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    struct Line
    {
        TrendLine* graph = nullptr;
        QCPAxis* axis = nullptr;
    };
    void makeTools();
    QToolButton* addTool(const QString& text, const QString& help, const std::function<void()>& action);
    void restyle();
    void layOut();
    void turn();
    void redraw();
    void updateAxes();
    void updateLooks();
    void updateLines();
    void fill(const TrendChannel& channel, QCPGraph& graph) const;
    void updateRanges();
    /// True when other words are to be seen.
    bool updateWords();
    bool updateLegend();
    static void setRange(QCPAxis& axis, double lower, double upper, int pixels);
    /// Points so far apart that each is a dot of its own.
    static bool isSparse(const TrendChannel& channel) { return channel.cache.points().size() < 60; }
    void addSeen(const TrendChannel& channel, const QCPAxis& axis, SeenPicture& seen) const;
    SeenPicture seen() const;
    void present(bool haveWordsChanged);
    bool isLegendOf(const std::vector<QCPGraph*>& named) const;
    QString title() const;
    QString legendText(const TrendChannel& channel) const;
    void setCursorTo(std::optional<HistoryTime> moment);
    void look(const std::function<void(TimeView&)>& change);
    int channelOfLegend(QPointF place) const;
    void toggle(std::int32_t channel);
    bool answerKey(int key, bool shift);

    std::shared_ptr<GraphContent> m_content;
    std::function<void(GraphCommand)> m_command;
    QTimer m_turn;
    QPointer<QWidget> m_tools;
    QToolButton* m_live = nullptr;
    QCPTextElement* m_title = nullptr;
    std::vector<QString> m_units; // of the axes, in order
    std::vector<QPointer<QCPAxis>> m_axes;
    std::map<std::int32_t, Line> m_lines;         // by number of the channel
    std::map<std::int32_t, std::int32_t> m_looks; // by number of the channel, from 1
    SeenPicture m_seen;                           // as it was drawn
    bool m_isStale = true;                        // something else has changed: colours, fonts, places
    int m_legendColumns = 0;
    std::optional<HistoryTime> m_cursor;
    std::optional<double> m_dragFrom; // pixels across, while the left button is held
    bool m_isDragged = false;
};

} // namespace zan::zandata
