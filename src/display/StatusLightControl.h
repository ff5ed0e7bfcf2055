#pragma once

#include "display/DisplayControl.h"

namespace zan::display {

/// A status light on a surface: a bevelled rectangle with a centred text, in one of two states, each with a colour and
/// a caption of its own. It can flash while its state is true. It knows nothing of loggers.
///
/// The picture is taken at each write of Value and Flash, at a change of size and by Refresh: other properties show in
/// the next one.
class StatusLightControl : public DisplayControl
{
public:
    StatusLightControl();
    ~StatusLightControl() override;
    const binding::MemberTable& members() const override;

    /// The text shown. The next picture replaces it by the caption of the state.
    const QString& caption();
    void setCaption(const QString& caption);
    Colour trueColour() const noexcept { return m_trueColour; }
    void setTrueColour(Colour colour);
    Colour falseColour() const noexcept { return m_falseColour; }
    const Variant& value() const noexcept { return m_value; }
    /// Takes any value: the Boolean True and the number -1 are true, everything else is false.
    void setValue(const Variant& value);
    const QString& trueCaption() const noexcept { return m_trueCaption; }
    void setTrueCaption(const QString& caption);
    const QString& falseCaption() const noexcept { return m_falseCaption; }
    bool flash() const noexcept { return m_flash; }
    void Refresh() override;

    /// Whether the state is true.
    bool isOn() const;
    /// Whether the flash timer runs.
    bool isFlashing() const noexcept { return m_flashTimer.isRunning(); }
    /// Colour of the last picture.
    Colour shownColour() const noexcept { return m_shownColour; }

    void paint(surface::PaintContext& context, const QRect& rectangle) override;
    surface::AccessibleRole accessibleRole() const noexcept override { return surface::AccessibleRole::Indicator; }
    /// Caption and state, so that nobody depends on the colour.
    QString accessibleText() const override;
    void copyDesign(const LiveControl& source) override;

protected:
    Ref<FontObject> defaultFont(const Ref<FontObject>& ambientFont) const override;
    void resized() override;
    void flashTick() override;

private:
    void catchUp();
    void flashWritten(const binding::Written&) { draw(); }
    void draw();
    void compose();

    Variant m_value;
    QString m_caption;
    QString m_trueCaption;
    QString m_falseCaption;
    Colour m_trueColour;
    Colour m_falseColour;
    Colour m_shownColour;
    bool m_flash = false; // flashing in the true state: half bright and bright in turn, a second each
};

} // namespace zan::display
