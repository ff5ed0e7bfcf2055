#pragma once

#include "zanbench/hostitem/HostFamily.h"

#include <QPoint>

#include <optional>

namespace zan::host {

/// Mouse and keyboard: Click, DoubleClick, Press, Drag, Hover, Keys, Key. What would hit nothing raises 5 and says why: a test
/// whose click went nowhere must not look as if it had been made.
class HostInput : public HostFamily
{
public:
    using HostFamily::HostFamily;

    /// Clicks in the middle of a control: a wrapper, a live control, or a place or key in Window.Controls. Raises 5
    /// when that would not hit it: hidden, disabled, covered by another one, outside the panel.
    void Click(const Variant& control);
    void DoubleClick(const Variant& control);
    /// Presses a mouse button (1 left, 2 right, 4 middle) at a place of the panel in twips, and lets it go. Raises 5
    /// outside the panel and for another button.
    void Press(float x, float y, std::optional<std::int16_t> button);
    /// Drags with the left button from one place of the panel to another, in twips. Raises 5 when it begins outside.
    void Drag(float x1, float y1, float x2, float y2);
    /// Moves the pointer to a place in twips, with no button down.
    void Hover(float x, float y);
    /// Types a text into whatever has the keyboard.
    void Keys(const QString& text);
    /// Presses the key of a classic code (37 to 40 the arrows, 9 Tab, 46 Delete) with 1 Shift, 2 Ctrl and 4 Alt held, so
    /// many times. Raises 5 for a code that no key has.
    void Key(std::int16_t code, std::optional<std::int16_t> shift, std::optional<std::int16_t> times);

    const binding::MemberTable& members() const override;

private:
    QPoint middleOf(const Variant& control) const;
    QPoint placeOnPanel(float x, float y) const;
};

} // namespace zan::host
