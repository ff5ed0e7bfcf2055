#include "surface/host/StyledControl.h"

#include "binding/MemberTable.h"

namespace zan::surface {

StyledControl::StyledControl(Colour back, Colour fore)
    : m_backColor(back)
    , m_foreColor(fore)
    , m_font(values::make<FontObject>())
{
    m_font->addListener(*this);
}

StyledControl::~StyledControl()
{
    m_font->removeListener(*this);
}

const binding::MemberTable& StyledControl::styledMembers()
{
    using binding::property;
    return binding::table([] {
        return binding::MemberTable(
            "Control", &baseMembers(),
            {
                property<&StyledControl::backColor, &StyledControl::setBackColor>("BackColor"),
                property<&StyledControl::foreColor, &StyledControl::setForeColor>("ForeColor"),
                property<&StyledControl::font, &StyledControl::setFont>("Font"),
            });
    });
}

void StyledControl::setBackColor(Colour colour)
{
    if (m_backColor == colour)
        return;
    m_backColor = colour;
    changed(Style);
}

void StyledControl::setForeColor(Colour colour)
{
    if (m_foreColor == colour)
        return;
    m_foreColor = colour;
    changed(Style);
}

void StyledControl::setFont(const Ref<FontObject>& font)
{
    if (!font)
        values::raise(values::ErrorNumber::ObjectNotSet);
    if (m_font == font)
        return;
    const Ref<FontObject> next = font; // the argument may be a font that only the old one kept
    m_font->removeListener(*this);
    m_font = next;
    m_font->addListener(*this);
    fontChanged(*m_font);
}

void StyledControl::fontChanged(FontObject&)
{
    changed(Style);
}

void StyledControl::copyDesign(const LiveControl& source)
{
    LiveControl::copyDesign(source);
    const auto& other = static_cast<const StyledControl&>(source);
    m_backColor = other.m_backColor;
    m_foreColor = other.m_foreColor;
    setFont(copyFont(*other.m_font));
    changed(Style);
}

} // namespace zan::surface
