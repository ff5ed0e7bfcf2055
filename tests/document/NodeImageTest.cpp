#include "document/NodeImage.h"
#include "document/Elements.h"
#include "document/StoredDefault.h"
#include "document/XMLOps.h"

#include <gtest/gtest.h>

using namespace zan::document;
using zan::values::Name;

namespace {

Node parse(const char* xml)
{
    return XMLOps::LoadDocument(QString::fromUtf8(xml));
}

/// What becomes of `now` when the change from `before` to `after` is made in it.
QString changed(const char* now, const char* before, const char* after)
{
    const Node node = parse(now);
    NodeImage(parse(before)).applyChange(node, NodeImage(parse(after)));
    return node.xml();
}

} // namespace

TEST(NodeImage, AChangeAndItsReverseGiveTheSameBytes)
{
    const char* const forms[] = {
        "<C><A>1</A><B>2</B></C>",
        "<C><A>1</A><B>2</B><D>4</D></C>",
        "<C><A>1</A><F><N>x</N><S>8</S></F><B/></C>",
        "<C><A>7</A><A>8</A><F><S>9</S></F></C>",
        "<C/>",
        "<C>text</C>",
    };
    for (const char* first : forms) {
        for (const char* second : forms) {
            const Node node = parse(first);
            const NodeImage one(node);
            const NodeImage two(parse(second));
            one.applyChange(node, two);
            EXPECT_EQ(node.xml(), parse(second).xml()) << first;
            two.applyChange(node, one);
            EXPECT_EQ(node.xml(), parse(first).xml()) << second;
        }
    }
}

TEST(NodeImage, WhatAReadHadStoredIsThatAgainWhenItComesBack)
{
    const Node node = parse("<C/>");
    XMLOps::GetAttribute(node, Name("MODE"), QStringLiteral("CHANNEL"));
    XMLOps::GetAttribute(node, Name("PROGRAM"), QStringLiteral("DATA"));
    const NodeImage before(node);
    XMLOps::SetAttribute(node, Name("MODE"), QStringLiteral("PROGRAM"));
    XMLOps::SetAttribute(node, Name("PROGRAM"), QString());
    const NodeImage after(node);
    after.applyChange(node, before);
    EXPECT_TRUE(isStoredDefault(node.child(Name("MODE"))));
    EXPECT_TRUE(isStoredDefault(node.child(Name("PROGRAM"))));
    before.applyChange(node, after);
    EXPECT_FALSE(isStoredDefault(node.child(Name("MODE"))));
}

TEST(NodeImage, OnlyWhatTheChangeMovedIsMoved)
{
    // Children that both have keep their order: a step never stirs what it did not touch.
    EXPECT_EQ(changed("<C><A>1</A><B>2</B></C>", "<C><A>1</A><B>2</B></C>", "<C><B>3</B><A>1</A></C>"),
              QStringLiteral("<C><A>1</A><B>3</B></C>"));
}

TEST(NodeImage, WhatChangedMeanwhileElsewhereStays)
{
    EXPECT_EQ(changed("<C><LEFT>9</LEFT><SCAN>-1</SCAN><TOP>5</TOP></C>", "<C><LEFT>9</LEFT><TOP>5</TOP></C>",
                      "<C><LEFT>1</LEFT><TOP>5</TOP></C>"),
              QStringLiteral("<C><LEFT>1</LEFT><SCAN>-1</SCAN><TOP>5</TOP></C>"));
}

TEST(NodeImage, AChildThatComesBackStandsWhereItStood)
{
    EXPECT_EQ(changed("<C><A/><D/></C>", "<C><A/><D/></C>", "<C><A/><B>2</B><D/></C>"),
              QStringLiteral("<C><A/><B>2</B><D/></C>"));
}

TEST(NodeImage, ChildrenThatRemainAreTheSameNodes)
{
    const Node node = parse("<C><FONT><SIZE>8</SIZE></FONT><A>1</A></C>");
    const Node font = node.child(Name("FONT"));
    NodeImage(node).applyChange(node, NodeImage(parse("<C><FONT><SIZE>9</SIZE><BOLD>-1</BOLD></FONT></C>")));
    EXPECT_EQ(node.child(Name("FONT")), font);
    EXPECT_EQ(font.xml(), QStringLiteral("<FONT><SIZE>9</SIZE><BOLD>-1</BOLD></FONT>"));
}

TEST(NodeImage, NothingHappensToANullHandle)
{
    NodeImage(parse("<C><A>1</A></C>")).applyChange(Node(), NodeImage(parse("<C/>")));
}

TEST(InsertBefore, PutsAChildRightBeforeAnother)
{
    const Node node = parse("<C><A/><B/><D/></C>");
    const Node moved = node.child(Name("D"));
    EXPECT_TRUE(node.insertBefore(moved, node.child(Name("B"))));
    EXPECT_EQ(node.xml(), QStringLiteral("<C><A/><D/><B/></C>"));
    EXPECT_TRUE(node.insertBefore(parse("<N/>"), node.child(Name("A"))));
    EXPECT_EQ(node.xml(), QStringLiteral("<C><N/><A/><D/><B/></C>"));
    EXPECT_TRUE(node.insertBefore(parse("<L/>"), Node()));
    EXPECT_EQ(node.lastChild().xml(), QStringLiteral("<L/>"));
    EXPECT_EQ(node.firstChild().previousSibling(), Node());
}

TEST(InsertBefore, RefusesAPlaceThatIsNotThere)
{
    const Node node = parse("<C><A/><B/></C>");
    EXPECT_FALSE(node.insertBefore(parse("<N/>"), parse("<X/>")));
    EXPECT_FALSE(node.insertBefore(node, node.child(Name("A")))) << "not into itself";
    EXPECT_EQ(node.xml(), QStringLiteral("<C><A/><B/></C>"));
}
