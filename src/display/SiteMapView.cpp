#include "display/SiteMapView.h"

#include "display/SiteMapAccessible.h"
#include "display/SiteMapPaint.h"
#include "surface/text/ToolTipText.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

namespace zan::display {

namespace {

constexpr int LineStep = 20;  // pixels that a key or a notch of three scrolls by
constexpr int Margin = 8;     // pixels right of and below the sites
constexpr int MarkMargin = 4; // pixels around the current site
constexpr int MarkWidth = 2;
constexpr qsizetype LongestTip = 2'000;

} // namespace

SiteMapView::SiteMapView(values::Ref<SiteChart> chart, QWidget* parent)
    : QAbstractScrollArea(parent)
    , m_chart(std::move(chart))
{
    SiteMapAccessible::install();
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    horizontalScrollBar()->setSingleStep(LineStep);
    verticalScrollBar()->setSingleStep(LineStep);
}

SiteMapView::~SiteMapView()
{
    SiteMapAccessible::forget(*this);
}

void SiteMapView::follow(int selected)
{
    m_selected = selected;
    if (m_shownRevision != m_chart->revision()) {
        m_shownRevision = m_chart->revision();
        m_extent = m_chart->extent();
        if (m_current > m_chart->shownCount())
            m_current = 0;
        updateScrollBars();
        SiteMapAccessible::tellSites(*this);
    }
    viewport()->update();
}

// Scrolling ----------------------------------------------------------------------------------------------------

QPoint SiteMapView::origin() const
{
    return {horizontalScrollBar()->value(), verticalScrollBar()->value()};
}

/// The range covers all children, those left of and above the beginning too.
void SiteMapView::updateScrollBars()
{
    const QSize room = viewport()->size();
    const auto fit = [](QScrollBar& bar, int first, int last, int page) {
        bar.setRange(std::min(0, first), std::max(0, last - page));
        bar.setPageStep(page);
    };
    const int right = m_extent.isEmpty() ? 0 : m_extent.right() + 1 + Margin;
    const int bottom = m_extent.isEmpty() ? 0 : m_extent.bottom() + 1 + Margin;
    fit(*horizontalScrollBar(), m_extent.left(), right, room.width());
    fit(*verticalScrollBar(), m_extent.top(), bottom, room.height());
}

void SiteMapView::resizeEvent(QResizeEvent* event)
{
    QAbstractScrollArea::resizeEvent(event);
    updateScrollBars();
}

void SiteMapView::scrollContentsBy(int dx, int dy)
{
    viewport()->scroll(dx, dy);
}

// Painting -----------------------------------------------------------------------------------------------------

void SiteMapView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    painter.fillRect(event->rect(), palette().color(QPalette::Window));
    painter.translate(-origin());
    // System colours are the host's; this widget's own palette holds the colours of the map.
    const SiteMapPaint::Colours colours{parentWidget() ? parentWidget()->palette() : palette(),
                                        palette().color(QPalette::Active, QPalette::WindowText)};
    SiteMapPaint::paint(painter, event->rect().translated(origin()), *m_chart, colours, m_text);
    if (hasFocus() && m_marksCurrent && m_chart->isShown() && m_chart->contains(m_current)) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), MarkWidth));
        painter.setBrush(Qt::NoBrush);
        const QRect box = m_chart->site(m_current).box.pixels();
        painter.drawRect(box.adjusted(-MarkMargin, -MarkMargin, MarkMargin, MarkMargin));
    }
}

// Mouse --------------------------------------------------------------------------------------------------------

int SiteMapView::siteAt(QPointF inViewport) const
{
    return m_chart->siteAt(inViewport.toPoint() + origin());
}

QRect SiteMapView::labelRectangle(int site) const
{
    return m_chart->site(site).label.pixels().translated(-origin());
}

bool SiteMapView::keepsMouse(QPointF place) const
{
    return m_holdsPress || siteAt(place - viewport()->pos()) > 0;
}

bool SiteMapView::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const int site = siteAt(help.pos());
    const QString description = site > 0 ? m_chart->site(site).description.left(LongestTip) : QString();
    if (description.isEmpty())
        return QAbstractScrollArea::viewportEvent(event);
    QToolTip::showText(help.globalPos(), surface::plainToolTip(description), viewport(), labelRectangle(site));
    return true;
}

void SiteMapView::mousePressEvent(QMouseEvent* event)
{
    const int site = siteAt(event->position());
    m_holdsPress = site > 0;
    m_marksCurrent = false; // the mark is for who works with the keyboard
    viewport()->update();
    if (site > 0)
        setCurrentSite(site);
    event->accept();
}

void SiteMapView::mouseReleaseEvent(QMouseEvent* event)
{
    m_holdsPress = event->buttons() != Qt::NoButton && m_holdsPress;
    event->accept();
}

void SiteMapView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const int site = siteAt(event->position());
    m_holdsPress = site > 0;
    event->accept();
    if (site > 0 && event->button() == Qt::LeftButton)
        Q_EMIT chosen(site); // and nothing after it: this view may be on its way out
}

void SiteMapView::mouseMoveEvent(QMouseEvent* event)
{
    viewport()->setCursor(siteAt(event->position()) > 0 ? Qt::PointingHandCursor : Qt::ArrowCursor);
    event->accept();
}

// Keyboard -----------------------------------------------------------------------------------------------------

void SiteMapView::setCurrentSite(int site)
{
    if (site == m_current || !m_chart->contains(site))
        return;
    m_current = site;
    viewport()->update();
    SiteMapAccessible::tellFocus(*this);
}

void SiteMapView::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    if (m_current == 0 && m_chart->isShown())
        m_current = m_chart->contains(m_selected) ? m_selected : 1;
    if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason)
        m_marksCurrent = true;
    viewport()->update();
    SiteMapAccessible::tellFocus(*this);
}

void SiteMapView::focusOutEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

/// A row is a site with its later children to the right, and theirs. Left and right walk the row, down leads to the
/// first child, which begins a row below, up to where the row hangs.
int SiteMapView::neighbour(int key) const
{
    const SiteChart& chart = *m_chart;
    const auto isLater = [&](int site) { return chart.site(site).previousSibling > 0; };
    const auto secondChild = [&](int site) {
        const int first = chart.site(site).firstChild;
        return first > 0 ? chart.site(first).nextSibling : 0;
    };
    const auto lastLater = [&](int site) { return secondChild(site) > 0 ? chart.site(site).lastChild : 0; };
    int site = m_current;
    switch (key) {
    case Qt::Key_Home:
        return 1;
    case Qt::Key_End:
        return chart.count();
    case Qt::Key_Down:
        return chart.site(site).firstChild;
    case Qt::Key_Up:
        while (isLater(site))
            site = chart.site(site).parent;
        return chart.site(site).parent;
    case Qt::Key_Right:
        if (const int below = secondChild(site))
            return below;
        while (isLater(site) && chart.site(site).nextSibling == 0)
            site = chart.site(site).parent;
        return isLater(site) ? chart.site(site).nextSibling : 0;
    case Qt::Key_Left:
        if (!isLater(site))
            return 0;
        if (const int before = chart.site(site).previousSibling; isLater(before))
            site = before;
        else
            return chart.site(site).parent;
        while (const int last = lastLater(site))
            site = last;
        return site;
    default:
        return -1;
    }
}

void SiteMapView::keyPressEvent(QKeyEvent* event)
{
    if (!m_chart->isShown() || !m_chart->contains(m_current)) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->accept();
        Q_EMIT chosen(m_current); // and nothing after it
        return;
    }
    const int site = event->modifiers() & (Qt::ControlModifier | Qt::AltModifier) ? -1 : neighbour(event->key());
    if (site < 0) {
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    event->accept();
    m_marksCurrent = true;
    viewport()->update();
    if (site == 0)
        return;
    setCurrentSite(site);
    reveal(site);
}

void SiteMapView::reveal(int site)
{
    const QRect place = m_chart->site(site).box.pixels().adjusted(-Margin, -Margin, Margin, Margin);
    const auto bringIn = [](QScrollBar& bar, int first, int last, int page) {
        if (first < bar.value() || last - first > page)
            bar.setValue(first);
        else if (last > bar.value() + page)
            bar.setValue(last - page);
    };
    bringIn(*horizontalScrollBar(), place.left(), place.right() + 1, viewport()->width());
    bringIn(*verticalScrollBar(), place.top(), place.bottom() + 1, viewport()->height());
}

} // namespace zan::display
