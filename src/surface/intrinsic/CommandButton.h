#pragma once

#include "binding/Marshal.h"
#include "surface/host/WidgetControl.h"

namespace zan::surface {

/// A push button. It has no text colour of its own.
class CommandButton : public WidgetControl
{
public:
    CommandButton();
    ~CommandButton() override;
    const binding::MemberTable& members() const override;

    /// Reads False; writing True presses the button.
    bool value() const noexcept { return false; }
    void setValue(bool value);
    /// What pressing the button by hand does, for an enabled and visible one.
    void press();

    const Habits& habits() const noexcept override;
    bool answerKey(DialogKey key, bool focused) override;
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::Button; }
    QString accessibleText() const override;

protected:
    QWidget* createWidget(QWidget* parent) override;
    void syncWidget(QWidget& widget) override;
    void stylePalette(QPalette& palette) const override;

private:
    void defaultChanged();
    void cancelChanged();

    QString m_caption; // '&' marks the access key
    Ref<Picture> m_picture;
    binding::Small m_style{0}; // 0 standard: native colours; 1 graphical: BackColor shows, and the picture
    bool m_default = false;    // the button that Enter presses; at most one on a surface
    bool m_cancel = false;     // the button that Esc presses; at most one on a surface
};

} // namespace zan::surface
