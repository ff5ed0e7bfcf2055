#include "surface/host/LiveControl.h"

#include "binding/MemberTable.h"
#include "surface/host/ControlArray.h"
#include "surface/host/Handles.h"
#include "surface/host/Surface.h"
#include "values/Twips.h"

#include <algorithm>

namespace zan::surface {

using values::ErrorNumber;

namespace {

void requireMeasure(float measure)
{
    if (!(measure >= 0)) // neither negative nor no number
        values::raise(ErrorNumber::InvalidPropertyValue);
}

} // namespace

LiveControl::LiveControl()
    : m_visible(false)
    , m_queued(false)
    , m_hosted(false)
    , m_indexed(false)
    , m_quiet(false)
    , m_pending(0)
{}

LiveControl::~LiveControl()
{
    Handles::release(m_handle);
}

const binding::MemberTable& LiveControl::baseMembers()
{
    using binding::method;
    using binding::property;
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable(
            "Control", nullptr,
            {
                readOnly<&LiveControl::name>("Name"),
                readOnly<&LiveControl::index>("Index"),
                binding::field<&LiveControl::m_tag>("Tag").notDesign(),
                property<&LiveControl::left, &LiveControl::setLeft>("Left"),
                property<&LiveControl::top, &LiveControl::setTop>("Top"),
                property<&LiveControl::width, &LiveControl::setWidth>("Width"),
                property<&LiveControl::height, &LiveControl::setHeight>("Height"),
                property<&LiveControl::visible, &LiveControl::setVisible>("Visible"),
                property<&LiveControl::enabled, &LiveControl::setEnabled>("Enabled")
                    .keptIn<&LiveControl::m_enabled>(true),
                binding::field<&LiveControl::m_toolTipText, &LiveControl::tipChanged>("ToolTipText").notStored(),
                readOnly<&LiveControl::hWnd>("hWnd"),
                method<&LiveControl::move>("Move"),
                method<&LiveControl::zOrder>("ZOrder"),
                method<&LiveControl::setFocus>("SetFocus"),
            });
    });
}

Variant LiveControl::invoke(binding::Name name, binding::Access access, binding::Arguments arguments)
{
    if (!isLoaded())
        values::raise(ErrorNumber::ObjectNotSet);
    return Object::invoke(name, access, arguments);
}

QString LiveControl::name() const
{
    return m_array ? m_array->name() : QString();
}

Surface* LiveControl::surface() const noexcept
{
    return m_array ? m_array->surface() : nullptr;
}

void LiveControl::setLeft(float left)
{
    setRectangle(left, m_top, m_width, m_height);
}

void LiveControl::setTop(float top)
{
    setRectangle(m_left, top, m_width, m_height);
}

void LiveControl::setWidth(float width)
{
    requireMeasure(width);
    setRectangle(m_left, m_top, width, m_height);
}

void LiveControl::setHeight(float height)
{
    requireMeasure(height);
    setRectangle(m_left, m_top, m_width, height);
}

void LiveControl::move(float left, std::optional<float> top, std::optional<float> width,
                       std::optional<float> height)
{
    const float newWidth = width.value_or(m_width);
    const float newHeight = height.value_or(m_height);
    requireMeasure(newWidth);
    requireMeasure(newHeight);
    setRectangle(left, top.value_or(m_top), newWidth, newHeight);
}

void LiveControl::setRectangle(float left, float top, float width, float height)
{
    if (left == m_left && top == m_top && width == m_width && height == m_height)
        return;
    const QRect from = m_bounds;
    // A load sets one measure after the other: only what changes is counted anew.
    const auto follow = [](float& twips, float value, int& pixels) {
        if (twips == value)
            return;
        twips = value;
        pixels = values::twipsToPixels(double(value));
    };
    int x = from.x();
    int y = from.y();
    int across = from.width();
    int down = from.height();
    follow(m_left, left, x);
    follow(m_top, top, y);
    follow(m_width, width, across);
    follow(m_height, height, down);
    m_bounds = QRect(x, y, across, down);
    if (Surface* place = surface(); place && m_bounds != from) {
        place->controlMoved(*this, from);
        changed(Geometry);
    }
    boundsChanged();
}

void LiveControl::setVisible(bool visible)
{
    if (m_visible == visible)
        return;
    m_visible = visible;
    changed(Presence);
}

void LiveControl::setEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    changed(Look);
}

void LiveControl::tipChanged()
{
    countChange();
    if (hosting() == Hosting::Widget) // painted controls are asked when the tip is due
        changed(Look);
}

std::int32_t LiveControl::hWnd()
{
    if (!isLoaded() || hosting() == Hosting::Windowless)
        return 0;
    if (m_handle == 0)
        m_handle = Handles::allocate(*this);
    return m_handle;
}

const Habits& LiveControl::habits() const noexcept
{
    static constexpr Habits plain;
    return plain;
}

bool LiveControl::answerKey(DialogKey, bool)
{
    return false;
}

void LiveControl::zOrder(std::optional<std::int16_t> position)
{
    const std::int16_t place = position.value_or(0);
    if (place != 0 && place != 1)
        values::raise(ErrorNumber::InvalidCall);
    if (Surface* owner = surface())
        owner->controlRestacked(*this, place == 0);
}

void LiveControl::setFocus()
{
    values::raise(ErrorNumber::InvalidCall);
}

void LiveControl::paint(PaintContext&, const QRect&) {}

bool LiveControl::hit(QPoint) const
{
    return true;
}

void LiveControl::copyDesign(const LiveControl& source)
{
    members().copyDesign(*this, source);
    changed(Look);
    setRectangle(source.m_left, source.m_top, source.m_width, source.m_height);
}

void LiveControl::changed(Change what)
{
    countChange();
    if (m_array && !m_quiet)
        m_array->surface()->controlChanged(*this, what);
}

void LiveControl::raiseClick()
{
    const Ref<LiveControl> alive(this);
    if (Surface* owner = surface(); owner && !owner->clicksAreSilent())
        owner->tell([&](SurfaceEvents& events) { events.clicked(this); });
}

} // namespace zan::surface
