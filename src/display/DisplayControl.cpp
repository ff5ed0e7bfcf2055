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

void DisplayControl::setFont(const Ref<FontObject>& font)
{
    static const Name fontName("Font");
    StyledControl::setFont(font);
    markChanged(fontName);
}

void DisplayControl::lookWritten(const binding::Written& write)
{
    if (write.isChanged)
        changed(Look);
    markChanged(write.member.name);
}

void DisplayControl::styleWritten(const binding::Written& write)
{
    if (write.isChanged)
        changed(Style);
    markChanged(write.member.name);
}

void DisplayControl::borderWritten(const binding::Written& write)
{
    if (write.isChanged)
        borderChanged();
    markChanged(write.member.name);
}

void DisplayControl::borderChanged()
{
    changed(Look);
    checkSize();
}

void DisplayControl::markChanged(Name name)
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
    for (const Member* member : members().stored()) {
        if (!isFont(*member)) {
            binding::readStored(*this, *member, bag);
            continue;
        }
        // The bag's font stays the bag's own.
        const Variant stored = bag ? bag->ReadProperty(member->name) : Variant();
        const auto* font = stored.isObject() ? dynamic_cast<const FontObject*>(stored.object()) : nullptr;
        setFont(font ? copyFont(*font) : defaultFont(ambientFont));
    }
    m_loading = false;
    if (!scaleSize().isEmpty())
        resized();
}

void DisplayControl::WriteProperties(binding::PropertyBag& bag, const Ref<FontObject>& ambientFont) const
{
    for (const Member* member : members().stored()) {
        if (isFont(*member)) {
            const Variant own(surface::copyFont(*font()));
            const bool isDefault = surface::fontsEqual(*font(), *defaultFont(ambientFont));
            bag.WriteProperty(member->name, own, isDefault ? own : Variant());
            continue;
        }
        // Reading a property may settle what time has changed, and nothing else.
        binding::writeStored(const_cast<DisplayControl&>(*this), *member, bag);
    }
}

/// The one design value whose default depends on where the control stands.
bool DisplayControl::isFont(const Member& member) noexcept
{
    return !member.hasField;
}

void DisplayControl::copyDesign(const LiveControl& source)
{
    m_loading = true;
    StyledControl::copyDesign(source);
    m_loading = false;
}

} // namespace zan::display
