// Maps that nobody should have written.
#include "SiteMapFixture.h"

using namespace zan;
using binding::Variant;
using test::errorOf;

namespace {

class HostileMap : public test::SiteMapStage
{
protected:
    /// A map of three sites is shown when the hostile one comes.
    void showThree() { ASSERT_TRUE(load(site("r", site("a") + site("b")))); }
    /// Of the sites shown before the first stays, and nothing of the map that failed.
    void expectRefused()
    {
        EXPECT_EQ(map->mapFile(), u"");
        EXPECT_EQ(chart().shownCount(), 1);
        EXPECT_EQ(chart().site(1).caption, u"r");
    }
};

} // namespace

TEST_F(HostileMap, FileThatIsMissingOrEmptyOrNoXmlIsFalse)
{
    for (const QString& file : {folder.filePath(QStringLiteral("none.map")), write("", QStringLiteral("empty.map")),
                                write("<SITEMAP><SITE>", QStringLiteral("torn.map")), QString(), folder.path(),
                                QStringLiteral("/dev/zero"), QStringLiteral("a\0b")}) {
        showThree();
        EXPECT_FALSE(map->LoadMap(file)) << file.toStdString();
        expectRefused();
    }
}

TEST_F(HostileMap, FileWithoutMapOrWithoutSiteRaisesObjectNotSet)
{
    for (const char* xml :
         {"<WINDOW/>", "<SITEMAP/>", "<SITEMAP><X><SITE/></X></SITEMAP>", "<sitemap><SITE/></sitemap>"}) {
        showThree();
        const QString file = write(xml, QStringLiteral("bad.map"));
        EXPECT_EQ(errorOf([&] { map->LoadMap(file); }), 91) << xml;
        expectRefused();
        EXPECT_EQ(errorOf([&] { map->setMapFile(file); }), 91) << xml;
    }
}

TEST_F(HostileMap, TenThousandLevelsAreRefused)
{
    showThree();
    QByteArray deep;
    for (int i = 0; i < 10'000; ++i)
        deep += "<SITE>";
    for (int i = 0; i < 10'000; ++i)
        deep += "</SITE>";
    EXPECT_FALSE(load(deep));
    expectRefused();
}

TEST_F(HostileMap, TwoHundredLevelsAreShown)
{
    QByteArray deep = site("bottom");
    for (int i = 1; i < 200; ++i)
        deep = site("level", deep);
    ASSERT_TRUE(load(deep));
    EXPECT_EQ(chart().shownCount(), 200);
    EXPECT_EQ(label(200).top, 50 + 199 * 750);
}

TEST_F(HostileMap, MoreSitesThanCanBeCountedAreRefusedAndAsManyAsCanAreShown)
{
    showThree();
    const auto many = [](int count) {
        QByteArray sites = "<SITE>";
        for (int i = 1; i < count; ++i)
            sites += "<SITE/>";
        return sites + "</SITE>";
    };
    EXPECT_FALSE(load(many(100'000)));
    expectRefused();
    EXPECT_FALSE(load(many(32'768)));
    expectRefused();
    ASSERT_TRUE(load(many(32'767)));
    EXPECT_EQ(map->sites()->Count(), 32'767);
    EXPECT_EQ(chart().shownCount(), 32'767);
    // In single precision: the last of a long row does not drift by more than its place can tell.
    EXPECT_NEAR(double(label(32'767).left + label(32'767).width / 2), 650.0 + 32'765 * 1000.0, 4);
}

TEST_F(HostileMap, EntityBombIsRefused)
{
    showThree();
    EXPECT_FALSE(
        map->LoadMap(write("<!DOCTYPE m [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\">"
                           "<!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\">]>"
                           "<SITEMAP><SITE><NAME>&c;</NAME></SITE></SITEMAP>",
                           QStringLiteral("bomb.map"))));
    expectRefused();
}

TEST_F(HostileMap, NameOfAMillionCharactersIsShownShortened)
{
    ASSERT_TRUE(load("<SITE><NAME>" + QByteArray(1'000'000, 'W') + "</NAME></SITE>"));
    EXPECT_EQ(chart().site(1).caption.size(), 1'000'000);
    EXPECT_EQ(chart().site(1).shownCaption().size(), 1'000);
    EXPECT_FALSE(picture().isNull());
}

TEST_F(HostileMap, OffsetsBeyondAllMeasureLeaveAMapThatCanBeShown)
{
    for (const float offset : {3e38F, -3e38F, 0.0F, -1000.0F}) {
        put("ColumnOffset", Variant(offset));
        put("RowOffset", Variant(offset));
        ASSERT_TRUE(load(site("r", site("a", site("aa")) + site("b", site("c") + site("d")))));
        EXPECT_FALSE(picture().isNull());
        view()->setCurrentSite(1);
    }
}

TEST_F(HostileMap, PathWithBackslashesIsFound)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("maps")));
    write("<SITEMAP><SITE/></SITEMAP>", QStringLiteral("maps/region.map"));
    const QString file = folder.path() + QStringLiteral("\\maps\\region.map");
    EXPECT_TRUE(map->LoadMap(file));
    EXPECT_EQ(map->mapFile(), file);
}
