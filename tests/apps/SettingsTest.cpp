#include "HostFixture.h"

#include "zanbench/BagText.h"

#include "surface/text/FontObject.h"
#include "values/Convert.h"

using namespace zan;
using binding::PropertyBag;
using values::Name;
using values::Variant;

namespace {

PropertyBag throughText(const PropertyBag& bag)
{
    return host::bagFromText(host::bagToText(bag));
}

} // namespace

TEST(BagText, EveryPlainKindComesBackAsItself)
{
    const Variant all[] = {Variant(true),
                           Variant(false),
                           Variant(std::uint8_t(200)),
                           Variant(std::int16_t(-32768)),
                           Variant(std::int32_t(-2147483633)),
                           Variant(120.5F),
                           Variant(0.1),
                           Variant(values::Currency{97500}),
                           Variant(QStringLiteral("a=b:c, \"d\"")),
                           Variant(QString())};
    PropertyBag bag;
    int number = 0;
    for (const Variant& value : all)
        bag.WriteProperty(Name(QStringLiteral("P%1").arg(number++)), value);
    const PropertyBag back = throughText(bag);
    ASSERT_EQ(back.entries().size(), std::size(all));
    for (std::size_t i = 0; i < std::size(all); ++i) {
        const Variant& value = back.entries()[i].value;
        EXPECT_EQ(back.entries()[i].name.text(), QStringLiteral("P%1").arg(i));
        EXPECT_EQ(value.kind(), all[i].kind()) << i;
        EXPECT_EQ(values::toText(value), values::toText(all[i])) << i;
    }
}

TEST(BagText, AFontComesBackWithAllItsAttributes)
{
    const auto font = values::make<surface::FontObject>();
    font->setName(QStringLiteral("Arial"));
    font->setSize(values::Currency{97500});
    font->setBold(true);
    font->setItalic(true);
    PropertyBag bag;
    bag.WriteProperty(Name("Font"), Variant(font));
    const PropertyBag back = throughText(bag);
    ASSERT_EQ(back.entries().size(), 1U);
    const auto* read = dynamic_cast<surface::FontObject*>(back.entries()[0].value.object());
    ASSERT_TRUE(read);
    EXPECT_EQ(read->name(), "Arial");
    EXPECT_EQ(read->size(), values::Currency{97500});
    EXPECT_TRUE(read->bold());
    EXPECT_EQ(read->weight(), 700);
    EXPECT_TRUE(read->italic());
    EXPECT_FALSE(read->underline());
}

TEST(BagText, DamagedLinesAreLeftOutAndTheRestIsRead)
{
    const PropertyBag bag = host::bagFromText({"", "=", "A", "A=", "A=Long", "A=Long:many", "A=Byte:256",
                                               "A=Nothing:1", ":=", "Font.Size=Currency:x", "B=Integer:7"});
    ASSERT_EQ(bag.entries().size(), 1U);
    EXPECT_EQ(bag.entries()[0].name.text(), "B");
}

TEST(BagText, NothingThatCannotLastIsWritten)
{
    PropertyBag bag;
    bag.WriteProperty(Name("Picture"), Variant::nothing());
    bag.WriteProperty(Name("Empty"), Variant());
    EXPECT_TRUE(host::bagToText(bag).isEmpty());
}

class SettingsTest : public HostTest
{};

TEST_F(SettingsTest, RecentFilesAreTheLatestFirstOnceEachAndNotMoreThanTen)
{
    for (int i = 0; i < 12; ++i)
        settings.addRecentFile(QStringLiteral("/tmp/%1.scheme").arg(i));
    settings.addRecentFile(QStringLiteral("/tmp/5.scheme"));
    const QStringList files = settings.recentFiles();
    ASSERT_EQ(files.size(), 10);
    EXPECT_EQ(files[0], "/tmp/5.scheme");
    EXPECT_EQ(files[1], "/tmp/11.scheme");
    EXPECT_EQ(files.count("/tmp/5.scheme"), 1);
}

TEST_F(SettingsTest, EachPanelHasABagOfItsOwn)
{
    PropertyBag bag;
    bag.WriteProperty(Name("GridSize"), Variant(300.0F));
    settings.setBag(schemePath(), "First", bag);
    ASSERT_TRUE(settings.bag(schemePath(), "First"));
    EXPECT_EQ(settings.bag(schemePath(), "FIRST")->entries().size(), 1U) << "keys of windows ignore case";
    EXPECT_FALSE(settings.bag(schemePath(), "Second"));
    EXPECT_FALSE(settings.bag(path("other.scheme"), "First"));
}

TEST_F(SettingsTest, TheyOutliveTheObject)
{
    {
        host::Settings writer(path("lasting.ini"));
        writer.setLastWindow(schemePath(), "Second");
        writer.setConnectsOnOpening(false);
    }
    const host::Settings reader(path("lasting.ini"));
    EXPECT_EQ(reader.lastWindow(schemePath()), "Second");
    EXPECT_FALSE(reader.connectsOnOpening());
}

TEST_F(SettingsTest, AFileOfRubbishGivesDefaults)
{
    write("rubbish.ini", QByteArray("\xff\xfe[[[%%%=@Invalid(", 18) + QByteArray(1000, '\0'));
    const host::Settings damaged(path("rubbish.ini"));
    EXPECT_TRUE(damaged.connectsOnOpening());
    EXPECT_TRUE(damaged.recentFiles().isEmpty());
    EXPECT_FALSE(damaged.bag(schemePath(), "First"));
}

TEST_F(SettingsTest, TheServerForRestrictionsIsKeptAndNonsenseIsNone)
{
    EXPECT_EQ(settings.ecanHost(), "");
    settings.setEcanHost("ecan.example:8080");
    EXPECT_EQ(settings.ecanHost(), "ecan.example:8080");
    write("meddled.ini", "[ecan]\nhost=ftp://evil.example/x\n");
    EXPECT_EQ(host::Settings(path("meddled.ini")).ecanHost(), "");
}
