#include "display/ScaleColour.h"
#include "display/StatusLightControl.h"

#include "DisplayFixture.h"
#include "support/Properties.h"

#include <gtest/gtest.h>

using namespace zan;
using display::ScaleColour;
using display::StatusLightControl;
using test::FakeTime;
using values::Colour;
using values::Variant;

using zan::test::put;

namespace {

using Stage = test::Stage<StatusLightControl>;

QColor plain(Colour colour)
{
    return QColor(colour.code & 255, colour.code >> 8 & 255, colour.code >> 16 & 255);
}

/// The light without text, as the rule has it: the fill, then five outlines from outside in.
QImage expectedLight(const Stage& stage, Colour colour, const QColor& fill, int scale)
{
    QImage image = test::backdrop(stage.surface.size(), scale);
    const QRect bounds = stage.control->bounds();
    test::Canvas canvas(image, bounds);
    canvas.box(0, 0, bounds.width(), bounds.height(), fill);
    for (int i = 0; i <= 4; ++i)
        canvas.frame(i, i, bounds.width() - i, bounds.height() - i, plain(ScaleColour(colour, i * 25)));
    return image;
}

void clearCaptions(StatusLightControl& light)
{
    light.setTrueCaption(QString());
    put(light, "FalseCaption", QString());
}

constexpr QSize Sizes[] = {{1, 1},  {2, 1},   {1, 7},   {3, 3},   {5, 2},   {8, 9},
                           {9, 30}, {10, 10}, {11, 11}, {65, 17}, {140, 90}};

} // namespace

TEST(StatusLightPicture, FillAndBevelAreDrawnPixelByPixelAtEverySizeAndScale)
{
    FakeTime time;
    for (const QSize size : Sizes) {
        for (const int scale : {1, 2}) {
            for (const Colour colour :
                 {Colour{255}, values::rgb(0, 200, 0), values::rgb(0, 0, 255), values::rgb(90, 91, 92)}) {
                Stage stage(size);
                clearCaptions(*stage.control);
                stage.control->setTrueColour(colour);
                stage.control->Refresh();
                EXPECT_EQ(
                    test::firstDifference(stage.picture(scale), expectedLight(stage, {128}, plain({128}), scale)),
                    "")
                    << "false, " << size.width() << " by " << size.height() << " at " << scale;
                stage.control->setValue(Variant(true));
                EXPECT_EQ(
                    test::firstDifference(stage.picture(scale), expectedLight(stage, colour, plain(colour), scale)),
                    "")
                    << "true, " << size.width() << " by " << size.height() << " at " << scale;
                put(*stage.control, "Flash", true);
                const Colour half = ScaleColour(colour, 50);
                EXPECT_EQ(
                    test::firstDifference(stage.picture(scale), expectedLight(stage, half, plain(half), scale)), "")
                    << "half, " << size.width() << " by " << size.height() << " at " << scale;
                time.pass(1000);
                EXPECT_EQ(
                    test::firstDifference(stage.picture(scale), expectedLight(stage, colour, plain(colour), scale)),
                    "")
                    << "bright, " << size.width() << " by " << size.height() << " at " << scale;
            }
        }
    }
}

TEST(StatusLightPicture, RightAndLowerEdgeOfTheOutermostOutlineLieOutside)
{
    Stage stage({40, 30});
    clearCaptions(*stage.control);
    stage.control->setValue(Variant(true));
    EXPECT_EQ(stage.pixel(0, 15), QColor(0, 0, 0));
    EXPECT_EQ(stage.pixel(1, 15), QColor(64, 0, 0));
    EXPECT_EQ(stage.pixel(39, 15), QColor(64, 0, 0));
    EXPECT_EQ(stage.pixel(38, 15), QColor(128, 0, 0));
    EXPECT_EQ(stage.pixel(20, 29), QColor(64, 0, 0));
    EXPECT_EQ(stage.pixel(20, 0), QColor(0, 0, 0));
    EXPECT_EQ(stage.pixel(20, 15), QColor(255, 0, 0));
}

TEST(StatusLightPicture, BlueLightIsBlueInsideAndGreenInItsBevelAndItsHalf)
{
    Stage stage({40, 30});
    clearCaptions(*stage.control);
    stage.control->setTrueColour(values::rgb(0, 0, 255));
    stage.control->setValue(Variant(true));
    EXPECT_EQ(stage.pixel(20, 15), QColor(0, 0, 255));
    EXPECT_EQ(stage.pixel(4, 15), QColor(0, 255, 0));
    put(*stage.control, "Flash", true);
    EXPECT_EQ(stage.pixel(20, 15), QColor(0, 255, 0));
}

TEST(StatusLightPicture, SystemColourFillsAsTheSystemHasItWithTheArithmeticsBevel)
{
    Stage stage({40, 30});
    clearCaptions(*stage.control);
    const Colour face = values::ButtonFace;
    stage.control->setTrueColour(face);
    stage.control->setValue(Variant(true));
    const QColor fill = values::toQColor(face, stage.surface.palette());
    EXPECT_EQ(test::firstDifference(stage.picture(), expectedLight(stage, face, fill, 1)), "");
}

TEST(StatusLightPicture, BorderTakesOnePixelAllRound)
{
    Stage stage({40, 30});
    clearCaptions(*stage.control);
    put(*stage.control, "BorderStyle", 1);
    QImage expected = test::backdrop(stage.surface.size(), 1);
    {
        test::Canvas outside(expected, stage.control->bounds());
        outside.frame(0, 0, 39, 29, stage.surface.palette().color(QPalette::WindowText));
    }
    test::Canvas inside(expected, stage.control->bounds().adjusted(1, 1, -1, -1));
    inside.box(0, 0, 38, 28, QColor(128, 0, 0));
    for (int i = 0; i <= 4; ++i)
        inside.frame(i, i, 38 - i, 28 - i, plain(ScaleColour({128}, i * 25)));
    EXPECT_EQ(test::firstDifference(stage.picture(), expected), "");
}

TEST(StatusLightPicture, CaptionStandsInTheMiddle)
{
    for (const int scale : {1, 2}) {
        Stage stage({121, 41});
        put(*stage.control, "FalseCaption", QString());
        stage.control->Refresh();
        const QImage without = stage.picture(scale);
        put(*stage.control, "FalseCaption", QStringLiteral("HH"));
        stage.control->Refresh();
        const QImage with = stage.picture(scale);
        QRect ink;
        for (int y = 0; y < with.height(); ++y)
            for (int x = 0; x < with.width(); ++x)
                if (with.pixel(x, y) != without.pixel(x, y))
                    ink |= QRect(x, y, 1, 1);
        ASSERT_FALSE(ink.isEmpty());
        const QRect bounds = stage.control->bounds();
        EXPECT_NEAR(ink.center().x(), (bounds.left() + bounds.width() / 2) * scale, 1.5 * scale);
        EXPECT_NEAR(ink.center().y(), (bounds.top() + bounds.height() / 2) * scale, 2.0 * scale);
    }
}

TEST(StatusLightPicture, TextIsCutAtTheControl)
{
    Stage stage({30, 8});
    put(*stage.control, "FalseCaption", QStringLiteral("much longer than the light is wide"));
    stage.control->Refresh();
    const QImage shown = stage.picture();
    const QRect bounds = stage.control->bounds();
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
            if (!bounds.contains(x, y)) {
                ASSERT_EQ(shown.pixelColor(x, y), QColor(10, 200, 220)) << x << ", " << y;
            }
}
