#pragma once

#include "binding/Object.h"
#include "surface/host/LiveControl.h"

#include <QString>

#include <optional>

namespace zan::host {

using binding::Ref;
using binding::Variant;

class ScriptRun;

/// The script item "Host" (and "WScript"): what a script file may do outside its panel. Everything that needs a
/// panel raises 91 without one.
class HostItem : public binding::Object
{
public:
    explicit HostItem(ScriptRun& run)
        : m_run(&run)
    {}
    /// The run ends: every access raises 91 from now on.
    void detach() { m_run = nullptr; }

    /// Prints its arguments in one line, a blank between them.
    static Variant Echo(binding::Object& self, binding::Arguments arguments);
    /// Counts a failure and says the text unless the condition holds. The script goes on.
    void Assert(bool condition, std::optional<QString> text);
    /// Lets the panel live for so many milliseconds.
    void Wait(std::int32_t milliseconds);
    /// Clicks in the middle of a control: a wrapper, a live control, or a place or key in Window.Controls.
    void Click(const Variant& control);
    void DoubleClick(const Variant& control);
    /// Presses a mouse button (1 left, 2 right, 4 middle) at a place of the panel in twips, and lets it go.
    void Press(float x, float y, std::optional<std::int16_t> button);
    /// Drags with the left button from one place of the panel to another, in twips.
    void Drag(float x1, float y1, float x2, float y2);
    /// Types a text into whatever has the keyboard.
    void Keys(const QString& text);
    Ref<binding::Object> Boxes();
    /// Lays an answer ready for the next box or modal form.
    void Answer(const QString& text);
    QString Format(const Variant& value, std::optional<QString> format, std::optional<std::int32_t> firstDay,
                   std::optional<std::int32_t> firstWeek);
    double Val(const QString& text);
    /// Saves a picture of the panel as a PNG file.
    void Shot(const QString& file);
    /// The document text of a control, brought up to date.
    QString Node(const Variant& control);
    void Quit(std::optional<std::int32_t> code);

    const binding::MemberTable& members() const override;

private:
    ScriptRun& run() const;
    Ref<binding::Object> wrapperOf(const Variant& control) const;
    Ref<surface::LiveControl> liveOf(const Variant& control) const;

    ScriptRun* m_run;
};

} // namespace zan::host
