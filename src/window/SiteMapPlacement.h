#pragma once

#include "surface/text/FontObject.h"

#include <cstdint>

namespace zan::window {

/// Where a panel's site map lies and in which font: what a document keeps of it, also while no map is shown. The
/// loader sets it by element names. Measures are twips.
class SiteMapPlacement : public binding::Object
{
public:
    float Left() const noexcept { return m_left; }
    void setLeft(float left) noexcept { m_left = left; }
    float Top() const noexcept { return m_top; }
    void setTop(float top) noexcept { m_top = top; }
    float Width() const noexcept { return m_width; }
    void setWidth(float width) noexcept { m_width = width; }
    float Height() const noexcept { return m_height; }
    void setHeight(float height) noexcept { m_height = height; }
    const values::Ref<surface::FontObject>& Font() const noexcept { return m_font; }

    const binding::MemberTable& members() const override;

private:
    float m_left = 360;
    float m_top = -120;
    float m_width = 1695;
    float m_height = 3495;
    values::Ref<surface::FontObject> m_font = values::make<surface::FontObject>();
};

} // namespace zan::window
