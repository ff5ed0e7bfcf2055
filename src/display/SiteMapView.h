#pragma once

#include "display/SiteChart.h"

#include <QAbstractScrollArea>

#include <cstdint>

namespace zan::display {

/// The scrolling container of a site map. It paints what is to be seen of the chart and makes no widget for a site. One
/// site is the current one for the keyboard: arrows move it, Enter chooses it.
class SiteMapView : public QAbstractScrollArea
{
    Q_OBJECT
public:
    SiteMapView(values::Ref<SiteChart> chart, QWidget* parent);
    ~SiteMapView() override;

    const SiteChart& chart() const noexcept { return *m_chart; }
    /// Shows the chart as it is now; `selected` is where the keyboard begins.
    void follow(int selected);
    /// Whether a place in the widget belongs to a site, or the button that is down went down on one.
    bool keepsMouse(QPointF place) const;
    /// The uppermost site at a place in the viewport, or 0.
    int siteAt(QPointF inViewport) const;
    /// Where a site's label lies in the viewport.
    QRect labelRectangle(int site) const;
    /// The current site of the keyboard, 0 for none.
    int currentSite() const noexcept { return m_current; }
    void setCurrentSite(int site);
    /// Scrolls no farther than is needed to show the site.
    void reveal(int site);
    int selectedSite() const noexcept { return m_selected; }
    /// Does what a double click on a site does.
    void choose(int site) { Q_EMIT chosen(site); }

Q_SIGNALS:
    void chosen(int site);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    QPoint origin() const;
    void updateScrollBars();
    int neighbour(int key) const;

    values::Ref<SiteChart> m_chart;
    surface::TextPainter m_text;
    QRect m_extent;
    std::uint32_t m_shownRevision = 0;
    int m_selected = 0;
    int m_current = 0;
    bool m_holdsPress = false;
    bool m_marksCurrent = false; // the keyboard is in use
};

} // namespace zan::display
