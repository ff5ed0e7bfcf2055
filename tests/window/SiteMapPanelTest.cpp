// The site map of a panel: where it is placed from, what is stored of it, what reaches the host.
#include "WindowFixture.h"

#include "display/SiteMapControl.h"
#include "display/SiteMapView.h"
#include "support/ErrorOf.h"
#include "surface/host/Surface.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace zan;
using namespace zan::window;
using binding::Variant;
using document::Node;
using test::errorOf;
using values::Name;
using values::Ref;

namespace {

class SiteMapPanel : public WindowTest
{
protected:
    SiteMapPanel() { panel->setShowSiteMap(true); }

    /// Puts this SITEMAP into the container of the window "A" and loads it.
    void loadWith(const QString& record)
    {
        fill("A", QStringLiteral("<CONTAINER>%1</CONTAINER>").arg(record).toUtf8().constData());
        panel->LoadWindow(QStringLiteral("A"));
    }
    QString mapFile()
    {
        QFile file(folder.filePath(QStringLiteral("region.map")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("<SITEMAP><SITE><NAME>Region</NAME><SITE><NAME>Weir</NAME><SCHEME>weir.scheme</SCHEME></SITE>"
                   "</SITE></SITEMAP>");
        return file.fileName();
    }
    Ref<display::SiteMapControl> map() { return panel->SiteMap(); }
    Node record() { return nodeOf("A").child(Name("CONTAINER")).child(Name("SITEMAP")); }
    std::size_t storedMaps(const char* window)
    {
        std::size_t count = 0;
        for (const Node& control : nodeOf(window).children(Name("CONTROL")))
            count += control.child(Name("TYPE")).text() == u"SITEMAP";
        return count;
    }
    QTemporaryDir folder;
};

} // namespace

TEST_F(SiteMapPanel, PlaceAndEveryOtherChildOfTheRecordAreSetByNameTheMapFileIncluded)
{
    const QString file = mapFile();
    loadWith(QStringLiteral("<SITEMAP><LEFT>120</LEFT><TOP>60</TOP><HEIGHT>3000</HEIGHT><WIDTH>4500</WIDTH>"
                            "<COLUMNOFFSET>2000</COLUMNOFFSET><NOSUCH>1</NOSUCH><LINEWIDTH>nine</LINEWIDTH>"
                            "<MAPFILE>%1</MAPFILE><ROWOFFSET>90</ROWOFFSET></SITEMAP>")
                 .arg(file));
    EXPECT_EQ(map()->left(), 120);
    EXPECT_EQ(map()->top(), 60);
    EXPECT_EQ(map()->width(), 4500);
    EXPECT_EQ(map()->height(), 3000);
    EXPECT_EQ(map()->mapFile(), file);
    EXPECT_TRUE(map()->visible());
    // In the order of the document: the offset behind the file comes too late for it.
    EXPECT_EQ(map()->chart().site(1).label.left, 150 + 1000 - map()->chart().site(1).label.width / 2);
    EXPECT_EQ(map()->chart().site(2).label.top, 50 + 750);
    EXPECT_EQ(values::toSingle(map()->get(Name("RowOffset"))), 90);
}

TEST_F(SiteMapPanel, MapIsTheLastControlOfTheListAndIsStoredUntilTheNextLoad)
{
    fill("A", "<CONTROL><TYPE>VB.Label</TYPE></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    ASSERT_EQ(panel->Controls()->Count(), 2);
    EXPECT_EQ(panel->Controls()->Control(Variant(2))->ControlType(), u"SITEMAP");
    EXPECT_EQ(live(2).get(), map().get());
    EXPECT_EQ(map()->tag(), u"2");
    EXPECT_EQ(map()->name(), u"SiteMap1");
    panel->SaveWindow();
    EXPECT_EQ(storedMaps("A"), 1u);
    BenchWindow other;
    other.InitProperties();
    other.setLogger(logger);
    other.setShowSiteMap(false);
    other.LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(storedMaps("A"), 0u);
    EXPECT_FALSE(other.SiteMap()->visible());
}

TEST_F(SiteMapPanel, EveryLoadPlacesTheOneMapAnew)
{
    panel->LoadWindow(QStringLiteral("A"));
    const Ref<display::SiteMapControl> first = map();
    panel->LoadWindow(QStringLiteral("A"));
    panel->LoadWindow(QStringLiteral("B"));
    EXPECT_EQ(map(), first);
    EXPECT_EQ(live(1).get(), first.get());
    EXPECT_TRUE(first->visible());
    EXPECT_EQ(storedMaps("A"), 0u);
    EXPECT_EQ(storedMaps("B"), 1u);
    EXPECT_EQ(panel->surface().array(u"SiteMap1")->count(), 1);
}

TEST_F(SiteMapPanel, ASecondMapIsTheSameMapAndClearHidesIt)
{
    panel->LoadWindow(QStringLiteral("A"));
    const auto again = panel->Controls()->Add(QStringLiteral("SITEMAP"));
    ASSERT_TRUE(again);
    EXPECT_EQ(again->Control().get(), map().get());
    EXPECT_EQ(map()->top(), -120); // not moved below itself
    panel->Clear();
    EXPECT_FALSE(map()->visible());
}

TEST_F(SiteMapPanel, WithoutShowSiteMapNothingOfTheRecordIsApplied)
{
    panel->setShowSiteMap(false);
    loadWith(QStringLiteral("<SITEMAP><LEFT>120</LEFT><MAPFILE>%1</MAPFILE></SITEMAP>").arg(mapFile()));
    EXPECT_EQ(panel->Controls()->Count(), 0);
    EXPECT_EQ(map()->left(), 360);
    EXPECT_EQ(map()->mapFile(), u"");
    EXPECT_FALSE(map()->visible());
    EXPECT_EQ(record().child(Name("LEFT")).text(), u"120"); // left as it was
}

TEST_F(SiteMapPanel, ShowSiteMapShowsAndHidesAtOnceAndIsNotInTheDocument)
{
    panel->LoadWindow(QStringLiteral("A"));
    const QString before = nodeOf("A").xml();
    panel->setShowSiteMap(false);
    EXPECT_FALSE(map()->visible());
    panel->setShowSiteMap(true);
    EXPECT_TRUE(map()->visible());
    EXPECT_EQ(nodeOf("A").xml(), before);
}

TEST_F(SiteMapPanel, FontOfTheRecordIsSetAfterTheOtherChildrenWhereverItStands)
{
    loadWith(QStringLiteral("<SITEMAP><FONT><SIZE>20</SIZE></FONT><MAPFILE>%1</MAPFILE></SITEMAP>").arg(mapFile()));
    EXPECT_EQ(map()->font()->size().scaled, 200000);
    EXPECT_NE(map()->chart().site(1).font->size().scaled, 200000); // the labels were made before
}

TEST_F(SiteMapPanel, SaveWritesPlaceAndFontAndLeavesTheRest)
{
    loadWith(QStringLiteral("<SITEMAP><LEFT>120</LEFT><MAPFILE>%1</MAPFILE></SITEMAP>").arg(mapFile()));
    map()->move(0, 15.0F, 3000.5F, 45);
    map()->font()->setSize({120000});
    panel->SaveWindow();
    EXPECT_FALSE(record().child(Name("LEFT"))); // zero is stored by absence
    EXPECT_EQ(record().child(Name("TOP")).text(), u"15");
    EXPECT_EQ(record().child(Name("WIDTH")).text(), u"3000.5");
    EXPECT_EQ(record().child(Name("HEIGHT")).text(), u"45");
    EXPECT_EQ(record().child(Name("FONT")).child(Name("SIZE")).text(), u"12");
    EXPECT_EQ(record().child(Name("MAPFILE")).text(), map()->mapFile());
}

TEST_F(SiteMapPanel, MapThatCannotBeLoadedCostsNothing)
{
    QFile bad(folder.filePath(QStringLiteral("bad.map")));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("<SITEMAP/>");
    bad.close();
    loadWith(QStringLiteral("<SITEMAP><MAPFILE>%1</MAPFILE><LEFT>90</LEFT></SITEMAP>").arg(bad.fileName()));
    EXPECT_EQ(map()->left(), 90);
    EXPECT_EQ(map()->mapFile(), u"");
    EXPECT_TRUE(map()->visible());
    EXPECT_TRUE(errors.empty());
}

TEST_F(SiteMapPanel, ChosenSiteIsPassedOnAsTheWindowsOwnEvent)
{
    loadWith(
        QStringLiteral("<SITEMAP><WIDTH>6000</WIDTH><TOP>0</TOP><MAPFILE>%1</MAPFILE></SITEMAP>").arg(mapFile()));
    panel->resize(500, 300);
    panel->show();
    panel->flush();
    QSignalSpy schemes(panel.get(), &BenchWindow::LoadScheme);
    QSignalSpy presses(panel.get(), &BenchWindow::MouseDown);
    panel->setLockMenu(true);
    auto* view = static_cast<display::SiteMapView*>(map()->widget());
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, view->labelRectangle(2).center());
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, view->labelRectangle(2).center());
    ASSERT_EQ(schemes.count(), 1);
    EXPECT_EQ(schemes[0][0], QStringLiteral("weir.scheme"));
    EXPECT_EQ(presses.count(), 0); // labels keep their mouse
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {},
                      view->viewport()->rect().bottomRight() - QPoint(20, 20));
    EXPECT_EQ(presses.count(), 1);
}

TEST_F(SiteMapPanel, PanelThatIsDeletedByItsHostWhenASiteIsChosenEndsInPeace)
{
    loadWith(
        QStringLiteral("<SITEMAP><WIDTH>6000</WIDTH><TOP>0</TOP><MAPFILE>%1</MAPFILE></SITEMAP>").arg(mapFile()));
    panel->show();
    panel->flush();
    QObject::connect(panel.get(), &BenchWindow::LoadScheme, qApp, [this] { panel.reset(); });
    const QPointer<display::SiteMapView> view(static_cast<display::SiteMapView*>(map()->widget()));
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, view->labelRectangle(1).center());
    EXPECT_FALSE(panel);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(view);
    // The second release had no widget any more: without one the toolkit would count the button as held in all later
    // tests.
    QWidget other;
    QTest::mouseRelease(&other, Qt::LeftButton);
}

TEST_F(SiteMapPanel, ScriptReachesTheMapThroughTheWindow)
{
    loadWith(QStringLiteral("<SITEMAP><MAPFILE>%1</MAPFILE></SITEMAP>").arg(mapFile()));
    binding::Object& face = binding::objectOf(panel->object()->get(Name("SiteMap")));
    EXPECT_EQ(values::toText(face.get(Name("MapFile"))), map()->mapFile());
    binding::Object& sites = binding::objectOf(face.get(Name("Sites")));
    EXPECT_EQ(values::toLong(sites.get(Name("Count"))), 2);
}

TEST_F(SiteMapPanel, WindowsColoursPassTheMapByAndItsFontIsSharedWithIt)
{
    panel->LoadWindow(QStringLiteral("A"));
    const auto colour = map()->backColor();
    panel->setBackColor(values::rgb(1, 2, 3));
    EXPECT_EQ(map()->backColor(), colour);
    const auto font = values::make<surface::FontObject>();
    panel->setFont(font);
    EXPECT_EQ(map()->font(), font);
}
