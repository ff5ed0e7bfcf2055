#include "display/ScaleColour.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>

using zan::display::ScaleColour;
using zan::values::Colour;
using zan::values::rgb;

namespace {

/// Whole quotient, half to even, in whole numbers only.
std::int64_t quotient(std::int64_t number, std::int64_t divisor)
{
    if (divisor < 0)
        return quotient(-number, -divisor);
    if (number < 0)
        return -quotient(-number, divisor);
    const std::int64_t whole = number / divisor;
    const std::int64_t twice = number % divisor * 2;
    const bool up = twice > divisor || (twice == divisor && whole % 2 == 1);
    return up ? whole + 1 : whole;
}

int limited(std::int64_t number)
{
    return int(std::clamp<std::int64_t>(number, 0, 255));
}

Colour expected(std::int32_t code, int percent)
{
    const std::int64_t withoutRed = std::int64_t(code) - (code & 255);
    return rgb(limited(quotient(std::int64_t(code & 255) * percent, 100)),
               limited(quotient(quotient(withoutRed, 255) * percent, 100)),
               limited(quotient(quotient(code & 0xFF0000, -256) * percent, 100)));
}

} // namespace

TEST(ScaleColour, RedsScaleAsOneExpects)
{
    EXPECT_EQ(ScaleColour({255}, 0), Colour{0});
    EXPECT_EQ(ScaleColour({255}, 25), Colour{64});
    EXPECT_EQ(ScaleColour({255}, 50), Colour{128}); // 127.5
    EXPECT_EQ(ScaleColour({255}, 75), Colour{191});
    EXPECT_EQ(ScaleColour({255}, 100), Colour{255});
}

TEST(ScaleColour, HalvesRoundToEven)
{
    EXPECT_EQ(ScaleColour({1}, 50), Colour{0});
    EXPECT_EQ(ScaleColour({3}, 50), Colour{2});
    EXPECT_EQ(ScaleColour({5}, 50), Colour{2});
}

TEST(ScaleColour, GreenIsDividedBy255AndLimited)
{
    EXPECT_EQ(ScaleColour(rgb(0, 255, 0), 100), rgb(0, 255, 0)); // 256
    EXPECT_EQ(ScaleColour(rgb(0, 255, 0), 50), rgb(0, 128, 0));
    EXPECT_EQ(ScaleColour(rgb(0, 128, 0), 100), rgb(0, 129, 0)); // 128.5 comes from 32768 / 255, just above
    EXPECT_EQ(ScaleColour(rgb(0, 1, 0), 50), rgb(0, 0, 0));
}

TEST(ScaleColour, BlueEndsAtZeroAndCountsAsGreen)
{
    EXPECT_EQ(ScaleColour(rgb(0, 0, 255), 50), rgb(0, 255, 0));
    EXPECT_EQ(ScaleColour(rgb(0, 0, 255), 100), rgb(0, 255, 0));
    EXPECT_EQ(ScaleColour(rgb(0, 0, 255), 0), rgb(0, 0, 0));
    EXPECT_EQ(ScaleColour(rgb(255, 255, 255), 50), rgb(128, 255, 0));
    EXPECT_EQ(ScaleColour(rgb(0, 0, 1), 25), rgb(0, 64, 0));
}

TEST(ScaleColour, SystemColourPassesThroughUnconverted)
{
    EXPECT_EQ(ScaleColour(zan::values::systemColour(18), 100), rgb(18, 0, 0));
    EXPECT_EQ(ScaleColour(zan::values::systemColour(15), 50), rgb(8, 0, 0)); // 7.5
}

TEST(ScaleColour, AgreesWithTheRuleInWholeNumbersForAnyColour)
{
    std::mt19937 random(1);
    for (int round = 0; round < 200'000; ++round) {
        const auto code = std::int32_t(round % 4 == 0 ? random() : random() & 0xFFFFFF);
        const int percent = int(random() % 5) * 25;
        ASSERT_EQ(ScaleColour({code}, percent).code, expected(code, percent).code) << code << " at " << percent;
    }
}
