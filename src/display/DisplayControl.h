#pragma once

#include "binding/Member.h"
#include "binding/PropertyBag.h"
#include "display/FlashTimer.h"
#include "surface/host/StyledControl.h"

#include <QSize>

namespace zan::display {

using surface::Colour;
using surface::FontObject;
using values::Ref;
using values::Variant;

/// What the display controls have in common: they are painted, they draw in pixels inside an optional border, they
/// keep their design values in a host's property bag, and they can flash.
class DisplayControl : public surface::StyledControl, protected FlashTimer::Listener
{
public:
    /// The host of a control that is designed: told of properties whose new values are worth saving.
    class Host
    {
    public:
        virtual void propertyChanged(binding::Name name) = 0;

    protected:
        ~Host() = default;
    };

    ~DisplayControl() override;
    Hosting hosting() const noexcept override { return Hosting::Painted; }

    /// Shares the font of the text.
    void setFont(const Ref<FontObject>& font);
    /// Draws the control from its properties as they are now.
    virtual void Refresh() = 0;

    /// Gives a new control its design values; the font for those that take the host's.
    void InitProperties(const Ref<FontObject>& ambientFont = {});
    /// Takes the design values from a bag. A value that the property does not accept counts as its default.
    void ReadProperties(const binding::PropertyBag& bag, const Ref<FontObject>& ambientFont = {});
    /// Stores the design values in the order of the properties, leaving out those that are the default.
    void WriteProperties(binding::PropertyBag& bag, const Ref<FontObject>& ambientFont = {}) const;

    /// Who is told of changes; null for nobody. Must outlive the control or be taken away before.
    void setHost(Host* host) noexcept { m_host = host; }
    void copyDesign(const LiveControl& source) override;

protected:
    DisplayControl(Colour back, Colour fore);
    /// The font of a control that nobody has designed yet.
    virtual Ref<FontObject> defaultFont(const Ref<FontObject>& ambientFont) const = 0;
    /// The inner size has changed.
    virtual void resized() = 0;

    void markChanged(binding::Name name);
    /// Hooks of properties whose every write is reported, whether it changes anything or not.
    void lookWritten(const binding::Written& write);
    void styleWritten(const binding::Written& write);
    void borderWritten(const binding::Written& write);
    void borderChanged();
    /// True while many properties are set at once: nothing is drawn or reported then.
    bool isLoading() const noexcept { return m_loading; }
    /// Size inside the border: ScaleWidth and ScaleHeight in pixels, never negative.
    QSize scaleSize() const noexcept;
    /// Draws background and border; returns the area inside.
    QRect paintFrame(surface::PaintContext& context, const QRect& rectangle, bool background) const;
    void boundsChanged() override;

    FlashTimer m_flashTimer{*this};
    std::int16_t m_backStyle = 1;   // 0 transparent, 1 opaque; others count as opaque
    std::int16_t m_borderStyle = 0; // 0 none, 1 single line; others count as none

private:
    static bool isFont(const binding::Member& member) noexcept;
    void load(const binding::PropertyBag* bag, const Ref<FontObject>& ambientFont);
    void checkSize();

    bool m_loading = false;
    Host* m_host = nullptr;
    QSize m_drawnSize{0, 0}; // the size that resized() was last told of
};

} // namespace zan::display
