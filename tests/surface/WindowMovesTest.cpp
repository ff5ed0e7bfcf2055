#include "surface/edit/WindowMoves.h"
#include "surface/SurfaceFixture.h"
#include "surface/edit/EditLayer.h"
#include "surface/edit/HandleTable.h"
#include "surface/host/Handles.h"
#include "surface/intrinsic/CommandButton.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/TextBox.h"

#include "support/PointerScript.h"
#include "support/Properties.h"

#include <QDialog>
#include <QTimer>

namespace zan::surface::tests {

using test::put;

using zan::tests::PointerScript;

/// A surface whose presses run a loop, as an unlocked panel's do.
class WindowMoves : public SurfaceTest
{
protected:
    void open()
    {
        surface->show();
        surface->activateWindow();
        settle();
        takeLog();
    }
    bool mouseDown(LiveControl* control, const MouseInput& input) override
    {
        SurfaceTest::mouseDown(control, input);
        if (onPress && control)
            onPress(*control);
        return true;
    }
    void moveOnPress()
    {
        onPress = [this](LiveControl& control) { end = moveWindow(control.hWnd()); };
    }

    std::function<void(LiveControl&)> onPress;
    std::optional<PointerEnd> end;
};

TEST_F(WindowMoves, AControlFollowsThePointerAndTheCallReturnsWhenTheButtonGoesUp)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    moveOnPress();
    QPoint onTheWay;
    PointerScript(*surface)
        .press({110, 60})
        .move({120, 65})
        .then([&] { onTheWay = button->bounds().topLeft(); })
        .release({150, 90})
        .play();
    EXPECT_EQ(onTheWay, QPoint(110, 55));
    EXPECT_EQ(button->bounds(), QRect(140, 80, 80, 25));
    EXPECT_EQ(end, PointerEnd::Released);
    EXPECT_FALSE(takeLog().contains(QStringLiteral("click CommandButton(1)"))) << "the move swallows the release";
}

TEST_F(WindowMoves, APressWithoutMovementKeepsFractionsOfAPixel)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    button->move(1507, 757, 1201, 374);
    open();
    moveOnPress();
    PointerScript(*surface).press({110, 60}).move({110, 63}).release({110, 63}).play();
    EXPECT_EQ(button->left(), 1507) << "the pointer did not go sideways";
    EXPECT_EQ(button->top(), 53 * 15);
    EXPECT_EQ(button->width(), 1201);
}

TEST_F(WindowMoves, EscPutsTheControlBackExactly)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    button->move(1507, 757);
    open();
    moveOnPress();
    PointerScript(*surface).press({110, 60}).move({200, 200}).key(Qt::Key_Escape).release({200, 200}).play();
    EXPECT_EQ(button->left(), 1507);
    EXPECT_EQ(button->top(), 757);
    EXPECT_EQ(end, PointerEnd::Cancelled);
}

TEST_F(WindowMoves, NothingPressedNothingMoves)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    EXPECT_EQ(moveWindow(button->hWnd()), PointerEnd::Interrupted);
    EXPECT_EQ(resizeWindow(button->hWnd(), RightEdge), PointerEnd::Interrupted);
    EXPECT_FALSE(dragControl(*button));
    EXPECT_EQ(moveWindow(4711), PointerEnd::Interrupted);
}

TEST_F(WindowMoves, AButtonThatWentUpInAnotherLoopIsNotFollowed)
{
    show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    onPress = [&](LiveControl& control) {
        QEventLoop box;
        QTimer::singleShot(0, &box, [&] {
            QTest::mouseRelease(surface->windowHandle(), Qt::LeftButton, {}, {110, 60});
            box.quit();
        });
        box.exec();
        end = moveWindow(control.hWnd());
    };
    QTest::mousePress(surface->windowHandle(), Qt::LeftButton, {}, {110, 60});
    EXPECT_EQ(end, PointerEnd::Interrupted);
}

TEST_F(WindowMoves, DataGoesOnArrivingDuringAMove)
{
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    moveOnPress();
    QTimer data;
    int values = 0;
    QObject::connect(&data, &QTimer::timeout, [&] { label->setCaption(QString::number(++values)); });
    PointerScript(*surface)
        .press({110, 60})
        .then([&] { data.start(0); })
        .move({130, 60})
        .move({131, 60})
        .release({131, 60})
        .play();
    EXPECT_GT(values, 0);
}

TEST_F(WindowMoves, AControlThatIsRemovedDuringTheMoveIsLeftAlone)
{
    show<CommandButton>(QStringLiteral("CommandButton"), {0, 0, 20, 20});
    const auto button = showNew<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    moveOnPress();
    PointerScript(*surface)
        .press({110, 60})
        .then([&] { surface->array(u"CommandButton")->unload(2); })
        .move({200, 200})
        .release({200, 200})
        .play();
    EXPECT_TRUE(end);
    EXPECT_FALSE(button->isLoaded());
}

TEST_F(WindowMoves, ASurfaceThatGoesAwayEndsTheMove)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    moveOnPress();
    PointerScript(*surface)
        .press({110, 60})
        .then([&] {
            surface->setEvents(nullptr);
            surface.reset();
        })
        .play();
    EXPECT_EQ(end, PointerEnd::Interrupted);
    EXPECT_FALSE(button->isLoaded());
}

TEST_F(WindowMoves, AWindowThatIsHiddenEndsTheMove)
{
    show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    moveOnPress();
    PointerScript(*surface).press({110, 60}).move({120, 60}).then([&] { surface->hide(); }).play();
    EXPECT_EQ(end, PointerEnd::Interrupted);
}

TEST_F(WindowMoves, AModalWindowThatComesUpEndsTheMoveWhereItIs)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    moveOnPress();
    QDialog box(surface.get());
    PointerScript(*surface)
        .press({110, 60})
        .move({130, 60})
        .then([&] {
            box.setModal(true);
            box.show();
        })
        .play();
    EXPECT_EQ(end, PointerEnd::Interrupted);
    EXPECT_EQ(button->bounds().left(), 120);
}

TEST_F(WindowMoves, AnEdgeFollowsThePointerAndNeverPassesTheOtherOne)
{
    const auto text = show<TextBox>(QStringLiteral("Text"), {100, 50, 80, 25});
    open();
    onPress = [this](LiveControl& control) { end = resizeWindow(control.hWnd(), LeftEdge | BottomEdge); };
    PointerScript(*surface).press({110, 60}).move({130, 70}).release({130, 70}).play();
    EXPECT_EQ(text->bounds(), QRect(120, 50, 60, 35));
    PointerScript(*surface).press({130, 60}).release({400, -200}).play();
    EXPECT_EQ(text->bounds(), QRect(180, 50, 0, 0));
}

TEST_F(WindowMoves, ADragLeavesTheControlAndTellsWhereItWasLetGo)
{
    const auto label = show<Label>(QStringLiteral("Label"), {100, 50, 80, 20});
    const auto other = showNew<Label>(QStringLiteral("Label"), {300, 200, 80, 20});
    open();
    std::optional<Drop> drop;
    onPress = [&](LiveControl& control) { drop = dragControl(control); };
    PointerScript(*surface).press({110, 60}).move({200, 100}).release({310, 205}).play();
    ASSERT_TRUE(drop);
    EXPECT_EQ(drop->target, other);
    EXPECT_EQ(drop->place, QPointF(10, 5));
    EXPECT_EQ(label->bounds(), QRect(100, 50, 80, 20));

    PointerScript(*surface).press({110, 60}).release({20, 300}).play();
    ASSERT_TRUE(drop);
    EXPECT_EQ(drop->target, nullptr);
    EXPECT_EQ(drop->place, QPointF(20, 300));

    PointerScript(*surface).press({110, 60}).release({-20, 300}).play();
    EXPECT_FALSE(drop) << "outside the surface there is nothing to drop on";
    PointerScript(*surface).press({110, 60}).move({20, 300}).key(Qt::Key_Escape).release({20, 300}).play();
    EXPECT_FALSE(drop);
}

TEST_F(WindowMoves, ThePictureOfWhatIsDraggedIsUnderThePointerAndGoesAway)
{
    const auto label = show<Label>(QStringLiteral("Label"), {100, 50, 80, 20});
    put(*label, "BackColor", values::rgb(255, 0, 0));
    open();
    onPress = [&](LiveControl& control) { dragControl(control); };
    QColor during;
    PointerScript(*surface)
        .press({110, 60})
        .move({210, 160})
        .then([&] { during = pixel(205, 155); })
        .release({210, 160})
        .play();
    EXPECT_GT(during.red(), during.blue() + 100);
    EXPECT_EQ(pixel(205, 155), pixel(500, 300));
}

TEST_F(WindowMoves, AnotherLoopInsideOneEndsAtOnce)
{
    show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    const auto text = show<TextBox>(QStringLiteral("Text"), {300, 50, 80, 25});
    open();
    moveOnPress();
    std::optional<PointerEnd> inner;
    PointerScript(*surface)
        .press({110, 60})
        .then([&] { inner = moveWindow(text->hWnd()); })
        .release({110, 60})
        .play();
    EXPECT_EQ(inner, PointerEnd::Interrupted);
    EXPECT_EQ(end, PointerEnd::Released);
}

TEST_F(WindowMoves, AWidgetOfAHostMovesTheSameWay)
{
    QWidget place;
    place.resize(300, 200);
    struct Child : QWidget
    {
        using QWidget::QWidget;
        void mousePressEvent(QMouseEvent* event) override
        {
            const PointerPress press(event->globalPosition().toPoint());
            moveWindow(Handles::of(*this));
        }
    };
    auto* child = new Child(&place);
    child->setGeometry(20, 20, 50, 30);
    place.show();
    settle();
    PointerScript(place).press({30, 30}).move({60, 50}).release({60, 50}).play();
    EXPECT_EQ(child->geometry(), QRect(50, 40, 50, 30));
}

} // namespace zan::surface::tests
