#include "display/ValueBarControl.h"

#include "binding/MemberTable.h"
#include "display/LimitMarker.h"
#include "display/PixelPainter.h"
#include "display/ScaleColour.h"
#include "surface/text/FontFace.h"
#include "surface/text/TextPainter.h"
#include "values/Format.h"

#include <QColor>
#include <QCoreApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace zan::display {

namespace {

constexpr Colour Red{255};
constexpr Colour Green{49152};
constexpr int HalfBright = 50;  // percent
constexpr int TickLength = 20;  // pixels
constexpr int FarAway = 32'767; // markers take 16-bit places; further out nothing is seen anyway

/// Text of a number at the scale; empty for what is no number.
QString scaleText(double number)
{
    try {
        return values::format(Variant(number), u"0");
    } catch (const values::RuntimeError&) {
        return {};
    }
}

/// Width of a text of figures in whole pixels.
int textWidth(const QString& text, surface::FontFace& face)
{
    float width = 0;
    for (const QChar character : text)
        width += face.glyph(character.unicode()).advance;
    return int(std::ceil(std::min(width, float(FarAway))));
}

} // namespace

ValueBarControl::ValueBarControl()
    : DisplayControl(values::ButtonFace, values::ButtonText)
    , m_highColour(Red)
    , m_normalColour(Green)
    , m_lowColour(Red)
{}

ValueBarControl::~ValueBarControl() = default;

const binding::MemberTable& ValueBarControl::members() const
{
    using binding::field;
    using B = ValueBarControl;
    return binding::table([] {
        return binding::MemberTable("ValueBar", &baseMembers(),
                                    {
                                        field<&B::m_backColor, &B::surfaceWritten>("BackColor", values::ButtonFace),
                                        field<&B::m_foreColor, &B::surfaceWritten>("ForeColor", values::ButtonText),
                                        field<&B::m_enabled, &B::surfaceWritten>("Enabled", true),
                                        binding::property<&B::font, &B::setFont>("Font").stored(),
                                        field<&B::m_backStyle, &B::surfaceWritten>("BackStyle", 1),
                                        field<&B::m_borderStyle, &B::frameWritten>("BorderStyle", 0),
                                        binding::method<&B::Refresh>("Refresh"),
                                        field<&B::m_value, &B::drawnWritten>("Value", 50),
                                        field<&B::m_highLimit, &B::drawnWritten>("HighLimit", 75),
                                        field<&B::m_lowLimit, &B::drawnWritten>("LowLimit", 25),
                                        field<&B::m_highColour, &B::drawnWritten>("HighColour", Red),
                                        field<&B::m_normalColour, &B::drawnWritten>("NormalColour", Green),
                                        field<&B::m_lowColour, &B::drawnWritten>("LowColour", Red),
                                        field<&B::m_flash, &B::drawnWritten>("Flash"),
                                        field<&B::m_maximum, &B::drawnWritten>("Max", 100),
                                        field<&B::m_minimum, &B::drawnWritten>("Min", 0),
                                        field<&B::m_showScale, &B::drawnWritten>("ShowScale"),
                                        field<&B::m_tickCount, &B::drawnWritten>("TickCount", 10),
                                    });
    });
}

Ref<FontObject> ValueBarControl::defaultFont(const Ref<FontObject>& ambientFont) const
{
    return ambientFont ? copyFont(*ambientFont) : values::make<FontObject>();
}

// The properties of the surface act on it directly and draw nothing: the bar shows them at its next drawing.

void ValueBarControl::surfaceWritten(const binding::Written& write)
{
    if (write.isChanged)
        countChange();
    markChanged(write.member.name);
}

void ValueBarControl::frameWritten(const binding::Written& write)
{
    if (write.isChanged) {
        const WithoutDrawing quiet(*this);
        borderChanged();
    }
    markChanged(write.member.name);
}

void ValueBarControl::setFont(const Ref<FontObject>& font)
{
    static const values::Name fontName("Font");
    {
        const WithoutDrawing quiet(*this);
        StyledControl::setFont(font);
    }
    markChanged(fontName);
}

/// Every write of a property that shows in the picture draws.
void ValueBarControl::drawnWritten(const binding::Written& write)
{
    if (isLoading())
        return;
    lookWritten(write); // the same picture again costs nothing
    prepareDrawing();
}

// Drawing ------------------------------------------------------------------------------------------------------

void ValueBarControl::Refresh()
{
    changed(Look);
    prepareDrawing();
}

void ValueBarControl::flashTick()
{
    changed(Look); // a bar that cannot be drawn is nobody's call here, so nobody is told
}

void ValueBarControl::resized()
{
    if (isLoading())
        return;
    layOut();
    changed(Look);
    try {
        prepareDrawing();
    } catch (const values::RuntimeError&) {
        // A change of size succeeds whether or not the bar can be drawn.
    }
}

/// Where the bar lies. A control too narrow for the markers keeps the bar where it was.
void ValueBarControl::layOut()
{
    const QSize size = scaleSize();
    const int scaleWidth = m_showScale ? textWidth(scaleText(m_maximum), font()->face()) : 0;
    const int barWidth = size.width() - scaleWidth - 2 * MarkerSize;
    if (barWidth >= 0)
        m_bar = QRect(scaleWidth + MarkerSize, 0, barWidth, size.height());
}

/// What drawing does beside painting, in the order of drawing: 1. the scale, 2. the flash timer, 3. the bar. Raises
/// where the drawing would end.
void ValueBarControl::prepareDrawing()
{
    if (!hasTicks())
        values::raise(values::ErrorNumber::DivisionByZero);
    // A timer that runs while flashing is turned off goes on until the value comes back between the limits.
    if (zone() == Zone::Normal)
        m_flashTimer.stop();
    else if (m_flash)
        m_flashTimer.start();
    if (!hasRange())
        values::raise(values::ErrorNumber::DivisionByZero);
}

ValueBarControl::Zone ValueBarControl::zone() const noexcept
{
    if (m_value < m_lowLimit)
        return Zone::Low;
    return m_value > m_highLimit ? Zone::High : Zone::Normal;
}

Colour ValueBarControl::zoneColour() const
{
    const Zone place = zone();
    if (place == Zone::Normal)
        return m_normalColour;
    const Colour colour = place == Zone::Low ? m_lowColour : m_highColour;
    return m_flash && !m_flashTimer.phase() ? ScaleColour(colour, HalfBright) : colour;
}

/// Upright place of a value in the bar, pixels from its top; not limited to the bar.
double ValueBarControl::placeOf(double value) const noexcept
{
    const double height = m_bar.height();
    return height - (value - m_minimum) * height / (m_maximum - m_minimum);
}

void ValueBarControl::paint(surface::PaintContext& context, const QRect& rectangle)
{
    m_flashTimer.settle();
    if (m_flash)
        m_flashTimer.awaitTick();
    const QRect area = paintFrame(context, rectangle, true);
    if (area.isEmpty())
        return;
    const bool complete = hasTicks() && hasRange();
    // COMPAT: the two tests differ; a low limit at the bottom of the bar is drawn, a high limit is not.
    const bool showHigh = complete && m_highLimit > m_minimum;
    const bool showLow = complete && m_lowLimit >= m_minimum;
    // 1. What lies under the bar: scale and markers.
    if (m_showScale && hasTicks())
        paintScale(context, area);
    if (showHigh)
        paintMarkers(context, area, m_highLimit);
    if (showLow)
        paintMarkers(context, area, m_lowLimit);
    // 2. The bar and the lines of the limits across it.
    const QRect place = m_bar.translated(area.topLeft());
    PixelPainter bar(context.painter, place.topLeft(), place & area);
    bar.fill(0, 0, place.width(), place.height(), values::toQColor(values::WindowBackground, context.palette));
    if (!complete)
        return;
    bar.fill(0, place.height(), place.width(), nearestPixel(placeOf(m_value)),
             values::toQColor(zoneColour(), context.palette));
    const QColor lines = values::toQColor(values::WindowText, context.palette);
    for (const auto& [shown, limit] : {std::pair(showHigh, m_highLimit), std::pair(showLow, m_lowLimit)}) {
        if (shown)
            bar.fill(0, nearestPixel(placeOf(limit)), place.width(), nearestPixel(placeOf(limit)), lines);
    }
}

/// Ticks and numbers from the bottom up; Max gets neither.
void ValueBarControl::paintScale(surface::PaintContext& context, const QRect& area) const
{
    const double height = m_bar.height();
    const double pitch = height / m_tickCount;
    const double step = (m_maximum - m_minimum) / m_tickCount;
    surface::FontFace& face = font()->face();
    surface::TextStyle style;
    style.colour = values::toQColor(foreColor(), context.palette);
    PixelPainter canvas(context.painter, area.topLeft(), area);
    context.painter.save();
    context.painter.setClipRect(area, Qt::IntersectClip);
    int lastLine = -1;
    for (int tick = 0; tick < m_tickCount; ++tick) {
        const double y = height - tick * pitch - 1;
        const int line = nearestPixel(y);
        if (line == lastLine)
            continue; // more ticks than pixels: one to a line is all that can be seen
        lastLine = line;
        canvas.fill(m_bar.left() - TickLength, line, m_bar.left(), line, style.colour);
        const QRect text(area.left(), area.top() + nearestPixel(y - face.height() + 2), area.width(),
                         face.height());
        if (text.intersects(area))
            context.text.draw(context.painter, text, scaleText(m_minimum + tick * step), face, style);
    }
    context.painter.restore();
}

void ValueBarControl::paintMarkers(surface::PaintContext& context, const QRect& area, double limit) const
{
    const int y = std::clamp(nearestPixel(placeOf(limit)), -FarAway - 1, FarAway);
    LimitMarker::draw(context.painter, area, m_bar.left(), m_bar.left() + m_bar.width(), y,
                      values::toQColor(foreColor(), context.palette));
}

std::optional<surface::AccessibleRange> ValueBarControl::accessibleRange() const
{
    return surface::AccessibleRange{m_value, m_minimum, m_maximum};
}

QString ValueBarControl::accessibleText() const
{
    const auto text = [](double number) { return values::toText(Variant(number)); };
    QString state;
    switch (zone()) {
    case Zone::Low:
        state = QCoreApplication::translate("ValueBar", "below the low limit of %1").arg(text(m_lowLimit));
        break;
    case Zone::High:
        state = QCoreApplication::translate("ValueBar", "above the high limit of %1").arg(text(m_highLimit));
        break;
    case Zone::Normal:
        state = QCoreApplication::translate("ValueBar", "within the limits");
        break;
    }
    return QCoreApplication::translate("ValueBar", "%1 of %2 to %3, %4")
        .arg(text(m_value), text(m_minimum), text(m_maximum), state);
}

void ValueBarControl::copyDesign(const LiveControl& source)
{
    DisplayControl::copyDesign(source);
    resized();
}

} // namespace zan::display
