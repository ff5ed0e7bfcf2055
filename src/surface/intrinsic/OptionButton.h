#pragma once

#include "binding/Marshal.h"
#include "surface/host/WidgetControl.h"

namespace zan::surface {

/// One choice of several: all option buttons of a surface are one group.
class OptionButton : public WidgetControl
{
public:
    OptionButton();
    const binding::MemberTable& members() const override;

    bool value() const noexcept { return m_value; }
    /// True takes the value from the others of the group; a change to True raises the click event.
    void setValue(bool value);

    const Habits& habits() const noexcept override;
    void choose() override { setValue(true); }
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::RadioButton; }
    QString accessibleText() const override;

protected:
    QWidget* createWidget(QWidget* parent) override;
    void syncWidget(QWidget& widget) override;

private:
    void clearOthers();

    QString m_caption;
    binding::Small m_alignment{0}; // 0 button left of the text, 1 right of it
    bool m_value = false;
};

} // namespace zan::surface
