#pragma once

#include "binding/Marshal.h"
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

    void paint(PaintContext& context, const QRect& rectangle) override;
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::Text; }
    QString accessibleText() const override;
    void fontChanged(FontObject& font) override;

protected:
    void boundsChanged() override;

private:
    void reshape();
    void fitToText();

    QString m_caption;
    binding::Small m_alignment{0};   // 0 left, 1 right, 2 centre
    binding::Small m_borderStyle{0}; // 0 none, 1 single line
    binding::Small m_backStyle{1};   // 0 transparent, 1 opaque
    binding::Small m_appearance{1};  // 0 flat, 1 with depth: shows in the border
    bool m_autoSize = false;         // the label takes the size of its text: its width, or with WordWrap its height
    bool m_wordWrap = false;
    bool m_useMnemonic = true; // whether '&' underlines the next character ("&&" shows one '&')
};

} // namespace zan::surface
