#include "display/DisplayControl.h"

#include "binding/MemberTable.h"
#include "surface/host/Frames.h"

#include <QPainter>

#include <algorithm>

namespace zan::display {

using binding::Member;
using values::Name;

DisplayControl::DisplayControl(Colour back, Colour fore)
    : StyledControl(back, fore)
{}

DisplayControl::~DisplayControl() = default;

void DisplayControl::setBackStyle(std::int16_t style)
{
    m_backStyle = style;
    changed(Look);
}

void DisplayControl::setBorderStyle(std::int16_t style)
{
    m_borderStyle = style;
    changed(Look);
    checkSize();
}

void DisplayControl::markChanged(const char* name)
{
    if (m_host && !m_loading)
        m_host->propertyChanged(name);
}

QSize DisplayControl::scaleSize() const noexcept
{
    const int border = 2 * surface::Frames::borderWidth(m_borderStyle == 1, false);
    const QSize size = bounds().size();
    return {std::max(0, size.width() - border), std::max(0, size.height() - border)};
}

QRect DisplayControl::paintFrame(surface::PaintContext& context, const QRect& rectangle, bool background) const
{
    if (background && m_backStyle != 0)
        context.painter.fillRect(rectangle, values::toQColor(backColor(), context.palette));
    return surface::Frames::drawBorder(context.painter, rectangle, context.palette, m_borderStyle == 1, false);
}

void DisplayControl::boundsChanged()
{
    checkSize();
}

void DisplayControl::checkSize()
{
    const QSize size = scaleSize();
    if (size == m_drawnSize)
        return;
    m_drawnSize = size;
    resized();
}

// Property bag -------------------------------------------------------------------------------------------------

void DisplayControl::InitProperties(const Ref<FontObject>& ambientFont)
{
    load(nullptr, ambientFont);
}

void DisplayControl::ReadProperties(const binding::PropertyBag& bag, const Ref<FontObject>& ambientFont)
{
    load(&bag, ambientFont);
}

void DisplayControl::load(const binding::PropertyBag* bag, const Ref<FontObject>& ambientFont)
{
    m_loading = true;
    for (const Setting& setting : settings()) {
        const Name name(setting.name);
        const Variant stored = bag ? bag->ReadProperty(name, setting.fallback) : setting.fallback;
        if (setting.fallback.isEmpty()) {
            // The bag's font stays the bag's own.
            const auto* font = stored.isObject() ? dynamic_cast<const FontObject*>(stored.object()) : nullptr;
            setFont(font ? copyFont(*font) : defaultFont(ambientFont));
            continue;
        }
        const Member::Setter setter = members().find(name)->put;
        try {
            setter(*this, {}, stored);
        } catch (const values::RuntimeError&) {
            setter(*this, {}, setting.fallback); // whoever wrote the bag, it is no value of this property
        }
    }
    m_loading = false;
    if (!scaleSize().isEmpty())
        resized();
}

void DisplayControl::WriteProperties(binding::PropertyBag& bag, const Ref<FontObject>& ambientFont) const
{
    for (const Setting& setting : settings()) {
        const Name name(setting.name);
        if (setting.fallback.isEmpty()) {
            const Variant own(surface::copyFont(*font()));
            const bool isDefault = surface::fontsEqual(*font(), *defaultFont(ambientFont));
            bag.WriteProperty(name, own, isDefault ? own : Variant());
            continue;
        }
        // Reading a property may settle what time has changed, and nothing else.
        auto& self = const_cast<DisplayControl&>(*this);
        bag.WriteProperty(name, members().find(name)->get(self, {}), setting.fallback);
    }
}

void DisplayControl::copyDesign(const LiveControl& source)
{
    const auto& other = static_cast<const DisplayControl&>(source);
    m_loading = true;
    m_backStyle = other.m_backStyle;
    m_borderStyle = other.m_borderStyle; // before the measures: the inner size depends on it
    StyledControl::copyDesign(source);
    m_loading = false;
}

} // namespace zan::display
