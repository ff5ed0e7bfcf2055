#pragma once

#include "zandata/data/Trend.h"

#include <functional>
#include <memory>

class QImage;
class QPrinter;
class QWidget;

namespace zan::zandata {

/// Limit lines of a graph. One without a label that lies at 0 is not there.
struct GraphLimit
{
    double position = 0;
    QString label;
    bool isThere() const { return position != 0 || !label.isEmpty(); }
};

/// Everything that a graph shows, shared by the control and its widget.
struct GraphContent
{
    Trend trend;
    QString heading;
    GraphLimit upper;
    GraphLimit lower;
};

/// What a user asks of a graph beyond looking around in it.
enum class GraphCommand : std::uint8_t { SaveCsv, SavePicture, Print };

/// The widget of a graph, whatever draws it.
class GraphView
{
public:
    virtual ~GraphView() = default;
    virtual QWidget& widget() = 0;
    /// Heading, limits, channels, points or the stretch of time have changed.
    virtual void refresh() = 0;
    /// Reads all that the picture lacks and draws it now; for pictures and tests that do not wait.
    virtual void complete() = 0;
    virtual QImage picture(double scale) = 0;
    virtual void print(QPrinter& printer) = 0;
    /// The state of the graph in words, for who cannot see it.
    virtual QString summary() const = 0;
    /// What is read out at this place of the widget; empty for none.
    virtual QString readoutAt(QPointF place) = 0;
};

/// Makes the widget, a child of `parent`. Commands are told to `command`.
GraphView* makeGraphView(QWidget* parent, std::shared_ptr<GraphContent> content,
                         std::function<void(GraphCommand)> command);

/// The view that a widget made by makeGraphView is.
GraphView* graphViewOf(QWidget* widget);

} // namespace zan::zandata
