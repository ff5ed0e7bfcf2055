#include "surface/host/WidgetControl.h"

#include "binding/MemberTable.h"
#include "surface/host/Surface.h"
#include "surface/host/WidgetStack.h"
#include "surface/text/ToolTipText.h"

#include <QPalette>

namespace zan::surface {

using values::ErrorNumber;

WidgetControl::~WidgetControl()
{
    dropWidget();
}

const binding::MemberTable& WidgetControl::widgetMembers()
{
    using binding::property;
    return binding::table([] {
        return binding::MemberTable(
            "Control", &styledMembers(),
            {
                property<&WidgetControl::tabIndex, &WidgetControl::setTabIndex>("TabIndex"),
                binding::field<&WidgetControl::m_tabStop, &WidgetControl::look>("TabStop", true),
            });
    });
}

QWidget* WidgetControl::ensureWidget()
{
    if (!m_widget && isLoaded())
        surface()->m_widgets->makeWidget(*this);
    return m_widget;
}

void WidgetControl::setFocus()
{
    if (!isLoaded() || !visible() || !enabled())
        values::raise(ErrorNumber::InvalidCall);
    const Ref<WidgetControl> alive(this); // what loses the focus may tell its owner
    surface()->flush();
    if (QWidget* own = ensureWidget())
        own->setFocus(Qt::OtherFocusReason);
}

void WidgetControl::takeKeyboard(Qt::FocusReason reason)
{
    if (QWidget* own = ensureWidget())
        own->setFocus(reason);
}

void WidgetControl::setTabIndex(std::int16_t place)
{
    if (place < 0)
        values::raise(ErrorNumber::InvalidPropertyValue);
    if (m_tabIndex == place)
        return;
    m_tabIndex = place;
    if (isLoaded())
        surface()->m_widgets->tabOrderChanged(place);
    changed(Look);
}

void WidgetControl::tabLast()
{
    if (isLoaded())
        surface()->m_widgets->tabLast(*this);
}

void WidgetControl::stylePalette(QPalette& palette) const
{
    const QColor back = values::toQColor(backColor(), palette);
    const QColor fore = values::toQColor(foreColor(), palette);
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Base, QPalette::Button})
            palette.setColor(group, role, back);
        for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
            palette.setColor(group, role, fore);
    }
    palette.setColor(QPalette::Disabled, QPalette::Window, back);
}

void WidgetControl::renewWidget()
{
    dropWidget();
    changed(Presence);
}

void WidgetControl::sync(int changes)
{
    QWidget& own = *m_widget;
    m_syncing = true;
    if (changes & Style)
        syncStyle(own);
    const bool acts = enabled() && (surface()->takesInput() || !takesInput());
    if (own.isEnabledTo(own.parentWidget()) != acts)
        own.setEnabled(acts);
    if (const QString tip = plainToolTip(toolTipText()); own.toolTip() != tip)
        own.setToolTip(tip);
    if (const Qt::FocusPolicy policy = tabStop() ? Qt::StrongFocus : Qt::ClickFocus; own.focusPolicy() != policy)
        own.setFocusPolicy(policy);
    if (changes & (Look | Style))
        syncWidget(own);
    if (changes & Geometry)
        own.setGeometry(bounds());
    m_syncing = false;
}

void WidgetControl::syncStyle(QWidget& widget)
{
    if (const QFont& wanted = font()->qfont(); widget.font() != wanted)
        widget.setFont(wanted);
    QPalette palette = surface()->palette();
    stylePalette(palette);
    if (!surface()->takesInput()) {
        // What is there to be looked at is readable, though it takes no input; buttons look as if they did not act.
        for (const QPalette::ColorRole role :
             {QPalette::Window, QPalette::Base, QPalette::Button, QPalette::WindowText, QPalette::Text})
            palette.setColor(QPalette::Disabled, role, palette.color(QPalette::Active, role));
    }
    if (widget.palette() != palette)
        widget.setPalette(palette);
}

void WidgetControl::stopTelling(QWidget& widget)
{
    QObject::disconnect(&widget, nullptr, &widget, nullptr);
}

void WidgetControl::dropWidget()
{
    QWidget* own = m_widget;
    if (!own)
        return;
    m_widget = nullptr;
    stopTelling(*own);
    if (Surface* place = surface())
        place->m_widgets->forget(*own);
    // Its own event handler may be running.
    own->hide();
    own->deleteLater();
}

} // namespace zan::surface
