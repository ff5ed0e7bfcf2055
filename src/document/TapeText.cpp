#include "document/TapeText.h"

#include "document/XmlEncoding.h"
#include "document/XmlNames.h"

#include <cstring>

namespace zan::document {

namespace {

constexpr QByteArrayView CDataBegin("<![CDATA[");
constexpr QByteArrayView CDataEnd("]]>");

/// Takes over what stands between references and line ends.
class Decoder
{
public:
    Decoder(QByteArrayView raw, TextRule rule)
        : m_at(raw.data())
        , m_end(raw.data() + raw.size())
        , m_plain(raw.data())
        , m_rule(rule)
    {}

    QString decode()
    {
        const char* cdataEnd = nullptr;
        while (m_at != m_end) {
            if (m_at == cdataEnd) {
                skip(CDataEnd.size());
                cdataEnd = nullptr;
                continue;
            }
            switch (*m_at) {
            case '\r':
                put(m_rule == TextRule::Attribute ? ' ' : '\n', m_at[1] == '\n' && m_at + 1 != m_end ? 2 : 1);
                break;
            case '\n':
            case '\t':
                if (m_rule == TextRule::Attribute)
                    put(' ', 1);
                else
                    ++m_at;
                break;
            case '&':
                if (m_rule == TextRule::Plain || cdataEnd)
                    ++m_at;
                else
                    putReference();
                break;
            case '<':
                if (m_rule == TextRule::Text && !cdataEnd) { // nothing but a section starts with it here
                    skip(CDataBegin.size());
                    cdataEnd = m_at + QByteArrayView(m_at, m_end - m_at).indexOf(CDataEnd);
                } else {
                    ++m_at;
                }
                break;
            default:
                ++m_at;
            }
        }
        takePlain();
        return m_text;
    }

private:
    void takePlain()
    {
        if (m_at != m_plain)
            m_text += fromUtf8({m_plain, m_at - m_plain});
        m_plain = m_at;
    }
    void skip(qsizetype bytes)
    {
        takePlain();
        m_plain = m_at += bytes;
    }
    void put(char character, qsizetype bytes)
    {
        skip(bytes);
        m_text += QLatin1Char(character);
    }
    void putReference()
    {
        takePlain();
        m_text += QStringView(QChar::fromUcs4(readReference(m_at)));
        m_plain = m_at;
    }

    const char* m_at;
    const char* m_end;
    const char* m_plain; ///< start of what is taken as it stands
    TextRule m_rule;
    QString m_text;
};

} // namespace

QString decodeText(QByteArrayView raw, TextRule rule)
{
    return Decoder(raw, rule).decode();
}

char32_t readReference(const char*& at) noexcept
{
    struct Entity
    {
        QByteArrayView text;
        char32_t character;
    };
    static constexpr Entity Entities[] = {
        {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}};
    for (const Entity& entity : Entities) {
        if (std::strncmp(at, entity.text.data(), std::size_t(entity.text.size())) == 0) {
            at += entity.text.size();
            return entity.character;
        }
    }
    if (at[1] != '#')
        return 0;
    const bool isHex = at[2] == 'x';
    const char* digit = at + (isHex ? 3 : 2);
    const char* const first = digit;
    char32_t character = 0;
    for (; character <= 0x10FFFF; ++digit) {
        const char c = *digit;
        if (c >= '0' && c <= '9')
            character = character * (isHex ? 16 : 10) + char32_t(c - '0');
        else if (isHex && ((c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')))
            character = character * 16 + char32_t((c | 0x20) - 'a' + 10);
        else
            break;
    }
    if (digit == first || *digit != ';' || !isXmlCharacter(character))
        return 0xFFFF;
    at = digit + 1;
    return character;
}

} // namespace zan::document
