#pragma once

#include "surface/host/ControlArray.h"
#include "surface/host/LiveControl.h"
#include "surface/host/Picture.h"
#include "surface/host/SurfaceEvents.h"
#include "surface/text/FontObject.h"
#include "values/Colour.h"
#include "values/Failure.h"

#include <QPixmap>
#include <QPointer>
#include <QRegion>
#include <QString>
#include <QWidget>

#include <memory>
#include <vector>

namespace zan::surface {

/// A widget on which live controls are placed. Passive controls are painted by the surface itself from a display
/// list; input controls are real widgets above it. Whatever changes is collected and shown once per turn of the
/// event loop, or at the next grab() or repaint().
class Surface : public QWidget, public FontListener
{
    Q_OBJECT
public:
    explicit Surface(QWidget* parent = nullptr);
    ~Surface() override;

    /// Adds a control array with its template, element 1, hidden. Names ignore case; a name in use raises 5.
    ControlArray& addArray(const QString& name, ControlCreator creator, const DesignSetup& setup = {});
    template <class Control>
    ControlArray& addArray(const QString& name, const DesignSetup& setup = {})
    {
        return addArray(
            name, [] { return Ref<LiveControl>(values::make<Control>()); }, setup);
    }
    /// The array of this name, or null.
    ControlArray* array(QStringView name) const noexcept;
    const std::vector<Ref<ControlArray>>& arrays() const noexcept { return m_arrays; }
    /// Every loaded control, templates included, array by array. A snapshot: safe to walk while controls go.
    std::vector<Ref<LiveControl>> controls() const;
    /// The visible controls that the surface itself paints, back to front. Valid until the next change.
    std::vector<LiveControl*> paintedControls() const;
    /// The topmost visible control under the point (pixels) that takes part in mouse events, or null.
    Ref<LiveControl> controlAt(QPoint point) const;
    /// The control that a widget of the surface belongs to, as its input widget or because it is drawn there; null for
    /// other widgets.
    LiveControl* controlOfWidget(const QWidget& widget) const;
    /// The control that a handle names on any surface, or null.
    static LiveControl* controlOfHandle(std::int32_t hWnd);
    /// The surface that a handle names, or null.
    static Surface* surfaceOfHandle(std::int32_t hWnd);

    Colour backColor() const noexcept { return m_backColor; }
    void setBackColor(Colour colour);
    Colour foreColor() const noexcept { return m_foreColor; }
    void setForeColor(Colour colour);
    /// Never empty.
    const Ref<FontObject>& surfaceFont() const noexcept { return m_font; }
    /// Raises 91 for Nothing.
    void setSurfaceFont(const Ref<FontObject>& font);
    /// 0 transparent, 1 opaque. Other values count as opaque.
    std::int16_t backStyle() const noexcept { return m_backStyle; }
    void setBackStyle(std::int16_t style);
    /// 0 none, 1 single line. Other values count as none.
    std::int16_t borderStyle() const noexcept { return m_borderStyle; }
    void setBorderStyle(std::int16_t style);
    /// The background picture, at its own size in the top left corner; null for none.
    const Ref<Picture>& picture() const noexcept { return m_picture; }
    void setPicture(const Ref<Picture>& picture);
    /// Clears what was drawn on the surface by program. The background picture and the controls stay.
    void cls();
    /// Small number that names the surface in the process; never 0.
    std::int32_t hWnd();

    /// While one lives, values that controls are given raise no clicks: a document that is loaded clicks nothing.
    class WithoutClicks
    {
    public:
        explicit WithoutClicks(Surface* surface)
            : m_surface(surface)
        {
            if (m_surface)
                ++m_surface->m_withoutClicks;
        }
        ~WithoutClicks()
        {
            if (m_surface)
                --m_surface->m_withoutClicks;
        }
        WithoutClicks(const WithoutClicks&) = delete;
        WithoutClicks& operator=(const WithoutClicks&) = delete;

    private:
        QPointer<Surface> m_surface;
    };
    bool clicksAreSilent() const noexcept { return m_withoutClicks > 0; }

    /// Whether input controls take anything from the user; they do, unless what is shown is there to be looked at only.
    bool takesInput() const noexcept { return m_takesInput; }
    void setTakesInput(bool takes);

    /// Who is told of events; null for nobody. Must outlive the surface or be taken away before.
    void setEvents(SurfaceEvents* events) noexcept { m_events = events; }
    SurfaceEvents* events() const noexcept { return m_events; }

    /// Puts a control at a place of the stacking order that it has had before.
    void restack(LiveControl& control, std::int32_t rank);
    /// What lies over all controls and sees the mouse first; null for nothing. A child of the surface.
    void setLayer(SurfaceLayer* layer) noexcept { m_layer = layer; }
    SurfaceLayer* layer() const noexcept { return m_layer; }
    /// What a control looks like, without what lies below it; no larger than the surface.
    QPixmap pictureOf(LiveControl& control);

    /// Shows what has changed now instead of at the end of this turn of the event loop: widgets are brought up to
    /// date, and what is painted is asked to be repainted.
    void flush();
    /// Has that happen at the end of this turn.
    void postFlush();
    /// True while changes wait to be shown.
    bool hasPendingChanges() const noexcept { return m_flushPosted; }
    /// How many painted controls the last paint drew.
    int lastPaintedControls() const noexcept { return m_lastPainted; }

    void fontChanged(FontObject& font) override;

    /// Calls a handler of the surface's owner. Holds nothing across the call; an error goes to runtimeError.
    /// False when the surface has gone meanwhile: the caller must touch nothing of it.
    template <class Call>
    bool tell(Call&& call);

Q_SIGNALS:
    /// A handler raised a run-time error in an event; nobody further down can take it.
    void runtimeError(int number, const QString& description);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    friend class ControlArray;
    friend class EditLayer;
    friend class EventRouter;
    friend class LiveControl;
    friend class PaintedHost;
    friend class WidgetControl;
    friend class WidgetStack;

    void controlLoaded(LiveControl& control);
    void controlUnloaded(LiveControl& control);
    void controlChanged(LiveControl& control, int what);
    void controlMoved(LiveControl& control, const QRect& from);
    void controlRestacked(LiveControl& control, bool toFront);
    std::int32_t nextRank(bool toFront) noexcept { return toFront ? ++m_frontRank : --m_backRank; }
    void uncovered(const QRect& rectangle);
    void lookChanged();
    bool syncWidgets();
    void syncPainted(LiveControl& control);
    QRegion takeDirtyRegion();
    bool isPaintingScreen() const;
    void paintBackground(QPainter& painter, const QRegion& region);
    void paintControl(QPainter& painter, LiveControl& control, const QRect& rectangle);

    std::vector<Ref<ControlArray>> m_arrays;
    std::unique_ptr<DisplayList> m_display;
    std::unique_ptr<WidgetStack> m_widgets;
    std::unique_ptr<EventRouter> m_router;
    std::unique_ptr<TextPainter> m_text;
    SurfaceEvents* m_events = nullptr;
    SurfaceLayer* m_layer = nullptr;
    std::vector<Ref<LiveControl>> m_changed; // wait for the flush
    std::vector<QRect> m_uncovered;          // what moved, hidden and removed controls have left
    std::vector<LiveControl*> m_painted;     // scratch of the running paint
    Ref<FontObject> m_font;
    Ref<Picture> m_picture;
    Colour m_backColor = values::ButtonFace;
    Colour m_foreColor = values::ButtonText;
    std::int16_t m_backStyle = 1;
    std::int16_t m_borderStyle = 0;
    std::int32_t m_handle = 0;
    int m_lastPainted = 0;
    bool m_flushPosted = false;
    bool m_layerCovered = false; // the stacking order has changed below the layer
    bool m_everything = true;    // so much has changed that one full repaint is cheaper
    int m_busy = 0; // above 0 no event may reach the owner now: it could take away what is being walked
    int m_withoutClicks = 0;
    bool m_takesInput = true;
    int m_telling = 0; // handlers of the owner that are running
    std::int32_t m_frontRank = 0;
    std::int32_t m_backRank = 0;
};

template <class Call>
bool Surface::tell(Call&& call)
{
    if (!m_events)
        return true;
    const QPointer<Surface> self(this);
    ++m_telling;
    const auto report = [&](const values::RuntimeError& error) {
        if (self)
            Q_EMIT self->runtimeError(error.number(), error.description());
    };
    values::atBoundary([&] { call(*m_events); }, report);
    if (!self)
        return false;
    --m_telling;
    return true;
}

} // namespace zan::surface
