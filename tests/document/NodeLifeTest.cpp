#include "document/Node.h"
#include "document/XmlText.h"

#include <gtest/gtest.h>

#include <QString>

using namespace zan::document;

namespace {

Node parsed(const char* xml)
{
    const ParseResult result = parseXml(QByteArray(xml));
    EXPECT_TRUE(result) << result.error.message.toStdString() << " at " << result.error.line << ":"
                        << result.error.column;
    return result.document;
}

std::string textOf(const Node& node)
{
    return node.xml().toStdString();
}

} // namespace

TEST(NodeLife, AHandleKeepsTheWholeTreeUpToTheDocumentAlive)
{
    Node leaf = parsed("<A><B><C>x</C></B><D/></A>").documentElement().child(Name("B")).child(Name("C"));
    EXPECT_EQ(textOf(leaf.ownerDocument()), "<A><B><C>x</C></B><D/></A>");
    EXPECT_EQ(leaf.parent().parent().nextSibling(), Node());
    EXPECT_EQ(textOf(leaf.parent().nextSibling()), "<D/>");
}

TEST(NodeLife, ADetachedNodeLivesOnWithAllBelowItAndKeepsItsDocument)
{
    Node inner;
    {
        const Node document = parsed("<A><B><C>x</C></B></A>");
        Node root = document.documentElement();
        const Node detached = root.child(Name("B"));
        inner = detached.child(Name("C"));
        ASSERT_TRUE(root.removeChild(detached));
        EXPECT_EQ(textOf(document), "<A/>");
    }
    EXPECT_EQ(textOf(inner.parent()), "<B><C>x</C></B>");
    EXPECT_FALSE(inner.parent().parent());
    EXPECT_EQ(textOf(inner.ownerDocument()), "<A/>");
}
