#include "HostFixture.h"

#include "zanbench/DemoSite.h"

#include "window/BenchWindow.h"

#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QTabBar>

using namespace zan;
using host::MainWindow;
using host::PanelView;

namespace {

/// What the window shows at its start, without a scheme and in a kiosk, and how large it draws its panels.
class Start : public HostTest
{
protected:
    template <class Child>
    static Child* child(const MainWindow& window, const char* name)
    {
        return window.findChild<Child*>(QLatin1String(name));
    }
};

} // namespace

TEST_F(Start, WithoutASchemeTheWaysToOneAreOffered)
{
    settings.addRecentFile(schemePath());
    MainWindow window(settings, dialogs);
    window.show();
    for (const char* name : {"openButton", "openDemoButton", "newSchemeButton"})
        EXPECT_TRUE(child<QPushButton>(window, name)->isVisible()) << name;
    EXPECT_EQ(child<QListWidget>(window, "recentList")->count(), 1);
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_FALSE(child<QPushButton>(window, "openButton")->isVisible());
}

TEST_F(Start, TheDemoIsACopyOfTheUsersOwnThatKeepsWhatIsMadeOfIt)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openDemo(path("demo")));
    EXPECT_TRUE(dialogs.errors.isEmpty());
    EXPECT_TRUE(window.windowTitle().contains("Mill Creek"));
    EXPECT_TRUE(QFile::exists(path("demo/weir.gif")));
    write("demo/weir.scheme", "<SCHEME><NAME>Mine</NAME><WINDOW><KEY>W</KEY></WINDOW></SCHEME>");
    ASSERT_TRUE(window.openDemo(path("demo")));
    EXPECT_TRUE(window.windowTitle().startsWith("Mine"));
    write("file", "x");
    EXPECT_FALSE(window.openDemo(path("file/demo")));
    EXPECT_EQ(dialogs.errors.size(), 1);
}

TEST_F(Start, ANewSchemeHasOneWindowAndStandsInItsFile)
{
    MainWindow window(settings, dialogs);
    EXPECT_FALSE(window.createScheme()) << "the user turned away";
    dialogs.chosenNew = path("fresh.scheme");
    ASSERT_TRUE(window.createScheme());
    EXPECT_TRUE(read("fresh.scheme").contains("<KEY>Window 1</KEY>"));
    EXPECT_TRUE(window.windowTitle().startsWith("fresh: Window 1"));
    EXPECT_FALSE(window.hasUnsavedChanges());
    dialogs.chosenNew = path("no folder/fresh.scheme");
    EXPECT_FALSE(window.createScheme());
    EXPECT_EQ(dialogs.errors.size(), 1);
}

TEST_F(Start, AnErrorMovesNothingThatSomebodyIsAboutToClick)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    window.show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.currentPanel()->isVisible(); }, DeadlineMilliseconds));
    QCoreApplication::processEvents();
    const QPoint before = window.currentPanel()->mapTo(&window, QPoint(0, 0));
    const QSize size = window.currentPanel()->size();
    Q_EMIT window.currentPanel()->runtimeError(13, "Type mismatch");
    QCoreApplication::processEvents();
    const auto* bar = child<QFrame>(window, "errorBar");
    ASSERT_TRUE(bar->isVisible());
    EXPECT_EQ(window.currentPanel()->mapTo(&window, QPoint(0, 0)), before);
    EXPECT_EQ(window.currentPanel()->size(), size);
    EXPECT_EQ(bar->geometry().bottom(), bar->parentWidget()->rect().bottom());
    EXPECT_EQ(bar->width(), bar->parentWidget()->width());
}

TEST_F(Start, AKioskFitsItsPanelAndChangesWindowsByTabs)
{
    MainWindow window(settings, dialogs);
    window.enterKiosk();
    ASSERT_TRUE(window.openScheme(offline()));
    window.show();
    auto* tabs = child<QTabBar>(window, "kioskTabs");
    ASSERT_TRUE(QTest::qWaitFor([&] { return tabs->isVisible(); }, DeadlineMilliseconds));
    EXPECT_TRUE(child<QLabel>(window, "kioskSimulated")->isVisible());
    EXPECT_EQ(tabs->count(), 2);
    EXPECT_EQ(window.pages().zoom(), PanelView::Fit);
    tabs->setCurrentIndex(1);
    EXPECT_EQ(window.currentPanel()->CurrentWindow()->Key(), "Second");
    EXPECT_EQ(tabs->currentIndex(), 1);
}

TEST_F(Start, APanelOutlivesEveryZoomAndKeepsItsMeasures)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    window.resize(1000, 800);
    window.show();
    window::BenchWindow* panel = window.currentPanel();
    const float left = panel->Controls()->Control(binding::Variant(1))->Left();
    const auto* zoomIn = child<QAction>(window, "zoomIn");
    ASSERT_TRUE(zoomIn->isEnabled());
    for (const char* name : {"zoomIn", "zoomIn", "zoomOut", "zoomFit", "zoomNormal", "zoomFit"}) {
        child<QAction>(window, name)->trigger();
        QCoreApplication::processEvents();
        ASSERT_EQ(window.currentPanel(), panel) << name;
        ASSERT_TRUE(panel->Controls()) << name << " has ended the panel";
        EXPECT_EQ(panel->Controls()->Control(binding::Variant(1))->Left(), left) << name;
    }
    EXPECT_GT(window.pages().shownZoom(), 100) << "there is room for more";
    EXPECT_EQ(settings.zoom(), PanelView::Fit);
    child<QAction>(window, "lock")->setChecked(false);
    EXPECT_GT(window.pages().shownZoom(), 100) << "a panel is edited at any zoom";
    EXPECT_TRUE(zoomIn->isEnabled());
    child<QAction>(window, "zoomNormal")->trigger();
    child<QAction>(window, "lock")->setChecked(true);
    for (int i = 0; i < 20; ++i)
        child<QAction>(window, "zoomIn")->trigger();
    EXPECT_EQ(window.pages().shownZoom(), PanelView::Largest);
    for (int i = 0; i < 20; ++i)
        child<QAction>(window, "zoomOut")->trigger();
    EXPECT_EQ(window.pages().shownZoom(), PanelView::Smallest);
}

TEST_F(Start, TheWindowIsNeverLargerThanTheScreen)
{
    write("site.scheme", "<SCHEME><WINDOW><KEY>Huge</KEY><CONTROL><TYPE>VB.Label</TYPE><LEFT>90000</LEFT>"
                         "<TOP>90000</TOP><WIDTH>900</WIDTH><HEIGHT>300</HEIGHT></CONTROL></WINDOW></SCHEME>");
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    window.show();
    QCoreApplication::processEvents();
    const QRect room = window.screen()->availableGeometry();
    EXPECT_TRUE(room.contains(window.frameGeometry()))
        << window.frameGeometry().width() << " x " << window.frameGeometry().height();
}

TEST_F(Start, AWindowThatGrowsForASchemeStaysOnTheScreen)
{
    write("site.scheme", "<SCHEME><WINDOW><KEY>Large</KEY><CONTROL><TYPE>VB.Label</TYPE><LEFT>7000</LEFT>"
                         "<TOP>5000</TOP><WIDTH>900</WIDTH><HEIGHT>300</HEIGHT></CONTROL></WINDOW></SCHEME>");
    MainWindow window(settings, dialogs);
    window.resize(300, 200);
    window.show();
    const QRect room = window.screen()->availableGeometry();
    window.move(room.right() - 320, room.bottom() - 260);
    QCoreApplication::processEvents();
    ASSERT_TRUE(window.openScheme(offline()));
    QCoreApplication::processEvents();
    EXPECT_GT(window.width(), 400) << "it grows for the panel";
    EXPECT_TRUE(room.contains(window.frameGeometry()))
        << window.frameGeometry().right() << ", " << window.frameGeometry().bottom();
}
