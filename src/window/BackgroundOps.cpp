#include "window/BackgroundOps.h"

#include <QAbstractScrollArea>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>

namespace zan::window::BackgroundOps {

using surface::Picture;
using values::Ref;

namespace {

const QString NoBitmap = QStringLiteral("Unable to retrieve bitmap info in \"StretchToBackground\".");

/// The bitmap of a display: many colours, a palette never, transparent where the source is.
QImage compatibleBitmap(QSize size, bool isTransparent)
{
    QImage bitmap(size, isTransparent ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    bitmap.fill(isTransparent ? Qt::transparent : Qt::black);
    return bitmap;
}

} // namespace

QSize coveredSize(const QWidget& widget)
{
    const auto* scrolled = qobject_cast<const QAbstractScrollArea*>(&widget);
    if (!scrolled)
        return widget.size();
    const int bar = widget.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &widget);
    QSize size = scrolled->viewport()->size();
    if (scrolled->verticalScrollBar()->isVisibleTo(&widget))
        size.rwidth() += bar;
    if (scrolled->horizontalScrollBar()->isVisibleTo(&widget))
        size.rheight() += bar;
    return size;
}

Ref<Picture> StretchToBackground(QWidget& widget, QImage bitmap, surface::HostForms& forms)
{
    // Measured first: the box below may end the widget.
    const qreal scale = widget.devicePixelRatioF();
    const QSize covered = coveredSize(widget) * scale;
    if (bitmap.isNull())
        forms.messageBox(&widget, NoBitmap, 0, QString());
    QImage destination = compatibleBitmap(covered, bitmap.hasAlphaChannel());
    if (!bitmap.isNull() && !destination.isNull())
        destination = std::move(bitmap)
                          .scaled(covered, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                          .convertToFormat(destination.format());
    destination.setDevicePixelRatio(scale);
    return CopyDCToPicture(destination, destination.rect());
}

Ref<Picture> CopyDCToPicture(const QImage& context, const QRect& part)
{
    if (part == context.rect() && context.colorCount() == 0)
        return BitmapToPicture(context);
    QImage copy = compatibleBitmap(part.size(), context.hasAlphaChannel());
    if (!copy.isNull()) {
        QPainter painter(&copy);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        const QRect inside = part & context.rect();
        painter.drawImage(QRect(inside.topLeft() - part.topLeft(), inside.size()), context, inside);
    }
    copy.setDevicePixelRatio(context.devicePixelRatio());
    return BitmapToPicture(std::move(copy));
}

Ref<Picture> BitmapToPicture(QImage bitmap)
{
    return values::make<Picture>(std::move(bitmap));
}

} // namespace zan::window::BackgroundOps
