#pragma once

#include <QPointF>
#include <QRect>

class QWidget;

namespace zan::surface {

/// Where a place of a widget is on the screen, in global pixels. The toolkit's own answer is off by the place of the
/// view when a graphics scene draws the widget at a zoom.
QPointF toScreen(const QWidget& widget, QPointF place);
/// The whole pixels of the screen that a part of a widget takes.
QRect partOnScreen(const QWidget& widget, const QRect& part);
/// The place of a widget that lies at this place of the screen.
QPointF fromScreen(const QWidget& widget, QPointF global);

} // namespace zan::surface
