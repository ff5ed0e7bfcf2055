#pragma once

#include "binding/PropertyBag.h"
#include "component/FrameWindow.h"
#include "surface/forms/RecordingForms.h"

#include <QPointer>

namespace zan::component {

class Frame;

/// A control that was created for a caller in C: its widget, the window around it, and how a host treats it.
class Holder
{
public:
    /// Takes the widget over.
    explicit Holder(QWidget* control);
    virtual ~Holder();
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;

    QWidget* control() const noexcept { return m_control; } ///< null once the application has ended
    FrameWindow* window() const noexcept { return m_window; }
    /// The window by name; the same object for as long as the holder lives.
    Ref<Frame> frame();

    // The design values that a host keeps.
    virtual void initProperties() = 0;
    virtual void readProperties(const binding::PropertyBag& bag) = 0;
    virtual void writeProperties(binding::PropertyBag& bag) const = 0;

    /// Boxes and forms of a control that has any are answered at once, from a queue, and remembered.
    bool isUnattended() const noexcept { return m_isUnattended; }
    virtual void setUnattended(bool unattended) { m_isUnattended = unattended; }
    virtual surface::RecordingForms& forms() noexcept { return m_forms; }

private:
    surface::RecordingForms m_forms; // of a control that has none
    QPointer<QWidget> m_control;
    QPointer<FrameWindow> m_window;
    Ref<Frame> m_frame;
    bool m_isUnattended = false;
};

} // namespace zan::component
