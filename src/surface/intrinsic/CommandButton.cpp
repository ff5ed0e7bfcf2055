#include "surface/intrinsic/CommandButton.h"

#include "binding/MemberTable.h"
#include "surface/host/Picture.h"
#include "surface/host/Surface.h"
#include "surface/text/MnemonicText.h"

#include <QIcon>
#include <QPushButton>

namespace zan::surface {

namespace {

/// The other command buttons of a button's surface.
template <class Call>
void forOtherButtons(CommandButton& button, Call call)
{
    if (!button.isLoaded())
        return;
    for (const Ref<ControlArray>& array : button.surface()->arrays()) {
        if (!dynamic_cast<CommandButton*>(&array->design()))
            continue;
        for (int index = 0; index <= array->uBound(); ++index) {
            if (LiveControl* other = array->find(index); other && other != &button)
                call(static_cast<CommandButton&>(*other));
        }
    }
}

} // namespace

CommandButton::CommandButton()
    : WidgetControl(values::ButtonFace, values::ButtonText)
{}

CommandButton::~CommandButton() = default;

const binding::MemberTable& CommandButton::members() const
{
    using binding::field;
    using C = CommandButton;
    return binding::table([] {
        return binding::MemberTable(
            "CommandButton", &widgetMembers(),
            {
                binding::absent("ForeColor"), // it would show nowhere, and a document would keep it
                binding::property<&C::value, &C::setValue>("Value").asDefault(),
                field<&C::m_caption, &C::look>("Caption"),
                field<&C::m_default, &C::defaultChanged>("Default").notDesign(),
                field<&C::m_cancel, &C::cancelChanged>("Cancel").notDesign(),
                field<&C::m_style, &C::restyle>("Style", 0, binding::oneOf(1)),
                field<&C::m_picture, &C::look>("Picture"),
            });
    });
}

/// Who becomes the default takes it from the others.
void CommandButton::defaultChanged()
{
    changed(Look);
    if (!m_default)
        return;
    forOtherButtons(*this, [](CommandButton& other) {
        if (std::exchange(other.m_default, false))
            other.changed(Look);
    });
}

void CommandButton::cancelChanged()
{
    if (m_cancel)
        forOtherButtons(*this, [](CommandButton& other) { other.m_cancel = false; });
}

void CommandButton::setValue(bool value)
{
    if (value)
        raiseClick();
}

void CommandButton::press()
{
    if (isLoaded() && visible() && enabled())
        raiseClick();
}

QWidget* CommandButton::createWidget(QWidget* parent)
{
    auto* button = new QPushButton(parent);
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, button, [this] { press(); });
    return button;
}

void CommandButton::syncWidget(QWidget& widget)
{
    auto& button = static_cast<QPushButton&>(widget);
    if (button.text() != m_caption)
        button.setText(m_caption);
    button.setDefault(m_default);
    if (m_style == 1 && m_picture) {
        button.setIcon(QIcon(m_picture->pixmap()));
        button.setIconSize(m_picture->image().size().boundedTo(bounds().size()));
    } else if (!button.icon().isNull()) {
        button.setIcon(QIcon());
    }
}

/// COMPAT: a standard button keeps the system's colours whatever BackColor says.
void CommandButton::stylePalette(QPalette& palette) const
{
    if (m_style == 0)
        return;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        palette.setColor(group, QPalette::Button, values::toQColor(backColor(), palette));
}

const Habits& CommandButton::habits() const noexcept
{
    static constexpr Habits row{.knowsDoubleClick = false, .clicksItself = true};
    return row;
}

/// Enter presses the button that has the keyboard, or else the default one; Esc the cancel button.
bool CommandButton::answerKey(DialogKey key, bool focused)
{
    if (key == DialogKey::Enter ? !focused && !m_default : focused || !m_cancel)
        return false;
    press();
    return true;
}

QString CommandButton::accessibleText() const
{
    return withoutMnemonic(m_caption);
}

} // namespace zan::surface
