#include "display/StatusLightControl.h"

#include "binding/MemberTable.h"
#include "display/PixelPainter.h"
#include "display/ScaleColour.h"
#include "surface/text/TextPainter.h"

#include <QColor>
#include <QCoreApplication>
#include <QPainter>

namespace zan::display {

namespace {

// Spelled here for their rows and for the host that is told of every write.
constexpr char CaptionName[] = "Caption";
constexpr char ValueName[] = "Value";

constexpr Colour Red{255};
constexpr Colour DarkRed{128};
constexpr int BevelLines = 5;
constexpr int HalfBright = 50; // percent

/// Black or white, whichever can be read on the colour.
QColor textColour(const QColor& background)
{
    const int brightness = (299 * background.red() + 587 * background.green() + 114 * background.blue()) / 1000;
    return brightness > 140 ? QColor(Qt::black) : QColor(Qt::white);
}

} // namespace

StatusLightControl::StatusLightControl()
    : DisplayControl(values::ButtonFace, values::ButtonText)
{
    InitProperties();
    compose();
    m_caption = QStringLiteral("STATUS"); // until the first picture is taken
}

StatusLightControl::~StatusLightControl() = default;

const binding::MemberTable& StatusLightControl::members() const
{
    using binding::field;
    using binding::property;
    using L = StatusLightControl;
    return binding::table([] {
        return binding::MemberTable(
            "StatusLight", &baseMembers(),
            {
                property<&L::font, &L::setFont>("Font").stored(),
                field<&L::m_backColor, &L::restyle>("BackColor", values::ButtonFace).notStored(),
                field<&L::m_backStyle, &L::look>("BackStyle", 1),
                field<&L::m_borderStyle, &L::borderChanged>("BorderStyle", 0),
                binding::method<&L::Refresh>("Refresh"),
                property<&L::caption, &L::setCaption>(CaptionName).keptIn<&L::m_caption>(QStringLiteral("STATUS")),
                property<&L::trueColour, &L::setTrueColour>("TrueColour").keptIn<&L::m_trueColour>(Red),
                field<&L::m_falseColour>("FalseColour", DarkRed),
                property<&L::value, &L::setValue>(ValueName).keptIn<&L::m_value>(std::int16_t(0)),
                property<&L::trueCaption, &L::setTrueCaption>("TrueCaption")
                    .keptIn<&L::m_trueCaption>(QStringLiteral("TRUE")),
                field<&L::m_falseCaption>("FalseCaption", QStringLiteral("FALSE")),
                field<&L::m_flash, &L::flashWritten>("Flash"),
            });
    });
}

Ref<FontObject> StatusLightControl::defaultFont(const Ref<FontObject>&) const
{
    const auto font = values::make<FontObject>();
    font->setBold(true);
    return font;
}

// Properties ---------------------------------------------------------------------------------------------------

const QString& StatusLightControl::caption()
{
    catchUp();
    return m_caption;
}

void StatusLightControl::setCaption(const QString& caption)
{
    catchUp();
    m_caption = caption;
    markChanged(values::Name(CaptionName));
    changed(Look);
}

void StatusLightControl::setTrueColour(Colour colour)
{
    catchUp();
    m_trueColour = colour;
}

void StatusLightControl::setTrueCaption(const QString& caption)
{
    catchUp();
    m_trueCaption = caption;
}

void StatusLightControl::setValue(const Variant& value)
{
    m_value = value;
    markChanged(values::Name(ValueName));
    draw();
}

bool StatusLightControl::isOn() const
{
    if (m_value.is(values::Kind::Boolean))
        return m_value.boolean();
    double number = 0;
    return m_value.isNumber() && values::tryToDouble(m_value, number) == values::ErrorNumber::None && number == -1;
}

// Picture ------------------------------------------------------------------------------------------------------

void StatusLightControl::Refresh()
{
    draw();
}

void StatusLightControl::resized()
{
    draw();
}

void StatusLightControl::flashTick()
{
    catchUp();
    changed(Look); // the phase may have been taken account of already, without anything having been painted
}

/// Takes the pictures that the flash timer was due to take by now. What they depend on must not change before.
void StatusLightControl::catchUp()
{
    if (m_flashTimer.settle())
        compose();
}

void StatusLightControl::draw()
{
    if (isLoading())
        return;
    const Colour colour = m_shownColour;
    const QString caption = m_caption;
    compose();
    // The same picture again costs nothing.
    if (m_shownColour != colour || m_caption != caption)
        changed(Look);
}

void StatusLightControl::compose()
{
    m_flashTimer.settle();
    const bool on = isOn();
    m_shownColour = on ? m_trueColour : m_falseColour;
    m_caption = on ? m_trueCaption : m_falseCaption;
    if (!on || !m_flash) {
        m_flashTimer.stop();
        return;
    }
    m_flashTimer.start();
    if (!m_flashTimer.phase())
        m_shownColour = ScaleColour(m_shownColour, HalfBright);
}

/// 1. The fill. 2. The bevel, five outlines from black to full colour; the corner at the bottom right counts in, so
/// the first one's right and lower edge lie outside. 3. The text above both.
void StatusLightControl::paint(surface::PaintContext& context, const QRect& rectangle)
{
    catchUp();
    m_flashTimer.awaitTick();
    const QRect area = paintFrame(context, rectangle, false);
    if (area.isEmpty())
        return;
    const QColor colour = values::toQColor(m_shownColour, context.palette);
    PixelPainter canvas(context.painter, area.topLeft(), area);
    canvas.fill(0, 0, area.width(), area.height(), colour);
    for (int line = 0; line < BevelLines; ++line) {
        const Colour shade = ScaleColour(m_shownColour, line * 25);
        canvas.outline(line, line, area.width() - line, area.height() - line,
                       values::toQColor(shade, context.palette));
    }
    surface::TextStyle style;
    style.colour = textColour(colour);
    style.align = surface::TextStyle::Align::Centre;
    style.centreVertically = true;
    context.text.draw(context.painter, area, m_caption, font()->face(), style);
}

QString StatusLightControl::accessibleText() const
{
    const QString state = isOn() ? QCoreApplication::translate("StatusLight", "on")
                                 : QCoreApplication::translate("StatusLight", "off");
    return m_caption.isEmpty() ? state : QCoreApplication::translate("StatusLight", "%1: %2").arg(m_caption, state);
}

void StatusLightControl::copyDesign(const LiveControl& source)
{
    DisplayControl::copyDesign(source);
    const auto& other = static_cast<const StatusLightControl&>(source);
    compose();
    if (scaleSize().isEmpty())
        m_caption = other.m_caption; // no picture was taken yet
}

} // namespace zan::display
