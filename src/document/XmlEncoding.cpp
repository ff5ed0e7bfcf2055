#include "document/XmlEncoding.h"

#include "document/XmlNames.h"

#include <QStringConverter>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace zan::document {

namespace {

/// What windows-1252 has at 0x80 to 0x9F; the five that it leaves open stay control characters.
constexpr char16_t Windows1252[32] = {0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                      0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x8D,   0x017D, 0x8F,
                                      0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                      0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

bool isBlank(char byte)
{
    return isXmlBlank(char16_t(static_cast<unsigned char>(byte)));
}

/// The encoding that the declaration names, in lower case; empty when it names none.
QByteArray declaredEncoding(const QByteArray& bytes)
{
    if (!bytes.startsWith("<?xml") || bytes.size() < 6 || !isBlank(bytes[5]))
        return {};
    const qsizetype end = bytes.indexOf("?>");
    qsizetype at = bytes.indexOf("encoding");
    if (at < 0 || end < 0 || at > end)
        return {};
    at += 8;
    while (at < end && (isBlank(bytes[at]) || bytes[at] == '='))
        ++at;
    const qsizetype close = at < end ? bytes.indexOf(bytes[at], at + 1) : -1;
    if (close < 0 || close > end)
        return {};
    return bytes.mid(at + 1, close - at - 1).toLower();
}

std::optional<QByteArray> utf16ToUtf8(const QByteArray& bytes, bool bigEndian, ParseError& error)
{
    const qsizetype units = (bytes.size() - 2) / 2;
    QString text(units, Qt::Uninitialized);
    const auto* byte = reinterpret_cast<const unsigned char*>(bytes.constData()) + 2;
    for (qsizetype i = 0; i < units; ++i, byte += 2)
        text[i] = QChar(char16_t(bigEndian ? byte[0] << 8 | byte[1] : byte[1] << 8 | byte[0]));
    if (bytes.size() % 2 == 0)
        return toUtf8(text, error);
    error = errorAt(text.toUtf8(), bytes.size() * 3, QStringLiteral("The UTF-16 text ends within a character."));
    return std::nullopt;
}

QByteArray singleBytesToUtf8(const QByteArray& bytes, bool isWindows)
{
    QString text = QString::fromLatin1(bytes);
    if (isWindows) {
        for (QChar& character : text) {
            const char16_t unit = character.unicode();
            if (unit >= 0x80 && unit < 0xA0)
                character = QChar(Windows1252[unit - 0x80]);
        }
    }
    return text.toUtf8();
}

constexpr qsizetype BlockSize = 128;

/// Counts the `<` of a block of ASCII characters that XML allows; -1 for any other block. Without branches, sixteen bytes
/// at a time.
int countTagsOfPlainBlock(const unsigned char* at)
{
    using Bytes [[gnu::vector_size(16)]] = signed char; // below zero beyond ASCII
    Bytes others{};
    Bytes tags{};
    for (qsizetype i = 0; i < BlockSize; i += qsizetype(sizeof(Bytes))) {
        Bytes bytes;
        std::memcpy(&bytes, at + i, sizeof bytes);
        others |= (bytes < 0x20) & (bytes != '\t') & (bytes != '\n') & (bytes != '\r');
        tags -= bytes == '<'; // a comparison that holds is -1
    }
    std::uint64_t words[2];
    std::memcpy(words, &others, sizeof words);
    if ((words[0] | words[1]) != 0)
        return -1;
    std::memcpy(words, &tags, sizeof words);
    // The sum of the bytes, which is no more than the block.
    return int(((words[0] + words[1]) * 0x0101010101010101u) >> 56);
}

/// Bytes of the character that starts here; 0 when they are no character that XML allows.
int lengthOfCharacter(const unsigned char* at, const unsigned char* end)
{
    const unsigned char lead = *at;
    if (lead < 0x80)
        return isXmlCharacter(lead) ? 1 : 0;
    const int length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || end - at < length)
        return 0;
    char32_t character = lead & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        if ((at[i] & 0xC0) != 0x80)
            return 0;
        character = character << 6 | (at[i] & 0x3F);
    }
    constexpr char32_t Smallest[] = {0, 0, 0x80, 0x800, 0x10000}; // a longer form than needed is no character
    return character >= Smallest[length] && isXmlCharacter(character) ? length : 0;
}

} // namespace

ParseError errorAt(const QByteArray& utf8, qsizetype offset, const QString& message)
{
    ParseError error{message, 1, 1};
    const qsizetype end = std::clamp<qsizetype>(offset, 0, utf8.size());
    for (qsizetype i = 0; i < end; ++i) {
        const char byte = utf8[i];
        if (byte == '\n' || (byte == '\r' && (i + 1 == utf8.size() || utf8[i + 1] != '\n'))) {
            ++error.line;
            error.column = 1;
        } else if ((byte & 0xC0) != 0x80 && byte != '\r') {
            ++error.column;
        }
    }
    return error;
}

QString fromUtf8(QByteArrayView utf8)
{
    const QString text = QString::fromUtf8(utf8);
    return utf8.startsWith("\xEF\xBB\xBF") ? QChar(0xFEFF) + text : text;
}

std::optional<QByteArray> toUtf8(const QByteArray& bytes, ParseError& error)
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return bytes.mid(3);
    if (bytes.startsWith("\xFE\xFF"))
        return utf16ToUtf8(bytes, true, error);
    if (bytes.startsWith("\xFF\xFE"))
        return utf16ToUtf8(bytes, false, error);
    return toUtf8(bytes, declaredEncoding(bytes), error);
}

std::optional<QByteArray> toUtf8(const QByteArray& bytes, QByteArrayView encoding, ParseError& error)
{
    if (encoding.isEmpty() || encoding == "utf-8" || encoding == "utf8" || encoding == "us-ascii" ||
        encoding == "ascii")
        return bytes;
    if (encoding == "iso-8859-1" || encoding == "latin1" || encoding == "iso_8859-1")
        return singleBytesToUtf8(bytes, false);
    if (encoding == "windows-1252" || encoding == "cp1252")
        return singleBytesToUtf8(bytes, true);
    error = errorAt(bytes, bytes.indexOf("encoding"),
                    QStringLiteral("The encoding \"%1\" cannot be read here; save the text as UTF-8.")
                        .arg(QString::fromLatin1(encoding.first(std::min<qsizetype>(encoding.size(), 40)))));
    return std::nullopt;
}

std::optional<QByteArray> toUtf8(const QString& text, ParseError& error)
{
    const QStringView body = QStringView(text).mid(text.startsWith(QChar(0xFEFF)) ? 1 : 0);
    if (body.isValidUtf16())
        return body.toUtf8();
    qsizetype good = 0;
    while (good < body.size() && !body[good].isSurrogate())
        ++good;
    while (good + 1 < body.size() && body[good].isHighSurrogate() && body[good + 1].isLowSurrogate()) {
        good += 2;
        while (good < body.size() && !body[good].isSurrogate())
            ++good;
    }
    const QByteArray before = body.first(good).toUtf8();
    error = errorAt(before, before.size(), QStringLiteral("Half a surrogate pair is no character."));
    return std::nullopt;
}

bool checkCharacters(const QByteArray& utf8, qsizetype mostTags, ParseError& error)
{
    const auto* const begin = reinterpret_cast<const unsigned char*>(utf8.constData());
    const auto* const end = begin + utf8.size();
    const unsigned char* noBlock = begin; // up to here bytes are looked at one by one
    for (const unsigned char* at = begin; at != end;) {
        if (end - at >= BlockSize && at >= noBlock) {
            const int tags = countTagsOfPlainBlock(at);
            if (tags >= 0 && tags <= mostTags) {
                mostTags -= tags;
                at += BlockSize;
                continue;
            }
            noBlock = at + BlockSize;
        }
        if (*at >= 0x20 && *at < 0x80) {
            if (*at == '<' && --mostTags < 0) {
                error = errorAt(utf8, at - begin, QStringLiteral("The document has too many elements."));
                return false;
            }
            ++at;
            continue;
        }
        const int length = lengthOfCharacter(at, end);
        if (length == 0) {
            error = errorAt(utf8, at - begin,
                            *at < 0x80
                                ? QStringLiteral("A control character is not allowed in XML.")
                                : QStringLiteral("The bytes are no character that XML allows; the text may be in "
                                                 "another encoding than it says."));
            return false;
        }
        at += length;
    }
    return true;
}

} // namespace zan::document
