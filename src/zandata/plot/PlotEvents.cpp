// What a user does with a graph: mouse, wheel, keys; and the ways it is drawn elsewhere than on the screen.

#include "zandata/plot/GraphColours.h"
#include "zandata/plot/PlotWidget.h"

#include <QPrinter>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace zan::zandata {

namespace {

constexpr double WheelFactor = 0.8; // of the time shown, for a click of the wheel
constexpr double PanShare = 0.2;    // of the time shown, for an arrow key
constexpr int WheelClick = 120;     // eighths of a degree

} // namespace

void PlotWidget::look(const std::function<void(TimeView&)>& change)
{
    change(m_content->trend.view());
    refresh();
}

// Mouse --------------------------------------------------------------------------------------------------------

int PlotWidget::channelOfLegend(QPointF place) const
{
    for (const auto& [number, line] : m_lines) {
        const QCPPlottableLegendItem* item = legend->itemWithPlottable(line.graph);
        if (item && legend->realVisibility() && item->outerRect().contains(place.toPoint()))
            return number;
    }
    return 0;
}

void PlotWidget::toggle(std::int32_t channel)
{
    GraphFilter& filter = m_content->trend.filter();
    filter.setEnabled(channel, !filter.isShown(channel));
    refresh();
}

void PlotWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    setFocus(Qt::MouseFocusReason);
    m_isDragged = false;
    if (area().contains(event->position().toPoint()) && channelOfLegend(event->position()) == 0)
        m_dragFrom = event->position().x();
}

void PlotWidget::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF place = event->position();
    if (m_dragFrom && (event->buttons() & Qt::LeftButton)) {
        const double moved = place.x() - *m_dragFrom;
        if (!m_isDragged && std::fabs(moved) < 3)
            return;
        m_isDragged = true;
        m_dragFrom = place.x();
        const double perPixel = double(m_content->trend.view().span()) / std::max(area().width(), 1);
        look([&](TimeView& view) { view.pan(-moved * perPixel); });
        setCursorTo(std::nullopt);
        return;
    }
    m_dragFrom.reset();
    if (area().contains(place.toPoint()))
        setCursorTo(HistoryTime(xAxis->pixelToCoord(place.x())));
    else
        setCursorTo(std::nullopt);
    const bool isOnLegend = channelOfLegend(place) != 0;
    QWidget::setCursor(isOnLegend ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void PlotWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    m_dragFrom.reset();
    if (m_isDragged)
        return;
    if (const int channel = channelOfLegend(event->position()))
        toggle(channel);
}

void PlotWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || channelOfLegend(event->position()) != 0) {
        event->ignore();
        return;
    }
    m_dragFrom.reset();
    look([](TimeView& view) { view.goLive(); });
}

void PlotWidget::wheelEvent(QWheelEvent* event)
{
    const double clicks = double(event->angleDelta().y()) / WheelClick;
    if (clicks == 0) {
        event->ignore();
        return;
    }
    const double about = xAxis->pixelToCoord(event->position().x());
    look([&](TimeView& view) { view.zoom(std::pow(WheelFactor, clicks), about); });
    event->accept();
}

void PlotWidget::enterEvent(QEnterEvent*)
{
    refresh();
}

void PlotWidget::leaveEvent(QEvent*)
{
    setCursorTo(std::nullopt);
    refresh();
}

// Keys ---------------------------------------------------------------------------------------------------------

bool PlotWidget::answerKey(int key, bool shift)
{
    TimeView& view = m_content->trend.view();
    const double middle = double(view.from()) + double(view.span()) / 2;
    const double step = double(view.span()) * PanShare;
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right: {
        const int sign = key == Qt::Key_Left ? -1 : 1;
        if (shift) { // moves the readout by a hundredth of the picture
            const double at = m_cursor ? double(*m_cursor) : middle;
            const double next = at + sign * double(view.span()) / 100;
            setCursorTo(HistoryTime(std::clamp(next, double(view.from()), double(view.until() - 1))));
            setAccessibleDescription(readout(*m_cursor));
            return true;
        }
        view.pan(sign * step);
        break;
    }
    case Qt::Key_Plus:
    case Qt::Key_Equal:
    case Qt::Key_Up:
        view.zoom(WheelFactor, middle);
        break;
    case Qt::Key_Minus:
    case Qt::Key_Down:
        view.zoom(1 / WheelFactor, middle);
        break;
    case Qt::Key_Home: {
        const site::HistorySpan all = m_content->trend.span();
        if (!all.isEmpty)
            view.show(all.first, all.last + 1);
        break;
    }
    case Qt::Key_End:
        view.goLive();
        break;
    case Qt::Key_Space:
        if (view.isLive())
            view.hold();
        else
            view.goLive();
        break;
    case Qt::Key_L:
        view.followRecords();
        break;
    default:
        if (const auto range = std::find_if(FollowedRanges.begin(), FollowedRanges.end(),
                                            [key](const FollowedRange& one) { return key == one.key; });
            range != FollowedRanges.end()) {
            view.followSpan(range->span);
            break;
        }
        if (key < Qt::Key_1 || key > Qt::Key_9)
            return false;
        if (std::size_t(key - Qt::Key_1) < m_content->trend.channels().size())
            toggle(key - Qt::Key_1 + 1);
    }
    refresh();
    return true;
}

void PlotWidget::keyPressEvent(QKeyEvent* event)
{
    const Qt::KeyboardModifiers held = event->modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    if (held != Qt::NoModifier || !answerKey(event->key(), event->modifiers() & Qt::ShiftModifier))
        QWidget::keyPressEvent(event);
}

// Looks --------------------------------------------------------------------------------------------------------

bool PlotWidget::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest)
        layOut();
    return QCustomPlot::event(event);
}

void PlotWidget::changeEvent(QEvent* event)
{
    QCustomPlot::changeEvent(event);
    if (!m_title || (event->type() != QEvent::FontChange && event->type() != QEvent::PaletteChange))
        return;
    restyle();
    refresh();
}

void PlotWidget::resizeEvent(QResizeEvent* event)
{
    QCustomPlot::resizeEvent(event);
    layOut();
    refresh();
}

/// A panel drawn at a zoom is drawn in its pixels, not in those of the picture at 100 %.
void PlotWidget::paintEvent(QPaintEvent* event)
{
    double ratio = devicePixelRatioF();
    {
        QPainter probe(this);
        const QTransform& transform = probe.deviceTransform();
        ratio = std::clamp(std::hypot(transform.m11(), transform.m12()), 0.25, 8.0);
    }
    if (std::fabs(ratio - bufferDevicePixelRatio()) > 0.01) {
        setBufferDevicePixelRatio(ratio);
        replot(QCustomPlot::rpQueuedRefresh);
    }
    QCustomPlot::paintEvent(event);
    if (hasFocus()) {
        QPainter painter(this);
        painter.setPen(QPen(mixed(back(), fore(), 0.6), 1, Qt::DotLine));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

QImage PlotWidget::picture(double scale)
{
    complete();
    const bool hasTools = m_tools->isVisible();
    m_tools->hide();
    const QImage image = toPixmap(width(), height(), scale).toImage();
    m_tools->setVisible(hasTools);
    return image;
}

void PlotWidget::print(QPrinter& printer)
{
    complete();
    const QRect page = printer.pageRect(QPrinter::DevicePixel).toRect();
    QCPPainter painter;
    if (!painter.begin(&printer))
        return;
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNoCaching);
    const double scale =
        std::min(double(page.width()) / std::max(width(), 1), double(page.height()) / std::max(height(), 1));
    painter.scale(scale, scale);
    toPainter(&painter, width(), height());
    painter.end();
}

} // namespace zan::zandata
