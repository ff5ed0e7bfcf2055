#include "HostFixture.h"

#include "support/PointerScript.h"

#include "display/SiteMapControl.h"
#include "display/SiteMapView.h"
#include "surface/host/ScreenPlace.h"
#include "values/Twips.h"
#include "window/BenchWindow.h"

#include <QGraphicsProxyWidget>
#include <QGraphicsView>
#include <QMenu>

using namespace zan;
using host::MainWindow;
using tests::PointerScript;

/// A panel of a button, a label and a light, unlocked, at the zoom of the row.
class ZoomTest : public HostTest, public testing::WithParamInterface<int>
{
protected:
    ZoomTest()
        : window((settings.setZoom(GetParam()), settings), dialogs)
    {
        write(
            "zoom.scheme",
            "<SCHEME><WINDOW><KEY>W</KEY><CONTAINER><GRIDSIZE>15</GRIDSIZE><SNAPTOGRID>-1</SNAPTOGRID></CONTAINER>"
            "<CONTROL><TYPE>VB.CommandButton</TYPE><LEFT>600</LEFT><TOP>600</TOP><WIDTH>900</WIDTH>"
            "<HEIGHT>450</HEIGHT></CONTROL>"
            "<CONTROL><TYPE>VB.Label</TYPE><LEFT>600</LEFT><TOP>1500</TOP><WIDTH>900</WIDTH>"
            "<HEIGHT>450</HEIGHT><CAPTION>Label</CAPTION></CONTROL>"
            "</WINDOW></SCHEME>");
        host::OpenOptions options;
        options.scheme = path("zoom.scheme");
        options.offline = options.unlock = true;
        EXPECT_TRUE(window.openScheme(options));
        window.resize(900, 700);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        if (panel().graphicsProxyWidget())
            scaledView()->centerOn(100, 100);
        QCoreApplication::processEvents();
        EXPECT_EQ(window.pages().shownZoom(), GetParam());
    }
    window::BenchWindow& panel() const { return *window.currentPanel(); }
    QGraphicsView* scaledView() const { return window.findChild<QGraphicsView*>(); }
    values::Ref<wrappers::iBenchControl> control(std::int32_t place) const
    {
        return panel().Controls()->Control(binding::Variant(place));
    }
    /// Twips that the pointer may be off: the pixels of the screen are not the panel's.
    static int pixel() { return GetParam() % 100 == 0 ? 0 : GetParam() < 100 ? 30 : 15; }
    /// Where a pixel of the panel is in the window.
    QPoint onWindow(double x, double y) const
    {
        const QPointF place(x, y);
        if (!panel().graphicsProxyWidget())
            return panel().mapTo(&window, place).toPoint();
        const QPointF drawn =
            scaledView()->viewportTransform().map(panel().graphicsProxyWidget()->mapToScene(place));
        return scaledView()->viewport()->mapTo(&window, drawn).toPoint();
    }

    mutable MainWindow window;
};

TEST_P(ZoomTest, AMoveIsMeasuredOnThePanel)
{
    PointerScript(window).press(onWindow(50, 50)).move(onWindow(60, 55)).release(onWindow(70, 60)).play();
    EXPECT_NEAR(control(1)->Left(), 600 + 20 * 15, pixel());
    EXPECT_NEAR(control(1)->Top(), 600 + 10 * 15, pixel());
    EXPECT_EQ(control(1)->Width(), 900);
    EXPECT_EQ(panel().UndoText(), "Move");
}

TEST_P(ZoomTest, ADragIsMeasuredOnThePanel)
{
    PointerScript(window).press(onWindow(50, 110)).move(onWindow(60, 120)).release(onWindow(70, 130)).play();
    EXPECT_NEAR(control(2)->Left(), 600 + 20 * 15, pixel());
    EXPECT_NEAR(control(2)->Top(), 1500 + 20 * 15, pixel());
}

TEST_P(ZoomTest, AHandleResizesByWhatThePointerMovesOnThePanel)
{
    // Two pixels behind the bottom right corner, in the middle of its handle.
    PointerScript(window)
        .move(onWindow(102.5, 72.5))
        .press(onWindow(102.5, 72.5))
        .move(onWindow(112.5, 80.5))
        .release(onWindow(122.5, 82.5))
        .play();
    EXPECT_NEAR(control(1)->Width(), 900 + 20 * 15, pixel());
    EXPECT_NEAR(control(1)->Height(), 450 + 10 * 15, pixel());
    EXPECT_EQ(control(1)->Top(), 600);
    EXPECT_EQ(panel().UndoText(), "Resize");
}

TEST_P(ZoomTest, TheCursorOverAHandleSaysWhatItDoes)
{
    PointerScript(window).move(onWindow(150, 60)).move(onWindow(102.5, 72.5)).move(onWindow(103.5, 72.5)).play();
    const QWidget* under = panel().graphicsProxyWidget() ? scaledView()->viewport() : nullptr;
    if (under) {
        EXPECT_EQ(under->cursor().shape(), Qt::SizeFDiagCursor);
    }
    PointerScript(window).move(onWindow(150, 60)).play();
    if (under) {
        EXPECT_NE(under->cursor().shape(), Qt::SizeFDiagCursor);
    }
}

TEST_P(ZoomTest, ARightClickOpensItsMenuAtThePointerAsAWindowOfItsOwn)
{
    const QPoint place = onWindow(50, 60);
    bool seen = false;
    PointerScript(window)
        .press(place, Qt::RightButton)
        .then([&] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            seen = true;
            EXPECT_EQ(menu->objectName(), "mnuCtlRightClick");
            EXPECT_FALSE(menu->graphicsProxyWidget()) << "drawn in the scene, it would be as large as the panel";
            EXPECT_LE((menu->pos() - window.mapToGlobal(place)).manhattanLength(), 4);
            menu->close();
        })
        .release(place, Qt::RightButton)
        .play();
    EXPECT_TRUE(seen);
}

INSTANTIATE_TEST_SUITE_P(Zooms, ZoomTest, testing::Values(50, 75, 100, 150, 400));

class ZoomPictureTest : public HostTest
{};

TEST_F(ZoomPictureTest, ALineOfAPixelIsThereAtEveryZoom)
{
    QByteArray lines;
    for (int i = 0; i < 40; ++i)
        lines +=
            "<CONTROL><TYPE>VB.Label</TYPE><BACKCOLOR>0</BACKCOLOR><BACKSTYLE>1</BACKSTYLE><LEFT>0</LEFT><TOP>" +
            QByteArray::number(i * 75) + "</TOP><WIDTH>1500</WIDTH><HEIGHT>15</HEIGHT></CONTROL>";
    write("lines.scheme", "<SCHEME><WINDOW><KEY>W</KEY><CONTAINER><BACKCOLOR>16777215</BACKCOLOR></CONTAINER>" +
                              lines + "</WINDOW></SCHEME>");
    host::OpenOptions options;
    options.scheme = path("lines.scheme");
    options.offline = true;
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(options));
    window.resize(1000, 800);
    window.show();
    for (const char* name : {"zoomOut", "zoomOut"}) {
        window.findChild<QAction*>(QLatin1String(name))->trigger();
        const auto* view = window.findChild<QGraphicsView*>();
        ASSERT_TRUE(QTest::qWaitFor([&] { return view->isVisible(); }, DeadlineMilliseconds));
        const QImage image = window.findChild<QGraphicsView*>()->viewport()->grab().toImage();
        const int column = view->mapFromScene(50, 0).x();
        int count = 0, former = 255;
        for (int y = 0; y < image.height(); ++y) {
            const int grey = qGray(image.pixel(column, y));
            count += grey < former && former > 230; // a line begins
            former = grey;
        }
        EXPECT_EQ(count, 40) << window.pages().shownZoom();
    }
}

class ZoomedMapTest : public HostTest, public testing::WithParamInterface<int>
{};

TEST_P(ZoomedMapTest, ASiteIsChosenWhereItIsDrawn)
{
    write("region.map", "<SITEMAP><SITE><NAME>Region</NAME>"
                        "<SITE><NAME>Other</NAME><SCHEME>other.scheme</SCHEME></SITE></SITE></SITEMAP>");
    writeScheme("<WINDOW><KEY>Map</KEY><CONTAINER><SITEMAP><LEFT>0</LEFT><TOP>0</TOP><WIDTH>9000</WIDTH>"
                "<HEIGHT>4500</HEIGHT><MAPFILE>region.map</MAPFILE></SITEMAP></CONTAINER></WINDOW>");
    write("other.scheme", "<SCHEME><NAME>Other site</NAME><WINDOW><KEY>Only</KEY><CONTAINER/></WINDOW></SCHEME>");
    settings.setZoom(GetParam());
    MainWindow window(settings, dialogs);
    host::OpenOptions options = offline();
    options.window = "Map";
    ASSERT_TRUE(window.openScheme(options));
    window.resize(1200, 800);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    window::BenchWindow* panel = window.currentPanel();
    panel->flush();
    auto* map = static_cast<display::SiteMapView*>(panel->SiteMap()->widget());
    ASSERT_TRUE(map);
    const QPointF site = QRectF(map->labelRectangle(2)).center();
    const QPoint place = window.mapFromGlobal(surface::toScreen(*map->viewport(), site)).toPoint();
    QTest::mouseMove(window.windowHandle(), place);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(window.windowHandle(), Qt::LeftButton, {}, place);
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return window.windowTitle().startsWith("Other site"); }, DeadlineMilliseconds))
        << window.windowTitle().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Zooms, ZoomedMapTest, testing::Values(50, 100, 150));
