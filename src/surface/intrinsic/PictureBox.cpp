#include "surface/intrinsic/PictureBox.h"

#include "binding/MemberTable.h"
#include "surface/host/Choice.h"
#include "surface/host/Frames.h"
#include "surface/host/Picture.h"
#include "values/Twips.h"

#include <QPainter>
#include <QPalette>

namespace zan::surface {

PictureBox::PictureBox()
    : StyledControl(values::ButtonFace, values::ButtonText)
{}

PictureBox::~PictureBox() = default;

const binding::MemberTable& PictureBox::members() const
{
    using binding::property;
    return binding::table([] {
        return binding::MemberTable(
            "PictureBox", &styledMembers(),
            {
                property<&PictureBox::picture, &PictureBox::setPicture>("Picture").asDefault(),
                property<&PictureBox::borderStyle, &PictureBox::setBorderStyle>("BorderStyle"),
                property<&PictureBox::appearance, &PictureBox::setAppearance>("Appearance"),
                property<&PictureBox::autoSize, &PictureBox::setAutoSize>("AutoSize"),
            });
    });
}

void PictureBox::setPicture(const Ref<Picture>& picture)
{
    m_picture = picture;
    changed(Look);
    fitToPicture();
}

void PictureBox::setBorderStyle(std::int16_t style)
{
    m_borderStyle = choice(style, 1);
    changed(Look);
    fitToPicture();
}

void PictureBox::setAppearance(std::int16_t appearance)
{
    m_appearance = choice(appearance, 1);
    changed(Look);
    fitToPicture();
}

void PictureBox::setAutoSize(bool autoSize)
{
    m_autoSize = autoSize;
    fitToPicture();
}

void PictureBox::fitToPicture()
{
    if (!m_autoSize || !m_picture)
        return;
    const int border = 2 * Frames::borderWidth(m_borderStyle == 1, m_appearance == 1);
    move(left(), {}, values::pixelsToTwips(m_picture->image().width() + border),
         values::pixelsToTwips(m_picture->image().height() + border));
}

void PictureBox::paint(PaintContext& context, const QRect& rectangle)
{
    QPainter& painter = context.painter;
    painter.fillRect(rectangle, values::toQColor(backColor(), context.palette));
    const QRect inside =
        Frames::drawBorder(painter, rectangle, context.palette, m_borderStyle == 1, m_appearance == 1);
    if (!m_picture)
        return;
    const QRect shown(inside.topLeft(), m_picture->image().size().boundedTo(inside.size()));
    if (!shown.isEmpty())
        painter.drawPixmap(shown, m_picture->pixmap(), QRect(QPoint(0, 0), shown.size()));
}

QString PictureBox::accessibleText() const
{
    return toolTipText();
}

void PictureBox::copyDesign(const LiveControl& source)
{
    StyledControl::copyDesign(source);
    const auto& other = static_cast<const PictureBox&>(source);
    m_picture = other.m_picture;
    m_borderStyle = other.m_borderStyle;
    m_appearance = other.m_appearance;
    m_autoSize = other.m_autoSize;
    changed(Look);
}

} // namespace zan::surface
