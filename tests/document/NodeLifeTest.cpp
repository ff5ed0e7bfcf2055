#include "Parsed.h"

#include "document/ChangeCounter.h"
#include "document/Record.h"
#include "document/WatchedChild.h"

#include <functional>
#include <memory>
#include <vector>

using namespace zan::document;

TEST(NodeLife, AHandleKeepsTheWholeTreeUpToTheDocumentAlive)
{
    const Node leaf = parsed("<A><B><C>x</C></B><D/></A>").documentElement().child(name("B")).child(name("C"));
    EXPECT_EQ(textOf(leaf.ownerDocument()), "<A><B><C>x</C></B><D/></A>");
    EXPECT_EQ(textOf(leaf.parent().nextSibling()), "<D/>");
}

TEST(NodeLife, ADetachedNodeLivesOnWithAllBelowItAndKeepsItsDocument)
{
    Node inner;
    {
        const Node document = parsed("<A><B><C>x</C></B></A>");
        Node root = document.documentElement();
        const Node detached = root.child(name("B"));
        inner = detached.child(name("C"));
        ASSERT_TRUE(root.removeChild(detached));
        EXPECT_EQ(textOf(document), "<A/>");
    }
    EXPECT_EQ(textOf(inner.parent()), "<B><C>x</C></B>");
    EXPECT_FALSE(inner.parent().parent());
    EXPECT_EQ(textOf(inner.ownerDocument()), "<A/>");
}

TEST(NodeLife, ADetachedNodeHasNoSiblings)
{
    const Node document = parsed("<A><B/><C/><D/></A>");
    Node root = document.documentElement();
    const Node middle = root.child(name("C"));
    ASSERT_TRUE(root.removeChild(middle));
    EXPECT_FALSE(middle.nextSibling());
    EXPECT_FALSE(middle.previousSibling());
    EXPECT_EQ(textOf(document), "<A><B/><D/></A>");
    EXPECT_EQ(root.lastChild().previousSibling(), root.firstChild());
}

TEST(NodeLife, CountsComeBackToWhatTheyWereWhenHandlesGo)
{
    const Node document = parsed("<A><B><C/></B></A>");
    Node::Record* root = document.record()->firstChild();
    EXPECT_EQ(document.record()->references, 1u);
    EXPECT_EQ(root->references, 0u);
    {
        const Node leaf = document.documentElement().child(name("B")).child(name("C"));
        const Node again = leaf;
        EXPECT_EQ(leaf.record()->references, 2u);
        EXPECT_EQ(root->first->references, 1u) << "one for its child, however many handles that has";
        EXPECT_EQ(root->references, 1u);
        EXPECT_EQ(document.record()->references, 2u);
    }
    EXPECT_EQ(root->first->first->references, 0u);
    EXPECT_EQ(root->first->references, 0u);
    EXPECT_EQ(root->references, 0u);
    EXPECT_EQ(document.record()->references, 1u);
}

TEST(NodeLife, ANodeMovedToAnotherDocumentBelongsThereAndOutlivesItsFormerOne)
{
    Node moved;
    Node target = parsed("<T/>").documentElement();
    {
        const Node source = parsed("<S><X><Y>1</Y></X></S>");
        moved = source.documentElement().child(name("X"));
        ASSERT_TRUE(target.appendChild(moved));
        EXPECT_EQ(textOf(source), "<S/>");
        EXPECT_EQ(source.record()->references, 1u) << "the moved node let go of its former document";
    }
    EXPECT_EQ(moved.ownerDocument(), target.ownerDocument());
    EXPECT_EQ(textOf(target), "<T><X><Y>1</Y></X></T>");
}

TEST(NodeLife, AnElementMadeByADocumentThatIsGoneCanStillBeAppended)
{
    const Node made = Node::newDocument().createElement(name("X"), QStringLiteral("1"));
    Node root = parsed("<A/>").documentElement();
    ASSERT_TRUE(made);
    ASSERT_TRUE(root.appendChild(made));
    EXPECT_EQ(textOf(root.ownerDocument()), "<A><X>1</X></A>");
}

TEST(NodeLife, ReplacingTheTextDetachesTheChildrenThatAreHeldAndDropsTheOthers)
{
    const Node document = parsed("<A><B><C>x</C></B><D>y</D></A>");
    Node root = document.documentElement();
    const Node inner = root.child(name("B")).child(name("C"));
    root.setText(root.child(name("D")).text());
    EXPECT_EQ(textOf(document), "<A>y</A>");
    EXPECT_EQ(textOf(inner.parent()), "<B><C>x</C></B>");
    EXPECT_EQ(inner.ownerDocument(), document);
    EXPECT_FALSE(inner.parent().parent());
}

TEST(NodeLife, AHandleAssignedToItselfStays)
{
    Node node = parsed("<A>x</A>").documentElement();
    const Node& same = node;
    node = same;
    EXPECT_EQ(node.text(), u"x");
}

TEST(NodeLife, AMovedFromHandleIsNull)
{
    Node node = parsed("<A/>").documentElement();
    const Node other = std::move(node);
    EXPECT_FALSE(node); // NOLINT(bugprone-use-after-move): the rule under test
    EXPECT_TRUE(other);
}

TEST(NodeLife, AMillionSiblingsAreFreedWithoutRecursion)
{
    constexpr int Count = 1'000'000;
    Node held;
    {
        Node root = parsed("<A/>").documentElement();
        for (int i = 0; i < Count; ++i)
            root.appendChild(root.createElement(name("B")));
        EXPECT_EQ(root.childElementCount(), std::size_t(Count));
        held = root.lastChild();
        root.removeChild(held);
    }
    EXPECT_EQ(held.name(), name("B"));
}

TEST(NodeLife, ATreeAsDeepAsItMayBeIsCopiedWrittenAndFreed)
{
    const Node document = parsed("<E/>");
    Node deepest = document.documentElement();
    for (int level = 1; level < Node::DeepestLevel; ++level) {
        const Node below = deepest.createElement(name("E"));
        ASSERT_TRUE(deepest.appendChild(below)) << level;
        deepest = below;
    }
    EXPECT_FALSE(deepest.appendChild(deepest.createElement(name("E")))) << "one level too many";
    EXPECT_EQ(toXml(parsed(toXml(document))), toXml(document));
}

TEST(NodeLife, ASubtreeThatWouldReachTooDeepIsRefusedAsAWhole)
{
    QByteArray deep;
    for (int level = 0; level < Node::DeepestLevel - 1; ++level)
        deep = "<E>" + deep + "</E>";
    const Node child = parsed(deep).documentElement();
    Node root = parsed("<A><B/></A>").documentElement();
    EXPECT_FALSE(root.child(name("B")).appendChild(child));
    EXPECT_EQ(textOf(root), "<A><B/></A>");
    EXPECT_EQ(child.parent(), child.ownerDocument()) << "it stays where it was";
    EXPECT_TRUE(root.appendChild(child));
}

TEST(NodeLife, NodesOfALongTextLiveOnInAnotherDocument)
{
    constexpr int Count = 1000;
    QByteArray text = "<A>";
    for (int i = 0; i < Count; ++i)
        text += "<E><N>" + QByteArray::number(i) + "</N></E>";
    Node first = parsed(text + "</A>");
    const Node second = parsed("<B/>");
    Node child = first.documentElement().firstChild();
    for (int i = 0; i < Count; ++i) {
        const Node next = child.nextSibling();
        if (i % 100 == 7)
            second.documentElement().appendChild(child);
        child = next;
    }
    child = first = Node(); // all others go
    QByteArray expected = "<B>";
    for (int i = 7; i < Count; i += 100)
        expected += "<E><N>" + QByteArray::number(i) + "</N></E>";
    EXPECT_EQ(textOf(second.documentElement()), (expected + "</B>").toStdString());
}

TEST(NodeLife, EachCounterCountsTheChangesOfTheNodesItsOwnerWatches)
{
    const Node root = parsed("<A><K>1</K><D>2</D></A>").documentElement();
    const ChangeCounter keys;
    const ChangeCounter display;
    root.child(name("K")).watch(keys);
    root.child(name("D")).watch(display);
    const std::uint32_t keysBefore = keys.value();
    const std::uint32_t displayBefore = display.value();
    root.child(name("D")).setText(QStringLiteral("3"));
    EXPECT_EQ(keys.value(), keysBefore);
    EXPECT_NE(display.value(), displayBefore);
    const std::uint32_t displayAfter = display.value();
    root.child(name("K")).setText(QStringLiteral("4"));
    EXPECT_NE(keys.value(), keysBefore);
    EXPECT_EQ(display.value(), displayAfter);
}

TEST(NodeLife, MoreCountersThanBitsMissNoChange)
{
    const Node root = parsed("<A/>").documentElement();
    std::vector<std::unique_ptr<ChangeCounter>> counters;
    for (int i = 0; i < 3 * ChangeCounter::Bits; ++i) {
        const Node watched = root.createElement(name("B"));
        counters.push_back(std::make_unique<ChangeCounter>());
        watched.watch(*counters.back());
        const std::uint32_t before = counters.back()->value();
        watched.setText(QStringLiteral("1"));
        EXPECT_NE(counters.back()->value(), before) << i;
    }
}

namespace {

/// Whether an edit is counted by a reader that has read like this.
bool isNoticed(const std::function<void(const Node& root)>& read, const std::function<void(const Node& root)>& edit)
{
    const Node root = parsed("<A><B>1</B><C><D>2</D><E>3</E></C><F g='h'/></A>").documentElement();
    const ChangeCounter counter;
    {
        const ReadRecorder recorder(counter);
        read(root);
    }
    const std::uint32_t before = counter.value();
    edit(root);
    return counter.value() != before;
}

} // namespace

TEST(NodeLife, ARecorderWatchesWhateverIsReadOfANode)
{
    using Step = std::function<void(const Node&)>;
    const Node loose = Node::newDocument().createElement(name("X"));
    const Step append = [&](const Node& root) { root.appendChild(loose); };
    const Step editInside = [](const Node& root) {
        root.child(name("C")).child(name("D")).setText(QStringLiteral("9"));
    };
    const Step editFirst = [](const Node& root) { root.child(name("B")).setText(QStringLiteral("9")); };
    const Step removeFirst = [](const Node& root) { root.removeChild(root.child(name("B"))); };
    const Step editAttribute = [](const Node& root) {
        root.child(name("F")).setAttribute(QStringLiteral("g"), QStringLiteral("i"));
    };
    const Step detach = [](const Node& root) { root.ownerDocument().removeChild(root); };
    struct Row
    {
        const char* what;
        Step read;
        Step edit;
    };
    QString text;
    const Row rows[] = {
        {"text", [](const Node& root) { root.text(); }, editInside},
        {"child", [](const Node& root) { root.child(name("X")); }, append},
        {"childText", [&](const Node& root) { root.childText(name("C"), text); }, editInside},
        {"childText of a leaf", [&](const Node& root) { root.childText(name("B"), text); }, editFirst},
        {"childNumber", [](const Node& root) { EXPECT_EQ(root.childNumber(name("B")), 1); }, editFirst},
        {"isChildText", [](const Node& root) { EXPECT_TRUE(root.isChildText(name("B"), u"1")); }, editFirst},
        {"children", [](const Node& root) { root.children(name("X")); }, append},
        {"childElementCount", [](const Node& root) { root.childElementCount(); }, append},
        {"firstChild", [](const Node& root) { root.firstChild(); }, removeFirst},
        {"firstChildElement", [](const Node& root) { root.firstChildElement(); }, removeFirst},
        {"lastChild", [](const Node& root) { root.lastChild(); }, append},
        {"nextSibling", [](const Node& root) { root.child(name("F")).nextSibling(); }, append},
        {"nextSiblingElement", [](const Node& root) { root.child(name("F")).nextSiblingElement(); }, append},
        {"previousSibling", [](const Node& root) { root.child(name("C")).previousSibling(); }, removeFirst},
        {"attributes", [](const Node& root) { root.child(name("F")).attributes(); }, editAttribute},
        {"xml", [](const Node& root) { root.xml(); }, editInside},
        {"parent", [](const Node& root) { root.parent(); }, detach},
        {"ownerDocument", [](const Node& root) { root.child(name("B")).ownerDocument(); }, detach},
        {"documentElement", [](const Node& root) { root.ownerDocument().documentElement(); }, detach},
    };
    for (const Row& row : rows)
        EXPECT_TRUE(isNoticed(row.read, row.edit)) << row.what;
}

TEST(NodeLife, ARecorderWatchesNothingThatIsNotReadWhileItLives)
{
    const auto readText = [](const Node& root) { root.child(name("B")).text(); };
    EXPECT_FALSE(isNoticed(readText, [](const Node& root) { root.child(name("C")).child(name("D")).setText({}); }));
    EXPECT_FALSE(isNoticed([](const Node&) {},
                           [&](const Node& root) {
                               readText(root); // too late
                               root.child(name("B")).setText({});
                           }));
}

TEST(NodeLife, ARecorderWithinAnotherTakesTheReadsOver)
{
    const Node root = parsed("<A><B/><C/></A>").documentElement();
    const ChangeCounter outer;
    const ChangeCounter inner;
    {
        const ReadRecorder first(outer);
        {
            const ReadRecorder second(inner);
            root.child(name("B")).text();
        }
        root.child(name("C")).text();
    }
    const std::uint32_t outerBefore = outer.value();
    const std::uint32_t innerBefore = inner.value();
    root.child(name("B")).setText(QStringLiteral("1"));
    EXPECT_EQ(outer.value(), outerBefore);
    EXPECT_NE(inner.value(), innerBefore);
    root.child(name("C")).setText(QStringLiteral("1"));
    EXPECT_NE(outer.value(), outerBefore);
}

TEST(NodeLife, AnElementThatLosesWhatNobodyHasHeldTellsWhoReadIt)
{
    const Node root = parsed("<A><B><C>1</C></B></A>").documentElement();
    const Node holder = root.child(name("B"));
    const ChangeCounter counter;
    QString text;
    ASSERT_TRUE(watchedChildText(holder, name("C"), counter, text));
    EXPECT_EQ(text, u"1");
    const std::uint32_t before = counter.value();
    holder.setText(QStringLiteral("wiped"));
    EXPECT_NE(counter.value(), before);
    EXPECT_FALSE(watchedChildText(holder, name("C"), counter, text));
}
