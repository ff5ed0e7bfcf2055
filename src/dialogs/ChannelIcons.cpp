#include "dialogs/ChannelIcons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace zan::dialogs {

namespace {

constexpr int Side = 16;
const QColor ChannelColour(0x1f, 0x8a, 0xc0); // both are seen on light and on dark ground
const QColor NoneColour(0x8c, 0x93, 0x9c);

template <class Draw>
QPixmap drawnAt(int scale, const QColor& colour, Draw draw)
{
    QPixmap pixmap(Side * scale, Side * scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(scale, scale);
    painter.setPen(QPen(colour, 1.7, Qt::SolidLine, Qt::RoundCap));
    draw(painter);
    painter.end();
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

template <class Draw>
QIcon drawn(const QColor& colour, Draw draw)
{
    QIcon icon;
    for (const int scale : {1, 2, 3}) {
        icon.addPixmap(drawnAt(scale, colour, draw));
        icon.addPixmap(drawnAt(scale, Qt::white, draw), QIcon::Selected); // on the colour of the selection
    }
    return icon;
}

} // namespace

QIcon channelIcon()
{
    return drawn(ChannelColour, [](QPainter& painter) {
        QPainterPath wave(QPointF(1.5, 9));
        wave.cubicTo(QPointF(3.5, 1), QPointF(6, 1), QPointF(8, 8));
        wave.cubicTo(QPointF(10, 15), QPointF(12.5, 15), QPointF(14.5, 7));
        painter.drawPath(wave);
    });
}

QIcon noChannelIcon()
{
    return drawn(NoneColour, [](QPainter& painter) {
        painter.drawEllipse(QPointF(8, 8), 5.4, 5.4);
        painter.drawLine(QPointF(4.3, 11.7), QPointF(11.7, 4.3));
    });
}

} // namespace zan::dialogs
