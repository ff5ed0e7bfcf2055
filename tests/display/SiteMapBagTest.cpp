#include "SiteMapFixture.h"

using namespace zan;
using binding::PropertyBag;
using binding::Variant;
using display::SiteMapControl;
using values::make;
using values::Name;
using values::Ref;

namespace {

class SiteMapBag : public test::SiteMapStage
{
protected:
    SiteMapBag() { ambient.backColour = values::rgb(1, 1, 1), ambient.foreColour = values::rgb(2, 2, 2); }
    static QStringList keys(const PropertyBag& bag)
    {
        QStringList names;
        for (const PropertyBag::Entry& entry : bag.entries())
            names << entry.name.text();
        return names;
    }
    QStringList written()
    {
        PropertyBag bag;
        map->WriteProperties(bag, ambient);
        return keys(bag);
    }
    SiteMapControl::Ambient ambient;
};

} // namespace

TEST_F(SiteMapBag, EmptyBagGivesTheReadDefaultsOfWhichOneIsNotTheWrittenOne)
{
    map->ReadProperties({}, ambient);
    EXPECT_EQ(number("BorderStyle"), 1);
    EXPECT_TRUE(map->enabled());
    EXPECT_EQ(colour("BackColour"), values::rgb(1, 1, 1));
    EXPECT_EQ(map->siteColour(), values::rgb(1, 1, 1));
    EXPECT_EQ(colour("LineColour"), values::rgb(2, 2, 2));
    EXPECT_EQ(number("LineWidth"), 5);
    EXPECT_EQ(number("ColumnOffset"), 1200);
    EXPECT_EQ(number("RowOffset"), 750);
    EXPECT_TRUE(surface::fontsEqual(*map->font(), *ambient.font));
    EXPECT_NE(map->font(), ambient.font);
    EXPECT_TRUE(host.properties.isEmpty()); // reading changes nothing that is worth saving
}

TEST_F(SiteMapBag, BackColourIsAlwaysWrittenAndMouseIconAndForeColourNever)
{
    map->ReadProperties({}, ambient);
    EXPECT_EQ(written().join(u' '), u"BackColour ColumnOffset");
    put("ForeColour", values::rgb(9, 9, 9));
    EXPECT_EQ(written().join(u' '), u"BackColour ColumnOffset");
}

TEST_F(SiteMapBag, ColumnOffsetOf1500IsLeftOutAndComesBackAs1200)
{
    map->ReadProperties({}, ambient);
    put("ColumnOffset", Variant(1500));
    PropertyBag bag;
    map->WriteProperties(bag, ambient);
    EXPECT_FALSE(bag.contains(Name("ColumnOffset")));
    map->ReadProperties(bag, ambient);
    EXPECT_EQ(number("ColumnOffset"), 1200);
}

TEST_F(SiteMapBag, EveryChangedPropertyComesBackInItsOrder)
{
    put("BorderStyle", Variant(0));
    put("Enabled", Variant(false));
    map->font()->setSize({200000});
    put("BackColour", values::rgb(3, 3, 3));
    put("SiteColour", values::rgb(4, 4, 4));
    put("LineColour", values::rgb(5, 5, 5));
    put("LineWidth", Variant(9));
    put("ColumnOffset", Variant(100));
    put("RowOffset", Variant(200));
    PropertyBag bag;
    map->WriteProperties(bag, ambient);
    EXPECT_EQ(keys(bag).join(u' '),
              u"BorderStyle Enabled Font BackColour SiteColour LineColour LineWidth ColumnOffset RowOffset");
    map->ReadProperties({}, ambient);
    EXPECT_EQ(number("LineWidth"), 5);
    map->ReadProperties(bag, ambient);
    EXPECT_EQ(number("BorderStyle"), 0);
    EXPECT_FALSE(map->enabled());
    EXPECT_EQ(map->font()->size().scaled, 200000);
    EXPECT_EQ(colour("BackColour"), values::rgb(3, 3, 3));
    EXPECT_EQ(map->siteColour(), values::rgb(4, 4, 4));
    EXPECT_EQ(colour("LineColour"), values::rgb(5, 5, 5));
    EXPECT_EQ(number("LineWidth"), 9);
    EXPECT_EQ(number("ColumnOffset"), 100);
    EXPECT_EQ(number("RowOffset"), 200);
    // The bag's font is the bag's own.
    map->font()->setSize({80000});
    EXPECT_EQ(binding::Marshal<Ref<surface::FontObject>>::from(bag.ReadProperty(Name("Font")))->size().scaled,
              200000);
}

TEST_F(SiteMapBag, ValuesThatArentOfThePropertyCountAsTheirDefaults)
{
    PropertyBag bag;
    bag.WriteProperty(Name("LineWidth"), Variant(std::int16_t(0)));
    bag.WriteProperty(Name("RowOffset"), Variant(u"far"));
    bag.WriteProperty(Name("Font"), Variant(7));
    bag.WriteProperty(Name("BackColour"), Variant::nothing());
    map->ReadProperties(bag, ambient);
    EXPECT_EQ(number("LineWidth"), 5);
    EXPECT_EQ(number("RowOffset"), 750);
    EXPECT_TRUE(surface::fontsEqual(*map->font(), *ambient.font));
    EXPECT_EQ(colour("BackColour"), values::rgb(1, 1, 1));
}

TEST_F(SiteMapBag, ReadingTouchesTheStoredValuesAndNotTheSitesThatAreShown)
{
    ASSERT_TRUE(load(site("r")));
    const auto fill = chart().site(1).fill;
    PropertyBag bag;
    bag.WriteProperty(Name("SiteColour"), Variant(values::rgb(4, 4, 4).code));
    const auto font = make<surface::FontObject>();
    font->setSize({300000});
    bag.WriteProperty(Name("Font"), Variant(font));
    map->ReadProperties(bag, ambient);
    EXPECT_EQ(chart().site(1).fill, fill);
    EXPECT_NE(chart().site(1).font->size().scaled, 300000);
    EXPECT_EQ(map->font()->size().scaled, 300000);
}
