#include "window/PanelEditor.h"

#include "surface/edit/EditLayer.h"
#include "surface/edit/HandleTable.h"
#include "surface/edit/WindowMoves.h"
#include "surface/forms/HostForms.h"
#include "surface/host/ScreenPlace.h"
#include "surface/host/Surface.h"
#include "surface/host/WidgetControl.h"
#include "values/Convert.h"
#include "values/Twips.h"
#include "window/BenchWindow.h"
#include "window/EditMenus.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QScopeGuard>

namespace zan::window {

using surface::ControlArray;
using surface::LiveControl;
using surface::MouseInput;
using surface::Surface;
using values::RuntimeError;
using wrappers::BenchControls;
using wrappers::ControlType;
using wrappers::iBenchControl;
using wrappers::OnDrop;
using wrappers::OnPress;
using wrappers::TwipsRectangle;

namespace {

constexpr int LeftButton = 1;
constexpr int RightButton = 2;
constexpr int EscapeKey = 27;
constexpr int AltHeld = 4;
constexpr float MarkerSize = 105;
/// The array whose elements have no window: the surface's own mouse routines serve them.
constexpr QStringView ShapeArray = u"Shape";
constexpr QStringView SiteMapArray = u"SiteMap1";
constexpr QStringView LabelType = u"VB.Label";
const values::Name CaptionName("Caption");

TwipsRectangle rectangleOf(const LiveControl& control)
{
    return {control.left(), control.top(), control.width(), control.height()};
}

} // namespace

PanelEditor::PanelEditor(BenchWindow& panel, Surface& surface, EditedPanel& edited)
    : m_panel(panel)
    , m_surface(surface)
    , m_history(edited)
    , m_guides(surface)
    , m_keys(panel, surface, *this)
{}

PanelEditor::~PanelEditor() = default;

/// Raises 91 when the panel's life has ended.
Ref<BenchControls> PanelEditor::controls() const
{
    Ref<BenchControls> list = m_panel.Controls();
    if (!list)
        values::raise(values::ErrorNumber::ObjectNotSet);
    return list;
}

Ref<iBenchControl> PanelEditor::wrapperOf(const LiveControl& control) const
{
    return controls()->Control(binding::Variant(values::toInteger(binding::Variant(control.tag()))));
}

Ref<iBenchControl> PanelEditor::editedWrapper(const LiveControl& control) const
{
    try {
        return wrapperOf(control);
    } catch (const RuntimeError&) {
        return {};
    }
}

void PanelEditor::setCurrentControl(const Ref<iBenchControl>& control)
{
    m_current = control;
    m_keys.refresh();
}

void PanelEditor::lockChanged()
{
    ShowMarker(!m_panel.LockPositions());
    m_keys.refresh();
}

// Presses ------------------------------------------------------------------------------------------------------

bool PanelEditor::press(LiveControl* control, const MouseInput& input)
{
    if (m_panel.LockMenu()) {
        Q_EMIT m_panel.MouseDown(input.button, input.shift, input.x, input.y);
        // A text box would open a menu of its own, where there is to be none.
        return control && input.button != LeftButton;
    }
    if (control)
        return pressControl(*control, input);
    try {
        return pressSurface(input);
    } catch (const RuntimeError&) {
        return false; // a press on the surface that fails is over; nobody is told
    }
}

bool PanelEditor::pressControl(LiveControl& control, const MouseInput& input)
{
    const ControlType* type = m_panel.controlTypes().ofArray(control.name());
    if (!type || type->press == OnPress::Nothing)
        return false;
    const Ref<LiveControl> live(&control);
    if (input.button != LeftButton) {
        setCurrentControl(wrapperOf(control));
        openMenu(&control, input, controlRightClickMenu(m_panel));
        return true;
    }
    const bool locked = m_panel.LockPositions();
    if (type->press == OnPress::HostDrag) {
        if (!locked)
            dragAndDrop(control, input);
        return !locked;
    }
    const QPointer<BenchWindow> alive(&m_panel);
    EditHistory::Command step(m_history, QStringLiteral("Move"));
    const Ref<iBenchControl> moved = editedWrapper(control);
    step.watch(moved);
    if (!locked) {
        m_guides.begin();
        wrapperOf(control)->Drag();
        if (!alive)
            return true;
    }
    const PanelGuides::Held held = m_guides.end();
    // COMPAT: a press alone snaps the control, on a locked panel too. After a move it may be another's, or nobody's.
    if (live->isLoaded() && editedWrapper(*live) == moved)
        placeUnlessHeld(*live, held);
    return !locked;
}

/// True when a menu has had the press.
bool PanelEditor::pressSurface(const MouseInput& input)
{
    if (input.button == RightButton) {
        openSurfaceMenu(input);
        return true;
    }
    ClearSelection();
    if (!m_panel.LockPositions())
        selectShape(input.x, input.y);
    return false;
}

/// Calls for each shape that a user can see, from the lower bound up, until it is told to stop. The template of the
/// array, while no control uses it, is passed over.
template <class Visit>
void PanelEditor::forEachShape(Visit visit) const
{
    const ControlArray* array = m_surface.array(ShapeArray);
    for (int index = array ? array->lBound() : 1; array && index <= array->uBound(); ++index) {
        LiveControl* shape = array->find(index);
        if (shape && isThere(*shape) && visit(*shape))
            return;
    }
}

bool PanelEditor::isUsed(const LiveControl& shape) const
{
    try {
        return wrapperOf(shape)->Control().get() == &shape;
    } catch (const RuntimeError&) {
        return false; // its tag finds no wrapper
    }
}

bool PanelEditor::isThere(const LiveControl& shape) const
{
    return shape.isLoaded() && (shape.visible() || isUsed(shape));
}

/// The selected shape has gone, and the marker with it.
void PanelEditor::dropShape()
{
    ShowMarker(false);
    m_shape = nullptr;
    m_guides.end();
    m_shapeDrag.reset();
}

void PanelEditor::leaveWindow()
{
    m_history.clear();
    dropShape();
    m_keys.refresh();
}

/// The first shape under the point becomes the selected one; with none the marker is left as it is.
void PanelEditor::selectShape(float x, float y)
{
    m_shape = nullptr;
    forEachShape([&](LiveControl& shape) {
        if (!hitsShape(rectangleOf(shape), x, y))
            return false;
        m_shape = Ref<LiveControl>(&shape);
        return true;
    });
    if (!m_shape)
        return;
    PlaceMarker();
    ShowMarker(true);
    m_grabX = m_shape->left() - x;
    m_grabY = m_shape->top() - y;
    m_shapeGrab = hitsCorner(rectangleOf(*m_shape), x, y);
    m_guides.begin();
    m_shapeStart = rectangleOf(*m_shape);
    m_shapeDrag.reset();
    m_shapeDrag.emplace(m_history,
                        m_shapeGrab == ShapeGrab::BottomRight ? QStringLiteral("Resize") : QStringLiteral("Move"));
    m_shapeDrag->watch(editedWrapper(*m_shape));
}

void PanelEditor::openSurfaceMenu(const MouseInput& input)
{
    m_menuX = input.x;
    m_menuY = input.y;
    setCurrentControl(nullptr);
    if (controls()->Count() > 0) {
        // The last shape under the point counts, where a left press takes the first.
        forEachShape([&](LiveControl& shape) {
            if (hitsShape(rectangleOf(shape), input.x, input.y))
                setCurrentControl(wrapperOf(shape));
            return false;
        });
    }
    openMenu(nullptr, input, m_current ? controlRightClickMenu(m_panel) : formRightClickMenu(m_panel));
}

void PanelEditor::openMenu(const LiveControl* control, const MouseInput& input,
                           const std::shared_ptr<surface::PopupMenu>& menu)
{
    const QPointF inside = QPointF(double(input.x), double(input.y)) / values::TwipsPerPixel;
    const QPointF place = control ? inside + control->bounds().topLeft() : inside;
    m_panel.forms().popupMenu(&m_panel, menu, surface::toScreen(m_surface, place).toPoint());
}

// Moves --------------------------------------------------------------------------------------------------------

void PanelEditor::move(LiveControl* control, const MouseInput& input)
{
    if (control) {
        const ControlType* type = m_panel.controlTypes().ofArray(control->name());
        if (type && type->selectsOnHover && !m_panel.LockPositions())
            setCurrentControl(wrapperOf(*control));
        return;
    }
    const QPointer<BenchWindow> alive(&m_panel);
    Q_EMIT m_panel.MouseMove(input.button, input.shift, input.x, input.y);
    if (!alive || !m_shape)
        return;
    if (!isThere(*m_shape)) {
        dropShape();
        return;
    }
    try {
        dragShape(input);
    } catch (const RuntimeError&) {
        // A shape that cannot get a size keeps the one it has.
    }
    if (alive)
        PlaceMarker();
}

void PanelEditor::dragShape(const MouseInput& input)
{
    const Ref<LiveControl> shape = m_shape;
    const bool sizes = m_shapeGrab == ShapeGrab::BottomRight;
    TwipsRectangle to = rectangleOf(*shape);
    if (sizes) {
        to.width = input.x - to.left;
        to.height = input.y - to.top;
    } else if (m_shapeGrab == ShapeGrab::Move) {
        to.left = input.x + m_grabX;
        to.top = input.y + m_grabY;
    } else {
        return;
    }
    const auto pixels = [](float twips) { return values::twipsToPixels(double(twips)); };
    const QRect proposed(pixels(to.left), pixels(to.top), pixels(to.width), pixels(to.height));
    const QRect best = m_guides.adjusted(*shape, proposed, sizes ? surface::RightEdge | surface::BottomEdge : 0,
                                         input.shift & AltHeld);
    to.left += values::pixelsToTwips(best.x() - proposed.x());
    to.top += values::pixelsToTwips(best.y() - proposed.y());
    to.width += values::pixelsToTwips(best.width() - proposed.width());
    to.height += values::pixelsToTwips(best.height() - proposed.height());
    shape->move(to.left, to.top, to.width, to.height);
}

void PanelEditor::release()
{
    if (!m_shape)
        return;
    if (!isThere(*m_shape)) {
        dropShape();
        return;
    }
    const Ref<LiveControl> shape = m_shape;
    const auto end = qScopeGuard([this] { m_shapeDrag.reset(); });
    try {
        placeUnlessHeld(*shape, m_guides.end());
    } catch (const RuntimeError&) {
        return; // a grid that cannot be snapped to leaves the shape selected
    }
    m_shape = nullptr;
}

void PanelEditor::focus(LiveControl& control)
{
    const ControlType* type = m_panel.controlTypes().ofArray(control.name());
    if (type && type->selectsOnFocus && !m_panel.LockPositions())
        setCurrentControl(wrapperOf(control));
}

bool PanelEditor::key(int keyCode, int shift)
{
    if (keyCode != EscapeKey || !m_shape || !m_shapeDrag)
        return m_keys.press(keyCode, shift);
    m_shape->move(m_shapeStart.left, m_shapeStart.top, m_shapeStart.width, m_shapeStart.height);
    dropShape();
    return true;
}

void PanelEditor::resizeBegins(const LiveControl& control)
{
    m_resize.reset();
    m_resize.emplace(m_history, QStringLiteral("Resize"));
    m_resize->watch(editedWrapper(control));
    m_guides.begin();
}

void PanelEditor::resizeEnded()
{
    m_guides.end();
    m_resize.reset();
}

void PanelEditor::ClearSelection()
{
    if (!m_panel.LockPositions())
        return;
    if (m_current)
        m_current->setShowGrabHandles(false);
    if (m_shape) {
        ShowMarker(false);
        m_shape = nullptr;
    }
}

// Drag and drop ------------------------------------------------------------------------------------------------

void PanelEditor::dragAndDrop(LiveControl& source, const MouseInput& input)
{
    const Ref<LiveControl> keptAlive(&source);
    m_grabX = input.x;
    m_grabY = input.y;
    const QPointer<BenchWindow> alive(&m_panel);
    const Ref<iBenchControl> dragged = editedWrapper(source);
    m_guides.begin();
    const std::optional<surface::Drop> drop = surface::dragControl(source);
    if (!alive)
        return;
    const PanelGuides::Held held = m_guides.end();
    if (!drop || !source.isLoaded() || editedWrapper(source) != dragged)
        return;
    const float x = values::pixelsToTwips(drop->place.x());
    const float y = values::pixelsToTwips(drop->place.y());
    const Ref<LiveControl> target = drop->target;
    EditHistory::Command step(m_history, QStringLiteral("Move"));
    step.watch(editedWrapper(source));
    if (target && target.get() != &source)
        step.watch(editedWrapper(*target));
    if (!target) {
        dropOnSurface(source, x, y, held);
        return;
    }
    const ControlType* type = m_panel.controlTypes().ofArray(target->name());
    const OnDrop onDrop = type ? type->drop : OnDrop::Nothing;
    if (onDrop == OnDrop::MovesIt)
        dropOnControl(source, *target, x, y, held);
    else if (onDrop == OnDrop::PassesOnToSurface)
        dropOnSurface(source, x + target->left(), y + target->top(), held);
}

/// COMPAT: what moves is the control that was dropped on. It is the dragged one itself when it is let go over its
/// own place; otherwise the source stays where it was.
void PanelEditor::dropOnControl(LiveControl& source, LiveControl& target, float x, float y, PanelGuides::Held held)
{
    const float left = source.left() + (x - m_grabX);
    const float top = source.top() + (y - m_grabY);
    if (source.tag().isEmpty())
        return;
    const Ref<iBenchControl> wrapper = wrapperOf(source);
    setCurrentControl(wrapper);
    placeUnlessHeld(target, &target == &source ? held : PanelGuides::Held{}, left, top);
    wrapper->UpdateNode();
}

void PanelEditor::dropOnSurface(LiveControl& source, float x, float y, PanelGuides::Held held)
{
    placeUnlessHeld(source, held, x - m_grabX, y - m_grabY);
    if (source.name() == SiteMapArray)
        return;
    const Ref<iBenchControl> wrapper = wrapperOf(source);
    setCurrentControl(wrapper);
    wrapper->UpdateNode();
}

void PanelEditor::PlaceControl(LiveControl& control, std::optional<float> left, std::optional<float> top)
{
    const Ref<LiveControl> held(&control);
    TwipsRectangle place{std::max(0.0F, left.value_or(control.left())), std::max(0.0F, top.value_or(control.top())),
                         0, 0};
    if (m_panel.SnapToGrid()) {
        place.width = control.width();
        place.height = control.height();
        place = snapped(place, m_panel.GridSize());
    }
    control.move(place.left, place.top, place.width, place.height);
}

/// Places a control after a drag. In a direction in which it was aligned with others it stays with them: the grid would
/// take it away again.
void PanelEditor::placeUnlessHeld(LiveControl& control, PanelGuides::Held held, std::optional<float> left,
                                  std::optional<float> top)
{
    const Ref<LiveControl> live(&control);
    const TwipsRectangle before = rectangleOf(control);
    PlaceControl(control, left, top);
    if (!live->isLoaded() || (!held.x && !held.y))
        return;
    TwipsRectangle place = rectangleOf(*live);
    if (held.x) {
        place.left = std::max(0.0F, left.value_or(before.left));
        place.width = before.width;
    }
    if (held.y) {
        place.top = std::max(0.0F, top.value_or(before.top));
        place.height = before.height;
    }
    live->move(place.left, place.top, place.width, place.height);
}

// The marker ---------------------------------------------------------------------------------------------------

/// Its centre lies on the bottom right corner of the selected shape.
void PanelEditor::PlaceMarker()
{
    if (!m_shape) {
        ShowMarker(false);
        return;
    }
    if (surface::EditLayer::of(m_surface).marker())
        ShowMarker(true);
}

void PanelEditor::ShowMarker(bool show)
{
    if (!show || !m_shape) {
        if (surface::EditLayer* layer = surface::EditLayer::find(m_surface))
            layer->setMarker({});
        return;
    }
    const float left = m_shape->left() + m_shape->width() - MarkerSize / 2;
    const float top = m_shape->top() + m_shape->height() - MarkerSize / 2;
    const int side = values::twipsToPixels(double(MarkerSize));
    surface::EditLayer::of(m_surface).setMarker(
        QRect(values::twipsToPixels(double(left)), values::twipsToPixels(double(top)), side, side));
}

// Commands -----------------------------------------------------------------------------------------------------

void PanelEditor::newControl(const QString& typeKey)
{
    EditHistory::Command step(m_history, QStringLiteral("Add"));
    const Ref<iBenchControl> added = controls()->Add(typeKey, QString());
    if (!added)
        return;
    step.added(added);
    const Ref<LiveControl> live(dynamic_cast<LiveControl*>(added->Control().get()));
    if (!live)
        return;
    PlaceControl(*live, m_menuX, m_menuY);
    if (typeKey == LabelType)
        live->put(CaptionName, QStringLiteral("New Label"));
}

void PanelEditor::paste()
{
    EditHistory::Command step(m_history, QStringLiteral("Paste"));
    step.added(controls()->AddFromXML(QGuiApplication::clipboard()->text()));
}

void PanelEditor::copy()
{
    if (m_current)
        QGuiApplication::clipboard()->setText(m_current->XMLNode().xml());
}

void PanelEditor::remove()
{
    if (!m_current)
        values::raise(values::ErrorNumber::ObjectNotSet);
    EditHistory::Command step(m_history, QStringLiteral("Delete"));
    // COMPAT: the current control goes on pointing at what was removed; deleting again takes what has its index now.
    const binding::Variant index(m_current->Index());
    const Ref<iBenchControl> removed = controls()->Control(index);
    step.removes(removed);
    takeKeyboardFrom(*removed);
    controls()->Remove(index);
}

/// A control that goes with the keyboard leaves it to the panel: the toolkit would give it to the next control, into
/// which the user would go on typing.
void PanelEditor::takeKeyboardFrom(const iBenchControl& control)
{
    auto* live = dynamic_cast<surface::WidgetControl*>(control.Control().get());
    const QWidget* widget = live ? live->widget() : nullptr;
    const QWidget* focused = m_panel.window()->focusWidget();
    if (widget && focused && (focused == widget || widget->isAncestorOf(focused)))
        m_surface.setFocus(Qt::OtherFocusReason);
}

void PanelEditor::sendToBack()
{
    if (m_current)
        m_current->ZOrder(std::int32_t(1)); // COMPAT: does nothing to a control that is there
    const Ref<BenchControls> list = controls();
    std::vector<Ref<LiveControl>> inOrder;
    for (std::int32_t place = 1; place <= list->Count(); ++place) {
        const Ref<iBenchControl> wrapper = list->Control(binding::Variant(place));
        if (const Ref<LiveControl> live{dynamic_cast<LiveControl*>(wrapper->Control().get())})
            inOrder.push_back(live);
    }
    EditHistory::Command step(m_history, QStringLiteral("Send to Back"));
    step.watchStacking(inOrder);
    for (const Ref<LiveControl>& live : inOrder)
        live->zOrder(std::int16_t(0));
}

void PanelEditor::toggleLockPositions()
{
    m_panel.setLockPositions(!m_panel.LockPositions());
}

} // namespace zan::window
