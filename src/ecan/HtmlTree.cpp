#include "ecan/HtmlTree.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include <libxml/HTMLparser.h>

namespace zan::ecan {

namespace {

constexpr int Quietly = HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING | HTML_PARSE_NONET;
/// Nodes of a text that are looked at: tables in tables would be read over and over.
constexpr int MostNodes = 1000;

/// What styles words and does not part them.
constexpr std::array inlineNames{"a",    "abbr",  "b",    "big",    "code", "em",  "font", "i",
                                 "mark", "small", "span", "strong", "sub",  "sup", "u"};

_xmlDoc* parse(const QByteArray& text, const char* encoding)
{
    if (text.isEmpty() || text.size() > std::numeric_limits<int>::max())
        return nullptr;
    return htmlReadMemory(text.constData(), int(text.size()), nullptr, encoding, Quietly);
}

const char* bytes(const xmlChar* text)
{
    return reinterpret_cast<const char*>(text);
}

/// The node that follows in document order, of any kind.
const xmlNode* following(const xmlNode* node, const xmlNode* top, bool isContentPassed) noexcept
{
    if (!isContentPassed && node->type == XML_ELEMENT_NODE && node->children)
        return node->children;
    while (node && node != top && !node->next)
        node = node->parent;
    return node && node != top ? node->next : nullptr;
}

HtmlTree::Element followingElement(HtmlTree::Element element, HtmlTree::Element top, bool isContentPassed) noexcept
{
    const xmlNode* node = following(element, top, isContentPassed);
    while (node && node->type != XML_ELEMENT_NODE)
        node = following(node, top, true);
    return node;
}

/// Adds text with its runs of blanks made one; a blank that stands at an end is kept back.
class TidyText
{
public:
    explicit TidyText(qsizetype longest)
        : m_longest(longest)
    {}
    bool isFull() const { return m_text.size() > m_longest; }
    void addBlank() { m_isBlankDue = !m_text.isEmpty(); }
    void add(const QString& text)
    {
        for (const QChar character : text) {
            if (isFull())
                return;
            if (character.isSpace() || character.isNull()) {
                addBlank();
                continue;
            }
            if (std::exchange(m_isBlankDue, false))
                m_text += u' ';
            m_text += character;
        }
    }
    QString take()
    {
        if (!isFull())
            return m_text;
        qsizetype end = m_longest - 1;
        if (end > 0 && m_text[end - 1].isHighSurrogate())
            --end;
        return m_text.left(end) + QChar(0x2026);
    }

private:
    qsizetype m_longest;
    QString m_text;
    bool m_isBlankDue = false;
};

} // namespace

HtmlTree::HtmlTree(const QByteArray& text, Text kind)
    : m_document(parse(text, kind == Text::Utf8 ? "UTF-8" : "ISO-8859-1"))
{}

HtmlTree::~HtmlTree()
{
    xmlFreeDoc(m_document);
}

HtmlTree::Element HtmlTree::root() const noexcept
{
    return m_document ? xmlDocGetRootElement(m_document) : nullptr;
}

HtmlTree::Element HtmlTree::next(Element element, Element top) noexcept
{
    return followingElement(element, top, false);
}

HtmlTree::Element HtmlTree::afterwards(Element element, Element top) noexcept
{
    return element == top ? nullptr : followingElement(element, top, true);
}

bool HtmlTree::isNamed(Element element, const char* name) noexcept
{
    return element->type == XML_ELEMENT_NODE && qstricmp(bytes(element->name), name) == 0;
}

namespace {

bool isInline(HtmlTree::Element element)
{
    return std::any_of(inlineNames.begin(), inlineNames.end(),
                       [&](const char* name) { return HtmlTree::isNamed(element, name); });
}

} // namespace

QString HtmlTree::text(Element element, qsizetype longest)
{
    TidyText text(longest);
    const xmlNode* node = following(element, element, false);
    for (int seen = 0; node && !text.isFull() && seen < MostNodes; ++seen) {
        const bool isElement = node->type == XML_ELEMENT_NODE;
        if ((node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE) && node->content)
            text.add(QString::fromUtf8(bytes(node->content)));
        else if (isElement && !isInline(node))
            text.addBlank(); // a line break or a block parts words
        node = following(node, element, isElement && (isNamed(node, "script") || isNamed(node, "style")));
    }
    return text.take();
}

QByteArray HtmlTree::attribute(Element element, const char* name)
{
    auto* const node = const_cast<xmlNode*>(element); // it is only read
    xmlChar* const value = xmlGetProp(node, reinterpret_cast<const xmlChar*>(name));
    const QByteArray text = value ? QByteArray(bytes(value)) : QByteArray();
    xmlFree(value);
    return text;
}

std::size_t HtmlTree::number(Element element, const char* name, std::size_t highest)
{
    bool isRead = false;
    const long long told = attribute(element, name).toLongLong(&isRead);
    return isRead ? std::size_t(std::clamp<long long>(told, 1, static_cast<long long>(highest))) : 1;
}

} // namespace zan::ecan
