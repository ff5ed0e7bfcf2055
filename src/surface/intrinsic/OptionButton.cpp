#include "surface/intrinsic/OptionButton.h"

#include "binding/MemberTable.h"
#include "surface/host/Choice.h"
#include "surface/host/Surface.h"
#include "surface/text/MnemonicText.h"

#include <QRadioButton>

namespace zan::surface {

OptionButton::OptionButton()
    : WidgetControl(values::ButtonFace, values::ButtonText)
{}

const binding::MemberTable& OptionButton::members() const
{
    using binding::property;
    return binding::table([] {
        return binding::MemberTable(
            "OptionButton", &widgetMembers(),
            {
                property<&OptionButton::value, &OptionButton::setValue>("Value").asDefault(),
                property<&OptionButton::caption, &OptionButton::setCaption>("Caption"),
                property<&OptionButton::alignment, &OptionButton::setAlignment>("Alignment"),
            });
    });
}

void OptionButton::setCaption(const QString& caption)
{
    if (m_caption == caption)
        return;
    m_caption = caption;
    changed(Look);
}

void OptionButton::setValue(bool value)
{
    if (m_value == value)
        return;
    m_value = value;
    changed(Look);
    if (!value)
        return;
    clearOthers();
    raiseClick();
}

void OptionButton::clearOthers()
{
    if (!isLoaded())
        return;
    for (const Ref<ControlArray>& array : surface()->arrays()) {
        if (!dynamic_cast<OptionButton*>(&array->design()))
            continue;
        for (int index = 0; index <= array->uBound(); ++index) {
            if (LiveControl* other = array->find(index); other && other != this)
                static_cast<OptionButton*>(other)->setValue(false);
        }
    }
}

void OptionButton::setAlignment(std::int16_t alignment)
{
    m_alignment = choice(alignment, 1);
    changed(Look);
}

QWidget* OptionButton::createWidget(QWidget* parent)
{
    auto* button = new QRadioButton(parent);
    button->setAutoFillBackground(true);
    button->setAutoExclusive(false); // the group is the surface's, not that of one parent widget
    QObject::connect(button, &QRadioButton::clicked, button, [this] {
        changed(Look); // a second click must not take the mark away
        setValue(true);
    });
    return button;
}

void OptionButton::syncWidget(QWidget& widget)
{
    auto& button = static_cast<QRadioButton&>(widget);
    if (button.text() != m_caption)
        button.setText(m_caption);
    button.setChecked(m_value);
    button.setLayoutDirection(m_alignment == 1 ? Qt::RightToLeft : Qt::LeftToRight);
}

const Habits& OptionButton::habits() const noexcept
{
    static constexpr Habits row{.clicksItself = true, .isChoice = true};
    return row;
}

QString OptionButton::accessibleText() const
{
    return withoutMnemonic(m_caption);
}

void OptionButton::copyDesign(const LiveControl& source)
{
    WidgetControl::copyDesign(source);
    const auto& other = static_cast<const OptionButton&>(source);
    m_caption = other.m_caption;
    m_alignment = other.m_alignment;
    changed(Look);
}

} // namespace zan::surface
