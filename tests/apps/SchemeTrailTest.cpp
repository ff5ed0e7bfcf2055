// From scheme to scheme over the sites of a map, and back.
#include "HostFixture.h"

#include "zanbench/SchemeTrail.h"

#include "display/SiteMapControl.h"
#include "display/SiteMapView.h"
#include "window/BenchWindow.h"

#include <QAction>

using namespace zan;
using host::SchemeTrail;

class SchemeTrailTest : public HostTest
{
protected:
    SchemeTrailTest()
    {
        QDir(path(".")).mkdir(QStringLiteral("maps"));
        write("maps/region.map", "<SITEMAP><SITE><NAME>Region</NAME>"
                                 "<SITE><NAME>Other</NAME><SCHEME>..\\other.scheme</SCHEME></SITE>"
                                 "<SITE><NAME>Gone</NAME><SCHEME>gone.scheme</SCHEME></SITE></SITE></SITEMAP>");
        writeScheme("<WINDOW><KEY>Map</KEY><CONTAINER><SITEMAP><LEFT>0</LEFT><TOP>0</TOP><WIDTH>9000</WIDTH>"
                    "<HEIGHT>4500</HEIGHT><MAPFILE>maps\\region.map</MAPFILE></SITEMAP></CONTAINER></WINDOW>");
        write("other.scheme",
              "<SCHEME><NAME>Other site</NAME><WINDOW><KEY>Only</KEY><CONTAINER/></WINDOW></SCHEME>");
    }
    void openMap()
    {
        window.show();
        host::OpenOptions options;
        options.scheme = schemePath();
        options.window = QStringLiteral("Map");
        options.offline = true;
        ASSERT_TRUE(window.openScheme(options));
    }
    /// Double-clicks a site as the user does, and lets the program act on it.
    void choose(int site)
    {
        window::BenchWindow* panel = window.currentPanel();
        ASSERT_TRUE(panel);
        ASSERT_TRUE(panel->SiteMap()->visible());
        panel->flush();
        auto* view = static_cast<display::SiteMapView*>(panel->SiteMap()->widget());
        ASSERT_TRUE(view);
        ASSERT_EQ(view->chart().shownCount(), 3);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, view->labelRectangle(site).center());
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, view->labelRectangle(site).center());
        QCoreApplication::processEvents();
    }
    QString openFile() { return QFileInfo(window.site()->scheme().path()).fileName(); }
    QAction& back() { return *window.findChild<QAction*>(QStringLiteral("back")); }

    FakeDialogs dialogs;
    host::MainWindow window{settings, dialogs};
};

TEST_F(SchemeTrailTest, FileOfASiteIsRelativeToTheFolderOfItsMapInAnyNotation)
{
    const QString map = path("maps/region.map");
    EXPECT_EQ(SchemeTrail::fileOf(QStringLiteral("weir.scheme"), map), path("maps/weir.scheme"));
    EXPECT_EQ(SchemeTrail::fileOf(QStringLiteral("..\\other.scheme"), map), path("other.scheme"));
    EXPECT_EQ(SchemeTrail::fileOf(QStringLiteral("../other.scheme"), path("maps") + QStringLiteral("\\region.map")),
              path("other.scheme"));
    EXPECT_EQ(SchemeTrail::fileOf(QStringLiteral("/far/a.scheme"), map), u"/far/a.scheme");
    EXPECT_EQ(SchemeTrail::fileOf(QStringLiteral("  "), map), u"");
}

TEST_F(SchemeTrailTest, TrailForgetsWhatLiesFarBack)
{
    SchemeTrail trail;
    EXPECT_FALSE(trail.last());
    for (int i = 0; i < 150; ++i)
        trail.push({QString::number(i), {}});
    EXPECT_EQ(trail.last()->scheme, u"149");
    for (std::size_t i = 1; i < SchemeTrail::Longest; ++i)
        trail.pop();
    EXPECT_EQ(trail.last()->scheme, u"50");
    trail.pop();
    EXPECT_TRUE(trail.isEmpty());
    trail.pop();
}

TEST_F(SchemeTrailTest, DoubleClickOnASiteOpensItsSchemeAndBackReturnsToTheMap)
{
    openMap();
    EXPECT_FALSE(back().isEnabled());
    choose(2);
    EXPECT_EQ(openFile(), u"other.scheme");
    EXPECT_TRUE(dialogs.unsavedQuestions.isEmpty()); // to show a map, and to select on it, is no edit
    ASSERT_TRUE(back().isEnabled());
    back().trigger();
    EXPECT_EQ(openFile(), u"site.scheme");
    EXPECT_EQ(window.pages().currentKey(), u"Map");
    EXPECT_FALSE(back().isEnabled());
}

TEST_F(SchemeTrailTest, TheWindowGrowsForABiggerSchemeAndNeverShrinks)
{
    write("other.scheme",
          "<SCHEME><NAME>Other site</NAME><WINDOW><KEY>Only</KEY><CONTAINER/><CONTROL><TYPE>VB.Label"
          "</TYPE><LEFT>0</LEFT><TOP>0</TOP><WIDTH>8250</WIDTH><HEIGHT>6000</HEIGHT></CONTROL>"
          "</WINDOW></SCHEME>");
    openMap();
    settings.setWindow(window.saveGeometry(), {}); // a size that the user has given it
    window.resize(420, 300);
    choose(2);
    EXPECT_GE(window.currentPanel()->width(), 550);
    EXPECT_GE(window.currentPanel()->height(), 400);
    window.resize(760, 570);
    back().trigger();
    EXPECT_EQ(openFile(), u"site.scheme");
    EXPECT_GE(window.width(), 760);
    EXPECT_GE(window.height(), 570);
}

TEST_F(SchemeTrailTest, ChangesAreAskedAboutFirstAndCancelStays)
{
    openMap();
    window.currentPanel()->setGridSize(77);
    choose(2);
    EXPECT_EQ(dialogs.unsavedQuestions.size(), 1);
    EXPECT_EQ(openFile(), u"site.scheme");
    EXPECT_FALSE(back().isEnabled());
    dialogs.unsavedAnswer = host::HostDialogs::Unsaved::Discard;
    choose(2);
    EXPECT_EQ(openFile(), u"other.scheme");
}

TEST_F(SchemeTrailTest, SiteWithoutSchemeOpensNothingAndOneThatIsGoneIsTold)
{
    openMap();
    choose(1);
    EXPECT_TRUE(dialogs.errors.isEmpty());
    EXPECT_EQ(openFile(), u"site.scheme");
    choose(3);
    EXPECT_EQ(dialogs.errors.size(), 1);
    EXPECT_EQ(openFile(), u"site.scheme");
    EXPECT_FALSE(back().isEnabled());
}

TEST_F(SchemeTrailTest, SchemeThatIsOpenedByHandBeginsANewTrail)
{
    openMap();
    choose(2);
    host::OpenOptions options;
    options.scheme = schemePath();
    options.offline = true;
    ASSERT_TRUE(window.openScheme(options));
    EXPECT_FALSE(back().isEnabled());
}

TEST_F(SchemeTrailTest, PanelWhoseDocumentNamesNoMapHasNone)
{
    openMap();
    window.showWindow(QStringLiteral("First"));
    EXPECT_FALSE(window.currentPanel()->SiteMap()->visible());
    EXPECT_FALSE(window.currentPanel()->ShowSiteMap());
}
