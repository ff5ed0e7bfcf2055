#pragma once

#include "surface/host/WidgetControl.h"

namespace zan::surface {

/// A field of text that the user can edit.
class TextBox : public WidgetControl
{
public:
    TextBox();
    const binding::MemberTable& members() const override;

    const QString& text() const noexcept { return m_text; }
    /// A text longer than MaxLength is cut. Tells the surface's owner when it changes.
    void setText(const QString& text);
    /// 0 left, 1 right, 2 centre.
    std::int16_t alignment() const noexcept { return m_alignment; }
    void setAlignment(std::int16_t alignment);
    /// The user can select but not change the text.
    bool locked() const noexcept { return m_locked; }
    void setLocked(bool locked);
    /// Most characters, 0 for no limit of its own.
    std::int32_t maxLength() const noexcept { return m_maxLength; }
    void setMaxLength(std::int32_t length);
    /// Shown instead of every character; empty shows the text.
    const QString& passwordChar() const noexcept { return m_passwordChar; }
    void setPasswordChar(const QString& character);
    bool multiLine() const noexcept { return m_multiLine; }
    void setMultiLine(bool multiLine);
    /// 0 none, 1 horizontal, 2 vertical, 3 both; for a multi-line box.
    std::int16_t scrollBars() const noexcept { return m_scrollBars; }
    void setScrollBars(std::int16_t bars);
    std::int16_t borderStyle() const noexcept { return m_borderStyle; }
    void setBorderStyle(std::int16_t style);
    /// Digits only can be typed.
    bool digitsOnly() const noexcept { return m_digitsOnly; }
    void setDigitsOnly(bool digitsOnly);

    /// Selection in characters from 0. Values past the end are clamped, negative ones raise 380.
    std::int32_t selStart() const;
    void setSelStart(std::int32_t start);
    std::int32_t selLength() const;
    void setSelLength(std::int32_t length);
    QString selText() const;
    /// Puts the text in the place of the selection.
    void setSelText(const QString& text);

    bool keepsKey(DialogKey key) const override { return key == DialogKey::Enter && m_multiLine; }
    AccessibleRole accessibleRole() const noexcept override { return AccessibleRole::EditText; }
    QString accessibleText() const override;
    void copyDesign(const LiveControl& source) override;

protected:
    QWidget* createWidget(QWidget* parent) override;
    void syncWidget(QWidget& widget) override;

private:
    struct Selection
    {
        std::int32_t start = 0;
        std::int32_t length = 0;
    };
    Selection selection() const;
    void select(Selection selection);
    void takeEditedText(const QString& shown);
    QString shownText() const;

    QString m_text;
    QString m_passwordChar;
    std::int32_t m_maxLength = 0;
    Selection m_selection;
    std::uint8_t m_alignment = 0;
    std::uint8_t m_scrollBars = 0;
    std::uint8_t m_borderStyle = 1;
    bool m_locked = false;
    bool m_multiLine = false;
    bool m_digitsOnly = false;
};

} // namespace zan::surface
