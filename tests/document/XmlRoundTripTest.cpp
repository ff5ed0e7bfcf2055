#include "Parsed.h"

#include "document/XMLOps.h"

#include <algorithm>

using namespace zan::document;

namespace {

/// Whether two trees hold the same, node by node.
testing::AssertionResult sameTree(const Node& a, const Node& b)
{
    if (a.type() != b.type() || a.name() != b.name())
        return testing::AssertionFailure() << textOf(a) << " is not " << textOf(b);
    if (!a.firstChild() && !b.firstChild() && a.text() != b.text())
        return testing::AssertionFailure() << "text of " << textOf(a) << " is not that of " << textOf(b);
    const auto sameAttribute = [](const Node::Attribute& x, const Node::Attribute& y) {
        return x.name == y.name && x.value == y.value;
    };
    if (!std::equal(a.attributes().begin(), a.attributes().end(), b.attributes().begin(), b.attributes().end(),
                    sameAttribute))
        return testing::AssertionFailure() << "attributes of " << textOf(a);
    Node x = a.firstChild();
    Node y = b.firstChild();
    for (; x && y; x = x.nextSibling(), y = y.nextSibling()) {
        if (const testing::AssertionResult same = sameTree(x, y); !same)
            return same;
    }
    return x || y ? testing::AssertionFailure() << "children of " << textOf(a) << " and " << textOf(b)
                  : testing::AssertionSuccess();
}

void expectRoundTrip(const Node& document)
{
    const QByteArray written = toXml(document);
    const Node again = parsed(written);
    EXPECT_TRUE(sameTree(document, again)) << written.toStdString();
    EXPECT_EQ(toXml(again), written) << "writing again changes nothing";
    const ParseResult line = parseXml(document.xml());
    ASSERT_TRUE(line) << textOf(document);
    EXPECT_TRUE(sameTree(document, line.document)) << textOf(document);
}

} // namespace

TEST(XmlRoundTrip, KeepsWhateverADocumentHolds)
{
    const QByteArray documents[] = {
        "<A/>",
        "<A>text</A>",
        "<!-- before --><?target data?><A/><!-- after -->",
        "<A><unknown foreign='1' x:y='&lt;&amp;&quot;&#9;&#10;&#13;'><deep/></unknown></A>",
        "<A>  leading and trailing  </A>",
        "<A> </A>",
        "<A>\n</A>",
        "<A>&#13;</A>",
        "<A>line&#13;\nline&#13;</A>",
        "<A>x<B/> <C/>\n<D/></A>",
        "<A>&#32;<B/>&#10;<C/>&#9;<D/>&#13;<E/></A>",
        "<A>&#32;&#32;<B>&#32;<C/></B></A>",
        "<A><!--c-->&#32;</A>",
        "<A xml:space='preserve'> <B> <C/> </B> </A>",
        "<A><B xml:space='preserve'><C/><D/></B><E><F/></E></A>",
        "<A xml:space='preserve'><B xml:space='default'>\n<C/></B></A>",
        "<A>\xF0\x9F\x98\x80<B c='\xF0\x9F\x98\x80'/>\xC2\x85\xE2\x80\xA8</A>",
        "<A>\xEF\xBB\xBF"
        "a&gt;\xEF\xBB\xBF<\xEF\xBB\xBF/>\xEF\xBB\xBF</A>",
        "<A>]]&gt;<![CDATA[<![CDATA[ ]]]]><![CDATA[>]]></A>",
        "<A><!-- - --><!----><?p?><?q  two  blanks ?></A>",
        "<\xC3\x84\xC3\xA9 \xC3\xB6='1'>\xE2\x82\xAC</\xC3\x84\xC3\xA9>",
        "<A><B><C><D>1</D><D>2</D></C></B><E/></A>",
    };
    for (const QByteArray& document : documents)
        expectRoundTrip(parsed(document));
}

TEST(XmlRoundTrip, KeepsATextOfEveryCharacterThatXmlAllows)
{
    QString text;
    for (char32_t c = 1; c < 0x3000; ++c) {
        if (c >= 0x20 || c == '\t' || c == '\n' || c == '\r')
            text += QStringView(QChar::fromUcs4(c));
    }
    for (const char32_t c : {0xD7FFu, 0xE000u, 0xFFFDu, 0x10000u, 0x1FFFEu, 0x10FFFFu})
        text += QStringView(QChar::fromUcs4(c));
    Node document = parsed("<A><B/></A>");
    document.documentElement().child(name("B")).setText(text);
    document.documentElement().child(name("B")).setAttribute(QStringLiteral("a"), text);
    expectRoundTrip(document);
}

TEST(XmlRoundTrip, KeepsALongTextWithAPairAcrossEveryBoundary)
{
    for (const int before : {4094, 4095, 4096, 8191}) {
        Node document = parsed("<A/>");
        document.documentElement().setText(QString(before, u'x') + QString::fromUtf16(u"\U0001F600\U0001F601y"));
        expectRoundTrip(document);
    }
}

TEST(XmlWriter, IndentsElementsAndLeavesTextAlone)
{
    const Node document = parsed("<?p d?><A><!--c--><B b='1'><C>x</C><D/></B><E>t<F><G/></F></E></A>");
    EXPECT_EQ(toXml(document).toStdString(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                             "<?p d?>\n"
                                             "<A>\n"
                                             "  <!--c-->\n"
                                             "  <B b=\"1\">\n"
                                             "    <C>x</C>\n"
                                             "    <D/>\n"
                                             "  </B>\n"
                                             "  <E>t<F><G/></F></E>\n"
                                             "</A>\n");
}

TEST(XmlWriter, WritesOneLineWithoutADeclarationForANode)
{
    const Node document = parsed("<?xml version='1.0'?><A>\n  <B>1 &lt; 2</B>\n</A>");
    EXPECT_EQ(textOf(document), "<A><B>1 &lt; 2</B></A>");
    EXPECT_EQ(textOf(document.documentElement().firstChild()), "<B>1 &lt; 2</B>");
}

TEST(XmlWriter, WritesWhatXmlCannotHoldAsTheReplacementCharacter)
{
    Node root = parsed("<A/>").documentElement();
    root.setText(QStringLiteral("a") + QChar(0) + QChar(1) + QChar(0xD800) + QStringLiteral("b") + QChar(0xDC00) +
                 QChar(0xFFFE) + QChar(0xFFFF) + QChar(0xD83D));
    const char* const replaced = "\xEF\xBF\xBD";
    const std::string r = replaced;
    EXPECT_EQ(textOf(root), "<A>a" + r + r + r + "b" + r + r + r + r + "</A>");
    expectRoundTrip(parsed(toXml(root.ownerDocument())));
}

TEST(XmlWriter, KeepsCommentsAndInstructionsReadableWhateverTheyAreGiven)
{
    const Node document = parsed("<A><!--c--><?p d?></A>");
    const Node root = document.documentElement();
    root.firstChild().setText(QStringLiteral("-a---b\r\nc-"));
    root.lastChild().setText(QStringLiteral("x?>y"));
    EXPECT_EQ(textOf(document), "<A><!---a- - -b\nc- --><?p x? >y?></A>");
    EXPECT_TRUE(parseXml(toXml(document)));
}

TEST(XmlWriter, WritesOneDeclarationForADocumentThatHoldsOneAsANode)
{
    Node document = XMLOps::NewDocument();
    document.appendChild(document.createElement(name("A")));
    EXPECT_EQ(document.firstChild().type(), NodeType::ProcessingInstruction);
    EXPECT_EQ(toXml(document).toStdString(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<A/>\n");
}
