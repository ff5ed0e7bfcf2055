#include "display/Sites.h"

#include "binding/MemberTable.h"

#include "document/XMLOps.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

using namespace zan;
using display::Sites;
using test::errorOf;
using values::make;
using values::Name;
using values::Ref;
using values::Variant;

namespace {

document::Node node(const char* name)
{
    return document::XMLOps::LoadDocument(QStringLiteral("<%1/>").arg(QString::fromLatin1(name)));
}

QString order(Sites& sites)
{
    QString names;
    for (std::int32_t place = 1; place <= sites.Count(); ++place)
        names += sites.Item(Variant(place)).name().text();
    return names;
}

} // namespace

TEST(Sites, NodesAreFoundByPlaceFromOneAndByKeyInAnyCase)
{
    const Ref<Sites> sites = make<Sites>();
    sites->Add(node("A"));
    sites->Add(node("B"), QStringLiteral("Weir"));
    EXPECT_EQ(sites->Count(), 2);
    EXPECT_EQ(sites->Item(Variant(1)).name(), Name("A"));
    EXPECT_EQ(sites->Item(Variant(u"WEIR")).name(), Name("B"));
    EXPECT_EQ(errorOf([&] { (void)sites->Item(Variant(0)); }), 9);
    EXPECT_EQ(errorOf([&] { (void)sites->Item(Variant(3)); }), 9);
    EXPECT_EQ(errorOf([&] { (void)sites->Item(Variant(u"Dam")); }), 5);
    EXPECT_EQ(errorOf([&] { (void)sites->Item(Variant(u"")); }), 5); // no key is no key
}

TEST(Sites, EmptyKeyIsNoKeyAndAKeyIsTakenOnce)
{
    const Ref<Sites> sites = make<Sites>();
    sites->Add(node("A"), QString());
    sites->Add(node("B"), QString());
    sites->Add(node("C"), QStringLiteral("k"));
    EXPECT_EQ(errorOf([&] { sites->Add(node("D"), QStringLiteral("K")); }), 457);
    EXPECT_EQ(order(*sites), u"ABC");
    sites->Remove(Variant(u"K"));
    sites->Add(node("D"), QStringLiteral("K"));
    EXPECT_EQ(order(*sites), u"ABD");
}

TEST(Sites, BeforeAndAfterNameAPlaceOrAKeyAndNotBoth)
{
    const Ref<Sites> sites = make<Sites>();
    sites->Add(node("A"), QStringLiteral("a"));
    sites->Add(node("B"), QStringLiteral("b"));
    sites->Add(node("C"), {}, Variant(1));
    sites->Add(node("D"), {}, {}, Variant(u"a"));
    EXPECT_EQ(order(*sites), u"CADB");
    EXPECT_EQ(errorOf([&] { sites->Add(node("E"), {}, Variant(1), Variant(1)); }), 5);
    EXPECT_EQ(errorOf([&] { sites->Add(node("E"), QStringLiteral("e"), Variant(9)); }), 9);
    EXPECT_EQ(order(*sites), u"CADB");
    sites->Add(node("E"), QStringLiteral("e")); // the key was not taken by the failure
    EXPECT_EQ(order(*sites), u"CADBE");
}

TEST(Sites, ClearLeavesNothingAndRemoveFailsForWhatIsNotThere)
{
    const Ref<Sites> sites = make<Sites>();
    sites->Add(node("A"), QStringLiteral("a"));
    EXPECT_EQ(errorOf([&] { sites->Remove(Variant(2)); }), 9);
    sites->Clear();
    EXPECT_EQ(sites->Count(), 0);
    EXPECT_EQ(errorOf([&] { (void)sites->Item(Variant(u"a")); }), 5);
    sites->Add(node("B"), QStringLiteral("a"));
    EXPECT_EQ(order(*sites), u"B");
}

TEST(Sites, ItemIsTheDefaultMemberAndTheWalkGivesNodes)
{
    const Ref<Sites> sites = make<Sites>();
    sites->Add(node("A"));
    sites->Add(node("B"));
    const Variant first[] = {Variant(1)};
    EXPECT_EQ(binding::Marshal<document::Node>::from(sites->get(Name("Item"), first)).name(), Name("A"));
    ASSERT_TRUE(sites->members().defaultMember());
    EXPECT_EQ(sites->members().defaultMember()->name, Name("Item"));
    QString names;
    const auto walk = sites->enumerate();
    while (const std::optional<Variant> item = walk->next())
        names += binding::Marshal<document::Node>::from(*item).name().text();
    EXPECT_EQ(names, u"AB");
}
