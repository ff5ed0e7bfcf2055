#include "window/LiveImage.h"

#include "binding/MemberTable.h"
#include "surface/text/FontObject.h"
#include "values/Failure.h"
#include "wrappers/ValueText.h"

namespace zan::window {

using surface::FontObject;
using values::Variant;

namespace {

const FontObject* fontOf(const Ref<binding::Object>& font)
{
    return dynamic_cast<const FontObject*>(font.get());
}

bool isSame(const Variant& a, const Variant& b)
{
    if (a.kind() != b.kind())
        return false;
    return a.isObject() ? a.object() == b.object() : wrappers::storedText(a) == wrappers::storedText(b);
}

bool isDesign(const binding::Member& member)
{
    return member.kind == binding::Member::Kind::Property && member.get && member.put &&
           (member.copy || member.isStored);
}

} // namespace

LiveImage::LiveImage(const wrappers::iBenchControl& control)
{
    m_channel = control.Channel();
    const Ref<binding::Object> live = control.Control();
    if (!live)
        return;
    for (const binding::Member& member : live->members().members()) {
        Variant value;
        if (!isDesign(member) || live->tryGet(member.name, value) != binding::AccessStatus::Ok)
            continue;
        if (!fontOf(
                Ref<binding::Object>(value.isObject() ? dynamic_cast<binding::Object*>(value.object()) : nullptr)))
            m_values.emplace_back(member.name, value);
    }
    if (const FontObject* font = fontOf(control.Font()))
        m_font = surface::copyFont(*font);
}

bool LiveImage::operator==(const LiveImage& other) const
{
    if (m_values.size() != other.m_values.size() || m_channel != other.m_channel ||
        bool(m_font) != bool(other.m_font))
        return false;
    for (std::size_t place = 0; place < m_values.size(); ++place) {
        if (!isSame(m_values[place].second, other.m_values[place].second))
            return false;
    }
    return !m_font || surface::fontsEqual(*fontOf(m_font), *fontOf(other.m_font));
}

void LiveImage::apply(wrappers::iBenchControl& control, const LiveImage& from) const
{
    if (m_channel != from.m_channel)
        values::attempt([&] { control.setChannel(m_channel); });
    const Ref<binding::Object> live = control.Control();
    if (!live)
        return;
    std::vector<std::size_t> due;
    for (std::size_t place = 0; place < m_values.size() && place < from.m_values.size(); ++place) {
        if (!isSame(m_values[place].second, from.m_values[place].second))
            due.push_back(place);
    }
    // A value may be refused while another one is still what it was (a minimum above the maximum): again, until all
    // that are left are refused.
    const auto put = [&](std::size_t place) {
        const values::Name name = m_values[place].first;
        const values::Variant& value = m_values[place].second;
        return values::attempt([&] {
            if (value.isObject())
                live->putReference(name, value);
            else
                live->put(name, value);
        });
    };
    while (std::erase_if(due, put) > 0) {
    }
    if (!m_font || !from.m_font || surface::fontsEqual(*fontOf(m_font), *fontOf(from.m_font)))
        return;
    // A font that it shares with the panel by now stays shared.
    const Ref<binding::Object> now = control.Font();
    if (!fontOf(now) || !surface::fontsEqual(*fontOf(m_font), *fontOf(now)))
        control.setFont(surface::copyFont(*fontOf(m_font)));
}

} // namespace zan::window
