#pragma once

#include "binding/Marshal.h"
#include "surface/host/StyledControl.h"

namespace zan::surface {

/// A picture on the surface, at its own size in the top left corner.
class PictureBox : public StyledControl
{
public:
    PictureBox();
    ~PictureBox() override;
    Hosting hosting() const noexcept override { return Hosting::Painted; }
    const binding::MemberTable& members() const override;

    void paint(PaintContext& context, const QRect& rectangle) override;
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::Graphic; }
    QString accessibleText() const override;

private:
    void reshape();
    void fitToPicture();

    Ref<Picture> m_picture;          // empty for none
    binding::Small m_borderStyle{1}; // 0 none, 1 single line
    binding::Small m_appearance{1};
    bool m_autoSize = false; // the box takes the size of its picture
};

} // namespace zan::surface
