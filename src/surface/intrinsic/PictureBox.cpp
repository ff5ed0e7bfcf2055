#include "surface/intrinsic/PictureBox.h"

#include "binding/MemberTable.h"
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
    using binding::field;
    using binding::oneOf;
    using P = PictureBox;
    return binding::table([] {
        return binding::MemberTable("PictureBox", &styledMembers(),
                                    {
                                        field<&P::m_picture, &P::reshape>("Picture").asDefault(),
                                        field<&P::m_borderStyle, &P::reshape>("BorderStyle", 1, oneOf(1)),
                                        field<&P::m_appearance, &P::reshape>("Appearance", 1, oneOf(1)),
                                        field<&P::m_autoSize, &P::reshape>("AutoSize"),
                                    });
    });
}

void PictureBox::reshape()
{
    changed(Look);
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

} // namespace zan::surface
