#pragma once

namespace zan::surface {

class CheckBox;
class CommandButton;
class ControlArray;
class DisplayList;
class EditLayer;
class EventRouter;
class FontFace;
class FontListener;
class FontObject;
class Label;
class LiveControl;
class OptionButton;
class Picture;
class PictureBox;
class ProgressBar;
class Shape;
class StyledControl;
class Surface;
class SurfaceEvents;
class SurfaceLayer;
class TextBox;
class TextPainter;
class WidgetControl;
class WidgetStack;
struct MouseInput;
struct PaintContext;

} // namespace zan::surface
