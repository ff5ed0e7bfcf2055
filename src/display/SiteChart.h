#pragma once

#include "document/Node.h"
#include "surface/text/FontObject.h"
#include "surface/text/TextPainter.h"
#include "values/Colour.h"

#include <QRect>
#include <QString>

#include <cstdint>
#include <vector>

namespace zan::display {

using surface::FontObject;
using values::Colour;
using values::Ref;

/// A rectangle in twips.
struct SiteBox
{
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;

    /// The nearest pixels.
    QRect pixels() const noexcept;
    friend bool operator==(const SiteBox&, const SiteBox&) = default;
};

/// A line in twips; either level or upright.
struct SiteLine
{
    float x1 = 0;
    float y1 = 0;
    float x2 = 0;
    float y2 = 0;
    friend bool operator==(const SiteLine&, const SiteLine&) = default;
};

/// How the lines of a map look.
struct LineLook
{
    Colour colour = values::rgb(255, 0, 0);
    std::int16_t width = 5; ///< pixels
};

/// The sites of a map as they are shown: labels in boxes, joined by lines, each at its place in twips. Sites are numbered
/// from 1 as a walk meets them that takes every site before those below it. Site 1 always exists, if only as the
/// hidden template that the others are made from: with it they share what no load sets.
///
/// All arithmetic is in single precision, every operation rounded.
class SiteChart : public values::Shared
{
public:
    /// Characters: a hostile name must not cost a line of a million glyphs at every painting.
    static constexpr qsizetype LongestName = 1'000;

    struct Site
    {
        QString caption;
        QString description;
        QString scheme;
        Ref<FontObject> font; ///< shared by sites whose fonts are equal; never changed, only replaced
        SiteBox label;
        SiteBox box;
        Colour fill;
        std::int16_t borderWidth = 1; ///< pixels
        SiteLine line;                ///< from the parent; site 1 has none
        int parent = 0;               ///< 0 for the root
        int firstChild = 0;
        int lastChild = 0;
        int nextSibling = 0;
        int previousSibling = 0;

        /// As much of the caption as is measured and drawn.
        QString shownCaption() const { return caption.size() > LongestName ? caption.left(LongestName) : caption; }
    };
    /// What a load needs of the map's properties.
    struct Plan
    {
        float columnOffset;
        float rowOffset;
        const FontObject& font;
        Colour siteColour;
        LineLook lines;
    };

    SiteChart();

    /// Number of sites, site 1 included also while it is hidden.
    int count() const noexcept { return int(m_sites.size()); }
    /// False until something was laid out.
    bool isShown() const noexcept { return m_isShown; }
    /// How many sites are to be seen.
    int shownCount() const noexcept { return m_isShown ? count() : 0; }
    bool contains(int site) const noexcept { return site >= 1 && site <= count(); }
    /// A site that exists.
    const Site& site(int index) const { return m_sites[std::size_t(index) - 1]; }

    /// Takes away all sites but the first.
    void shrink();
    /// Lays out the tree of a map's sites anew. `seen` hears of every node in order.
    template <class Seen>
    void layOut(const document::Node& root, const Plan& plan, Seen seen);

    /// Gives every label a font with these values.
    void setFonts(const FontObject& font);
    void setFills(Colour colour);
    /// Dresses one site as selected or as others are, and puts its box around its label.
    void dress(int site, const FontObject& font, bool selected, Colour siteColour);

    /// The look that the shown lines have been made with.
    const LineLook& lineLook() const noexcept { return m_lines; }
    /// Where a site lies, in pixels.
    struct Place
    {
        QRect label;
        QRect box;
    };
    /// The places of all sites in their order. Reckoned once for each change: a wheel step looks at all of them.
    const std::vector<Place>& places() const;
    /// The lines in pixels, those that lie on each other in one.
    const std::vector<QRect>& lines() const;
    /// What all that is shown covers, in pixels.
    QRect extent() const;
    /// The uppermost site whose label or box is at this place in pixels, or 0.
    int siteAt(QPoint place) const;
    /// Counts the changes of what is shown.
    std::uint32_t revision() const noexcept { return m_revision; }

private:
    struct Waiting
    {
        document::Node node;
        int parent;
        int position; ///< among its parent's children, from 0
        float column;
    };
    void begin(const Plan& plan);
    int add(const Waiting& next, const Plan& plan);
    void place(Site& site, const Waiting& next, const Plan& plan);
    void join(int site, int parent);
    void measure(Site& site);
    void changed() noexcept;

    std::vector<Site> m_sites;
    LineLook m_lines;
    Ref<FontObject> m_font; // of the running layout
    surface::TextPainter m_text;
    bool m_isShown = false;
    std::uint32_t m_revision = 1;
    mutable std::vector<QRect> m_linePixels;
    mutable std::vector<Place> m_places;
    mutable std::uint32_t m_linesOf = 0; // the revision that they belong to
    mutable std::uint32_t m_placesOf = 0;
};

std::vector<document::Node> sitesBelow(const document::Node& site);

template <class Seen>
void SiteChart::layOut(const document::Node& root, const Plan& plan, Seen seen)
{
    constexpr float FirstColumn = 150.0F;
    begin(plan);
    std::vector<Waiting> waiting{{root, 0, 0, FirstColumn}};
    while (!waiting.empty()) {
        const Waiting next = std::move(waiting.back());
        waiting.pop_back();
        seen(next.node);
        const int index = add(next, plan);
        const std::vector<document::Node> below = sitesBelow(next.node);
        for (std::size_t i = below.size(); i-- > 0;) {
            const float shift = float(i) * plan.columnOffset;
            waiting.push_back({below[i], index, int(i), next.column + shift});
        }
    }
    m_font = nullptr;
    changed();
}

} // namespace zan::display
