// A document keeps what nobody has asked for as the bytes that were read. Nothing of that may be seen from outside.

#include "Parsed.h"

#include "binding/MemberTable.h"
#include "document/LoadByName.h"
#include "document/Place.h"
#include "document/XMLOps.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using namespace zan::document;

namespace {

const char* const Sample = "<A><!--c--><B x='1&amp;2'>one</B><C>two&lt;<D>three</D><E/>\r\nfour</C>"
                           "<F>&gt;five<![CDATA[<&]]></F><?p data?><G xml:space='preserve'> <H/> </G>"
                           "<B>a text that is longer than a short one</B></A>";

/// Records that stand below a record now.
int recordsBelow(const Node& node)
{
    int count = 0;
    const std::function<void(const Node::Record*)> add = [&](const Node::Record* record) {
        for (const Node::Record* child = record->first; child; child = child->next, ++count)
            add(child);
    };
    add(node.record());
    return count;
}

/// Asks for everything there is, so that every node is a record.
void unfoldAll(const Node& node)
{
    (void)node.attributes();
    for (Node child = node.firstChild(); child; child = child.nextSibling())
        unfoldAll(child);
}

} // namespace

TEST(Folded, ReadingAndWritingMakesNoRecords)
{
    const Node document = parsed(Sample);
    const QByteArray written = toXml(document);
    const std::string line = textOf(document);
    EXPECT_EQ(document.childElementCount(), 1u);
    EXPECT_EQ(recordsBelow(document), 0);
    QString text;
    const Node root = document.documentElement();
    EXPECT_TRUE(root.childText(name("B"), text));
    EXPECT_EQ(text, u"one");
    EXPECT_EQ(root.text(), u"onetwo<three\nfour>five<&  a text that is longer than a short one");
    EXPECT_EQ(root.childElementCount(), 5u);
    EXPECT_EQ(recordsBelow(document), 1);
    EXPECT_EQ(toXml(document), written);
    EXPECT_EQ(textOf(document), line);
}

TEST(Folded, WritesTheSameWhateverHasBecomeARecord)
{
    const QByteArray written = toXml(parsed(Sample));
    const std::string line = textOf(parsed(Sample));
    const auto expectSame = [&](const char* what, const std::function<void(const Node& root)>& use) {
        const Node document = parsed(Sample);
        use(document.documentElement());
        EXPECT_EQ(toXml(document), written) << what;
        EXPECT_EQ(textOf(document), line) << what;
    };
    expectSame("a child", [](const Node& root) { (void)root.child(name("F")); });
    expectSame("a later and an earlier child", [](const Node& root) {
        const Node later = root.child(name("G"));
        const Node earlier = root.child(name("B"));
        EXPECT_EQ(earlier.text(), u"one");
        EXPECT_EQ(later.parent(), root);
    });
    expectSame("a grandchild", [](const Node& root) { (void)root.child(name("C")).child(name("D")); });
    expectSame("a list of children", [](const Node& root) { (void)root.children(name("B")); });
    expectSame("the attributes", [](const Node& root) { (void)root.child(name("B")).attributes(); });
    expectSame("a text that is read again",
               [](const Node& root) { EXPECT_EQ(root.lastChild().text(), root.lastChild().text()); });
    expectSame("everything", unfoldAll);
}

TEST(Folded, AHandleIsTheSameNodeHoweverItIsReached)
{
    const Node root = parsed(Sample).documentElement();
    const Node middle = root.child(name("F"));
    const Node first = root.child(name("B"));
    EXPECT_EQ(root.child(name("F")), middle);
    EXPECT_EQ(first.nextSibling().nextSibling(), middle);
    EXPECT_EQ(root.children(name("F")), std::vector<Node>{middle});
    EXPECT_EQ(middle.previousSibling().previousSibling(), first);
    EXPECT_EQ(root.firstChild().nextSibling(), first);
}

TEST(Folded, AnEditBelowAFoldedParentIsReadAndWritten)
{
    const Node root = parsed("<A><B>1</B><C><D>2</D></C><E>3</E></A>").documentElement();
    root.child(name("C")).child(name("D")).setText(QStringLiteral("new"));
    QString text;
    EXPECT_TRUE(root.childText(name("C"), text));
    EXPECT_EQ(text, u"new");
    EXPECT_EQ(root.text(), u"1new3");
    EXPECT_EQ(textOf(root), "<A><B>1</B><C><D>new</D></C><E>3</E></A>");
    root.child(name("C")).setText(QStringLiteral("leaf"));
    EXPECT_EQ(textOf(root), "<A><B>1</B><C>leaf</C><E>3</E></A>");
    root.removeChild(root.child(name("E")));
    root.appendChild(root.child(name("B")));
    EXPECT_EQ(textOf(root), "<A><C>leaf</C><B>1</B></A>");
}

TEST(Folded, ATextThatReplacesEverythingLeavesAttributesAndWhatIsHeld)
{
    const Node root = parsed("<A b='1'><C><D>2</D></C><E/></A>").documentElement();
    const Node held = root.child(name("C"));
    root.setText(QStringLiteral("x"));
    EXPECT_EQ(textOf(root), "<A b=\"1\">x</A>");
    EXPECT_EQ(textOf(held), "<C><D>2</D></C>");
    EXPECT_FALSE(held.parent());
}

TEST(Folded, ANodeOutlivesItsDocumentWithEverythingThatWasNeverRead)
{
    Node held;
    {
        const Node document = parsed(Sample);
        held = document.documentElement().child(name("C"));
        document.documentElement().removeChild(held);
    }
    EXPECT_EQ(textOf(held), "<C>two&lt;<D>three</D><E/>\nfour</C>");
    const Node target = parsed("<T/>").documentElement();
    ASSERT_TRUE(target.appendChild(held));
    held = Node();
    EXPECT_EQ(textOf(target), "<T><C>two&lt;<D>three</D><E/>\nfour</C></T>");
}

TEST(Folded, BytesOfSomebodyElseAreCopied)
{
    std::string bytes = "<A><B>one</B></A>";
    const Node document = parsed(QByteArray::fromRawData(bytes.data(), qsizetype(bytes.size())));
    bytes.assign(bytes.size(), '#');
    EXPECT_EQ(textOf(document), "<A><B>one</B></A>");
}

TEST(Folded, TheDepthOfWhatWasNeverReadCounts)
{
    const auto nested = [](int levels) {
        return parsed(QByteArray("<E>").repeated(levels) + QByteArray("</E>").repeated(levels)).documentElement();
    };
    const Node below = nested(250);
    EXPECT_FALSE(
        nested(7).firstChild().firstChild().firstChild().firstChild().firstChild().firstChild().appendChild(below));
    EXPECT_TRUE(nested(7).firstChild().firstChild().firstChild().firstChild().firstChild().appendChild(below));
}

namespace {

/// Writes down what is loaded into it, and edits the element once.
class Editor : public zan::binding::Object
{
public:
    QString Text() const { return {}; }
    void setText(const QString& text)
    {
        log.push_back(text.toStdString());
        if (edit)
            std::exchange(edit, nullptr)();
    }
    const zan::binding::MemberTable& members() const override
    {
        static const zan::binding::MemberTable table(
            "Editor", nullptr, {zan::binding::property<&Editor::Text, &Editor::setText>("Text")});
        return table;
    }
    std::vector<std::string> log;
    std::function<void()> edit;
};

} // namespace

TEST(Folded, ASetterMayEditTheElementThatIsLoaded)
{
    using Log = std::vector<std::string>;
    const auto loaded = [](const std::function<void(const Node& root)>& edit) {
        const Node root = parsed("<A><TEXT>1</TEXT><X/><TEXT>2</TEXT><TEXT>3</TEXT></A>").documentElement();
        const auto editor = zan::values::make<Editor>();
        editor->edit = [&] { edit(root); };
        loadByName(root, *editor);
        return editor->log;
    };
    EXPECT_EQ(loaded([](const Node&) {}), (Log{"1", "2", "3"}));
    EXPECT_EQ(loaded([](const Node& root) { root.removeChild(root.children(name("TEXT"))[1]); }), (Log{"1", "3"}));
    EXPECT_EQ(
        loaded([](const Node& root) { root.appendChild(root.createElement(name("TEXT"), QStringLiteral("4"))); }),
        (Log{"1", "2", "3"}))
        << "what a setter adds is not loaded";
    EXPECT_EQ(loaded([](const Node& root) { root.child(name("TEXT")).nextSibling().nextSibling().setText({}); }),
              (Log{"1", "", "3"}));
    EXPECT_EQ(loaded([](const Node& root) { root.setText(QStringLiteral("gone")); }), (Log{"1"}));
}
