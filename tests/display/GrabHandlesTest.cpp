#include "display/cGrabHandles.h"
#include "surface/host/Handles.h"
#include "surface/host/Surface.h"
#include "surface/intrinsic/CommandButton.h"

#include "support/PointerScript.h"

#include <gtest/gtest.h>

namespace zan::display::tests {

using surface::CommandButton;
using surface::EditLayer;
using surface::Surface;
using values::Ref;
using zan::tests::PointerScript;

constexpr values::Colour Blue = values::rgb(0, 0, 255);

/// A surface with one button at (100, 50), 80 by 25 pixels, and its handles, which log what they tell.
class GrabHandles : public testing::Test
{
protected:
    GrabHandles()
        : button(static_cast<CommandButton*>(
              panel.addArray<CommandButton>(QStringLiteral("CommandButton")).item(1).get()))
    {
        button->move(1500, 750, 1200, 375);
        button->setVisible(true);
        panel.resize(400, 300);
        panel.show();
        QCoreApplication::processEvents();
    }
    void init(cGrabHandles& handles, bool show = true)
    {
        handles.TargetReSized = [this] { log.append(QStringLiteral("sized")); };
        handles.EndResize = [this] { log.append(QStringLiteral("end")); };
        handles.InitializeGrabHandles(panel.hWnd(), button->hWnd(), show, Blue);
    }
    bool shows() { return EditLayer::of(panel).handleAt({97, 47}).frame; }

    Surface panel;
    Ref<CommandButton> button;
    QStringList log;
};

TEST_F(GrabHandles, ASizeOfMinusOneIsFivePixels)
{
    cGrabHandles handles(panel.hWnd(), button->hWnd(), false, Blue, -1);
    EXPECT_EQ(handles.size(), 5);
    EXPECT_EQ(cGrabHandles(panel.hWnd(), button->hWnd(), false, Blue, 9).size(), 9);
    EXPECT_FALSE(handles.ShowHandles());
    EXPECT_FALSE(shows());
}

TEST_F(GrabHandles, APressOnAHandleSizesTheTargetAndTheEndIsToldLast)
{
    cGrabHandles handles;
    init(handles);
    PointerScript(panel).press({182, 77}).move({192, 87}).move({202, 97}).release({202, 97}).play();
    EXPECT_EQ(button->bounds(), QRect(100, 50, 100, 45));
    EXPECT_EQ(log, QStringList({QStringLiteral("sized"), QStringLiteral("sized"), QStringLiteral("end")}));
}

TEST_F(GrabHandles, AResizeThatEndsWhereItBeganIsToldAllTheSame)
{
    cGrabHandles handles;
    init(handles);
    PointerScript(panel).press({182, 77}).release({182, 77}).play();
    EXPECT_EQ(log, QStringList(QStringLiteral("end")));
}

TEST_F(GrabHandles, AResizeThatEscHasTakenBackHasNoEnd)
{
    cGrabHandles handles;
    init(handles);
    PointerScript(panel).press({182, 77}).move({202, 97}).key(Qt::Key_Escape).release({202, 97}).play();
    EXPECT_EQ(button->bounds(), QRect(100, 50, 80, 25));
    EXPECT_FALSE(log.contains(QStringLiteral("end")));
}

TEST_F(GrabHandles, AMoveOfTheTargetIsNoResize)
{
    cGrabHandles handles;
    init(handles);
    button->setLeft(3000);
    EXPECT_TRUE(log.isEmpty());
    EXPECT_EQ(EditLayer::of(panel).handleAt({197, 47}).index, 0U);
    EXPECT_FALSE(shows()) << "none are left at the old place";
}

TEST_F(GrabHandles, WhileHandlesAreHiddenNothingIsTold)
{
    cGrabHandles handles;
    init(handles, false);
    button->setWidth(300);
    QTest::mouseClick(panel.windowHandle(), Qt::LeftButton, {}, {105, 55});
    EXPECT_TRUE(log.isEmpty());
}

TEST_F(GrabHandles, AReleaseOverTheTargetTellsOfAnEndToo)
{
    cGrabHandles handles;
    init(handles);
    QTest::mouseClick(panel.windowHandle(), Qt::LeftButton, {}, {120, 60});
    EXPECT_EQ(log, QStringList(QStringLiteral("end")));
}

TEST_F(GrabHandles, ShowingWhatIsShownDoesNotEvenRepaint)
{
    struct Painted : QObject
    {
        int count = 0;
        bool eventFilter(QObject*, QEvent* event) override
        {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } painted;
    const auto settle = [] {
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
    };
    cGrabHandles handles;
    init(handles);
    settle();
    panel.installEventFilter(&painted);
    handles.setShowHandles(true);
    settle();
    EXPECT_EQ(painted.count, 0);
    handles.setShowHandles(false);
    settle();
    EXPECT_GT(painted.count, 0);
    EXPECT_FALSE(shows());
}

TEST_F(GrabHandles, AWindowStaysWithItsFirstOwner)
{
    cGrabHandles first;
    init(first);
    cGrabHandles second(panel.hWnd(), button->hWnd(), false, Blue, -1);
    EXPECT_EQ(first.target(), button->hWnd());
    EXPECT_EQ(second.target(), 0);
    second.SubClassTarget(button->hWnd());
    EXPECT_EQ(second.target(), 0);
    first.SubClassTarget(0);
    EXPECT_EQ(first.target(), 0);
    second.SubClassTarget(button->hWnd());
    EXPECT_EQ(second.target(), button->hWnd()) << "a window that was let go can be followed";
}

TEST_F(GrabHandles, AWindowlessTargetIsNotFollowed)
{
    cGrabHandles handles(panel.hWnd(), 0, true, Blue, -1);
    EXPECT_EQ(handles.target(), 0);
    EXPECT_TRUE(handles.ShowHandles());
    EXPECT_FALSE(shows());
}

TEST_F(GrabHandles, TheOwnerMayGoDuringTheResize)
{
    auto handles = std::make_unique<cGrabHandles>();
    init(*handles);
    PointerScript(panel).press({182, 77}).then([&] { handles.reset(); }).release({202, 97}).play();
    EXPECT_FALSE(log.contains(QStringLiteral("end")));
    EXPECT_FALSE(shows());
}

TEST_F(GrabHandles, AnyWidgetOfAHostCanHaveThem)
{
    QWidget place;
    place.resize(300, 200);
    QWidget child(&place);
    child.setGeometry(50, 50, 80, 40);
    place.show();
    QCoreApplication::processEvents();
    cGrabHandles handles;
    handles.EndResize = [this] { log.append(QStringLiteral("end")); };
    handles.InitializeGrabHandles(surface::Handles::of(place), surface::Handles::of(child), true, Blue);
    EXPECT_EQ(handles.target(), surface::Handles::of(child));
    EXPECT_EQ(place.grab().toImage().pixelColor(47, 47), QColor(0, 0, 255));
    PointerScript(place).press({132, 92}).move({142, 112}).release({142, 112}).play();
    EXPECT_EQ(child.geometry(), QRect(50, 50, 90, 60));
    EXPECT_EQ(log, QStringList(QStringLiteral("end")));
    child.move(100, 50);
    EXPECT_EQ(place.grab().toImage().pixelColor(97, 47), QColor(0, 0, 255));
}

} // namespace zan::display::tests
