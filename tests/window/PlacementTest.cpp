#include "window/Placement.h"

#include "values/RuntimeError.h"

#include <gtest/gtest.h>

using namespace zan::window;
using zan::wrappers::TwipsRectangle;

TEST(Placement, HalvesOfAGridStepGoToTheEvenMultiple)
{
    const TwipsRectangle place = snapped({300, 500, 700, 99}, 200);
    EXPECT_EQ(place.left, 400);
    EXPECT_EQ(place.top, 400);
    EXPECT_EQ(place.width, 800);
    EXPECT_EQ(place.height, 0) << "narrower than half a step is nothing";
}

TEST(Placement, AGridOfNothingIsADivisionByZero)
{
    try {
        snapped({1, 1, 1, 1}, 0);
        FAIL();
    } catch (const zan::values::RuntimeError& error) {
        EXPECT_EQ(error.number(), 11);
    }
}

TEST(Placement, ANegativeGridSnapsLikeItsPositiveOne)
{
    EXPECT_EQ(snapped({300, 0, 0, 0}, -200).left, 400);
}

TEST(Placement, AShapeIsHitInsideAndLessThanAHundredTwipsAround)
{
    const TwipsRectangle shape{1000, 2000, 500, 600};
    EXPECT_TRUE(hitsShape(shape, 1200, 2300));
    EXPECT_TRUE(hitsShape(shape, 901, 2300));
    EXPECT_FALSE(hitsShape(shape, 900, 2300)) << "exactly a hundred is outside";
    EXPECT_TRUE(hitsShape(shape, 1599, 2300));
    EXPECT_FALSE(hitsShape(shape, 1600, 2300));
    EXPECT_FALSE(hitsShape(shape, 1200, 1900));
    EXPECT_FALSE(hitsShape(shape, 1200, 2700));
}

TEST(Placement, TheCornersAreFoundWithinAHundredTwips)
{
    const TwipsRectangle shape{1000, 2000, 500, 600};
    EXPECT_EQ(hitsCorner(shape, 1000, 2000), ShapeGrab::TopLeft);
    EXPECT_EQ(hitsCorner(shape, 1099, 2699), ShapeGrab::BottomLeft);
    EXPECT_EQ(hitsCorner(shape, 1401, 1901), ShapeGrab::TopRight);
    EXPECT_EQ(hitsCorner(shape, 1500, 2600), ShapeGrab::BottomRight);
    EXPECT_EQ(hitsCorner(shape, 1500, 2500), ShapeGrab::Move) << "exactly a hundred away";
    EXPECT_EQ(hitsCorner(shape, 1250, 2000), ShapeGrab::Move) << "an edge is no corner";
    EXPECT_EQ(int(ShapeGrab::TopLeft), 1);
    EXPECT_EQ(int(ShapeGrab::TopRight), 3);
    EXPECT_EQ(int(ShapeGrab::BottomLeft), 6);
    EXPECT_EQ(int(ShapeGrab::BottomRight), 8);
}

TEST(Placement, OnANarrowShapeTheLeftCornersWin)
{
    EXPECT_EQ(hitsCorner({1000, 2000, 150, 600}, 1080, 2600), ShapeGrab::BottomLeft);
}
