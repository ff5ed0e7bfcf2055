#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct _xmlDoc;
struct _xmlNode;

namespace zan::ecan {

/// An HTML page as a tree, however broken its text is. Neither network nor files are touched by reading it.
class HtmlTree
{
public:
    using Element = const _xmlNode*;

    enum class Text : unsigned char { Utf8, AnyBytes };

    /// The tree of a text; without a root when there is nothing to read. Of any bytes the names and whatever else is ASCII
    /// come out right, in every encoding that is known.
    explicit HtmlTree(const QByteArray& text, Text kind = Text::Utf8);
    ~HtmlTree();
    HtmlTree(const HtmlTree&) = delete;
    HtmlTree& operator=(const HtmlTree&) = delete;

    /// Null for an empty page.
    Element root() const noexcept;

    // The elements below `top`, in document order: next() is the one after, `top` itself being left out; with
    // afterwards() its content is passed over too. Null at the end.
    static Element next(Element element, Element top) noexcept;
    static Element afterwards(Element element, Element top) noexcept;

    /// Whether it is an element of this name.
    static bool isNamed(Element element, const char* name) noexcept;
    /// The text below an element, scripts and styles left out; every run of blanks is one, none at the ends. A text of
    /// more than so many characters is cut, and ends in an ellipsis.
    static QString text(Element element, qsizetype longest);
    /// An attribute's text; empty for none.
    static QByteArray attribute(Element element, const char* name);
    /// An attribute's text as a number of 1 to a highest one; 1 for none.
    static std::size_t number(Element element, const char* name, std::size_t highest);

private:
    _xmlDoc* m_document;
};

} // namespace zan::ecan
