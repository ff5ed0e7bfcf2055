#pragma once

#include "values/Ref.h"

#include <QFont>
#include <QGlyphRun>
#include <QHash>
#include <QRawFont>
#include <QString>

#include <array>
#include <cstdint>

namespace zan::surface {

using values::Ref;

/// What tells one face from another.
struct FaceKey
{
    QString family; ///< an installed one
    std::int16_t pixels = 11;
    std::int16_t weight = 400;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;
    bool dos = false; ///< characters 0x80 to 0xFF show the DOS character set's glyphs

    friend bool operator==(const FaceKey&, const FaceKey&) = default;
};

/// A font ready for drawing: its glyphs and their measures, each looked up once. Fonts with equal values share one
/// face. A text of plain characters (one glyph each, no reordering, no marks) is laid out by adding advances; the
/// classic platform did the same, so there is no kerning.
class FontFace : public values::Shared
{
public:
    struct Glyph
    {
        std::uint32_t index = 0; ///< 0 when the character needs the toolkit's own layout
        float advance = 0;
        float left = 0; ///< ink, relative to the pen
        float right = 0;
    };

    /// The face of this key; made when no font has it at the moment.
    static Ref<FontFace> find(const FaceKey& key);
    ~FontFace() override;

    const QFont& font() const noexcept { return m_font; }
    const QRawFont& rawFont() const noexcept { return m_raw; }
    bool isDos() const noexcept { return m_key.dos; }
    /// Logical pixels above and below the base line; whole numbers.
    int ascent() const noexcept { return m_ascent; }
    int height() const noexcept { return m_height; }

    const Glyph& glyph(char16_t character)
    {
        return character < m_glyphs.size() && m_known[character] ? m_glyphs[character] : lookUp(character);
    }
    /// A run with this face's font, to be filled by the caller and drawn at once.
    QGlyphRun& scratchRun() noexcept { return m_run; }

private:
    explicit FontFace(const FaceKey& key);
    const Glyph& lookUp(char16_t character);
    Glyph makeGlyph(char16_t character) const;

    FaceKey m_key;
    QFont m_font;
    QRawFont m_raw;
    QGlyphRun m_run;
    int m_ascent = 0;
    int m_height = 0;
    std::array<Glyph, 256> m_glyphs;
    std::array<bool, 256> m_known{};
    QHash<char16_t, Glyph> m_others;
};

} // namespace zan::surface
