#include "wrappers/PastControl.h"

#include "document/Elements.h"

namespace zan::wrappers {

namespace element = document::element;

Ref<site::Channel> PastControl::Channel() const
{
    const Ref<site::Channel> now = m_control->Channel();
    if (!now)
        return {};
    const Ref<site::Channel> past = m_view->known(*now);
    return past ? past : m_view->channel(now, m_control->BindTo());
}

void PastControl::put(values::Name name, const Variant& value) const
{
    if (const Ref<binding::Object> live = m_control->Control())
        live->put(name, value);
}

void PastControl::setBackColour(values::Colour colour)
{
    put(element::BackColor, Variant(colour.code));
}

void PastControl::setForeColour(values::Colour colour)
{
    put(element::ForeColor, Variant(colour.code));
}

void PastControl::setToolTipText(const QString& text)
{
    put(element::ToolTipText, Variant(text));
}

void PastControl::setVisible(bool visible)
{
    put(element::Visible, Variant(visible));
}

} // namespace zan::wrappers
