#include "surface/intrinsic/Label.h"

#include "binding/MemberTable.h"
#include "surface/host/Frames.h"
#include "surface/text/MnemonicText.h"
#include "surface/text/TextPainter.h"
#include "values/Twips.h"

#include <QPainter>
#include <QPalette>

namespace zan::surface {

Label::Label()
    : StyledControl(values::ButtonFace, values::ButtonText)
{}

const binding::MemberTable& Label::members() const
{
    using binding::field;
    using binding::oneOf;
    return binding::table([] {
        return binding::MemberTable("Label", &styledMembers(),
                                    {
                                        field<&Label::m_caption, &Label::reshape>("Caption").asDefault(),
                                        field<&Label::m_alignment, &Label::look>("Alignment", 0, oneOf(2)),
                                        field<&Label::m_borderStyle, &Label::reshape>("BorderStyle", 0, oneOf(1)),
                                        field<&Label::m_backStyle, &Label::look>("BackStyle", 1, oneOf(1)),
                                        field<&Label::m_appearance, &Label::reshape>("Appearance", 1, oneOf(1)),
                                        field<&Label::m_autoSize, &Label::reshape>("AutoSize"),
                                        field<&Label::m_wordWrap, &Label::reshape>("WordWrap"),
                                        field<&Label::m_useMnemonic, &Label::reshape>("UseMnemonic", true),
                                    });
    });
}

void Label::setCaption(const QString& caption)
{
    if (m_caption == caption)
        return;
    m_caption = caption;
    reshape();
}

void Label::reshape()
{
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

} // namespace zan::surface
