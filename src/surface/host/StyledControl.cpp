#include "surface/host/StyledControl.h"

#include "binding/MemberTable.h"

namespace zan::surface {

StyledControl::StyledControl(Colour back, Colour fore)
    : m_backColor(back)
    , m_foreColor(fore)
{}

StyledControl::~StyledControl()
{
    if (m_font)
        m_font->removeListener(*this);
}

const binding::MemberTable& StyledControl::styledMembers()
{
    using binding::field;
    using C = StyledControl;
    return binding::table([] {
        return binding::MemberTable("Control", &baseMembers(),
                                    {
                                        field<&C::m_backColor, &C::restyle>("BackColor", values::ButtonFace),
                                        field<&C::m_foreColor, &C::restyle>("ForeColor", values::ButtonText),
                                        binding::property<&C::font, &C::setFont>("Font"),
                                    });
    });
}

/// Nobody is told: it is the font that the control has had all along.
void StyledControl::makeFont() const
{
    m_font = values::make<FontObject>();
    m_font->addListener(const_cast<StyledControl&>(*this));
}

void StyledControl::setFont(const Ref<FontObject>& font)
{
    if (!font)
        values::raise(values::ErrorNumber::ObjectNotSet);
    if (m_font == font)
        return;
    const Ref<FontObject> next = font; // the argument may be a font that only the old one kept
    if (m_font)
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
    const Ref<FontObject>& font = static_cast<const StyledControl&>(source).m_font;
    setFont(font ? copyFont(*font) : values::make<FontObject>());
}

} // namespace zan::surface
