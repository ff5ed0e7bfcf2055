#include "Parsed.h"

using namespace zan::document;

TEST(Node, ANullHandleIsSafeForEveryCall)
{
    Node null;
    QString text = QStringLiteral("kept");
    EXPECT_FALSE(null);
    EXPECT_EQ(null.type(), NodeType::None);
    EXPECT_TRUE(null.name().isEmpty());
    EXPECT_TRUE(null.text().isEmpty());
    null.setText(QStringLiteral("x"));
    EXPECT_FALSE(null.parent() || null.ownerDocument() || null.documentElement());
    EXPECT_FALSE(null.firstChild() || null.lastChild() || null.nextSibling() || null.previousSibling());
    EXPECT_FALSE(null.firstChildElement() || null.nextSiblingElement() || null.child(name("A")));
    EXPECT_TRUE(null.children(name("A")).empty());
    EXPECT_EQ(null.childElementCount(), 0u);
    EXPECT_FALSE(null.childText(name("A"), text));
    EXPECT_EQ(text, u"kept");
    Node other = parsed("<A/>").documentElement();
    EXPECT_FALSE(null.appendChild(other) || other.appendChild(null) || null.appendChild(null));
    EXPECT_FALSE(null.removeChild(other) || other.removeChild(null));
    EXPECT_FALSE(null.createElement(name("A")));
    EXPECT_TRUE(null.xml().isEmpty());
    EXPECT_TRUE(null.attributes().empty());
    null.setAttribute(QStringLiteral("a"), QStringLiteral("b"));
    EXPECT_TRUE(toXml(null).isEmpty());
    EXPECT_EQ(null, Node());
}

TEST(Node, TwoHandlesToOneNodeAreEqual)
{
    const Node root = parsed("<A><B/><B/></A>").documentElement();
    EXPECT_EQ(root.child(name("B")), root.firstChild());
    EXPECT_NE(root.firstChild(), root.lastChild());
}

TEST(Node, ChildrenAreFoundByExactNameInDocumentOrder)
{
    const Node root = parsed("<A><x>1</x><X>2</X><Y><X>no</X></Y><X>3</X></A>").documentElement();
    EXPECT_EQ(root.child(name("X")).text(), u"2");
    EXPECT_FALSE(root.child(name("Z")));
    const std::vector<Node> all = root.children(name("X"));
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[1].text(), u"3");
    EXPECT_EQ(root.childElementCount(), 4u);
}

TEST(Node, AnInstructionIsNoChildElementOfItsName)
{
    const Node root = parsed("<A><?X y?><X>1</X></A>").documentElement();
    EXPECT_EQ(root.child(name("X")).text(), u"1");
    EXPECT_EQ(root.children(name("X")).size(), 1u);
}

TEST(Node, TheTextOfALeafIsNoChildOfIt)
{
    const Node leaf = parsed("<A>text</A>").documentElement();
    EXPECT_FALSE(leaf.firstChild());
    EXPECT_FALSE(leaf.lastChild());
    EXPECT_EQ(leaf.text(), u"text");
}

TEST(Node, TheTextOfALeafBecomesItsFirstChildWhenAnotherOneJoinsIt)
{
    Node leaf = parsed("<A>text</A>").documentElement();
    leaf.appendChild(leaf.createElement(name("B")));
    EXPECT_EQ(leaf.firstChild().type(), NodeType::Text);
    EXPECT_EQ(textOf(leaf), "<A>text<B/></A>");
    leaf.removeChild(leaf.lastChild());
    EXPECT_EQ(leaf.text(), u"text");
    EXPECT_EQ(textOf(leaf), "<A>text</A>");
}

TEST(Node, TheTextOfAnElementIsThatOfEverythingBelowWithoutCommentsAndInstructions)
{
    const Node root = parsed("<A>a<B>b<C>c</C></B><!--no--><?no no?>d<![CDATA[<e>]]></A>").documentElement();
    EXPECT_EQ(root.text(), u"abcd<e>");
}

TEST(Node, CommentsAndInstructionsGiveTheirData)
{
    const Node root = parsed("<A><!-- c --><?target some data?></A>").documentElement();
    EXPECT_EQ(root.firstChild().type(), NodeType::Comment);
    EXPECT_EQ(root.firstChild().text(), u" c ");
    EXPECT_TRUE(root.firstChild().name().isEmpty());
    EXPECT_EQ(root.lastChild().type(), NodeType::ProcessingInstruction);
    EXPECT_EQ(root.lastChild().name(), name("target"));
    EXPECT_EQ(root.lastChild().text(), u"some data");
}

TEST(Node, SiblingsWalkBothWaysAndElementsPassOverTheRest)
{
    const Node root = parsed("<A><!--1--><B/>t<?p?><C/></A>").documentElement();
    EXPECT_EQ(root.firstChildElement().name(), name("B"));
    EXPECT_EQ(root.firstChildElement().nextSiblingElement().name(), name("C"));
    EXPECT_FALSE(root.lastChild().nextSiblingElement());
    int backwards = 0;
    for (Node child = root.lastChild(); child; child = child.previousSibling())
        ++backwards;
    EXPECT_EQ(backwards, 5);
}

TEST(Node, ADocumentIsItsOwnOwnerAndHasNoParent)
{
    const Node document = parsed("<!--c--><A/>");
    EXPECT_EQ(document.ownerDocument(), document);
    EXPECT_FALSE(document.parent());
    EXPECT_EQ(document.documentElement().name(), name("A"));
    EXPECT_FALSE(document.documentElement().documentElement()) << "an element has none";
}

TEST(Node, AppendingAChildOfTheSameElementMovesItToTheEnd)
{
    Node root = parsed("<A><B/><C/><D/></A>").documentElement();
    EXPECT_TRUE(root.appendChild(root.firstChild()));
    EXPECT_EQ(textOf(root), "<A><C/><D/><B/></A>");
    EXPECT_TRUE(root.appendChild(root.lastChild()));
    EXPECT_EQ(textOf(root), "<A><C/><D/><B/></A>");
}

TEST(Node, ANodeCannotBeAppendedToItselfOrIntoItsOwnTree)
{
    const Node document = parsed("<A><B><C/></B></A>");
    const Node b = document.documentElement().child(name("B"));
    Node c = b.child(name("C"));
    EXPECT_FALSE(c.appendChild(b));
    EXPECT_FALSE(c.appendChild(c));
    EXPECT_FALSE(c.appendChild(document));
    EXPECT_EQ(textOf(document), "<A><B><C/></B></A>");
}

TEST(Node, ADocumentTakesOneElementAndNoText)
{
    Node document = Node::newDocument();
    EXPECT_TRUE(document.appendChild(document.createElement(name("A"))));
    EXPECT_FALSE(document.appendChild(document.createElement(name("B"))));
    EXPECT_TRUE(document.appendChild(document.documentElement())) << "its own element only moves";
    EXPECT_FALSE(document.appendChild(parsed("<A>t<B/></A>").documentElement().firstChild()));
    EXPECT_TRUE(document.appendChild(parsed("<A><!--c--></A>").documentElement().firstChild()));
    EXPECT_EQ(textOf(document), "<A/><!--c-->");
}

TEST(Node, OnlyElementsAndDocumentsHaveChildren)
{
    const Node root = parsed("<A>t<!--c--><?p d?><B/></A>").documentElement();
    const Node element = root.createElement(name("X"));
    for (Node child = root.firstChild(); child != root.lastChild(); child = child.nextSibling())
        EXPECT_FALSE(child.appendChild(element)) << textOf(child);
}

TEST(Node, OnlyAChildOfTheNodeCanBeRemovedFromIt)
{
    Node root = parsed("<A><B><C/></B></A>").documentElement();
    EXPECT_FALSE(root.removeChild(root.child(name("B")).child(name("C"))));
    EXPECT_FALSE(root.removeChild(root));
    const Node made = root.createElement(name("D"));
    EXPECT_FALSE(root.removeChild(made)) << "a detached node is nobody's child";
    EXPECT_EQ(textOf(root), "<A><B><C/></B></A>");
}

TEST(Node, AnElementOfANameThatXmlDoesNotAllowCannotBeMade)
{
    const Node root = parsed("<A/>").documentElement();
    for (const char* bad : {"", "A B", "1", "-a", "a<", "a/b", "a=b"})
        EXPECT_FALSE(root.createElement(Name(bad))) << bad;
    EXPECT_FALSE(root.createElement(Name(QString(QChar(0xD800)))));
    for (const char16_t* good : {u"A", u"_a.b-c:d1", u"Größe", u"\U00010000"})
        EXPECT_TRUE(root.createElement(Name(QStringView(good)))) << QString::fromUtf16(good).toStdString();
}

TEST(Node, AttributesKeepTheirOrderAndAreReplacedByName)
{
    Node root = parsed("<A z='1' a='2'/>").documentElement();
    root.setAttribute(QStringLiteral("z"), QStringLiteral("3"));
    root.setAttribute(QStringLiteral("m"), QStringLiteral("4"));
    root.setAttribute(QStringLiteral("not a name"), QStringLiteral("5"));
    ASSERT_EQ(root.attributes().size(), 3u);
    EXPECT_EQ(textOf(root), "<A z=\"3\" a=\"2\" m=\"4\"/>");
}

TEST(Node, SettingTheTextOfATextNodeOrACommentChangesItsData)
{
    const Node root = parsed("<A>t<!--c--><B/></A>").documentElement();
    root.firstChild().setText(QStringLiteral("T"));
    root.firstChild().nextSibling().setText(QStringLiteral("C"));
    EXPECT_EQ(textOf(root), "<A>T<!--C--><B/></A>");
    const Node document = root.ownerDocument();
    document.documentElement().parent().setText(QStringLiteral("x"));
    EXPECT_EQ(textOf(document), "<A>T<!--C--><B/></A>") << "a document takes no text";
}
