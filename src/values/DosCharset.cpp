#include "values/DosCharset.h"

#include <QHash>

#include <array>

namespace zan::values::DosCharset {

namespace {

constexpr char16_t First = 0x80;

constexpr std::array<char16_t, 128> Glyphs{
    u'Ç', u'ü', u'é', u'â', u'ä', u'à', u'å', u'ç', u'ê', u'ë', u'è', u'ï', u'î', u'ì', u'Ä', u'Å',      // 80
    u'É', u'æ', u'Æ', u'ô', u'ö', u'ò', u'û', u'ù', u'ÿ', u'Ö', u'Ü', u'¢', u'£', u'¥', u'₧', u'ƒ',      // 90
    u'á', u'í', u'ó', u'ú', u'ñ', u'Ñ', u'ª', u'º', u'¿', u'⌐', u'¬', u'½', u'¼', u'¡', u'«', u'»',      // A0
    u'░', u'▒', u'▓', u'│', u'┤', u'╡', u'╢', u'╖', u'╕', u'╣', u'║', u'╗', u'╝', u'╜', u'╛', u'┐',      // B0
    u'└', u'┴', u'┬', u'├', u'─', u'┼', u'╞', u'╟', u'╚', u'╔', u'╩', u'╦', u'╠', u'═', u'╬', u'╧',      // C0
    u'╨', u'╤', u'╥', u'╙', u'╘', u'╒', u'╓', u'╫', u'╪', u'┘', u'┌', u'█', u'▄', u'▌', u'▐', u'▀',      // D0
    u'α', u'ß', u'Γ', u'π', u'Σ', u'σ', u'µ', u'τ', u'Φ', u'Θ', u'Ω', u'δ', u'∞', u'φ', u'ε', u'∩',      // E0
    u'≡', u'±', u'≥', u'≤', u'⌠', u'⌡', u'÷', u'≈', u'°', u'∙', u'·', u'√', u'ⁿ', u'²', u'■', u'\u00a0', // F0
};

} // namespace

char16_t shown(char16_t character) noexcept
{
    return character >= First && character <= 0xff ? Glyphs[character - First] : character;
}

QString shown(const QString& text)
{
    QString result = text;
    for (QChar& character : result)
        character = QChar(shown(character.unicode()));
    return result;
}

QString stored(const QString& text)
{
    static const QHash<char16_t, char16_t> characters = [] {
        QHash<char16_t, char16_t> table;
        for (std::size_t place = 0; place < Glyphs.size(); ++place)
            table.insert(Glyphs[place], char16_t(First + place));
        return table;
    }();
    QString result = text;
    for (QChar& character : result)
        character = QChar(characters.value(character.unicode(), character.unicode()));
    return result;
}

} // namespace zan::values::DosCharset
