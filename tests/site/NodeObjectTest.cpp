#include "site/NodeObject.h"
#include "document/XmlText.h"
#include "support/FakeSite.h"

#include <gtest/gtest.h>

namespace zan::site {

namespace {

using binding::Object;
using values::Name;

Variant text(const char* characters)
{
    return Variant(QString::fromUtf8(characters));
}

/// A script's view of the document element of this text.
Ref<Object> element(const QByteArray& xml)
{
    return values::make<NodeObject>(document::parseXml(xml).document.documentElement());
}

Variant call(Object& object, const char* name, const Variant& argument)
{
    return object.get(Name(name), {&argument, 1});
}

int errorOf(Object& object, const char* name, const Variant& argument)
{
    try {
        call(object, name, argument);
    } catch (const binding::RuntimeError& error) {
        return error.number();
    }
    return 0;
}

std::string textOf(const Variant& node)
{
    return node.object() ? values::toText(node).toStdString() : "(nothing)";
}

} // namespace

TEST(NodeObject, AScriptReadsAnElementByNameAndByPlace)
{
    const auto root = element("<A><B>1</B><C/><B>2</B></A>");
    EXPECT_EQ(textOf(call(*root, "selectSingleNode", text("B"))), "1");
    EXPECT_EQ(textOf(call(*root, "SELECTSINGLENODE", text("b"))), "(nothing)") << "element names tell case apart";
    const Variant list = call(*root, "selectNodes", text("B"));
    EXPECT_EQ(binding::objectOf(list).get(Name("length")).longInteger(), 2);
    EXPECT_EQ(binding::objectOf(call(*root, "selectNodes", text("X"))).get(Name("length")).longInteger(), 0);
    EXPECT_EQ(textOf(call(binding::objectOf(list), "item", Variant(1))), "2");
    EXPECT_EQ(textOf(call(binding::objectOf(list), "item", Variant(2))), "(nothing)");
    EXPECT_EQ(textOf(call(binding::objectOf(list), "item", Variant(-1))), "(nothing)");
}

TEST(NodeObject, ForEachWalksTheListAsItWasMade)
{
    const auto root = element("<A><B>1</B><C>2</C></A>");
    const Variant children = root->get(Name("childNodes"));
    call(*root, "removeChild", call(*root, "selectSingleNode", text("C")));
    std::string seen;
    for (const auto walk = binding::objectOf(children).enumerate(); const auto item = walk->next();)
        seen += textOf(*item);
    EXPECT_EQ(seen, "12");
}

TEST(NodeObject, WritesGoIntoTheTree)
{
    const auto root = element("<A><B>1</B></A>");
    const Variant b = call(*root, "selectSingleNode", text("B"));
    binding::objectOf(b).put(Name("Text"), Variant(5));
    const Variant fresh = call(*root, "createElement", text("D"));
    call(*root, "appendChild", fresh);
    EXPECT_EQ(values::toText(root->get(Name("xml"))).toStdString(), "<A><B>5</B><D/></A>");
    EXPECT_EQ(values::toText(binding::objectOf(fresh).get(Name("baseName"))).toStdString(), "D");
    EXPECT_EQ(binding::objectOf(fresh).get(Name("nodeType")).integer(), 1);
}

TEST(NodeObject, TheWayUpEndsInNothing)
{
    const auto root = element("<A/>");
    const Variant document = root->get(Name("ownerDocument"));
    EXPECT_EQ(binding::objectOf(document).get(Name("nodeType")).integer(), 9);
    EXPECT_EQ(binding::objectOf(document).get(Name("ownerDocument")).object(), nullptr);
    EXPECT_EQ(binding::objectOf(document).get(Name("parentNode")).object(), nullptr);
    EXPECT_NE(binding::objectOf(document).get(Name("documentElement")).object(), nullptr);
}

TEST(NodeObject, WhatCannotBeDoneRaisesAndChangesNothing)
{
    const auto root = element("<A><B/></A>");
    EXPECT_EQ(errorOf(*root, "appendChild", Variant::nothing()), 91);
    EXPECT_EQ(errorOf(*root, "appendChild", Variant(1)), 424);
    EXPECT_EQ(errorOf(*root, "appendChild", Variant(values::make<fake::FakeChannel>())), 13);
    EXPECT_EQ(errorOf(*root, "appendChild", Variant(root)), 5) << "inside itself";
    EXPECT_EQ(errorOf(*root, "removeChild", Variant(element("<C/>"))), 5);
    EXPECT_EQ(errorOf(*root, "removeChild", Variant::nothing()), 5);
    EXPECT_EQ(errorOf(*root, "createElement", text("no name")), 5);
    EXPECT_EQ(values::toText(root->get(Name("xml"))).toStdString(), "<A><B/></A>");
}

TEST(NodeObject, ChannelsAndWindowsShowTheirNodesToScripts)
{
    const auto logger = values::make<fake::FakeLogger>();
    const auto channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("Stage"));
    const Variant node = channel->get(Name("XMLNode"));
    const Variant window = binding::objectOf(node).get(Name("parentNode"));
    EXPECT_EQ(textOf(call(binding::objectOf(window), "selectSingleNode", text("KEY"))), "RTD");
    const Variant panel = logger->scheme->window(QStringLiteral("RTD"))->get(Name("XML"));
    EXPECT_EQ(textOf(call(binding::objectOf(panel), "selectSingleNode", text("CHANNEL"))), "Stage");
    EXPECT_EQ(values::make<fake::FakeChannel>()->get(Name("XMLNode")).object(), nullptr);
}

} // namespace zan::site
