#pragma once

#include "wrappers/PastView.h"
#include "wrappers/iBenchControl.h"

namespace zan::wrappers {

/// A placed control as the routines of the live data get it while the panel shows the past: its channel is the one of
/// that moment, and what a routine sets goes to the live control alone and never to the document. Everything else that
/// could be changed through a wrapper stays as it is.
class PastControl final : public iBenchControl
{
public:
    PastControl(Ref<iBenchControl> control, std::shared_ptr<PastView> view)
        : m_control(std::move(control))
        , m_view(std::move(view))
    {}

    PastView* past() const override { return m_view.get(); }
    Ref<site::Channel> Channel() const override;

    document::Node XMLNode() const override { return m_control->XMLNode(); }
    values::Colour BackColour() const override { return m_control->BackColour(); }
    void setBackColour(values::Colour colour) override;
    QString BindTo() const override { return m_control->BindTo(); }
    Ref<binding::Object> Control() const override { return m_control->Control(); }
    QString ControlType() const override { return m_control->ControlType(); }
    Ref<binding::Object> Font() const override { return m_control->Font(); }
    values::Colour ForeColour() const override { return m_control->ForeColour(); }
    void setForeColour(values::Colour colour) override;
    float Height() const override { return m_control->Height(); }
    std::int32_t hWnd() const override { return m_control->hWnd(); }
    std::int16_t Index() const override { return m_control->Index(); }
    QString Key() const override { return m_control->Key(); }
    float Left() const override { return m_control->Left(); }
    bool ShowGrabHandles() const override { return m_control->ShowGrabHandles(); }
    QString ToolTipText() const override { return m_control->ToolTipText(); }
    void setToolTipText(const QString& text) override;
    float Top() const override { return m_control->Top(); }
    bool UseWindowSettings() const override { return m_control->UseWindowSettings(); }
    bool Visible() const override { return m_control->Visible(); }
    void setVisible(bool visible) override;
    float Width() const override { return m_control->Width(); }
    bool Updated() const override { return m_control->Updated(); }

private:
    void put(values::Name name, const Variant& value) const;

    Ref<iBenchControl> m_control;
    std::shared_ptr<PastView> m_view;
};

} // namespace zan::wrappers
