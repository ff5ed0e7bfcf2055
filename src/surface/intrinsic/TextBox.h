#pragma once

#include "binding/Marshal.h"
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
    /// Digits only can be typed.
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
    const QString& passwordChar() const noexcept { return m_passwordChar; }
    void setPasswordChar(const QString& character);
    void lengthChanged();

    QString m_text;
    QString m_passwordChar;       // shown instead of every character; empty shows the text
    std::int32_t m_maxLength = 0; // most characters, 0 for no limit of its own
    Selection m_selection;
    binding::Small m_alignment{0};   // 0 left, 1 right, 2 centre
    binding::Small m_scrollBars{0};  // 0 none, 1 horizontal, 2 vertical, 3 both; for a multi-line box
    binding::Small m_borderStyle{1}; // 0 none, 1 single line
    bool m_locked = false;           // the user can select but not change the text
    bool m_multiLine = false;
    bool m_digitsOnly = false;
};

} // namespace zan::surface
