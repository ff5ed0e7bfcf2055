#include "surface/host/ScreenPlace.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>

namespace zan::surface {

namespace {

/// The view that a scene draws the widget in, and how; nothing for a widget that is in no scene.
struct Drawn
{
    explicit Drawn(const QWidget& widget)
    {
        const QGraphicsProxyWidget* proxy = widget.window()->graphicsProxyWidget();
        if (!proxy || !proxy->scene() || proxy->scene()->views().isEmpty())
            return;
        view = proxy->scene()->views().constFirst();
        toView = proxy->deviceTransform(view->viewportTransform());
    }

    const QGraphicsView* view = nullptr;
    QTransform toView; // from the widget's window to the view's picture
};

} // namespace

QPointF toScreen(const QWidget& widget, QPointF place)
{
    const Drawn drawn(widget);
    if (!drawn.view)
        return widget.mapToGlobal(place);
    return toScreen(*drawn.view->viewport(), drawn.toView.map(widget.mapTo(widget.window(), place)));
}

QRect partOnScreen(const QWidget& widget, const QRect& part)
{
    const QRectF exact(part);
    return QRectF(toScreen(widget, exact.topLeft()), toScreen(widget, exact.bottomRight())).toAlignedRect();
}

QPointF fromScreen(const QWidget& widget, QPointF global)
{
    const Drawn drawn(widget);
    if (!drawn.view)
        return widget.mapFromGlobal(global);
    const QPointF inView = fromScreen(*drawn.view->viewport(), global);
    return widget.mapFrom(widget.window(), drawn.toView.inverted().map(inView));
}

} // namespace zan::surface
