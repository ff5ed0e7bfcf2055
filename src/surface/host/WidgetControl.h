#pragma once

#include "surface/host/StyledControl.h"

#include <QPointer>
#include <QWidget>

namespace zan::surface {

/// A live control shown by a real widget: native look, keyboard focus, input methods. The widget is made when the
/// control is first shown and follows the properties at each flush, so that a burst of writes costs one update.
class WidgetControl : public StyledControl
{
public:
    ~WidgetControl() override;

    Hosting hosting() const noexcept override { return Hosting::Widget; }
    /// The widget, or null while none was needed. It belongs to the surface.
    QWidget* widget() const noexcept { return m_widget; }
    /// The widget, made now if need be; null when the control is unloaded.
    QWidget* ensureWidget();
    void setFocus() override;
    void takeKeyboard(Qt::FocusReason reason) override;
    std::int16_t tabPlace() const noexcept override { return m_tabIndex; }
    void tabLast() override;

    /// Place in the order of the Tab key on the surface, from 0.
    std::int16_t tabIndex() const noexcept { return m_tabIndex; }
    /// Raises 380 for a negative place.
    void setTabIndex(std::int16_t place);
    bool tabStop() const noexcept { return m_tabStop; }

protected:
    WidgetControl(Colour back, Colour fore)
        : StyledControl(back, fore)
    {}
    static const binding::MemberTable& widgetMembers();

    /// Makes the widget, a child of `parent`, and connects its signals, with the widget itself as their context.
    virtual QWidget* createWidget(QWidget* parent) = 0;
    /// Whether what a user does to its widget sets something. A picture to look around in goes on when a surface takes no
    /// input.
    virtual bool takesInput() const { return true; }
    /// Brings the widget's content and look up to date with the properties. Geometry, visibility, enabled state,
    /// font, tool tip and tab stop are done by the caller.
    virtual void syncWidget(QWidget& widget) = 0;
    /// Colours for the widget; the default gives window, base and button BackColor and their texts ForeColor.
    virtual void stylePalette(QPalette& palette) const;
    /// Drops the widget, so that the next flush makes another (a text box that becomes multi-line, say).
    void renewWidget();
    /// True while the control writes to its widget: the widget's signals are then our own doing.
    bool isSyncing() const noexcept { return m_syncing; }

    bool m_tabStop = true;

private:
    friend class Surface;
    friend class WidgetStack;
    void sync(int changes);
    void syncStyle(QWidget& widget);
    void dropWidget();
    /// Ends the connections that createWidget() has made. Others listen too: the toolkit's accessibility hears from it
    /// that the widget has gone.
    static void stopTelling(QWidget& widget);

    QPointer<QWidget> m_widget;
    std::int16_t m_tabIndex = -1;
    bool m_syncing = false;
};

} // namespace zan::surface
