#include "surface/intrinsic/OptionButton.h"

#include "binding/MemberTable.h"
#include "surface/host/Surface.h"
#include "surface/text/MnemonicText.h"

#include <QAccessibleWidget>
#include <QRadioButton>

namespace zan::surface {

namespace {

/// The toolkit's own takes presses on mark and caption only; a control takes them anywhere in its rectangle.
class WholeArea : public QRadioButton
{
public:
    using QRadioButton::QRadioButton;

protected:
    bool hitButton(const QPoint& place) const override { return rect().contains(place); }
};

/// The toolkit calls a button a check box that is not exclusive among its siblings. The group of these is the surface's.
class OptionFace : public QAccessibleWidget
{
public:
    explicit OptionFace(WholeArea& button)
        : QAccessibleWidget(&button, QAccessible::RadioButton)
        , m_button(button)
    {}
    QString text(QAccessible::Text kind) const override
    {
        const QString own = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && own.isEmpty() ? withoutMnemonic(m_button.text()) : own;
    }
    QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = true;
        state.checked = m_button.isChecked();
        return state;
    }
    QStringList actionNames() const override
    {
        QStringList names = QAccessibleWidget::actionNames();
        if (m_button.isEnabled())
            names.prepend(toggleAction());
        return names;
    }
    void doAction(const QString& name) override
    {
        if (name == toggleAction() || name == pressAction())
            m_button.click();
        else
            QAccessibleWidget::doAction(name);
    }

private:
    WholeArea& m_button;
};

QAccessibleInterface* makeFace(const QString&, QObject* object)
{
    auto* button = dynamic_cast<WholeArea*>(object);
    return button ? new OptionFace(*button) : nullptr;
}

void installFaces()
{
    static const bool installed = [] {
        QAccessible::installFactory(makeFace);
        return true;
    }();
    Q_UNUSED(installed);
}

} // namespace

OptionButton::OptionButton()
    : WidgetControl(values::ButtonFace, values::ButtonText)
{}

const binding::MemberTable& OptionButton::members() const
{
    using binding::field;
    using O = OptionButton;
    return binding::table([] {
        return binding::MemberTable("OptionButton", &widgetMembers(),
                                    {
                                        binding::property<&O::value, &O::setValue>("Value")
                                            .asDefault()
                                            .keptIn<&O::m_value>(false)
                                            .notDesign(),
                                        field<&O::m_caption, &O::look>("Caption"),
                                        field<&O::m_alignment, &O::look>("Alignment", 0, binding::oneOf(1)),
                                    });
    });
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

QWidget* OptionButton::createWidget(QWidget* parent)
{
    installFaces();
    auto* button = new WholeArea(parent);
    button->setAutoFillBackground(true);
    button->setAutoExclusive(false); // the group is the surface's, not that of one parent widget
    // Not the click: assistive tools toggle without one.
    QObject::connect(button, &QRadioButton::toggled, button, [this] {
        if (isSyncing())
            return;
        changed(Look); // a second click must not take the mark away
        setValue(true);
    });
    return button;
}

void OptionButton::syncWidget(QWidget& widget)
{
    auto& button = static_cast<QRadioButton&>(widget);
    if (const QString shown = widgetCaption(m_caption); button.text() != shown)
        button.setText(shown);
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

} // namespace zan::surface
