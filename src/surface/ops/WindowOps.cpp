#include "surface/ops/WindowOps.h"

#include "surface/host/Handles.h"
#include "surface/host/LiveControl.h"
#include "surface/host/ScreenPlace.h"
#include "surface/host/Surface.h"

#include <QPointer>

#include <optional>

namespace zan::surface::WindowOps {

namespace {

QPointer<Surface>& lockedSurface()
{
    static QPointer<Surface> surface;
    return surface;
}

/// A part of a widget on the screen. The measures are the window's own pixels, whatever a scene draws it at.
QRect onScreen(const QWidget& widget, const QRect& part)
{
    const QWidget* window = widget.window();
    return part.translated(widget.mapTo(window, QPoint()) + toScreen(*window, {}).toPoint());
}

/// Rectangle on the screen, in pixels.
std::optional<QRect> screenRectangle(std::int32_t hWnd)
{
    if (const LiveControl* control = Handles::control(hWnd); control && control->isLoaded()) {
        const QRect bounds = control->bounds();
        return onScreen(*control->surface(), bounds);
    }
    if (const QWidget* widget = Handles::widget(hWnd))
        return onScreen(*widget, widget->rect());
    return std::nullopt;
}

} // namespace

bool LockUpdates(std::int32_t hWnd)
{
    Surface* surface = Handles::surface(hWnd);
    if (!surface || lockedSurface())
        return false;
    lockedSurface() = surface;
    surface->setUpdatesEnabled(false);
    return true;
}

void UnlockUpdates()
{
    if (lockedSurface())
        lockedSurface()->setUpdatesEnabled(true);
    lockedSurface() = nullptr;
}

Bounds GetWindowBounds(std::int32_t hWnd, std::int32_t parent)
{
    const std::optional<QRect> own = screenRectangle(hWnd);
    if (!own)
        return {};
    const int parentTop = screenRectangle(parent).value_or(QRect()).top();
    return {float(own->left()), float(own->top() - parentTop), float(own->width()), float(own->height())};
}

} // namespace zan::surface::WindowOps
