// What of the layer of handles is painted anew, and what it keeps from the controls below it.
#include "surface/SurfaceFixture.h"
#include "surface/edit/EditLayer.h"
#include "surface/host/Handles.h"
#include "surface/intrinsic/CommandButton.h"
#include "surface/intrinsic/TextBox.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QTest>

namespace zan::surface::tests {

namespace {

struct Frame : HandleFrame
{
    int released = 0;
    void handlePressed(std::size_t) override {}
    void targetMoved(bool) override {}
    void targetReleased() override { ++released; }
};

/// Everything of a widget that is painted.
struct Painted : QObject
{
    QRegion region;
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
};

constexpr values::Colour Blue = values::rgb(0, 0, 255);
const QRect WholeFrame(95, 45, 90, 35); // of a target at 100, 50 of 80 by 25, handles included

class HandlePaint : public SurfaceTest
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
    /// What the layer paints of itself because of this.
    QRegion paintedBy(const std::function<void()>& change)
    {
        settle();
        Painted painted;
        layer().installEventFilter(&painted);
        change();
        settle();
        return painted.region;
    }
};

} // namespace

TEST_F(HandlePaint, ShowingAndHidingHandlesPaintsTheirPlaceAnew)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    Frame frame;
    frameAround(frame, *button);
    EXPECT_EQ(paintedBy([&] { layer().setShown(frame, false); }).boundingRect() & WholeFrame, WholeFrame);
    EXPECT_EQ(paintedBy([&] { layer().setShown(frame, true); }).boundingRect() & WholeFrame, WholeFrame);
    EXPECT_TRUE(paintedBy([&] { layer().setShown(frame, true); }).isEmpty()) << "they are there already";
}

TEST_F(HandlePaint, AFrameThatGoesWithItsHandlesShownLeavesNoTraceOfThem)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    auto frame = std::make_unique<Frame>();
    frameAround(*frame, *button);
    EXPECT_EQ(paintedBy([&] { frame.reset(); }).boundingRect() & WholeFrame, WholeFrame);
    Frame other;
    frameAround(other, *button);
    EXPECT_EQ(layer().handleAt({97, 47}).frame, &other) << "the target is free for another one";
}

TEST_F(HandlePaint, ANarrowTargetKeepsTheHandlesAtItsCornersAndAtItsTallSides)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 6, 60});
    open();
    Frame frame;
    frameAround(frame, *button);
    for (const QPoint place : {QPoint(97, 47), QPoint(108, 47), QPoint(108, 112), QPoint(97, 112), QPoint(108, 80)})
        EXPECT_EQ(pixel(place.x(), place.y()), QColor(0, 0, 255)) << place.x() << " " << place.y();
}

TEST_F(HandlePaint, APaintOfOneHandleAlonePaintsThatOne)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    open();
    Frame frame;
    frameAround(frame, *button);
    settle();
    QImage picture(surface->size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::white);
    // The last of the handles in their order, without the first.
    layer().render(&picture, QPoint(95, 60), QRegion(95, 60, 5, 10), QWidget::DrawChildren);
    EXPECT_EQ(picture.pixelColor(97, 62), QColor(0, 0, 255));
}

TEST_F(HandlePaint, ThePointerOverAHandleIsOverNoControl)
{
    const auto below = show<TextBox>(QStringLiteral("Text"), {60, 40, 60, 60});
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 25});
    button->zOrder(0);
    open();
    Frame frame;
    frameAround(frame, *button);
    settle();
    logMoves = true;
    QTest::mouseMove(surface->windowHandle(), {97, 47});
    QTest::mouseMove(surface->windowHandle(), {98, 48});
    EXPECT_EQ(takeLog().filter(QStringLiteral("move")), QStringList());
    QTest::mouseMove(surface->windowHandle(), {70, 80});
    EXPECT_EQ(takeLog().filter(QStringLiteral("move")).size(), 1);
}

TEST_F(HandlePaint, OverAWidgetOfAHostTheReleaseOfTheLeftButtonIsToldAndNoOther)
{
    QWidget place;
    place.resize(300, 200);
    QWidget child(&place);
    child.setGeometry(20, 20, 50, 30);
    place.show();
    settle();
    EditLayer& over = EditLayer::of(place);
    Frame frame;
    over.attach(frame, Handles::of(child), 5, Blue);
    over.own(frame);
    over.setShown(frame, true);
    const auto release = [&](QEvent::Type type, Qt::MouseButton button) {
        QMouseEvent event(type, QPointF(5, 5), child.mapToGlobal(QPointF(5, 5)), button, Qt::NoButton, {});
        QCoreApplication::sendEvent(&child, &event);
        return frame.released;
    };
    EXPECT_EQ(release(QEvent::MouseButtonRelease, Qt::RightButton), 0);
    EXPECT_EQ(release(QEvent::MouseButtonPress, Qt::LeftButton), 0);
    EXPECT_EQ(release(QEvent::MouseButtonRelease, Qt::LeftButton), 1);
    over.setShown(frame, false);
    EXPECT_EQ(release(QEvent::MouseButtonRelease, Qt::LeftButton), 1) << "not while the handles are hidden";
}

} // namespace zan::surface::tests
