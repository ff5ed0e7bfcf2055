#pragma once

#include "surface/host/WidgetControl.h"

namespace zan::surface {

/// A push button. It has no text colour of its own.
class CommandButton : public WidgetControl
{
public:
    CommandButton();
    ~CommandButton() override;
    const binding::MemberTable& members() const override;

    const QString& caption() const noexcept { return m_caption; }
    /// '&' marks the access key.
    void setCaption(const QString& caption);
    /// The button that Enter presses. At most one on a surface: setting it takes it from the others.
    bool isDefault() const noexcept { return m_default; }
    void setDefault(bool isDefault);
    /// The button that Esc presses. At most one on a surface.
    bool cancel() const noexcept { return m_cancel; }
    void setCancel(bool cancel);
    /// 0 standard: native colours. 1 graphical: BackColor shows, and the picture.
    std::int16_t style() const noexcept { return m_style; }
    void setStyle(std::int16_t style);
    Ref<Picture> picture() const;
    void setPicture(const Ref<Picture>& picture);
    /// Reads False; writing True presses the button.
    bool value() const noexcept { return false; }
    void setValue(bool value);
    /// What pressing the button by hand does, for an enabled and visible one.
    void press();

    const Habits& habits() const noexcept override;
    bool answerKey(DialogKey key, bool focused) override;
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::Button; }
    QString accessibleText() const override;
    void copyDesign(const LiveControl& source) override;

protected:
    QWidget* createWidget(QWidget* parent) override;
    void syncWidget(QWidget& widget) override;
    void stylePalette(QPalette& palette) const override;

private:
    QString m_caption;
    Ref<Picture> m_picture;
    std::uint8_t m_style = 0;
    bool m_default = false;
    bool m_cancel = false;
};

} // namespace zan::surface
