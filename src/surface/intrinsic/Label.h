#pragma once

#include "surface/host/StyledControl.h"

namespace zan::surface {

/// Text on the surface. Windowless: it lies under every control that has a window.
class Label : public StyledControl
{
public:
    Label();
    Hosting hosting() const noexcept override { return Hosting::Windowless; }
    const binding::MemberTable& members() const override;

    const QString& caption() const noexcept { return m_caption; }
    void setCaption(const QString& caption);
    /// 0 left, 1 right, 2 centre. Raises 380 for others, as every choice below does.
    std::int16_t alignment() const noexcept { return m_alignment; }
    void setAlignment(std::int16_t alignment);
    /// 0 none, 1 single line.
    std::int16_t borderStyle() const noexcept { return m_borderStyle; }
    void setBorderStyle(std::int16_t style);
    /// 0 transparent, 1 opaque.
    std::int16_t backStyle() const noexcept { return m_backStyle; }
    void setBackStyle(std::int16_t style);
    /// 0 flat, 1 with depth: shows in the border.
    std::int16_t appearance() const noexcept { return m_appearance; }
    void setAppearance(std::int16_t appearance);
    /// The label takes the size of its text: its width, or with WordWrap its height.
    bool autoSize() const noexcept { return m_autoSize; }
    void setAutoSize(bool autoSize);
    bool wordWrap() const noexcept { return m_wordWrap; }
    void setWordWrap(bool wordWrap);
    /// Whether '&' underlines the next character ("&&" shows one '&').
    bool useMnemonic() const noexcept { return m_useMnemonic; }
    void setUseMnemonic(bool useMnemonic);

    void paint(PaintContext& context, const QRect& rectangle) override;
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::Text; }
    QString accessibleText() const override;
    void copyDesign(const LiveControl& source) override;
    void fontChanged(FontObject& font) override;

protected:
    void boundsChanged() override;

private:
    void fitToText();

    QString m_caption;
    std::uint8_t m_alignment : 2;
    std::uint8_t m_borderStyle : 1;
    std::uint8_t m_backStyle : 1;
    std::uint8_t m_appearance : 1;
    bool m_autoSize : 1;
    bool m_wordWrap : 1;
    bool m_useMnemonic : 1;
};

} // namespace zan::surface
