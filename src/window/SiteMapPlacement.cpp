#include "window/SiteMapPlacement.h"

#include "document/Elements.h"
#include "document/LoadByName.h"
#include "document/XMLOps.h"
#include "surface/host/Surface.h"
#include "window/ControlTypes.h"
#include "wrappers/FontNode.h"
#include "wrappers/ValueText.h"

#include <array>
#include <vector>

namespace zan::window {

namespace element = document::element;
using document::Node;
using document::XMLOps::SetAttribute;

SiteMapPlacement::SiteMapPlacement(surface::Surface& surface, Chosen chosen)
    : m_chosen(std::move(chosen))
{
    if (const wrappers::ControlType* type = controlTypes().find(SiteMapType)) {
        if (const surface::ControlArray* array = surface.array(type->arrayName))
            m_control = Ref<display::SiteMapControl>(
                dynamic_cast<display::SiteMapControl*>(array->find(surface::ControlArray::TemplateIndex)));
    }
    if (m_control)
        m_control->setHost(this);
}

SiteMapPlacement::~SiteMapPlacement()
{
    if (m_control)
        m_control->setHost(nullptr);
}

void SiteMapPlacement::setVisible(bool visible)
{
    if (m_control)
        m_control->setVisible(visible);
}

void SiteMapPlacement::removeStale(const Node& window)
{
    std::vector<Node> placed = window.children(element::Control);
    for (auto node = placed.rbegin(); node != placed.rend(); ++node) {
        if (node->isChildText(element::Type, SiteMapType))
            window.removeChild(*node);
    }
}

void SiteMapPlacement::apply(const Node& record)
{
    if (!m_control)
        return;
    std::array special{document::SpecialChild{element::Font, {}}};
    document::loadByName(record, *m_control, special);
    if (special[0].node)
        wrappers::applyFontNode(special[0].node, *m_control->font());
    m_control->setVisible(true);
}

void SiteMapPlacement::store(const Node& container) const
{
    if (!m_control)
        return;
    const Node record = wrappers::findOrAppend(container, element::SiteMap);
    const auto write = [&record](values::Name name, float measure) {
        SetAttribute(record, name, wrappers::storedText(values::Variant(measure)));
    };
    write(element::Left, m_control->left());
    write(element::Top, m_control->top());
    write(element::Height, m_control->height());
    write(element::Width, m_control->width());
    wrappers::storeFontNode(wrappers::findOrAppend(record, element::Font), *m_control->font());
}

void SiteMapPlacement::loadScheme(const QString& site)
{
    const Chosen chosen = m_chosen; // the panel may go, and this with it
    chosen(site);
}

} // namespace zan::window
