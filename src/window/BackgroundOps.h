#pragma once

#include "surface/forms/HostForms.h"
#include "surface/host/Picture.h"

#include <QImage>
#include <QRect>

class QWidget;

namespace zan::window::BackgroundOps {

// A device context is an image here, a bitmap too, and a display has more colours than a palette holds: no picture made
// here has one.

/// Pixels that a background of this widget covers: what is inside its frame, and the room that its scroll bars take.
QSize coveredSize(const QWidget& widget);

/// A new picture of that size, the whole bitmap stretched over it. The bitmap is used up. One that holds nothing is told
/// in a message box, and nothing is stretched.
values::Ref<surface::Picture> StretchToBackground(QWidget& widget, QImage bitmap, surface::HostForms& forms);

/// A new picture of a part of a context, in the context's own pixels. What lies outside the context is black.
values::Ref<surface::Picture> CopyDCToPicture(const QImage& context, const QRect& part);

/// The picture that owns this bitmap from then on.
values::Ref<surface::Picture> BitmapToPicture(QImage bitmap);

} // namespace zan::window::BackgroundOps
