// What is seen of a site map, and what mouse and keyboard do on it.
#include "DisplayFixture.h"
#include "SiteMapFixture.h"

#include "display/SiteMap.h"

#include <QAccessible>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

using namespace zan;
using values::Ref;
using values::Variant;

namespace {

class SiteMapView : public test::SiteMapStage
{
protected:
    QPoint centreOf(int index) { return view()->labelRectangle(index).center(); }
    /// Gives the map the keyboard of an active window.
    void takeKeyboard()
    {
        surface.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&surface));
        view()->setFocus();
        ASSERT_TRUE(view()->hasFocus());
    }
    /// With the release that the toolkit's own leaves out.
    static void doubleClick(QWidget& viewport, QPoint place, Qt::MouseButton button = Qt::LeftButton)
    {
        const QPointer<QWidget> alive(&viewport);
        QTest::mouseDClick(&viewport, button, {}, place);
        if (alive)
            QTest::mouseRelease(&viewport, button, {}, place);
    }
    void press(int key) { QTest::keyClick(view(), Qt::Key(key)); }
    /// Where the keys lead from a site.
    int after(int from, Qt::Key key)
    {
        view()->setCurrentSite(from);
        press(key);
        return view()->currentSite();
    }
    QAccessibleInterface* face() { return QAccessible::queryAccessibleInterface(view()); }

    // surface::SurfaceEvents
    void clicked(surface::LiveControl* control) override { note("click", control); }
    void doubleClicked(surface::LiveControl* control) override { note("double", control); }
    bool mouseDown(surface::LiveControl* control, const surface::MouseInput&) override
    {
        note("down", control);
        return false;
    }
    void mouseUp(surface::LiveControl* control, const surface::MouseInput&) override { note("up", control); }
    bool keyDown(surface::LiveControl* control, int code, int) override
    {
        note(QByteArray("key ") + QByteArray::number(code), control);
        return false;
    }
    void note(const QByteArray& what, surface::LiveControl* control)
    {
        EXPECT_TRUE(control == map.get() || !map->enabled()); // a disabled map leaves its events to the surface
        told << QString::fromLatin1(what);
    }
    QStringList told;
};

const QByteArray Colours =
    "<SITE><NAME>root</NAME><SITE><NAME>below</NAME></SITE><SITE><NAME>right</NAME></SITE></SITE>";

} // namespace

// Painting -----------------------------------------------------------------------------------------------------

TEST_F(SiteMapView, BoxesAreFilledAndOutlinedAndJoinedByLinesBehindThem)
{
    put("BackColour", values::rgb(10, 200, 220));
    put("SiteColour", values::rgb(0, 255, 0));
    ASSERT_TRUE(load(Colours));
    const QImage image = picture();
    const QRect root = label(1).pixels(), right = label(3).pixels(), below = label(2).pixels();
    const auto at = [&](int x, int y) { return QColor(image.pixel(x, y)).rgb() & 0xFFFFFF; };
    EXPECT_EQ(at(root.left(), root.top()), 0x000000u);     // the outline begins with a dash
    EXPECT_EQ(at(root.left() - 1, root.top()), 0x0AC8DCu); // no margin
    EXPECT_EQ(at(root.right() - 1, root.bottom() - 1), 0x00FF00u);
    const int middle = root.center().y() + 1;
    EXPECT_EQ(at((root.right() + right.left()) / 2, middle), 0xFF0000u);
    EXPECT_EQ(at((root.right() + right.left()) / 2, middle - 4), 0x0AC8DCu); // five pixels wide
    EXPECT_EQ(at(43, (root.bottom() + below.top()) / 2), 0xFF0000u);         // 650 twips
    EXPECT_EQ(at(43 + 4, (root.bottom() + below.top()) / 2), 0x0AC8DCu);
}

TEST_F(SiteMapView, SelectedSiteHasALightBoxWithAWiderBorderAndTwiceIsAsOnce)
{
    put("SiteColour", values::rgb(0, 255, 0));
    ASSERT_TRUE(load(Colours));
    map->SelectSite(3);
    const QImage once = picture();
    const QRect shown = box(3).pixels();
    EXPECT_EQ(once.pixel(shown.left() + 1, shown.top() + 1) & 0xFFFFFF, 0x000000u);
    EXPECT_EQ(once.pixel(shown.left() + 2, shown.bottom() - 2) & 0xFFFFFF, 0xFFFFE6u);
    map->SelectSite(3);
    EXPECT_EQ(picture(), once);
    map->SelectSite(1);
    EXPECT_NE(picture(), once);
}

TEST_F(SiteMapView, LinesThatAreShownStayWhenTheLookOfLinesChanges)
{
    ASSERT_TRUE(load(Colours));
    const QImage before = picture();
    put("LineWidth", Variant(1));
    put("LineColour", values::rgb(0, 0, 255));
    view()->viewport()->update();
    EXPECT_EQ(picture(), before);
    map->setMapFile(map->mapFile());
    EXPECT_NE(picture(), before);
}

TEST_F(SiteMapView, SystemColoursOfSitesAreThePlatformsAlsoOnAMapOfAnotherColour)
{
    put("BackColour", values::rgb(0, 0, 255));
    put("SiteColour", values::ButtonFace);
    ASSERT_TRUE(load(Colours));
    const QImage image = picture();
    const QRect root = label(1).pixels();
    EXPECT_EQ(QColor(image.pixel(root.right() - 1, root.bottom() - 1)),
              values::toQColor(values::ButtonFace, surface.palette()));
    EXPECT_EQ(image.pixel(390, 290) & 0xFFFFFF, 0x0000FFu);
}

TEST_F(SiteMapView, FailedLoadLeavesNothingOfTheOtherSitesOnScreen)
{
    ASSERT_TRUE(load(site("root")));
    const QImage alone = picture();
    ASSERT_TRUE(load(Colours));
    EXPECT_NE(picture(), alone);
    EXPECT_FALSE(map->LoadMap(QStringLiteral("/none")));
    EXPECT_EQ(picture(), alone);
}

// Scrolling ----------------------------------------------------------------------------------------------------

TEST_F(SiteMapView, ScrollRangeCoversAllChildrenThoseLeftOfTheBeginningToo)
{
    QByteArray row;
    for (int i = 0; i < 20; ++i)
        row += site("child");
    ASSERT_TRUE(load(site(QByteArray(60, 'W'), row)));
    show();
    const QRect root = box(1).pixels(), last = box(21).pixels();
    ASSERT_LT(root.left(), 0);
    const QScrollBar& bar = *view()->horizontalScrollBar();
    EXPECT_EQ(bar.value(), 0);
    EXPECT_LE(bar.minimum(), root.left());
    EXPECT_GE(bar.maximum() + view()->viewport()->width(), last.right() + 1);
    ASSERT_TRUE(load(site("r")));
    surface.flush();
    EXPECT_EQ(bar.minimum(), 0);
    EXPECT_EQ(bar.maximum(), 0);
}

TEST_F(SiteMapView, SelectingASiteDoesNotScroll)
{
    QByteArray row;
    for (int i = 0; i < 20; ++i)
        row += site("child");
    ASSERT_TRUE(load(site("r", row)));
    show();
    view()->horizontalScrollBar()->setValue(123);
    map->SelectSite(1);
    surface.flush();
    EXPECT_EQ(view()->horizontalScrollBar()->value(), 123);
}

TEST_F(SiteMapView, ScrolledMapLooksLikeOnePaintedThere)
{
    QByteArray row;
    for (int i = 0; i < 20; ++i)
        row += site("child " + QByteArray::number(i), site("x"));
    ASSERT_TRUE(load(site("r", row)));
    show();
    const QImage first = picture();
    view()->horizontalScrollBar()->setValue(300);
    const QImage scrolled = picture();
    EXPECT_NE(scrolled, first);
    EXPECT_EQ(test::firstDifference(scrolled.copy(0, 0, 90, 200), first.copy(300, 0, 90, 200)), "");
}

TEST_F(SiteMapView, MapFillsTheControlAndFollowsItsSize)
{
    ASSERT_TRUE(load(Colours));
    show();
    map->move(150, 150, 1500, 900);
    surface.flush();
    EXPECT_EQ(view()->geometry(), QRect(10, 10, 100, 60));
    map->setWidth(0);
    surface.flush();
    EXPECT_EQ(view()->width(), 0);
}

// Mouse --------------------------------------------------------------------------------------------------------

TEST_F(SiteMapView, DoubleClickOnALabelChoosesItAndIsToldAsNothingElse)
{
    ASSERT_TRUE(load(site("r", site("a"))));
    show();
    doubleClick(*view()->viewport(), centreOf(2));
    EXPECT_EQ(host.schemes, QStringList{QStringLiteral("a.scheme")});
    EXPECT_EQ(map->selectedSite(), 2);
    EXPECT_TRUE(told.isEmpty()) << told.join(u' ').toStdString();
}

TEST_F(SiteMapView, MouseBesideTheSitesIsTheHosts)
{
    ASSERT_TRUE(load(site("r")));
    show();
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, QPoint(300, 200));
    EXPECT_EQ(told, (QStringList{u"down"_qs, u"up"_qs, u"click"_qs}));
    told.clear();
    doubleClick(*view()->viewport(), QPoint(300, 200));
    EXPECT_TRUE(told.contains(QStringLiteral("double")));
    EXPECT_TRUE(host.schemes.isEmpty());
}

TEST_F(SiteMapView, PressOnASiteIsItsOwnToTheReleaseWhereverThatIs)
{
    ASSERT_TRUE(load(site("r")));
    show();
    QTest::mousePress(view()->viewport(), Qt::LeftButton, {}, centreOf(1));
    QTest::mouseRelease(view()->viewport(), Qt::LeftButton, {}, QPoint(300, 200));
    EXPECT_TRUE(told.isEmpty()) << told.join(u' ').toStdString();
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, QPoint(300, 200));
    EXPECT_EQ(told.size(), 3);
}

TEST_F(SiteMapView, RightButtonChoosesNothing)
{
    ASSERT_TRUE(load(site("r")));
    show();
    doubleClick(*view()->viewport(), centreOf(1), Qt::RightButton);
    EXPECT_TRUE(host.schemes.isEmpty());
    map->putEnabled(false);
    surface.flush();
    doubleClick(*view()->viewport(), centreOf(1));
    EXPECT_TRUE(host.schemes.isEmpty()); // nor does a disabled map
}

TEST_F(SiteMapView, PointerIsAHandOverALabel)
{
    ASSERT_TRUE(load(site("r")));
    show();
    const auto moveTo = [&](QPoint place) {
        QMouseEvent move(QEvent::MouseMove, place, view()->viewport()->mapToGlobal(place), Qt::NoButton, {}, {});
        QCoreApplication::sendEvent(view()->viewport(), &move);
        return view()->viewport()->cursor().shape();
    };
    EXPECT_EQ(moveTo(centreOf(1)), Qt::PointingHandCursor);
    EXPECT_EQ(moveTo({300, 200}), Qt::ArrowCursor);
}

TEST_F(SiteMapView, MapThatIsDeletedByTheHostInTheMiddleOfADoubleClickEndsInPeace)
{
    struct Deleter : display::SiteMapControl::Host
    {
        virtual ~Deleter() = default;
        void loadScheme(const QString&) override { delete std::exchange(doomed, nullptr); }
        display::SiteMap* doomed = nullptr;
    } deleter;
    deleter.doomed = new display::SiteMap;
    deleter.doomed->control().setHost(&deleter);
    ASSERT_TRUE(deleter.doomed->control().LoadMap(write("<SITEMAP><SITE/></SITEMAP>")));
    deleter.doomed->show();
    auto* shown = static_cast<display::SiteMapView*>(deleter.doomed->control().ensureWidget());
    doubleClick(*shown->viewport(), shown->labelRectangle(1).center());
    EXPECT_FALSE(deleter.doomed);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Keyboard -----------------------------------------------------------------------------------------------------

TEST_F(SiteMapView, ArrowsWalkTheRowsAndTheColumnsOfTheTree)
{
    // r - b - b1 - c in the first row, a below r, a1 in a's row, b0 below b.
    ASSERT_TRUE(
        load(site("r", site("a", site("a0") + site("a1")) + site("b", site("b0") + site("b1")) + site("c"))));
    enum { r = 1, a, a0, a1, b, b0, b1, c };
    show();
    takeKeyboard();
    EXPECT_EQ(after(r, Qt::Key_Right), b);
    EXPECT_EQ(after(b, Qt::Key_Right), b1);
    EXPECT_EQ(after(b1, Qt::Key_Right), c);
    EXPECT_EQ(after(c, Qt::Key_Right), c);
    EXPECT_EQ(after(c, Qt::Key_Left), b1);
    EXPECT_EQ(after(b1, Qt::Key_Left), b);
    EXPECT_EQ(after(b, Qt::Key_Left), r);
    EXPECT_EQ(after(r, Qt::Key_Left), r);
    EXPECT_EQ(after(r, Qt::Key_Down), a);
    EXPECT_EQ(after(a, Qt::Key_Right), a1);
    EXPECT_EQ(after(a1, Qt::Key_Up), r);
    EXPECT_EQ(after(b0, Qt::Key_Up), b);
    EXPECT_EQ(after(b1, Qt::Key_Down), b1);
    EXPECT_EQ(after(r, Qt::Key_End), c);
    EXPECT_EQ(after(a0, Qt::Key_Home), r);
    EXPECT_EQ(map->selectedSite(), 0); // walking selects nothing
    EXPECT_TRUE(host.schemes.isEmpty());
}

TEST_F(SiteMapView, EverySiteOfATreeIsReachedWithDownAndRight)
{
    ASSERT_TRUE(load(site("r", site("a", site("a0") + site("a1")) + site("b", site("b0") + site("b1", site("x"))) +
                                   site("c", site("c0")))));
    show();
    takeKeyboard();
    std::vector<int> reached{1};
    for (std::size_t i = 0; i < reached.size(); ++i) {
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right}) {
            const int next = after(reached[i], key);
            if (std::find(reached.begin(), reached.end(), next) == reached.end())
                reached.push_back(next);
        }
    }
    EXPECT_EQ(int(reached.size()), chart().count());
}

TEST_F(SiteMapView, EnterChoosesTheCurrentSiteAndKeysAreToldToTheHostFirst)
{
    ASSERT_TRUE(load(site("r", site("a"))));
    show();
    takeKeyboard();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(told, (QStringList{u"key 40"_qs, u"key 13"_qs}));
    EXPECT_EQ(host.schemes, QStringList{QStringLiteral("a.scheme")});
}

TEST_F(SiteMapView, KeyboardBeginsAtTheSelectedSiteAndKeepsTheCurrentOneInSight)
{
    QByteArray deep = site("bottom");
    for (int i = 1; i < 30; ++i)
        deep = site("level", deep);
    ASSERT_TRUE(load(deep));
    map->SelectSite(2);
    show();
    takeKeyboard();
    EXPECT_EQ(view()->currentSite(), 2);
    press(Qt::Key_End);
    EXPECT_EQ(view()->currentSite(), 30);
    EXPECT_TRUE(view()->viewport()->rect().contains(view()->labelRectangle(30)));
    press(Qt::Key_Home);
    EXPECT_TRUE(view()->viewport()->rect().contains(view()->labelRectangle(1)));
}

TEST_F(SiteMapView, CurrentSiteIsMarkedForTheKeyboardAndNotForTheMouse)
{
    ASSERT_TRUE(load(site("r", site("a"))));
    show();
    takeKeyboard();
    const QImage plain = picture();
    press(Qt::Key_Home);
    EXPECT_NE(picture(), plain);
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, {}, QPoint(300, 200));
    EXPECT_EQ(picture(), plain);
}

// Accessibility ------------------------------------------------------------------------------------------------

TEST_F(SiteMapView, MapIsATreeWhoseItemsHaveNamesAndCanBePressed)
{
    ASSERT_TRUE(load(site("r", site("a"))));
    map->SelectSite(2);
    show();
    ASSERT_TRUE(face());
    EXPECT_EQ(face()->role(), QAccessible::Tree);
    ASSERT_EQ(face()->childCount(), 2);
    QAccessibleInterface* item = face()->child(1);
    EXPECT_EQ(item->role(), QAccessible::TreeItem);
    EXPECT_EQ(item->text(QAccessible::Name), u"a");
    EXPECT_EQ(item->text(QAccessible::Description), u"about a");
    EXPECT_TRUE(item->state().selected);
    EXPECT_FALSE(face()->child(0)->state().selected);
    EXPECT_EQ(face()->indexOfChild(item), 1);
    EXPECT_EQ(item->parent(), face());
    EXPECT_EQ(item->rect().size(), label(2).pixels().size());
    EXPECT_EQ(face()->childAt(item->rect().center().x(), item->rect().center().y()), item);
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(host.schemes, QStringList{QStringLiteral("a.scheme")});
}

TEST_F(SiteMapView, ItemsAreWhereASceneDrawsThemAtAZoom)
{
    ASSERT_TRUE(load(site("r", site("a"))));
    show();
    QGraphicsScene scene;
    QGraphicsView zoomed(&scene);
    QGraphicsProxyWidget* proxy = scene.addWidget(view()->window());
    zoomed.scale(2, 2);
    zoomed.setGeometry(37, 23, 900, 700);
    zoomed.show();
    QCoreApplication::processEvents();
    QAccessibleInterface* item = face()->child(1);
    const QSize plain = label(2).pixels().size();
    EXPECT_NEAR(item->rect().width(), 2 * plain.width(), 2);
    EXPECT_NEAR(item->rect().height(), 2 * plain.height(), 2);
    EXPECT_NEAR(face()->rect().width(), 2 * view()->width(), 2);
    const QPoint corner = item->rect().bottomRight() - QPoint(4, 4);
    EXPECT_EQ(face()->childAt(corner.x(), corner.y()), item);
    proxy->setWidget(nullptr);
}

TEST_F(SiteMapView, ItemOfASiteThatHasGoneIsInvalid)
{
    ASSERT_TRUE(load(site("r", site("a"))));
    show();
    QAccessibleInterface* item = face()->child(1);
    ASSERT_TRUE(load(site("x")));
    EXPECT_FALSE(item->isValid());
    EXPECT_TRUE(item->state().invalid);
    EXPECT_EQ(item->text(QAccessible::Name), u"");
    EXPECT_EQ(face()->childCount(), 1);
    EXPECT_EQ(face()->child(1), nullptr);
}

// The widget for hosts -----------------------------------------------------------------------------------------

TEST_F(SiteMapView, WidgetOfAnyHostPassesEventsOnInTwips)
{
    display::SiteMap widget;
    widget.resize(200, 100);
    ASSERT_TRUE(widget.control().LoadMap(write("<SITEMAP><SITE><SCHEME>x</SCHEME></SITE></SITEMAP>")));
    widget.show();
    widget.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&widget));
    widget.setFocus();
    auto* shown = static_cast<display::SiteMapView*>(widget.control().ensureWidget());
    EXPECT_TRUE(shown->hasFocus());
    EXPECT_EQ(shown->geometry(), QRect(0, 0, 200, 100));
    QSignalSpy scheme(&widget, &display::SiteMap::LoadScheme);
    QSignalSpy down(&widget, &display::SiteMap::MouseDown);
    QSignalSpy key(&widget, &display::SiteMap::KeyDown);
    QSignalSpy property(&widget, &display::SiteMap::PropertyChanged);
    QSignalSpy menu(&widget, &display::SiteMap::PopupMenuWanted);
    doubleClick(*shown->viewport(), shown->labelRectangle(1).center());
    ASSERT_EQ(scheme.count(), 1);
    EXPECT_EQ(scheme[0][0], QStringLiteral("x"));
    QTest::mouseClick(shown->viewport(), Qt::LeftButton, {},
                      shown->viewport()->rect().bottomRight() - QPoint(10, 10));
    ASSERT_EQ(down.count(), 1);
    EXPECT_GT(down[0][2].toFloat(), 2000);
    QTest::keyClick(shown, Qt::Key_F5);
    EXPECT_EQ(key.count(), 1);
    widget.control().put(values::Name("RowOffset"), Variant(10));
    EXPECT_EQ(property.count(), 1);
    widget.control().PopupMenu({}, {}, {}, {}, {});
    EXPECT_EQ(menu.count(), 1);
}
