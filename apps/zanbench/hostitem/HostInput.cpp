#include "zanbench/hostitem/HostInput.h"

#include "zanbench/headless/SimulatedInput.h"
#include "zanbench/hostitem/ControlLookup.h"

#include "surface/forms/RecordingForms.h"
#include "surface/host/KeyCodes.h"
#include "surface/host/Surface.h"
#include "values/Twips.h"
#include "window/BenchWindow.h"

namespace zan::host {

using values::ErrorNumber;

namespace {

QPoint pixelsOf(float x, float y)
{
    return {values::twipsToPixels(x), values::twipsToPixels(y)};
}

[[noreturn]] void hitsNothing(const QString& why)
{
    values::raise(ErrorNumber::InvalidCall, QStringLiteral("This hits nothing: %1.").arg(why));
}

/// "control 7 (CommandButton)": the tag is the place in Window.Controls.
QString describe(const surface::LiveControl& control)
{
    return QStringLiteral("control %1 (%2)").arg(control.tag(), control.typeName());
}

} // namespace

/// The middle of a control, when a press there reaches it. What has just been made, moved or loaded gets its widget
/// first.
QPoint HostInput::middleOf(const Variant& control) const
{
    window::BenchWindow& window = panel();
    const Ref<surface::LiveControl> live = liveOf(window, control);
    window.flush();
    const QString name = describe(*live);
    if (!window.isEnabled())
        hitsNothing(QStringLiteral("the panel is disabled"));
    if (!live->visible())
        hitsNothing(name + QStringLiteral(" is hidden"));
    if (!live->enabled())
        hitsNothing(name + QStringLiteral(" is disabled"));
    const QPoint middle = live->bounds().center();
    if (!window.rect().contains(middle))
        hitsNothing(name + QStringLiteral(" lies outside the panel"));
    const Ref<surface::LiveControl> hit = window.surface().controlAt(middle);
    if (hit.get() != live.get())
        hitsNothing(hit ? QStringLiteral("%1 lies under %2").arg(name, describe(*hit))
                        : QStringLiteral("the middle of %1 takes no presses").arg(name));
    return middle;
}

QPoint HostInput::placeOnPanel(float x, float y) const
{
    const window::BenchWindow& window = panel();
    const QPoint place = pixelsOf(x, y);
    if (!window.rect().contains(place))
        hitsNothing(QStringLiteral("%1, %2 lies outside the panel, which is %3 x %4 twips")
                        .arg(double(x))
                        .arg(double(y))
                        .arg(double(values::pixelsToTwips(window.width())))
                        .arg(double(values::pixelsToTwips(window.height()))));
    if (!window.isEnabled())
        hitsNothing(QStringLiteral("the panel is disabled"));
    return place;
}

void HostInput::Click(const Variant& control)
{
    const QPoint place = middleOf(control);
    run().forms().closeMenu(); // a press anywhere else closes the menu that is open
    SimulatedInput(panel()).click(place);
}

void HostInput::DoubleClick(const Variant& control)
{
    const QPoint place = middleOf(control);
    run().forms().closeMenu();
    SimulatedInput(panel()).doubleClick(place);
}

void HostInput::Press(float x, float y, std::optional<std::int16_t> button)
{
    const int pressed = button.value_or(1);
    if (pressed != 1 && pressed != 2 && pressed != 4)
        values::raise(ErrorNumber::InvalidCall,
                      QStringLiteral("%1 is no mouse button: 1 left, 2 right, 4 middle.").arg(pressed));
    const QPoint place = placeOnPanel(x, y);
    run().forms().closeMenu();
    SimulatedInput(panel()).click(place, pressed);
}

void HostInput::Drag(float x1, float y1, float x2, float y2)
{
    const QPoint from = placeOnPanel(x1, y1);
    run().forms().closeMenu();
    SimulatedInput(panel()).drag(from, pixelsOf(x2, y2));
}

void HostInput::Hover(float x, float y)
{
    const QPoint place = placeOnPanel(x, y);
    SimulatedInput(panel()).hover(place);
}

void HostInput::Keys(const QString& text)
{
    SimulatedInput(panel()).type(text);
}

void HostInput::Key(std::int16_t code, std::optional<std::int16_t> shift, std::optional<std::int16_t> times)
{
    const Qt::Key key = surface::toolkitKey(code);
    if (key == Qt::Key_unknown)
        values::raise(ErrorNumber::InvalidCall, QStringLiteral("No key has the code %1.").arg(code));
    Qt::KeyboardModifiers held;
    held.setFlag(Qt::ShiftModifier, shift.value_or(0) & 1);
    held.setFlag(Qt::ControlModifier, shift.value_or(0) & 2);
    held.setFlag(Qt::AltModifier, shift.value_or(0) & 4);
    for (int time = 0; time < times.value_or(1); ++time)
        SimulatedInput(panel()).key(key, held);
}

const binding::MemberTable& HostInput::members() const
{
    using C = HostInput;
    using binding::method;
    return binding::table([] {
        return binding::MemberTable("HostInput", nullptr,
                                    {
                                        method<&C::Click>("Click"),
                                        method<&C::DoubleClick>("DoubleClick"),
                                        method<&C::Press>("Press"),
                                        method<&C::Drag>("Drag"),
                                        method<&C::Hover>("Hover"),
                                        method<&C::Keys>("Keys"),
                                        method<&C::Key>("Key"),
                                    });
    });
}

} // namespace zan::host
