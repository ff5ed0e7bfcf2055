#include "surface/intrinsic/CheckBox.h"

#include "binding/MemberTable.h"
#include "surface/host/Choice.h"
#include "surface/host/Surface.h"
#include "surface/text/MnemonicText.h"

#include <QCheckBox>

namespace zan::surface {

CheckBox::CheckBox()
    : WidgetControl(values::ButtonFace, values::ButtonText)
{}

const binding::MemberTable& CheckBox::members() const
{
    using binding::property;
    return binding::table([] {
        return binding::MemberTable("CheckBox", &widgetMembers(),
                                    {
                                        property<&CheckBox::value, &CheckBox::setValue>("Value").asDefault(),
                                        property<&CheckBox::caption, &CheckBox::setCaption>("Caption"),
                                        property<&CheckBox::alignment, &CheckBox::setAlignment>("Alignment"),
                                    });
    });
}

void CheckBox::setCaption(const QString& caption)
{
    if (m_caption == caption)
        return;
    m_caption = caption;
    changed(Look);
}

void CheckBox::setValue(std::int16_t value)
{
    const std::uint8_t next = choice(value, 2);
    if (m_value == next)
        return;
    m_value = next;
    changed(Look);
    raiseClick();
}

void CheckBox::setAlignment(std::int16_t alignment)
{
    m_alignment = choice(alignment, 1);
    changed(Look);
}

QWidget* CheckBox::createWidget(QWidget* parent)
{
    auto* box = new QCheckBox(parent);
    box->setAutoFillBackground(true);
    // The box's own idea of the next state does not count: greyed goes to unchecked.
    QObject::connect(box, &QCheckBox::clicked, box, [this] {
        changed(Look);
        setValue(m_value == 0 ? 1 : 0);
    });
    return box;
}

void CheckBox::syncWidget(QWidget& widget)
{
    auto& box = static_cast<QCheckBox&>(widget);
    constexpr Qt::CheckState States[]{Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};
    if (box.text() != m_caption)
        box.setText(m_caption);
    box.setTristate(m_value == 2);
    box.setCheckState(States[m_value]);
    box.setLayoutDirection(m_alignment == 1 ? Qt::RightToLeft : Qt::LeftToRight);
}

const Habits& CheckBox::habits() const noexcept
{
    static constexpr Habits row{.knowsDoubleClick = false, .clicksItself = true};
    return row;
}

QString CheckBox::accessibleText() const
{
    return withoutMnemonic(m_caption);
}

void CheckBox::copyDesign(const LiveControl& source)
{
    WidgetControl::copyDesign(source);
    const auto& other = static_cast<const CheckBox&>(source);
    m_caption = other.m_caption;
    m_value = other.m_value;
    m_alignment = other.m_alignment;
    changed(Look);
}

} // namespace zan::surface
