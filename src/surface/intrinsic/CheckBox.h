#pragma once

#include "surface/host/WidgetControl.h"

namespace zan::surface {

class CheckBox : public WidgetControl
{
public:
    CheckBox();
    const binding::MemberTable& members() const override;

    const QString& caption() const noexcept { return m_caption; }
    void setCaption(const QString& caption);
    /// 0 unchecked, 1 checked, 2 greyed.
    std::int16_t value() const noexcept { return m_value; }
    /// Raises 380 for other values. A change raises the click event, whether the box is enabled or not.
    void setValue(std::int16_t value);
    /// 0 box left of the text, 1 right of it.
    std::int16_t alignment() const noexcept { return m_alignment; }
    void setAlignment(std::int16_t alignment);

    const Habits& habits() const noexcept override;
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::CheckBox; }
    QString accessibleText() const override;
    void copyDesign(const LiveControl& source) override;

protected:
    QWidget* createWidget(QWidget* parent) override;
    void syncWidget(QWidget& widget) override;

private:
    QString m_caption;
    std::uint8_t m_value = 0;
    std::uint8_t m_alignment = 0;
};

} // namespace zan::surface
