#include "binding/PropertyBag.h"

#include "Sample.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace zan::binding {

namespace {

std::string keysOf(const PropertyBag& bag)
{
    QString keys;
    for (const PropertyBag::Entry& entry : bag.entries())
        keys += entry.name.text() + u' ';
    return keys.toStdString();
}

Variant text(const char16_t* units)
{
    return Variant(QString::fromUtf16(units));
}

} // namespace

TEST(PropertyBag, GivesTheDefaultForWhatItDoesNotHold)
{
    const PropertyBag bag;
    EXPECT_EQ(bag.ReadProperty(Name("X"), Variant(5)).longInteger(), 5);
    EXPECT_TRUE(bag.ReadProperty(Name("X")).isEmpty());
    EXPECT_FALSE(bag.contains(Name("X")));
}

TEST(PropertyBag, KeepsTheOrderOfTheFirstWrites)
{
    PropertyBag bag;
    for (const char* key : {"Zeta", "Alpha", "Mid", "ALPHA"})
        bag.WriteProperty(Name(key), Variant(1));
    EXPECT_EQ(keysOf(bag), "Zeta Alpha Mid ");
}

TEST(PropertyBag, IgnoresTheCaseOfNames)
{
    PropertyBag bag;
    bag.WriteProperty(Name("BackColor"), Variant(1));
    bag.WriteProperty(Name("BACKCOLOR"), Variant(2));
    EXPECT_EQ(bag.entries().size(), 1u);
    EXPECT_EQ(bag.ReadProperty(Name("backcolor"), Variant(0)).longInteger(), 2);
    EXPECT_TRUE(bag.contains(Name("bAcKcOlOr")));
}

TEST(PropertyBag, LeavesOutWhatEqualsItsDefaultAndForgetsAnEarlierValue)
{
    PropertyBag bag;
    bag.WriteProperty(Name("A"), Variant(5), Variant(5));
    EXPECT_FALSE(bag.contains(Name("A")));
    bag.WriteProperty(Name("A"), Variant(6), Variant(5));
    EXPECT_EQ(bag.ReadProperty(Name("A"), Variant(5)).longInteger(), 6);
    bag.WriteProperty(Name("a"), Variant(5), Variant(5));
    EXPECT_FALSE(bag.contains(Name("A")));
}

TEST(PropertyBag, WithoutADefaultEverythingIsStored)
{
    PropertyBag bag;
    bag.WriteProperty(Name("A"), Variant());
    bag.WriteProperty(Name("B"), Variant(0));
    EXPECT_EQ(keysOf(bag), "A B ");
}

TEST(PropertyBag, ComparesWithTheDefaultByValueAndNotByForm)
{
    struct Row
    {
        Variant value;
        Variant standard;
        bool stored;
    };
    const auto object = make<Sample>();
    const Row rows[] = {
        {Variant(1), Variant(1.0), false},
        {Variant(true), Variant(-1), false},
        {Variant(true), Variant(1), true},
        {Variant(0.1F), Variant(0.1), true},
        {text(u"a"), text(u"a"), false},
        {text(u"a"), text(u"A"), true},
        {text(u"1"), Variant(1), true},
        {Variant(), Variant(), false},
        {Variant(), Variant(0), true},
        {Variant(values::Date{1}), Variant(values::Date{1}), false},
        {Variant(values::Date{1}), Variant(1), true},
        {Variant(object), Variant(object), false},
        {Variant(object), Variant(make<Sample>()), true},
        {Variant::nothing(), Variant::nothing(), false},
        {Variant::null(), Variant::null(), true},
        {Variant(std::numeric_limits<double>::quiet_NaN()), Variant(std::numeric_limits<double>::quiet_NaN()),
         true},
    };
    int number = 0;
    for (const Row& row : rows) {
        PropertyBag bag;
        bag.WriteProperty(Name("X"), row.value, row.standard);
        EXPECT_EQ(bag.contains(Name("X")), row.stored) << "row " << number;
        ++number;
    }
}

TEST(PropertyBag, ClearForgetsEverything)
{
    PropertyBag bag;
    bag.WriteProperty(Name("A"), Variant(1));
    bag.clear();
    EXPECT_TRUE(bag.entries().empty());
}

} // namespace zan::binding
