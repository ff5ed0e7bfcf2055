#include "surface/edit/EditLayer.h"
#include "surface/SurfaceFixture.h"
#include "surface/edit/HandleTable.h"
#include "surface/edit/RectIndex.h"
#include "surface/intrinsic/CommandButton.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/TextBox.h"

#include <QTest>

#include <random>
#include <set>

namespace zan::surface::tests {

constexpr values::Colour Blue = values::rgb(0, 0, 255);

/// What a frame is told.
struct Frame : HandleFrame
{
    std::vector<std::size_t> pressed;
    int moved = 0;
    int sized = 0;
    int released = 0;
    std::function<void()> onPress;
    void handlePressed(std::size_t index) override
    {
        pressed.push_back(index);
        if (onPress)
            onPress();
    }
    void targetMoved(bool isSized) override { ++(isSized ? sized : moved); }
    void targetReleased() override { ++released; }
};

class Layer : public SurfaceTest
{
protected:
    void open()
    {
        surface->show();
        settle();
        takeLog();
    }
    EditLayer& layer() { return EditLayer::of(*surface); }
    void frameAround(Frame& frame, LiveControl& control)
    {
        layer().attach(frame, control.hWnd(), 5, Blue);
        layer().own(frame);
        layer().setShown(frame, true);
    }
};

TEST(HandleRectangles, LieAroundTheTargetWithTheMiddleOnesTwoPixelsBack)
{
    const auto places = handleRectangles(QRect(100, 50, 81, 26), 5);
    EXPECT_EQ(places[0], QRect(95, 45, 5, 5));
    EXPECT_EQ(places[1], QRect(138, 45, 5, 5));
    EXPECT_EQ(places[2], QRect(181, 45, 5, 5));
    EXPECT_EQ(places[3], QRect(181, 61, 5, 5));
    EXPECT_EQ(places[4], QRect(181, 76, 5, 5));
    EXPECT_EQ(places[5], QRect(138, 76, 5, 5));
    EXPECT_EQ(places[6], QRect(95, 76, 5, 5));
    EXPECT_EQ(places[7], QRect(95, 61, 5, 5));
}

TEST(HandleRectangles, ASideOfSevenPixelsHidesItsMiddleHandlesAndOneOfEightShowsThem)
{
    EXPECT_TRUE(handleRectangles(QRect(0, 0, 7, 30), 5)[1].isNull());
    EXPECT_TRUE(handleRectangles(QRect(0, 0, 7, 30), 5)[5].isNull());
    EXPECT_FALSE(handleRectangles(QRect(0, 0, 7, 30), 5)[3].isNull());
    EXPECT_FALSE(handleRectangles(QRect(0, 0, 8, 30), 5)[1].isNull());
    EXPECT_TRUE(handleRectangles(QRect(0, 0, 30, 7), 5)[3].isNull());
    EXPECT_FALSE(handleRectangles(QRect(0, 0, 30, 7), 5)[0].isNull());
}

TEST(HandleRectangles, EachHandleHasItsCursorAndItsEdge)
{
    const std::array<int, 8> cursors{32642, 32645, 32643, 32644, 32642, 32645, 32643, 32644};
    const std::array<int, 8> codes{13, 12, 14, 11, 17, 15, 16, 10};
    for (std::size_t index = 0; index < 8; ++index) {
        EXPECT_EQ(handleTable[index].cursor, cursors[index]);
        EXPECT_EQ(handleTable[index].hitCode, codes[index]);
    }
    EXPECT_EQ(handleCursor(0), Qt::SizeFDiagCursor);
    EXPECT_EQ(handleCursor(2), Qt::SizeBDiagCursor);
    EXPECT_EQ(handleCursor(1), Qt::SizeVerCursor);
    EXPECT_EQ(handleCursor(3), Qt::SizeHorCursor);
}

TEST_F(Layer, HandlesAreDrawnInTheirColourAndGoAway)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    Frame frame;
    frameAround(frame, *button);
    EXPECT_EQ(pixel(97, 47), QColor(0, 0, 255));
    EXPECT_EQ(pixel(182, 77), QColor(0, 0, 255));
    EXPECT_NE(pixel(110, 47), QColor(0, 0, 255)) << "between the handles there is nothing";
    layer().setShown(frame, false);
    EXPECT_NE(pixel(97, 47), QColor(0, 0, 255));
}

TEST_F(Layer, HandlesFollowTheirTargetAndTellOfIt)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    Frame frame;
    frameAround(frame, *button);
    button->setLeft(200 * 15);
    EXPECT_EQ(frame.moved, 1);
    EXPECT_EQ(frame.sized, 0);
    EXPECT_NE(pixel(97, 47), QColor(0, 0, 255));
    EXPECT_EQ(pixel(197, 47), QColor(0, 0, 255));
    button->setWidth(40 * 15);
    EXPECT_EQ(frame.sized, 1);
    EXPECT_EQ(pixel(242, 47), QColor(0, 0, 255));
}

TEST_F(Layer, ATargetThatMovesWhileHandlesAreHiddenIsFoundWhenTheyAreShown)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    Frame frame;
    frameAround(frame, *button);
    layer().setShown(frame, false);
    button->setLeft(200 * 15);
    EXPECT_EQ(frame.moved, 0);
    layer().setShown(frame, true);
    EXPECT_EQ(pixel(197, 47), QColor(0, 0, 255));
}

TEST_F(Layer, ATargetFollowsItsFirstOwnerOnly)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    Frame first;
    frameAround(first, *button);
    Frame second;
    layer().attach(second, button->hWnd(), 5, Blue);
    EXPECT_FALSE(layer().own(second));
    layer().setShown(second, true);
    button->setLeft(200 * 15);
    EXPECT_EQ(first.moved, 1);
    EXPECT_EQ(second.moved, 0);
}

TEST_F(Layer, AWindowlessControlHasNoHandles)
{
    const auto label = show<Label>(QStringLiteral("Label"), {100, 50, 80, 25});
    open();
    Frame frame;
    frameAround(frame, *label);
    EXPECT_FALSE(layer().handleAt({97, 47}).frame);
    EXPECT_NE(pixel(97, 47), QColor(0, 0, 255));
}

TEST_F(Layer, AHandleLiesBelowControlsThatAreStackedHigherThanItsTarget)
{
    const auto lower = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    const auto upper = show<TextBox>(QStringLiteral("Text"), {170, 60, 80, 25});
    upper->zOrder(0);
    open();
    Frame low;
    Frame high;
    frameAround(low, *lower);
    frameAround(high, *upper);
    // The lower one's bottom right handle lies under the upper control.
    EXPECT_FALSE(layer().handleAt({182, 77}).frame);
    EXPECT_NE(pixel(182, 77), QColor(0, 0, 255));
    // The upper one's top left handle lies over the lower control.
    EXPECT_EQ(layer().handleAt({167, 57}).frame, &high);
    EXPECT_EQ(pixel(167, 57), QColor(0, 0, 255));
    lower->zOrder(0);
    settle();
    EXPECT_EQ(layer().handleAt({182, 77}).frame, &low);
    EXPECT_EQ(pixel(182, 77), QColor(0, 0, 255));
}

TEST_F(Layer, APressOnAHandleReachesTheFrameAndNobodyElse)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    const auto below = show<TextBox>(QStringLiteral("Text"), {60, 40, 60, 60});
    button->zOrder(0);
    open();
    Frame frame;
    frameAround(frame, *button);
    QTest::mousePress(surface->windowHandle(), Qt::LeftButton, {}, {97, 47});
    QTest::mouseRelease(surface->windowHandle(), Qt::LeftButton, {}, {97, 47});
    EXPECT_EQ(frame.pressed, std::vector<std::size_t>{0});
    QTest::mousePress(surface->windowHandle(), Qt::RightButton, {}, {97, 47});
    QTest::mouseRelease(surface->windowHandle(), Qt::RightButton, {}, {97, 47});
    EXPECT_EQ(frame.pressed.size(), 1U) << "only the left button sizes";
    const QStringList log = takeLog();
    EXPECT_TRUE(log.filter(QStringLiteral("down")).isEmpty()) << log.join(u'|').toStdString();
    EXPECT_TRUE(log.filter(QStringLiteral("click")).isEmpty());
}

TEST_F(Layer, TheFrameMayGoInsideItsPress)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    auto frame = std::make_unique<Frame>();
    frameAround(*frame, *button);
    frame->onPress = [&] {
        surface->array(u"CommandButton")->load(2);
        frame.reset();
    };
    QTest::mousePress(surface->windowHandle(), Qt::LeftButton, {}, {97, 47});
    QTest::mouseRelease(surface->windowHandle(), Qt::LeftButton, {}, {97, 47});
    EXPECT_FALSE(frame);
    EXPECT_FALSE(layer().handleAt({97, 47}).frame);
}

TEST_F(Layer, TheCursorOverAHandleTellsWhichWayItSizes)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    Frame frame;
    frameAround(frame, *button);
    QTest::mouseMove(surface->windowHandle(), {182, 62});
    QWidget* under = surface->childAt(182, 62);
    ASSERT_TRUE(under);
    EXPECT_EQ(under->cursor().shape(), Qt::SizeHorCursor);
    QTest::mouseMove(surface->windowHandle(), {300, 300});
    EXPECT_EQ(surface->childAt(182, 62), nullptr) << "the spot that carries the cursor is gone with the pointer";
}

TEST_F(Layer, AReleaseOverTheTargetIsToldToTheFrame)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    Frame frame;
    frameAround(frame, *button);
    QTest::mouseClick(surface->windowHandle(), Qt::LeftButton, {}, {120, 60});
    EXPECT_EQ(frame.released, 1);
    layer().setShown(frame, false);
    QTest::mouseClick(surface->windowHandle(), Qt::LeftButton, {}, {120, 60});
    EXPECT_EQ(frame.released, 1) << "not while the handles are hidden";
}

TEST_F(Layer, AControlThatGoesTakesItsHandlesAlong)
{
    show<CommandButton>(QStringLiteral("CommandButton"), {0, 0, 20, 20});
    const auto button = showNew<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    Frame frame;
    frameAround(frame, *button);
    surface->array(u"CommandButton")->unload(2);
    EXPECT_FALSE(layer().handleAt({97, 47}).frame);
    layer().setShown(frame, true);
    EXPECT_NE(pixel(97, 47), QColor(0, 0, 255));
}

TEST_F(Layer, AFrameOutlivesItsSurface)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    Frame frame;
    frameAround(frame, *button);
    surface->setEvents(nullptr);
    surface.reset();
    EXPECT_FALSE(button->isLoaded());
}

/// What the index finds is what a walk over all rectangles finds, after any adding and removing.
TEST(RectIndexLaws, QueriesFindEverythingThatTouches)
{
    std::mt19937 random(7);
    const auto number = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    RectIndex index;
    std::vector<std::optional<QRect>> all(200);
    for (int step = 0; step < 4000; ++step) {
        const auto which = std::uint32_t(number(0, 199));
        if (all[which]) {
            index.remove(which, *all[which]);
            all[which].reset();
        } else {
            const int size = number(0, 20) == 0 ? 3000 : 90;
            all[which] = QRect(number(-500, 2000), number(-500, 2000), number(1, size), number(1, size));
            index.insert(which, *all[which]);
        }
        const QRect asked(number(-600, 2100), number(-600, 2100), number(1, 700), number(1, 300));
        std::set<std::uint32_t> found;
        index.query(asked, [&](std::uint32_t hit) { EXPECT_TRUE(found.insert(hit).second) << "told twice"; });
        for (std::uint32_t place = 0; place < all.size(); ++place) {
            if (all[place] && all[place]->intersects(asked)) {
                EXPECT_TRUE(found.contains(place));
            }
        }
    }
}

} // namespace zan::surface::tests
