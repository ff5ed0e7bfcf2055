#pragma once

#include "binding/Marshal.h"
#include "surface/host/WidgetControl.h"

namespace zan::surface {

class CheckBox : public WidgetControl
{
public:
    CheckBox();
    const binding::MemberTable& members() const override;

    const Habits& habits() const noexcept override;
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::CheckBox; }
    QString accessibleText() const override;

protected:
    QWidget* createWidget(QWidget* parent) override;
    void syncWidget(QWidget& widget) override;

private:
    void valueChanged();

    QString m_caption;
    binding::Small m_value{0};     // 0 unchecked, 1 checked, 2 greyed; a change clicks, also on a disabled box
    binding::Small m_alignment{0}; // 0 box left of the text, 1 right of it
};

} // namespace zan::surface
