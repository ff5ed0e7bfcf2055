#include "values/Colour.h"
#include "values/Twips.h"

#include <QPalette>

#include <gtest/gtest.h>

#include <limits>

namespace zan::values {

TEST(Colour, RedIsInTheLowByteAndBlueInTheHighOne)
{
    EXPECT_EQ(rgb(1, 2, 3).code, 0x030201);
    EXPECT_EQ(toQColor(rgb(10, 20, 30), QPalette()), QColor(10, 20, 30));
    EXPECT_EQ(fromQColor(QColor(10, 20, 30)), rgb(10, 20, 30));
    EXPECT_EQ(rgb(255, 255, 255).code, 16777215);
}

TEST(Colour, AColourWithAHighBitIsASystemColour)
{
    EXPECT_EQ(ButtonFace.code, -2147483633);
    EXPECT_TRUE(ButtonFace.isSystem());
    EXPECT_FALSE(rgb(255, 0, 0).isSystem());
}

TEST(Colour, SystemColoursComeFromThePalette)
{
    QPalette palette;
    palette.setColor(QPalette::Base, QColor(1, 1, 1));
    palette.setColor(QPalette::Text, QColor(2, 2, 2));
    palette.setColor(QPalette::Button, QColor(3, 3, 3));
    palette.setColor(QPalette::ButtonText, QColor(4, 4, 4));
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(5, 5, 5));
    EXPECT_EQ(toQColor(WindowBackground, palette), QColor(1, 1, 1));
    EXPECT_EQ(toQColor(WindowText, palette), QColor(2, 2, 2));
    EXPECT_EQ(toQColor(ButtonFace, palette), QColor(3, 3, 3));
    EXPECT_EQ(toQColor(ButtonText, palette), QColor(4, 4, 4));
    EXPECT_EQ(toQColor(systemColour(17), palette), QColor(5, 5, 5));
}

TEST(Colour, AnUnknownSystemColourIsBlackAndEveryKnownOneIsOpaque)
{
    const QPalette palette;
    EXPECT_EQ(toQColor(systemColour(25), palette), QColor(0, 0, 0));
    EXPECT_EQ(toQColor(systemColour(255), palette), QColor(0, 0, 0));
    EXPECT_EQ(toQColor(Colour{-1}, palette), QColor(0, 0, 0));
    for (int index = 0; index <= 24; ++index)
        EXPECT_TRUE(toQColor(systemColour(index), palette).isValid()) << index;
}

TEST(Twips, FifteenMakeAPixelAndTheNearestPixelCounts)
{
    EXPECT_EQ(twipsToPixels(0), 0);
    EXPECT_EQ(twipsToPixels(15), 1);
    EXPECT_EQ(twipsToPixels(7.4), 0);
    EXPECT_EQ(twipsToPixels(7.5), 1);
    EXPECT_EQ(twipsToPixels(-15), -1);
    EXPECT_EQ(twipsToPixels(-7.5), 0);
    EXPECT_EQ(twipsToPixels(-8), -1);
    EXPECT_EQ(twipsToPixels(-22.5), -1);
    EXPECT_EQ(twipsToPixels(-22.6), -2);
    EXPECT_EQ(pixelsToTwips(100), 1500.0f);
}

TEST(Twips, MeasuresFarOutsideAreClampedAndNotANumberIsZero)
{
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(twipsToPixels(infinity), 16'000'000);
    EXPECT_EQ(twipsToPixels(-infinity), -16'000'000);
    EXPECT_EQ(twipsToPixels(1e300), 16'000'000);
    EXPECT_EQ(twipsToPixels(std::numeric_limits<double>::quiet_NaN()), 0);
}

} // namespace zan::values
