#include "surface/intrinsic/CheckBox.h"

#include "binding/MemberTable.h"
#include "surface/host/Surface.h"
#include "surface/text/MnemonicText.h"

#include <QCheckBox>

namespace zan::surface {

namespace {

/// The toolkit's own takes presses on mark and caption only; a control takes them anywhere in its rectangle.
class WholeArea : public QCheckBox
{
public:
    using QCheckBox::QCheckBox;

protected:
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }
    /// The box's own idea of the next state does not count: greyed goes to unchecked.
    void nextCheckState() override { setChecked(!isChecked()); }
};

} // namespace

CheckBox::CheckBox()
    : WidgetControl(values::ButtonFace, values::ButtonText)
{}

const binding::MemberTable& CheckBox::members() const
{
    using binding::field;
    using binding::oneOf;
    return binding::table([] {
        return binding::MemberTable(
            "CheckBox", &widgetMembers(),
            {
                field<&CheckBox::m_value, &CheckBox::valueChanged>("Value", 0, oneOf(2)).asDefault(),
                field<&CheckBox::m_caption, &CheckBox::look>("Caption"),
                field<&CheckBox::m_alignment, &CheckBox::look>("Alignment", 0, oneOf(1)),
            });
    });
}

void CheckBox::valueChanged()
{
    changed(Look);
    raiseClick();
}

QWidget* CheckBox::createWidget(QWidget* parent)
{
    auto* box = new WholeArea(parent);
    box->setAutoFillBackground(true);
    // Not the click: assistive tools toggle without one.
    QObject::connect(box, &QCheckBox::toggled, box, [this] {
        if (isSyncing())
            return;
        m_value = binding::Small(m_value == 0);
        valueChanged();
    });
    return box;
}

void CheckBox::syncWidget(QWidget& widget)
{
    auto& box = static_cast<QCheckBox&>(widget);
    constexpr Qt::CheckState States[]{Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};
    if (const QString shown = widgetCaption(m_caption); box.text() != shown)
        box.setText(shown);
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

} // namespace zan::surface
