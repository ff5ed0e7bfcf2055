#pragma once

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

    const Ref<Picture>& picture() const noexcept { return m_picture; }
    /// The empty reference takes the picture away.
    void setPicture(const Ref<Picture>& picture);
    /// 0 none, 1 single line.
    std::int16_t borderStyle() const noexcept { return m_borderStyle; }
    void setBorderStyle(std::int16_t style);
    std::int16_t appearance() const noexcept { return m_appearance; }
    void setAppearance(std::int16_t appearance);
    /// The box takes the size of its picture.
    bool autoSize() const noexcept { return m_autoSize; }
    void setAutoSize(bool autoSize);

    void paint(PaintContext& context, const QRect& rectangle) override;
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::Graphic; }
    QString accessibleText() const override;
    void copyDesign(const LiveControl& source) override;

private:
    void fitToPicture();

    Ref<Picture> m_picture;
    std::uint8_t m_borderStyle = 1;
    std::uint8_t m_appearance = 1;
    bool m_autoSize = false;
};

} // namespace zan::surface
