#include "keel/CodePage.h"

#include "values/DosCharset.h"

#include <QStringDecoder>

#include <array>

namespace zan::keel {

namespace {

/// The pictures of the codes 0x00 to 0x1F; the tab is itself.
constexpr std::array<char16_t, 32> LowPictures{u'\0', u'☺', u'☻', u'♥', u'♦', u'♣', u'♠', u'•', u'◘', u'\t', u'◙',
                                               u'♂',  u'♀', u'♪', u'♫', u'☼', u'►', u'◄', u'↕', u'‼', u'¶',  u'§',
                                               u'▬',  u'↨', u'↑', u'↓', u'→', u'←', u'∟', u'↔', u'▲', u'▼'};
constexpr char16_t House = u'⌂'; // the picture of 0x7F

constexpr unsigned char FirstOfPage = 0x80;
constexpr std::array<char16_t, 128> Page850{
    u'Ç',      u'ü', u'é', u'â', u'ä', u'à', u'å', u'ç', u'ê', u'ë', u'è', u'ï', u'î', u'ì', u'Ä', u'Å',      // 80
    u'É',      u'æ', u'Æ', u'ô', u'ö', u'ò', u'û', u'ù', u'ÿ', u'Ö', u'Ü', u'ø', u'£', u'Ø', u'×', u'ƒ',      // 90
    u'á',      u'í', u'ó', u'ú', u'ñ', u'Ñ', u'ª', u'º', u'¿', u'®', u'¬', u'½', u'¼', u'¡', u'«', u'»',      // A0
    u'░',      u'▒', u'▓', u'│', u'┤', u'Á', u'Â', u'À', u'©', u'╣', u'║', u'╗', u'╝', u'¢', u'¥', u'┐',      // B0
    u'└',      u'┴', u'┬', u'├', u'─', u'┼', u'ã', u'Ã', u'╚', u'╔', u'╩', u'╦', u'╠', u'═', u'╬', u'¤',      // C0
    u'ð',      u'Ð', u'Ê', u'Ë', u'È', u'ı', u'Í', u'Î', u'Ï', u'┘', u'┌', u'█', u'▄', u'¦', u'Ì', u'▀',      // D0
    u'Ó',      u'ß', u'Ô', u'Ò', u'õ', u'Õ', u'µ', u'þ', u'Þ', u'Ú', u'Û', u'Ù', u'ý', u'Ý', u'¯', u'´',      // E0
    u'\u00ad', u'±', u'‗', u'¾', u'¶', u'§', u'÷', u'¸', u'°', u'¨', u'·', u'¹', u'³', u'²', u'■', u'\u00a0', // F0
};

char16_t dosCharacter(unsigned char code, CodePage page)
{
    if (code < LowPictures.size())
        return LowPictures[code];
    if (code == 0x7f)
        return House;
    if (code < FirstOfPage)
        return code;
    return page == CodePage::Dos850 ? Page850[code - FirstOfPage] : values::DosCharset::shown(char16_t(code));
}

DecodedText decodeUtf8(QByteArrayView bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    DecodedText decoded{decoder(bytes), -1};
    if (decoder.hasError())
        decoded.invalidAt = qMax<qsizetype>(0, decoded.text.indexOf(QChar(QChar::ReplacementCharacter)));
    for (qsizetype place = 0; place < decoded.text.size(); ++place) {
        const QChar character = decoded.text[place];
        if (character.category() == QChar::Other_Control && character != u'\t' &&
            (decoded.invalidAt < 0 || place < decoded.invalidAt))
            decoded.invalidAt = place;
    }
    return decoded;
}

} // namespace

std::optional<CodePage> codePageOfName(QStringView name)
{
    struct Row
    {
        QLatin1String name;
        CodePage page;
    };
    static constexpr Row rows[] = {
        {QLatin1String("437"), CodePage::Dos437}, {QLatin1String("CP437"), CodePage::Dos437},
        {QLatin1String("850"), CodePage::Dos850}, {QLatin1String("CP850"), CodePage::Dos850},
        {QLatin1String("65001"), CodePage::Utf8}, {QLatin1String("UTF-8"), CodePage::Utf8},
        {QLatin1String("UTF8"), CodePage::Utf8},
    };
    for (const Row& row : rows) {
        if (name.compare(row.name, Qt::CaseInsensitive) == 0)
            return row.page;
    }
    return std::nullopt;
}

DecodedText decode(QByteArrayView bytes, CodePage page)
{
    if (page == CodePage::Utf8)
        return decodeUtf8(bytes);
    DecodedText decoded;
    decoded.text.reserve(bytes.size());
    for (const char byte : bytes)
        decoded.text.append(QChar(dosCharacter(static_cast<unsigned char>(byte), page)));
    decoded.invalidAt = decoded.text.indexOf(QChar(u'\0'));
    return decoded;
}

} // namespace zan::keel
