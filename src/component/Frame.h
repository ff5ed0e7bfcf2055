#pragma once

#include "component/Bag.h"

namespace zan::component {

class FrameWindow;
class Holder;

/// The window around a created control, by name. Measures are pixels. Raises 91 once the control has gone.
class Frame : public Object
{
public:
    explicit Frame(Holder& holder)
        : m_holder(&holder)
    {}
    void forget() noexcept { m_holder = nullptr; }
    /// The window, whose signals are the events.
    FrameWindow& window() const;
    const binding::MemberTable& members() const override;

    QString Title() const;
    void setTitle(const QString& title);
    bool Visible() const;
    void setVisible(bool visible);
    std::int32_t Left() const;
    void setLeft(std::int32_t left);
    std::int32_t Top() const;
    void setTop(std::int32_t top);
    std::int32_t Width() const;
    /// Raises 380 outside 1 to 8192.
    void setWidth(std::int32_t width);
    std::int32_t Height() const;
    void setHeight(std::int32_t height);
    /// Makes the window as large as what it shows.
    void Fit();
    /// The window as the platform's window system knows it.
    double NativeWindow() const;
    /// Draws what the window shows, shown or not, into a PNG file. Raises 75 when that cannot be written.
    void SavePicture(const QString& file);

    /// Whether boxes are answered at once: by Answer, or by their first button. True for an application without a
    /// display, where nobody could.
    bool Unattended() const;
    void setUnattended(bool unattended);
    void Answer(const QString& text);
    std::int32_t BoxCount() const;
    /// Text of a box that was answered, from 1. Raises 9 for another.
    QString Box(std::int32_t index) const;

    void InitProperties();
    /// Raises 91 without a bag.
    void ReadProperties(const Ref<Bag>& bag);
    void WriteProperties(const Ref<Bag>& bag);

private:
    Holder& holder() const;
    Holder* m_holder;
};

} // namespace zan::component
