// Any bytes: they are refused with a place and a reason, or they make a tree that is written and read again as the
// same tree, and that can be taken apart.

#include "document/Node.h"
#include "document/XmlText.h"
#include "fuzz/support/Require.h"

#include <QByteArray>
#include <QString>

#include <algorithm>
#include <cstdint>

using namespace zan::document;
using zan::fuzz::require;

namespace {

bool sameTree(const Node& a, const Node& b)
{
    if (a.type() != b.type() || a.name() != b.name())
        return false;
    if (!a.firstChild() && !b.firstChild() && a.text() != b.text())
        return false;
    const auto sameAttribute = [](const Node::Attribute& x, const Node::Attribute& y) {
        return x.name == y.name && x.value == y.value;
    };
    if (!std::equal(a.attributes().begin(), a.attributes().end(), b.attributes().begin(), b.attributes().end(),
                    sameAttribute))
        return false;
    Node x = a.firstChild();
    Node y = b.firstChild();
    for (; x && y; x = x.nextSibling(), y = y.nextSibling()) {
        if (!sameTree(x, y)) // at most as deep as a document may be
            return false;
    }
    return !x && !y;
}

/// Far from the end of a text the reader looks at many bytes at a time, near it at one after the other.
void requireSameFarFromTheEnd(const QByteArray& bytes, const ParseLimits& limits, const ParseResult& near)
{
    if (bytes.startsWith("\xFE\xFF") || bytes.startsWith("\xFF\xFE"))
        return; // a blank is two bytes there
    const ParseResult far = parseXml(bytes + QByteArray(100, ' '), limits);
    require(bool(far) == bool(near), "blanks behind a text change nothing");
    require(!far || sameTree(far.document, near.document), "a text is the same tree however it is read");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    ParseLimits limits;
    limits.elements = 10'000;
    limits.names = 1000;
    const ParseResult result = parseXml(bytes, limits);
    requireSameFarFromTheEnd(bytes, limits, result);
    if (!result) {
        require(!result.error.message.isEmpty(), "a refusal has a reason");
        require(result.error.line > 0 && result.error.column > 0, "a refusal has a place");
        return 0;
    }
    const QByteArray written = toXml(result.document);
    const ParseResult again = parseXml(written);
    require(bool(again), "what is written can be read");
    require(sameTree(result.document, again.document), "what is written reads as the same tree");
    require(toXml(again.document) == written, "writing again changes nothing");
    const ParseResult line = parseXml(result.document.xml());
    require(line && sameTree(result.document, line.document), "one line reads as the same tree");

    Node root = result.document.documentElement();
    const Node child = root.firstChildElement();
    if (child) {
        root.removeChild(child);
        require(parseXml(toXml(root.ownerDocument())) && !child.parent(), "a child can be taken out");
        root.appendChild(child);
    }
    root.setText(root.text());
    require(bool(parseXml(toXml(result.document))), "an element can be made a text");
    return 0;
}
