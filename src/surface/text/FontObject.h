#pragma once

#include "binding/Object.h"
#include "surface/Forward.h"

#include <QFont>
#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

namespace zan::surface {

using binding::Object;
using values::Currency;
using values::Ref;
using values::Variant;

/// Whoever shows text in a font and has to show it anew when the font changes.
class FontListener
{
public:
    /// One or more of the font's values have changed. The font may be shared with others.
    virtual void fontChanged(FontObject& font) = 0;

protected:
    ~FontListener() = default;
};

/// A font as documents and scripts know it. Fonts are shared: every owner of one font object changes with it.
/// Small, because every control of a panel has a copy of its own.
class FontObject : public Object
{
public:
    /// MS Sans Serif, 8.25 points, regular.
    FontObject();
    ~FontObject() override;
    /// The nearest font object to a toolkit font.
    static Ref<FontObject> fromQFont(const QFont& font);

    const binding::MemberTable& members() const override;
    Ref<Object> valueCopy() const override;

    const QString& name() const noexcept { return m_name; }
    /// Raises 380 for an empty name. A name that stands for one character set only ("Terminal") sets Charset.
    void setName(const QString& name);
    /// Size in points, four decimals.
    Currency size() const noexcept { return m_size; }
    /// Raises 380 outside 1 to 2160 points.
    void setSize(Currency size);
    double points() const noexcept { return double(m_size.scaled) / 10000.0; }
    /// True when Weight is above 550.
    bool bold() const noexcept;
    /// Sets Weight to 700 or 400.
    void setBold(bool bold);
    bool italic() const noexcept { return m_italic; }
    void setItalic(bool italic) { change(m_italic, italic); }
    bool underline() const noexcept { return m_underline; }
    void setUnderline(bool underline) { change(m_underline, underline); }
    bool strikethrough() const noexcept { return m_strikethrough; }
    void setStrikethrough(bool strikethrough) { change(m_strikethrough, strikethrough); }
    /// 0 to 1000; 400 is regular, 700 bold.
    std::int16_t weight() const noexcept { return m_weight; }
    /// Raises 380 outside 0 to 1000.
    void setWeight(std::int16_t weight);
    /// Character set, 0 to 255. 255 shows the characters 0x80 to 0xFF as the DOS character set does.
    std::int16_t charset() const noexcept { return m_charset; }
    /// Raises 380 outside 0 to 255.
    void setCharset(std::int16_t charset);

    /// Whether characters 0x80 to 0xFF stand for the DOS character set's.
    bool isDosCharset() const noexcept { return m_charset == 255; }
    /// The font to draw with: classic names replaced by what is installed, size in whole logical pixels.
    const QFont& qfont();
    /// Glyphs and measures of that font. Valid until the next change of this font.
    FontFace& face();

    void addListener(FontListener& listener);
    void removeListener(FontListener& listener);

private:
    friend Ref<FontObject> copyFont(const FontObject& font);
    /// Takes a value over and tells of it, if it is another one.
    template <class T>
    void change(T& field, const T& value)
    {
        if (field == value)
            return;
        field = value;
        changed();
    }
    void changed();

    std::int16_t m_weight = 0;
    std::int16_t m_charset = 0;
    bool m_italic = false;
    bool m_underline = false;
    bool m_strikethrough = false;
    Currency m_size;
    QString m_name;
    Ref<FontFace> m_face;
    FontListener* m_listener = nullptr;                    // most fonts have one owner
    std::unique_ptr<std::vector<FontListener*>> m_further; // the owners after the first
};

/// A new font object with the same values, assigned in the order Name, Bold, Charset, Italic, Size, Strikethrough,
/// Underline, Weight. It has no owner yet.
Ref<FontObject> copyFont(const FontObject& font);

/// Whether two fonts have equal values: Name (exact), Bold, Charset, Italic, Size, Strikethrough, Underline, Weight.
bool fontsEqual(const FontObject& a, const FontObject& b);

} // namespace zan::surface
