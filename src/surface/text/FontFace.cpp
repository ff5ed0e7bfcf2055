#include "surface/text/FontFace.h"

#include "values/DosCharset.h"

#include <QFontMetrics>
#include <QHashFunctions>

#include <unordered_map>

namespace zan::surface {

namespace {

std::size_t qHash(const FaceKey& key, std::size_t seed = 0)
{
    const int flags = key.italic | key.underline << 1 | key.strikethrough << 2 | key.dos << 3;
    return qHashMulti(seed, key.family, key.pixels, key.weight, flags);
}

struct FaceKeyHash
{
    std::size_t operator()(const FaceKey& key) const { return qHash(key); }
};

using FaceTable = std::unordered_map<FaceKey, FontFace*, FaceKeyHash>;

/// Faces in use. They are owned by the fonts that use them, so that none outlives the application's font engines
/// unless a font object does.
FaceTable& facesInUse()
{
    static FaceTable* table = new FaceTable;
    return *table;
}

/// Scripts whose characters stand for themselves, one glyph after the other.
bool isPlain(char16_t character)
{
    const QChar letter(character);
    if (letter.isMark() || letter.isSurrogate() || letter.combiningClass() != 0)
        return false;
    switch (letter.category()) {
    case QChar::Other_Format:
    case QChar::Other_Control:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
        return false;
    default:
        break;
    }
    switch (letter.script()) {
    case QChar::Script_Latin:
    case QChar::Script_Greek:
    case QChar::Script_Cyrillic:
    case QChar::Script_Common:
        return letter.direction() != QChar::DirR && letter.direction() != QChar::DirAL;
    default:
        return false;
    }
}

} // namespace

Ref<FontFace> FontFace::find(const FaceKey& key)
{
    if (const auto found = facesInUse().find(key); found != facesInUse().end())
        return Ref<FontFace>(found->second);
    Ref<FontFace> face(new FontFace(key));
    facesInUse().emplace(key, face.get());
    return face;
}

FontFace::FontFace(const FaceKey& key)
    : m_key(key)
{
    m_font.setFamily(key.family);
    m_font.setPixelSize(key.pixels);
    m_font.setWeight(QFont::Weight(qBound(1, int(key.weight), 1000)));
    m_font.setItalic(key.italic);
    m_font.setUnderline(key.underline);
    m_font.setStrikeOut(key.strikethrough);
    m_font.setKerning(false);
    m_raw = QRawFont::fromFont(m_font);
    const QFontMetrics metrics(m_font);
    m_ascent = metrics.ascent();
    m_height = metrics.height();
    m_run.setRawFont(m_raw);
}

FontFace::~FontFace()
{
    facesInUse().erase(m_key);
}

const FontFace::Glyph& FontFace::lookUp(char16_t character)
{
    if (character < m_glyphs.size()) {
        m_known[character] = true;
        return m_glyphs[character] = makeGlyph(character);
    }
    const auto found = m_others.constFind(character);
    return found != m_others.constEnd() ? *found : *m_others.insert(character, makeGlyph(character));
}

FontFace::Glyph FontFace::makeGlyph(char16_t character) const
{
    const QChar letter(m_key.dos ? values::DosCharset::shown(character) : character);
    Glyph glyph;
    if (!m_raw.isValid() || !isPlain(letter.unicode()))
        return glyph;
    quint32 index = 0;
    int count = 1;
    if (!m_raw.glyphIndexesForChars(&letter, 1, &index, &count) || count != 1 || index == 0)
        return glyph;
    QPointF advance;
    if (!m_raw.advancesForGlyphIndexes(&index, &advance, 1, QRawFont::SeparateAdvances))
        return glyph;
    const QRectF ink = m_raw.boundingRect(index);
    glyph.index = index;
    glyph.advance = float(advance.x());
    glyph.left = float(ink.left());
    glyph.right = float(ink.right());
    return glyph;
}

} // namespace zan::surface
