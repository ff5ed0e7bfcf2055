#include "surface/edit/Alignment.h"
#include "surface/edit/HandleTable.h"

#include <gtest/gtest.h>

#include <random>

namespace zan::surface::tests {

TEST(Alignment, AnEdgeThatIsAFewPixelsOffIsPulledAndDrawn)
{
    const Alignment alignment({QRect(100, 50, 80, 20)});
    const auto result = alignment.moved(QRect(104, 200, 41, 31));
    EXPECT_EQ(result.place, QRect(100, 200, 41, 31));
    EXPECT_TRUE(result.isAlignedX);
    EXPECT_FALSE(result.isAlignedY);
    EXPECT_EQ(result.guides, QList<QLine>{QLine(100, 50, 100, 230)}) << "as long as both together";
    EXPECT_EQ(alignment.moved(QRect(106, 200, 41, 31)).place.x(), 106) << "six pixels are too far";
    EXPECT_EQ(alignment.moved(QRect(135, 200, 41, 31)).place.x(), 139) << "the right edge to the right edge";
    EXPECT_EQ(alignment.moved(QRect(177, 200, 41, 31)).place.x(), 180) << "the left edge to the right edge";
}

TEST(Alignment, CentresPullWhereNoHalfPixelIsLeft)
{
    const Alignment alignment({QRect(100, 50, 80, 20)});
    EXPECT_EQ(alignment.moved(QRect(122, 200, 40, 30)).place.x(), 120);
    EXPECT_EQ(alignment.moved(QRect(122, 200, 40, 30)).guides, QList<QLine>{QLine(140, 50, 140, 229)});
    EXPECT_EQ(alignment.moved(QRect(122, 200, 41, 30)).place.x(), 122);
}

TEST(Alignment, TheNearestLinePulls)
{
    const Alignment alignment({QRect(100, 50, 300, 20), QRect(107, 90, 300, 20)});
    EXPECT_EQ(alignment.moved(QRect(103, 200, 41, 31)).place.x(), 100);
    EXPECT_EQ(alignment.moved(QRect(104, 200, 41, 31)).place.x(), 107);
}

TEST(Alignment, AGapLikeTheOneBehindTheNeighbourPulls)
{
    // Two in a row with a gap of 30, then one that comes near.
    const Alignment alignment({QRect(0, 50, 50, 20), QRect(80, 50, 50, 20)});
    const auto result = alignment.moved(QRect(163, 57, 40, 40));
    EXPECT_EQ(result.place.x(), 160);
    EXPECT_TRUE(result.guides.contains(QLine(50, 77, 79, 77)));
    EXPECT_TRUE(result.guides.contains(QLine(130, 77, 159, 77)));
    EXPECT_FALSE(alignment.moved(QRect(163, 300, 40, 40)).isAlignedX) << "not in their row";
}

TEST(Alignment, EqualGapsOnBothSidesPull)
{
    const Alignment alignment({QRect(0, 50, 50, 20), QRect(200, 50, 51, 20)});
    EXPECT_EQ(alignment.moved(QRect(108, 57, 40, 41)).place.x(), 105);
    const Alignment down({QRect(50, 0, 20, 50), QRect(50, 200, 20, 51)});
    EXPECT_EQ(down.moved(QRect(57, 108, 41, 40)).place.y(), 105);
}

TEST(Alignment, SizingPullsTheEdgesThatFollowThePointerOnly)
{
    const Alignment alignment({QRect(100, 50, 80, 20)});
    const auto result = alignment.sized(QRect(20, 200, 157, 33), RightEdge | BottomEdge);
    EXPECT_EQ(result.place, QRect(20, 200, 160, 33));
    EXPECT_TRUE(result.isAlignedX);
    EXPECT_EQ(alignment.sized(QRect(103, 200, 300, 33), RightEdge).place, QRect(103, 200, 300, 33));
    EXPECT_EQ(alignment.sized(QRect(103, 200, 300, 33), LeftEdge).place, QRect(100, 200, 303, 33));
}

TEST(Alignment, ASideAsLongAsANeighboursPulls)
{
    const Alignment alignment({QRect(100, 50, 80, 20)});
    EXPECT_EQ(alignment.sized(QRect(300, 55, 77, 9), RightEdge).place.width(), 80);
    EXPECT_EQ(alignment.sized(QRect(300, 155, 77, 9), RightEdge).place.width(), 77) << "not in its row";
}

TEST(Alignment, WithNothingAroundNothingPulls)
{
    const Alignment alignment({});
    EXPECT_EQ(alignment.moved(QRect(3, 3, 10, 10)).place, QRect(3, 3, 10, 10));
    EXPECT_EQ(alignment.sized(QRect(3, 3, 0, 0), LeftEdge).place, QRect(3, 3, 0, 0));
    EXPECT_TRUE(alignment.moved(QRect(3, 3, 10, 10)).guides.isEmpty());
}

/// Any rectangle among any others: it is pulled by no more than the reach, and keeps its size.
TEST(Alignment, NothingIsPulledFurtherThanTheReach)
{
    std::mt19937 random(11);
    const auto number = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    const auto rectangle = [&] { return QRect(number(-50, 900), number(-50, 700), number(0, 200), number(0, 90)); };
    for (int round = 0; round < 200; ++round) {
        std::vector<QRect> others;
        for (int count = number(0, 30); count > 0; --count)
            others.push_back(rectangle());
        const Alignment alignment(std::move(others));
        const QRect proposed = rectangle();
        const auto moved = alignment.moved(proposed);
        ASSERT_EQ(moved.place.size(), proposed.size());
        ASSERT_LE(std::abs(moved.place.x() - proposed.x()), Alignment::Reach);
        ASSERT_LE(std::abs(moved.place.y() - proposed.y()), Alignment::Reach);
        const auto edges = std::uint8_t(number(1, 15));
        const auto sized = alignment.sized(proposed, edges);
        ASSERT_GE(sized.place.width(), 0);
        ASSERT_GE(sized.place.height(), 0);
        ASSERT_LE(std::abs(sized.place.width() - proposed.width()), 2 * Alignment::Reach);
    }
}

} // namespace zan::surface::tests
