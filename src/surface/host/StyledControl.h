#pragma once

#include "surface/host/LiveControl.h"
#include "surface/text/FontObject.h"

namespace zan::surface {

/// A live control with a background colour, a text colour and a font.
class StyledControl : public LiveControl, public FontListener
{
public:
    ~StyledControl() override;

    Colour backColor() const noexcept { return m_backColor; }
    Colour foreColor() const noexcept { return m_foreColor; }
    /// Never empty. The font may be shared; changing it changes every owner.
    const Ref<FontObject>& font() const
    {
        if (!m_font)
            makeFont();
        return m_font;
    }
    /// Shares the font with whoever else has it. Raises 91 for Nothing.
    void setFont(const Ref<FontObject>& font);

    void fontChanged(FontObject& font) override;
    void copyDesign(const LiveControl& source) override;

protected:
    StyledControl(Colour back, Colour fore);
    static const binding::MemberTable& styledMembers();

    Colour m_backColor;
    Colour m_foreColor;

private:
    void makeFont() const;

    mutable Ref<FontObject> m_font; ///< made when it is asked for: most controls are given another one first
};

} // namespace zan::surface
