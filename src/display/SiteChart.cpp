#include "display/SiteChart.h"

#include "display/SiteElements.h"
#include "document/XMLOps.h"
#include "values/Twips.h"

#include <algorithm>

namespace zan::display {

using document::XMLOps::GetAttribute;

namespace {

constexpr float RootTop = 50.0F;                    // twips
constexpr float BoxMargin = 10.0F;                  // twips around the label of a site that has been selected
constexpr std::int64_t SelectedGrowth = 2 * 10'000; // of the font's size, in ten thousandths of a point
constexpr Colour SelectedFill = values::rgb(255, 255, 230);

QRect lineRectangle(const SiteLine& line, int width)
{
    const int x1 = values::twipsToPixels(double(std::min(line.x1, line.x2)));
    const int x2 = values::twipsToPixels(double(std::max(line.x1, line.x2)));
    const int y1 = values::twipsToPixels(double(std::min(line.y1, line.y2)));
    const int y2 = values::twipsToPixels(double(std::max(line.y1, line.y2)));
    const bool upright = line.x1 == line.x2 && line.y1 != line.y2;
    return upright ? QRect(x1 - width / 2, y1, width, y2 - y1) : QRect(x1, y1 - width / 2, x2 - x1, width);
}

} // namespace

QRect SiteBox::pixels() const noexcept
{
    return {values::twipsToPixels(double(left)), values::twipsToPixels(double(top)),
            values::twipsToPixels(double(width)), values::twipsToPixels(double(height))};
}

std::vector<document::Node> sitesBelow(const document::Node& site)
{
    return site.children(element::Site);
}

SiteChart::SiteChart()
    : m_sites(1)
{
    m_sites.front().font = values::make<FontObject>();
}

void SiteChart::changed() noexcept
{
    ++m_revision;
}

void SiteChart::shrink()
{
    m_sites.resize(1);
    Site& first = m_sites.front();
    first.firstChild = first.lastChild = 0;
    changed();
}

void SiteChart::begin(const Plan& plan)
{
    shrink();
    m_lines = plan.lines;
    m_font = surface::copyFont(plan.font);
    m_isShown = true;
}

int SiteChart::add(const Waiting& next, const Plan& plan)
{
    // A new element is like the template in all that is not set here: the width of the border.
    if (next.parent > 0) {
        Site fresh;
        fresh.borderWidth = m_sites.front().borderWidth;
        m_sites.push_back(std::move(fresh));
    }
    const int index = count();
    Site& site = m_sites.back();
    site.caption = GetAttribute(next.node, element::Name, QStringLiteral("Site"));
    site.description = GetAttribute(next.node, element::Description);
    site.scheme = GetAttribute(next.node, element::Scheme);
    site.font = m_font;
    site.fill = plan.siteColour;
    measure(site); // the place depends on the width
    place(site, next, plan);
    if (next.parent > 0)
        join(index, next.parent);
    return index;
}

/// Text of a label as wide as it is shown.
void SiteChart::measure(Site& site)
{
    const QSize size = m_text.measure(site.shownCaption(), site.font->face(), false);
    site.label.width = values::pixelsToTwips(size.width());
    site.label.height = values::pixelsToTwips(size.height());
}

/// Each step is a statement of its own: no operation may keep more than single precision for the next one.
void SiteChart::place(Site& site, const Waiting& next, const Plan& plan)
{
    const float halfColumn = plan.columnOffset / 2;
    const float centre = next.column + halfColumn;
    const float halfWidth = site.label.width / 2;
    site.label.left = centre - halfWidth;
    if (next.parent == 0) {
        site.label.top = RootTop;
        site.box = site.label;
        return;
    }
    const SiteBox& parent = m_sites[std::size_t(next.parent) - 1].label;
    if (next.position == 0) {
        // Below its parent.
        site.label.top = parent.top + plan.rowOffset;
        const float bottom = parent.top + parent.height;
        site.line = {centre, bottom, centre, site.label.top};
    } else {
        // In its parent's row, to the right.
        site.label.top = parent.top;
        const float right = parent.left + parent.width;
        const float halfHeight = parent.height / 2;
        const float middle = parent.top + halfHeight;
        site.line = {right, middle, site.label.left, middle};
    }
    site.box = site.label;
}

void SiteChart::join(int site, int parent)
{
    Site& own = m_sites[std::size_t(site) - 1];
    Site& above = m_sites[std::size_t(parent) - 1];
    own.parent = parent;
    own.previousSibling = above.lastChild;
    if (above.lastChild > 0)
        m_sites[std::size_t(above.lastChild) - 1].nextSibling = site;
    else
        above.firstChild = site;
    above.lastChild = site;
}

void SiteChart::setFonts(const FontObject& font)
{
    const Ref<FontObject> copy = surface::copyFont(font);
    for (Site& site : m_sites) {
        site.font = copy;
        measure(site);
    }
    changed();
}

void SiteChart::setFills(Colour colour)
{
    for (Site& site : m_sites)
        site.fill = colour;
    changed();
}

void SiteChart::dress(int index, const FontObject& font, bool selected, Colour siteColour)
{
    Site& site = m_sites[std::size_t(index) - 1];
    const Ref<FontObject> own = surface::copyFont(*site.font);
    values::Currency size = font.size();
    size.scaled += selected ? SelectedGrowth : 0;
    own->setSize(size);
    site.font = own;
    measure(site);
    site.fill = selected ? SelectedFill : siteColour;
    site.borderWidth = selected ? 2 : 1;
    site.box.left = site.label.left - BoxMargin;
    site.box.top = site.label.top - BoxMargin;
    site.box.width = site.label.width + 2 * BoxMargin;
    site.box.height = site.label.height + 2 * BoxMargin;
    changed();
}

const std::vector<SiteChart::Place>& SiteChart::places() const
{
    if (m_placesOf == m_revision)
        return m_places;
    m_places.clear();
    m_places.reserve(m_sites.size());
    for (const Site& site : m_sites) {
        const QRect label = site.label.pixels();
        m_places.push_back({label, site.box == site.label ? label : site.box.pixels()});
    }
    m_placesOf = m_revision;
    return m_places;
}

const std::vector<QRect>& SiteChart::lines() const
{
    if (m_linesOf == m_revision)
        return m_linePixels;
    m_linePixels.clear();
    // The lines to all later children of a site begin at one point and run one way: the longest covers the others.
    for (const Site& parent : m_sites) {
        if (parent.firstChild == 0)
            continue;
        const Site& first = site(parent.firstChild);
        m_linePixels.push_back(lineRectangle(first.line, m_lines.width));
        QRect level;
        for (int child = first.nextSibling; child > 0; child = site(child).nextSibling)
            level |= lineRectangle(site(child).line, m_lines.width);
        if (!level.isEmpty())
            m_linePixels.push_back(level);
    }
    m_linesOf = m_revision;
    return m_linePixels;
}

QRect SiteChart::extent() const
{
    QRect all;
    if (!m_isShown)
        return all;
    for (const Place& place : places())
        all |= place.label | place.box;
    for (const QRect& line : lines())
        all |= line;
    return all;
}

int SiteChart::siteAt(QPoint place) const
{
    for (int index = shownCount(); index > 0; --index) {
        const Place& known = places()[std::size_t(index) - 1];
        if (known.label.contains(place) || known.box.contains(place))
            return index;
    }
    return 0;
}

} // namespace zan::display
