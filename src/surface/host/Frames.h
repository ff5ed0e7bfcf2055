#pragma once

class QColor;
class QPainter;
class QPalette;
class QRect;

namespace zan::surface::Frames {

/// Draws a one-pixel frame along the inside of the rectangle.
void drawLine(QPainter& painter, const QRect& rectangle, const QColor& colour);
/// Draws a frame that makes the rectangle look sunken, one or two pixels wide.
void drawSunken(QPainter& painter, const QRect& rectangle, const QPalette& palette, int width);

/// Draws the frame of a control with the classic properties BorderStyle and Appearance, and returns what is left
/// inside it.
QRect drawBorder(QPainter& painter, const QRect& rectangle, const QPalette& palette, bool border, bool withDepth);
/// Width of that frame in pixels.
int borderWidth(bool border, bool withDepth);

} // namespace zan::surface::Frames
