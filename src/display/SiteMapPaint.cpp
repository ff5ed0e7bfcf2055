#include "display/SiteMapPaint.h"

#include "values/Colour.h"

#include <QPainter>
#include <QVarLengthArray>

#include <algorithm>

namespace zan::display::SiteMapPaint {

namespace {

/// Sites of one colour follow each other as a rule.
class Brushes
{
public:
    explicit Brushes(const QPalette& palette)
        : m_palette(palette)
    {}
    const QColor& of(Colour colour)
    {
        if (!m_known || colour.code != m_colour.code) {
            m_known = true;
            m_colour = colour;
            m_brush = values::toQColor(colour, m_palette);
        }
        return m_brush;
    }

private:
    const QPalette& m_palette;
    Colour m_colour;
    QColor m_brush;
    bool m_known = false;
};

/// The outline of a box, one pixel wide, a dash and a dot in turn. It is made of the same rectangles wherever the painting
/// is cut off: the toolkit's own dashes begin anew at the edge of what is painted, so that a scrolled map would show
/// seams.
class DashDotOutline
{
public:
    void paint(QPainter& painter, const QRect& box, const QRect& region, const QColor& colour)
    {
        m_pieces.clear();
        m_region = region;
        m_run = 0;
        const int right = box.width() - 1, bottom = box.height() - 1;
        edge(box.topLeft(), {1, 0}, right);
        edge(box.topRight(), {0, 1}, bottom);
        edge(box.bottomRight(), {-1, 0}, right);
        edge(box.bottomLeft(), {0, -1}, bottom);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour);
        painter.drawRects(m_pieces.data(), int(m_pieces.size()));
    }

private:
    static constexpr int Dash = 4, Gap = 2, Dot = 1; // pixels
    static constexpr int Period = Dash + Gap + Dot + Gap;

    void edge(QPoint from, QPoint step, int length)
    {
        for (int at = 0; at < length;) {
            const int phase = (m_run + at) % Period;
            const int end = phase < Dash               ? Dash
                            : phase < Dash + Gap       ? Dash + Gap
                            : phase < Dash + Gap + Dot ? Dash + Gap + Dot
                                                       : Period;
            const int piece = std::min(end - phase, length - at);
            const bool isDrawn = end == Dash || end == Dash + Gap + Dot;
            const QRect place =
                QRect(from + step * at, QSize(1, 1)) | QRect(from + step * (at + piece - 1), QSize(1, 1));
            if (isDrawn && place.intersects(m_region))
                m_pieces.push_back(place);
            at += piece;
        }
        m_run += length;
    }

    QVarLengthArray<QRect, 128> m_pieces;
    QRect m_region;
    int m_run = 0; // pixels of the edges before
};

/// A border lies inside the box as a whole; one of one pixel is dashed and dotted, a wider one solid.
void paintBorder(QPainter& painter, const QRect& box, const QRect& region, const QColor& colour, int width,
                 DashDotOutline& outline)
{
    const int border = std::min({width, box.width(), box.height()});
    if (border < 1)
        return;
    if (border == 1) {
        outline.paint(painter, box, region, colour);
        return;
    }
    painter.fillRect(QRect(box.left(), box.top(), box.width(), border), colour);
    painter.fillRect(QRect(box.left(), box.bottom() + 1 - border, box.width(), border), colour);
    painter.fillRect(QRect(box.left(), box.top(), border, box.height()), colour);
    painter.fillRect(QRect(box.right() + 1 - border, box.top(), border, box.height()), colour);
}

} // namespace

void paint(QPainter& painter, const QRect& region, const SiteChart& chart, const Colours& colours,
           surface::TextPainter& text)
{
    if (!chart.isShown())
        return;
    const QColor lineColour = values::toQColor(chart.lineLook().colour, colours.system);
    for (const QRect& line : chart.lines()) {
        if (line.intersects(region))
            painter.fillRect(line & region, lineColour); // far outside there is nothing to see
    }
    Brushes brushes(colours.system);
    const QColor borderColour = values::toQColor(values::WindowText, colours.system);
    DashDotOutline outline;
    surface::TextStyle style;
    style.colour = colours.text;
    for (int index = 1; index <= chart.count(); ++index) {
        const auto& [label, box] = chart.places()[std::size_t(index) - 1];
        const SiteChart::Site& site = chart.site(index);
        if (box.intersects(region)) {
            painter.fillRect(box & region, brushes.of(site.fill));
            paintBorder(painter, box, region, borderColour, site.borderWidth, outline);
        }
        if (label.intersects(region))
            text.draw(painter, label, site.shownCaption(), site.font->face(), style);
    }
}

} // namespace zan::display::SiteMapPaint
