#include "surface/intrinsic/Label.h"

#include "binding/MemberTable.h"
#include "surface/host/Choice.h"
#include "surface/host/Frames.h"
#include "surface/text/MnemonicText.h"
#include "surface/text/TextPainter.h"
#include "values/Twips.h"

#include <QPainter>
#include <QPalette>

namespace zan::surface {

Label::Label()
    : StyledControl(values::ButtonFace, values::ButtonText)
    , m_alignment(0)
    , m_borderStyle(0)
    , m_backStyle(1)
    , m_appearance(1)
    , m_autoSize(false)
    , m_wordWrap(false)
    , m_useMnemonic(true)
{}

const binding::MemberTable& Label::members() const
{
    using binding::property;
    return binding::table([] {
        return binding::MemberTable("Label", &styledMembers(),
                                    {
                                        property<&Label::caption, &Label::setCaption>("Caption").asDefault(),
                                        property<&Label::alignment, &Label::setAlignment>("Alignment"),
                                        property<&Label::borderStyle, &Label::setBorderStyle>("BorderStyle"),
                                        property<&Label::backStyle, &Label::setBackStyle>("BackStyle"),
                                        property<&Label::appearance, &Label::setAppearance>("Appearance"),
                                        property<&Label::autoSize, &Label::setAutoSize>("AutoSize"),
                                        property<&Label::wordWrap, &Label::setWordWrap>("WordWrap"),
                                        property<&Label::useMnemonic, &Label::setUseMnemonic>("UseMnemonic"),
                                    });
    });
}

void Label::setCaption(const QString& caption)
{
    if (m_caption == caption)
        return;
    m_caption = caption;
    changed(Look);
    fitToText();
}

void Label::setAlignment(std::int16_t alignment)
{
    m_alignment = choice(alignment, 2) & 3;
    changed(Look);
}

void Label::setBorderStyle(std::int16_t style)
{
    m_borderStyle = choice(style, 1) & 1;
    changed(Look);
    fitToText();
}

void Label::setBackStyle(std::int16_t style)
{
    m_backStyle = choice(style, 1) & 1;
    changed(Look);
}

void Label::setAppearance(std::int16_t appearance)
{
    m_appearance = choice(appearance, 1) & 1;
    changed(Look);
    fitToText();
}

void Label::setAutoSize(bool autoSize)
{
    m_autoSize = autoSize;
    changed(Look);
    fitToText();
}

void Label::setWordWrap(bool wordWrap)
{
    m_wordWrap = wordWrap;
    changed(Look);
    fitToText();
}

void Label::setUseMnemonic(bool useMnemonic)
{
    m_useMnemonic = useMnemonic;
    changed(Look);
    fitToText();
}

void Label::fontChanged(FontObject& font)
{
    StyledControl::fontChanged(font);
    fitToText();
}

void Label::boundsChanged()
{
    fitToText();
}

/// An AutoSize label keeps its top left corner; a right-aligned one its right edge, a centred one its middle.
void Label::fitToText()
{
    if (!m_autoSize)
        return;
    const int border = 2 * Frames::borderWidth(m_borderStyle == 1, m_appearance == 1);
    TextPainter measuring;
    const int wrapWidth = m_wordWrap ? std::max(0, values::twipsToPixels(double(width())) - border) : -1;
    const QSize text = measuring.measure(m_caption, font()->face(), m_useMnemonic, wrapWidth);
    const float newHeight = values::pixelsToTwips(text.height() + border);
    if (m_wordWrap) {
        setHeight(newHeight);
        return;
    }
    const float newWidth = values::pixelsToTwips(text.width() + border);
    const float growth = newWidth - width();
    const float shift = m_alignment == 1 ? growth : m_alignment == 2 ? growth / 2 : 0.0F;
    if (growth != 0 || newHeight != height())
        move(left() - shift, {}, newWidth, newHeight);
}

void Label::paint(PaintContext& context, const QRect& rectangle)
{
    if (m_backStyle == 1)
        context.painter.fillRect(rectangle, values::toQColor(backColor(), context.palette));
    const QRect inside = m_borderStyle == 0 ? rectangle
                                            : Frames::drawBorder(context.painter, rectangle, context.palette, true,
                                                                 m_appearance == 1);
    if (m_caption.isEmpty())
        return;
    TextStyle style;
    style.colour = enabled() ? values::toQColor(foreColor(), context.palette)
                             : context.palette.color(QPalette::Disabled, QPalette::WindowText);
    style.align = TextStyle::Align(m_alignment);
    style.wrap = !m_autoSize || m_wordWrap; // COMPAT: WordWrap matters to a label that sizes itself, others wrap
    style.mnemonic = m_useMnemonic;
    context.text.draw(context.painter, inside, m_caption, font()->face(), style);
}

QString Label::accessibleText() const
{
    return m_useMnemonic ? withoutMnemonic(m_caption) : m_caption;
}

void Label::copyDesign(const LiveControl& source)
{
    const auto& other = static_cast<const Label&>(source);
    m_caption = other.m_caption;
    m_alignment = other.m_alignment;
    m_borderStyle = other.m_borderStyle;
    m_backStyle = other.m_backStyle;
    m_appearance = other.m_appearance;
    m_autoSize = other.m_autoSize;
    m_wordWrap = other.m_wordWrap;
    m_useMnemonic = other.m_useMnemonic;
    StyledControl::copyDesign(source);
}

} // namespace zan::surface
