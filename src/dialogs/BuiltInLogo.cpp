#include "dialogs/BuiltInLogo.h"

#include <QPainter>
#include <QPainterPath>

namespace zan::dialogs {

/// A hydrograph over water, drawn rather than stored.
values::Ref<surface::Picture> builtInLogo()
{
    QImage image(240, 120, QImage::Format_RGB32);
    image.fill(QColor(0xf4, 0xf8, 0xfb));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int wave = 0; wave < 3; ++wave) {
        QPainterPath water(QPointF(0, 78 + wave * 14));
        for (int crest = 0; crest < 6; ++crest) {
            const double left = crest * 40.0;
            water.cubicTo(left + 13, 70 + wave * 14, left + 27, 88 + wave * 14, left + 40, 78 + wave * 14);
        }
        water.lineTo(240, 120);
        water.lineTo(0, 120);
        painter.setBrush(QColor(0x2f, 0x8f, 0xc4).lighter(150 - wave * 20));
        painter.drawPath(water);
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(0xd1, 0x5a, 0x2b), 4, Qt::SolidLine, Qt::RoundCap));
    QPainterPath flow(QPointF(14, 62));
    flow.cubicTo(70, 60, 78, 12, 104, 14);
    flow.cubicTo(132, 16, 140, 56, 226, 60);
    painter.drawPath(flow);
    painter.end();
    return values::make<surface::Picture>(image);
}

} // namespace zan::dialogs
