// Elements that come over and over are read many bytes at a time: what is read must not hang on that.
#include "Parsed.h"

#include <algorithm>
#include <string>

using namespace zan::document;

namespace {

/// What the reader looks at in one go, and the end of the text behind it, fit in here.
constexpr int Far = 100;

/// Elements with these contents, one after the other, and at the end nothing or so many blanks.
QByteArray repeated(const QByteArray& name, const QByteArray& content, int blanks)
{
    const QByteArray element = '<' + name + '>' + content + "</" + name + '>';
    return "<A>" + element + element + element + QByteArray(blanks, ' ') + "</A>";
}

/// Checks that the third element is read like one that stands alone.
void expectReadAlike(const QByteArray& name, const QByteArray& content)
{
    const Node alone = parsed('<' + name + '>' + content + "</" + name + '>').documentElement();
    for (const int blanks : {0, 1, Far}) {
        const Node root = parsed(repeated(name, content, blanks)).documentElement();
        ASSERT_EQ(root.childElementCount(), 3u) << content.toStdString();
        const Node third = root.firstChild().nextSibling().nextSibling();
        ASSERT_EQ(textOf(third), textOf(alone)) << content.toStdString() << ", blanks " << blanks;
        ASSERT_EQ(third.text(), alone.text()) << content.toStdString() << ", blanks " << blanks;
        ASSERT_FALSE(third.nextSibling());
    }
}

} // namespace

TEST(XmlRepeated, AnElementIsReadAlikeWhereverAnOddCharacterStandsInItsText)
{
    const QByteArray oddities[] = {"",  "&amp;",    "&#65;",         ">",        "\r",      "\r\n", "\n",
                                   " ", "\xC3\xA9", "<![CDATA[<]]>", "<!--c-->", "<?p q?>", "<D/>", "<B>x</B>"};
    for (const QByteArray& odd : oddities)
        for (int before = 0; before < 36; ++before)
            for (const int after : {0, 1, 15, 16, 17}) {
                SCOPED_TRACE(before);
                expectReadAlike("B", QByteArray(before, 'x') + odd + QByteArray(after, 'y'));
                if (testing::Test::HasFatalFailure())
                    return;
            }
}

TEST(XmlRepeated, AnElementIsReadAlikeHoweverLongItsName)
{
    for (int size = 1; size < 70; ++size) {
        expectReadAlike(QByteArray(size, 'n'), "text");
        if (testing::Test::HasFatalFailure())
            return;
    }
}

TEST(XmlRepeated, ANameIsToldFromOneThatDiffersInAnyOfItsCharacters)
{
    for (int size = 1; size < 40; ++size)
        for (int place = 0; place <= size; ++place) {
            const QByteArray name(size, 'n');
            const QByteArray other =
                name.first(place) + 'o' + name.sliced(std::min(place + 1, size)); // or a longer one
            const QByteArray known = "<A>" + QByteArray("<" + name + ">1</" + name + ">").repeated(2);
            const QByteArray end = QByteArray(Far, ' ') + "</A>";
            const Node root = parsed(known + "<" + other + ">3</" + other + ">" + end).documentElement();
            ASSERT_EQ(root.lastChild().name(), Name(other.constData()));
            ASSERT_EQ(root.lastChild().text(), u"3");
            const ParseResult wrong = parseXml(known + "\n<" + name + ">2</" + other + ">" + end);
            ASSERT_FALSE(wrong) << other.toStdString();
            ASSERT_EQ(wrong.error.line, 2);
            ASSERT_EQ(wrong.error.column, name.size() + 4) << other.toStdString();
        }
}

TEST(XmlRepeated, ATagThatDoesNotEndIsRefusedAfterAnyNumberThatDo)
{
    for (int size = 1; size < 40; ++size) {
        const QByteArray name(size, 'n');
        const QByteArray known = "<A>" + QByteArray("<" + name + ">1</" + name + ">").repeated(2) + "<" + name;
        const QByteArray end = QByteArray(Far, ' ') + "</A>";
        EXPECT_FALSE(parseXml(known + "</" + name + ">" + end)) << size;
        EXPECT_FALSE(parseXml(known + "x</" + name + ">" + end)) << size;
        EXPECT_FALSE(parseXml(known + ">x</" + name + end)) << size;
        EXPECT_FALSE(parseXml(known + ">x</" + name + "x" + end)) << size;
        EXPECT_FALSE(parseXml(known + ">x<" + name + ">" + end)) << size;
    }
}

TEST(XmlRepeated, TheLimitsCountEachElement)
{
    const QByteArray xml = "<A>" + QByteArray("<B>text</B>").repeated(50) + QByteArray(Far, ' ') + "</A>";
    ParseLimits limits;
    limits.elements = 52; // with the blanks at the end, which are dropped
    EXPECT_TRUE(parseXml(xml, limits));
    limits.elements = 50;
    const ParseResult tooMany = parseXml(xml, limits);
    ASSERT_FALSE(tooMany);
    EXPECT_EQ(tooMany.error.column, 3 + 49 * 11 + 1);
    limits = {};
    limits.depth = 1;
    const ParseResult tooDeep = parseXml(xml, limits);
    ASSERT_FALSE(tooDeep);
    EXPECT_EQ(tooDeep.error.column, 4);
}

TEST(XmlRepeated, BlanksBetweenElementsGoAtEachLevelByItself)
{
    struct Row
    {
        const char* xml;
        const char* tree;
    };
    const Row rows[] = {
        {"<A> <B> <C>1</C> <C>2</C> </B> <B> <C>3</C> </B> </A>", "<A><B><C>1</C><C>2</C></B><B><C>3</C></B></A>"},
        {"<A> <B> <C>1</C> x </B> <B> <C>2</C> </B> </A>", "<A><B> <C>1</C> x </B><B><C>2</C></B></A>"},
        {"<A> <B> <C>1</C> </B> x <B> <C>2</C> </B> </A>", "<A> <B><C>1</C></B> x <B><C>2</C></B> </A>"},
        {"<A> <B> <C> </C> </B> <B/> </A>", "<A><B><C> </C></B><B/></A>"},
        {"<A> <B xml:space='preserve'> <C>1</C> </B> <B> <C>2</C> </B> </A>",
         "<A><B xml:space=\"preserve\"> <C>1</C> </B><B><C>2</C></B></A>"},
        {"<A> <B d='1'> </B> <B d='2'> <!--c--> </B> </A>", "<A><B d=\"1\"> </B><B d=\"2\"><!--c--></B></A>"},
    };
    for (const Row& row : rows) {
        const Node document = parsed(row.xml);
        EXPECT_EQ(textOf(document), row.tree) << row.xml;
        // Walked from record to record as well: each knows where it ends.
        std::string names;
        for (Node node = document.documentElement().firstChildElement(); node; node = node.nextSiblingElement())
            names += node.name().text().toStdString();
        EXPECT_EQ(names, std::string(document.documentElement().childElementCount(), 'B')) << row.xml;
    }
}
