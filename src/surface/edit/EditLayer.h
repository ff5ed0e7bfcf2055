#pragma once

#include "surface/edit/RectIndex.h"
#include "surface/host/SurfaceLayer.h"
#include "values/Colour.h"
#include "values/Ref.h"

#include <QLine>
#include <QList>
#include <QPixmap>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <optional>

namespace zan::surface {

class EditLayer;

/// Whoever owns eight handles around one target: the layer draws them and tells it what happens.
class HandleFrame
{
public:
    HandleFrame() = default;
    virtual ~HandleFrame();
    HandleFrame(const HandleFrame&) = delete;
    HandleFrame& operator=(const HandleFrame&) = delete;

protected:
    friend class EditLayer;
    /// The left button went down on a handle, 0 to 7. The frame may be gone when this returns.
    virtual void handlePressed(std::size_t index) = 0;
    /// The target that this frame owns has another place, or another size too. Only while handles are shown.
    virtual void targetMoved(bool sized) = 0;
    /// The left button went up over the target that this frame owns.
    virtual void targetReleased() = 0;

private:
    QPointer<EditLayer> m_layer;
    std::uint32_t m_slot = 0;
};

/// What editing draws over the controls of a surface, or over the children of any other widget: handles, the picture
/// of what is dragged, guides. Handles are no widgets: the layer keeps their targets' rectangles, draws the handles
/// that have to be drawn, and finds the one under the pointer.
///
/// A handle lies right below its target in the stacking order: controls that lie higher cover it.
class EditLayer : public QWidget, public SurfaceLayer
{
public:
    /// The layer over a surface or another widget, made when it is first asked for. It belongs to that widget.
    static EditLayer& of(QWidget& place);
    static EditLayer* find(const QWidget& place);
    ~EditLayer() override;

    /// Takes the frame up for a target, by window handle: a control of this surface, or a widget within the place.
    /// A handle that names neither leaves the frame without a target. `size` is a handle's side in pixels. Calls for a
    /// frame that is not the layer's do nothing.
    void attach(HandleFrame& frame, std::int32_t target, int size, values::Colour colour);
    void detach(HandleFrame& frame) noexcept;
    /// Has the frame follow its target. False when another frame does already.
    bool own(HandleFrame& frame);
    void disown(HandleFrame& frame);
    /// Shows the handles where the target lies now, or hides them.
    void setShown(HandleFrame& frame, bool shown);

    /// What may change a rectangle that a control is about to be moved to: whoever aligns controls. Empty for none.
    /// `edges` says which of them follow the pointer, 0 for all together.
    using Adjust = std::function<QRect(LiveControl& control, const QRect& proposed, std::uint8_t edges,
                                       Qt::KeyboardModifiers modifiers)>;
    void setAdjust(Adjust adjust) { m_adjust = std::move(adjust); }
    const Adjust& adjust() const { return m_adjust; }

    /// The picture of what is being dragged, its top left corner at `place`; a null picture takes it away.
    void setDragPicture(const QPixmap& picture, QPoint place);
    /// Lines that show what is aligned with what.
    void setGuides(const QList<QLine>& guides);
    /// The mark on a corner of the selected figure.
    void setMarker(const std::optional<QRect>& marker);
    const std::optional<QRect>& marker() const noexcept { return m_marker; }
    /// The control that wears a frame, which follows it; null for none.
    void setFramed(LiveControl* control);
    const LiveControl* framed() const noexcept { return m_framed; }
    const QList<QLine>& guides() const noexcept { return m_guides; }

    /// The frame and the number of the handle at this place of the widget below; null for none.
    struct Hit
    {
        HandleFrame* frame = nullptr;
        std::size_t index = 0;
        QRect rectangle;
    };
    Hit handleAt(QPoint place) const;

    // SurfaceLayer
    bool pressed(QPoint place, const QMouseEvent& event) override;
    bool pointerMoved(QPoint place) override;
    void released(LiveControl& control) override;
    void controlMoved(LiveControl& control, const QRect& from) override;
    void restacked() override;
    void controlGone(LiveControl& control) override;
    void surfaceResized() override;
    LiveControl* current() const override { return m_framed; }
    void flush() override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    struct Slot
    {
        HandleFrame* frame = nullptr;
        LiveControl* control = nullptr; // the target on a surface
        QPointer<QWidget> widget = {};  // the target elsewhere
        QRect target = {};              // as of the last placing
        int size = 0;
        values::Colour colour = {};
        bool shown = false;
    };

    explicit EditLayer(QWidget& place);
    void addSlot();
    QRect targetRectangle(const Slot& slot) const;
    static QRect withHandles(const Slot& slot);
    std::int32_t rankOf(const Slot& slot) const;
    const void* keyOf(const Slot& slot) const;
    Slot* ownedSlot(const void* target);
    void place(std::uint32_t number);
    void targetChanged(const void* target);
    bool coversPlace(const Slot& slot, QPoint place) const;
    void paintHandles(QPainter& painter, std::uint32_t number, const QRegion& region) const;
    QRegion uncoveredPart(std::uint32_t number, const QRect& handle) const;
    void startResize(const Hit& hit);
    void dirty(const QRect& rectangle);
    void dirtyFrame();
    void renewMask();
    void showSpot(const Hit& hit);

    QWidget& m_place;
    const bool m_overSurface;
    std::vector<Slot> m_slots;
    std::vector<std::uint32_t> m_free;
    QHash<const void*, HandleFrame*> m_owners; // by target
    RectIndex m_index;                         // of the frames that are shown, handles included
    QRegion m_dirty;
    bool m_everythingDirty = false;
    int m_dirtyCount = 0;
    QWidget* m_spot = nullptr; // lies over the handle under the pointer and gives it its cursor
    Adjust m_adjust;
    QPixmap m_dragPicture;
    QPoint m_dragPlace;
    QList<QLine> m_guides;
    std::optional<QRect> m_marker;
    LiveControl* m_framed = nullptr;
    QRect m_frame; // as it was painted last
};

/// The cursor over a handle.
Qt::CursorShape handleCursor(std::size_t index);

} // namespace zan::surface
