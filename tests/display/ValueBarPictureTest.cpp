#include "display/ScaleColour.h"
#include "display/ValueBarControl.h"

#include "DisplayFixture.h"
#include "support/Properties.h"
#include "surface/text/FontFace.h"
#include "surface/text/TextPainter.h"
#include "values/Format.h"

#include <gtest/gtest.h>

#include <array>

using namespace zan;
using display::ScaleColour;
using display::ValueBarControl;
using test::FakeTime;
using values::Colour;
using values::Variant;

using zan::test::colourOf;
using zan::test::flagOf;
using zan::test::numberOf;
using zan::test::put;

namespace {

using Stage = test::Stage<ValueBarControl>;

constexpr Colour Back = values::rgb(240, 240, 200);
constexpr Colour Fore = values::rgb(0, 0, 120);
const QColor Grey(128, 128, 128);

QColor plain(Colour colour)
{
    return QColor(colour.code & 255, colour.code >> 8 & 255, colour.code >> 16 & 255);
}

/// Nearest whole number, half to even, written out.
int whole(double place)
{
    if (std::abs(place) > 1e6)
        return place > 0 ? 1'000'000 : -1'000'000;
    const double below = std::floor(place);
    const double rest = place - below;
    const int low = int(below);
    if (rest != 0.5)
        return rest < 0.5 ? low : low + 1;
    return low % 2 == 0 ? low : low + 1;
}

/// The bar drawn step by step after the rules, into a picture of the stage.
class ExpectedBar
{
public:
    /// `before` is what a control narrower than its markers goes on using.
    ExpectedBar(const Stage& stage, int scale, const QRect& before = {})
        : m_bar(*stage.control)
        , m_image(test::backdrop(stage.surface.size(), scale))
        , m_palette(stage.surface.palette())
        , m_bounds(stage.control->bounds())
        , m_inner(before)
    {
        layOut();
    }

    QImage draw()
    {
        {
            test::Canvas surface(m_image, m_bounds);
            surface.box(0, 0, m_bounds.width(), m_bounds.height(), plain(Back));
            drawOnSurface(surface);
        }
        test::Canvas inner(m_image, m_inner.translated(m_bounds.topLeft()) & m_bounds);
        inner.box(0, 0, m_inner.width(), m_inner.height(), m_palette.color(QPalette::Base));
        drawInside(inner);
        return m_image;
    }

private:
    void layOut()
    {
        int w = 0;
        if (flagOf(m_bar, "ShowScale"))
            w = surface::TextPainter()
                    .measure(values::format(Variant(numberOf(m_bar, "Max")), u"0"), m_bar.font()->face(), false)
                    .width();
        if (m_bounds.width() - w - 20 >= 0)
            m_inner = QRect(w + 10, 0, m_bounds.width() - w - 20, m_bounds.height());
    }
    double place(double value) const
    {
        const double height = m_inner.height();
        return height -
               (value - numberOf(m_bar, "Min")) * height / (numberOf(m_bar, "Max") - numberOf(m_bar, "Min"));
    }
    bool drawable() const
    {
        return numberOf(m_bar, "Max") != numberOf(m_bar, "Min") &&
               !(flagOf(m_bar, "ShowScale") && numberOf(m_bar, "TickCount") == 0);
    }
    void drawOnSurface(test::Canvas& canvas)
    {
        if (flagOf(m_bar, "ShowScale") && numberOf(m_bar, "TickCount") != 0)
            drawScale(canvas);
        if (!drawable())
            return;
        if (numberOf(m_bar, "HighLimit") > numberOf(m_bar, "Min"))
            drawMarkers(canvas, numberOf(m_bar, "HighLimit"));
        if (numberOf(m_bar, "LowLimit") >= numberOf(m_bar, "Min"))
            drawMarkers(canvas, numberOf(m_bar, "LowLimit"));
    }
    void drawScale(test::Canvas& canvas)
    {
        const double h = m_inner.height();
        const double pitch = h / numberOf(m_bar, "TickCount");
        const double step = (numberOf(m_bar, "Max") - numberOf(m_bar, "Min")) / numberOf(m_bar, "TickCount");
        surface::FontFace& face = m_bar.font()->face();
        surface::TextStyle style;
        style.colour = plain(Fore);
        for (int i = 0; i <= numberOf(m_bar, "TickCount") - 1; ++i) {
            const double y = h - i * pitch - 1;
            canvas.box(m_inner.left() - 20, whole(y), m_inner.left(), whole(y), plain(Fore));
            canvas.painter().setClipRect(m_bounds);
            const QRect text(m_bounds.left(), m_bounds.top() + whole(y - face.height() + 2), 1000, face.height());
            m_text.draw(canvas.painter(), text, values::format(Variant(numberOf(m_bar, "Min") + i * step), u"0"),
                        face, style);
        }
    }
    void drawMarkers(test::Canvas& canvas, double limit)
    {
        drawMarker(canvas, m_inner.left(), whole(place(limit)), 10, 10, 2);
        drawMarker(canvas, m_inner.left() + m_inner.width(), whole(place(limit)), 10, 10, 1);
    }
    void drawMarker(test::Canvas& canvas, int x, int y, int width, int height, int direction)
    {
        const float slope = float(height) / float(width);
        for (int i = direction == 2 ? x - width : x; i <= (direction == 2 ? x : x + width); ++i) {
            const int d = direction == 2 ? x - i : i - x;
            const int s = std::max(2, whole(double(float(d) * slope)));
            // A line does not draw its end point: the core stops short of the upper edge, and an edge is one pixel.
            canvas.box(i, whole(y + s / 2.0), i, whole(y - s / 2.0) + 1, plain(Fore));
            canvas.pixel(i, whole(y + s / 2.0), Grey);
            canvas.pixel(i, whole(y - s / 2.0), Grey);
        }
    }
    Colour zoneColour() const
    {
        const bool low = numberOf(m_bar, "Value") < numberOf(m_bar, "LowLimit");
        if (!low && !(numberOf(m_bar, "Value") > numberOf(m_bar, "HighLimit")))
            return colourOf(m_bar, "NormalColour");
        const Colour colour = low ? colourOf(m_bar, "LowColour") : colourOf(m_bar, "HighColour");
        return flagOf(m_bar, "Flash") && half ? ScaleColour(colour, 50) : colour;
    }
    void drawInside(test::Canvas& canvas)
    {
        if (!drawable())
            return;
        const int width = m_inner.width();
        canvas.box(0, m_inner.height(), width, whole(place(numberOf(m_bar, "Value"))), plain(zoneColour()));
        const QColor lines = m_palette.color(QPalette::Text);
        if (numberOf(m_bar, "HighLimit") > numberOf(m_bar, "Min"))
            canvas.box(0, whole(place(numberOf(m_bar, "HighLimit"))), width,
                       whole(place(numberOf(m_bar, "HighLimit"))), lines);
        if (numberOf(m_bar, "LowLimit") >= numberOf(m_bar, "Min"))
            canvas.box(0, whole(place(numberOf(m_bar, "LowLimit"))), width,
                       whole(place(numberOf(m_bar, "LowLimit"))), lines);
    }

    ValueBarControl& m_bar;
    QImage m_image;
    QPalette m_palette;
    QRect m_bounds;
    QRect m_inner;
    surface::TextPainter m_text;

public:
    bool half = true; ///< the flash phase
};

struct Scene
{
    const char* name;
    void (*apply)(ValueBarControl& bar);
};

// Each row sets what it needs on a new bar; those that raise on the way do so because a property write must.
const std::array Scenes{
    Scene{"defaults", [](ValueBarControl&) {}},
    Scene{"value equal to the high limit is normal", [](ValueBarControl& bar) { put(bar, "Value", 75); }},
    Scene{"high", [](ValueBarControl& bar) { put(bar, "Value", 75.01); }},
    Scene{"value equal to the low limit is normal", [](ValueBarControl& bar) { put(bar, "Value", 25); }},
    Scene{"low", [](ValueBarControl& bar) { put(bar, "Value", 24.9); }},
    Scene{"above the maximum", [](ValueBarControl& bar) { put(bar, "Value", 250); }},
    Scene{"at the maximum", [](ValueBarControl& bar) { put(bar, "Value", 100); }},
    Scene{"below the minimum", [](ValueBarControl& bar) { put(bar, "Value", -50); }},
    Scene{"at the minimum", [](ValueBarControl& bar) { put(bar, "Value", 0); }},
    Scene{"far away", [](ValueBarControl& bar) { put(bar, "Value", 1e300); }},
    Scene{"infinite", [](ValueBarControl& bar) { put(bar, "Value", std::numeric_limits<double>::infinity()); }},
    Scene{"limits crossed",
          [](ValueBarControl& bar) {
              put(bar, "LowLimit", 80);
              put(bar, "HighLimit", 20);
              put(bar, "LowColour", values::rgb(0, 0, 200));
          }},
    Scene{"low limit at the minimum is drawn",
          [](ValueBarControl& bar) {
              put(bar, "LowLimit", 0);
              put(bar, "HighLimit", 0);
          }},
    Scene{"limits below the minimum are not drawn",
          [](ValueBarControl& bar) {
              put(bar, "LowLimit", -1);
              put(bar, "HighLimit", -1);
          }},
    Scene{"limits above the maximum",
          [](ValueBarControl& bar) {
              put(bar, "LowLimit", 101);
              put(bar, "HighLimit", 1e9);
          }},
    Scene{"limits side by side",
          [](ValueBarControl& bar) {
              put(bar, "LowLimit", 50);
              put(bar, "HighLimit", 53);
          }},
    Scene{"minimum above the maximum",
          [](ValueBarControl& bar) {
              put(bar, "Max", -20);
              put(bar, "Value", -5);
          }},
    Scene{"flashing high",
          [](ValueBarControl& bar) {
              put(bar, "Flash", true);
              put(bar, "HighColour", values::rgb(200, 100, 0));
              put(bar, "Value", 90);
          }},
    Scene{"scale", [](ValueBarControl& bar) { put(bar, "ShowScale", true); }},
    Scene{"scale of seven",
          [](ValueBarControl& bar) {
              put(bar, "ShowScale", true);
              put(bar, "TickCount", 7);
              put(bar, "Max", 3);
              put(bar, "Min", -3);
              put(bar, "Value", 1);
          }},
    Scene{"scale of a negative number of ticks",
          [](ValueBarControl& bar) {
              put(bar, "ShowScale", true);
              put(bar, "TickCount", -4);
          }},
};

void prepare(Stage& stage)
{
    put(*stage.control, "BackColor", Back);
    put(*stage.control, "ForeColor", Fore);
}

} // namespace

TEST(ValueBarPicture, IsDrawnPixelByPixelInEveryStateSizeAndScale)
{
    FakeTime time;
    const QSize sizes[] = {{20, 1}, {21, 5}, {25, 40}, {31, 33}, {60, 101}, {113, 337}};
    for (const Scene& scene : Scenes) {
        for (const QSize size : sizes) {
            for (const int scale : {1, 2}) {
                Stage stage({80, 80});
                prepare(stage);
                scene.apply(*stage.control);
                stage.resize(size + QSize(0, 1)); // a change of size, whatever the size
                stage.resize(size);
                // Where the new size has no room for scale and markers the bar stays as the first size had it.
                ExpectedBar expected(stage, scale, QRect(10, 0, 60, 80));
                EXPECT_EQ(test::firstDifference(stage.picture(scale), expected.draw()), "")
                    << scene.name << ", " << size.width() << " by " << size.height() << " at " << scale;
            }
        }
    }
}

TEST(ValueBarPicture, BrightHalfOfTheFlashShowsTheFullColour)
{
    FakeTime time;
    Stage stage({60, 100});
    prepare(stage);
    put(*stage.control, "Flash", true);
    put(*stage.control, "Value", 10);
    (void)stage.picture();
    time.pass(1000);
    ExpectedBar expected(stage, 1);
    expected.half = false;
    EXPECT_EQ(test::firstDifference(stage.picture(), expected.draw()), "");
}

TEST(ValueBarPicture, MarkersColumnByColumnWithAnEdgeOfOnePixelAboveAndBelow)
{
    Stage stage({60, 100});
    prepare(stage);
    put(*stage.control, "HighLimit", 1000); // out of sight
    put(*stage.control, "LowLimit", 50);
    put(*stage.control, "Value", 0);
    // Rows of the tip and of the widest column, counted from the limit's line at row 50.
    const auto rows = [&](int x) {
        std::string text;
        for (int y = 42; y <= 58; ++y) {
            const QColor colour = stage.pixel(x, y);
            text += colour == plain(Fore) ? '#' : colour == Grey ? '+' : '.';
        }
        return text;
    };
    EXPECT_EQ(rows(50), ".......+#+......."); // the tip at the right of the bar
    EXPECT_EQ(rows(51), ".......+#+.......");
    EXPECT_EQ(rows(54), "......+###+......");
    EXPECT_EQ(rows(59), "....+#######+...."); // halves go to the even row
    EXPECT_EQ(rows(0), "...+#########+...");
    EXPECT_EQ(rows(9), rows(50));
}

TEST(ValueBarPicture, NumbersStopOneShortOfTheMaximum)
{
    Stage stage({120, 300});
    prepare(stage);
    put(*stage.control, "ShowScale", true);
    stage.resize({120, 301});
    const int tick = stage.control->barRectangle().left() - 3;
    int ticks = 0;
    for (int y = 0; y < 301; ++y)
        ticks += stage.pixel(tick, y) == plain(Fore) && stage.pixel(tick - 4, y) == plain(Fore);
    EXPECT_GE(ticks, 10);
    EXPECT_EQ(stage.pixel(tick, 0), plain(Back)); // none at Max
}

TEST(ValueBarPicture, ScaleTurnedOnIsDrawnAtOnceAndMovesTheBarAtTheNextResizing)
{
    Stage stage({120, 300});
    prepare(stage);
    EXPECT_EQ(stage.control->barRectangle(), QRect(10, 0, 100, 300));
    const QImage before = stage.picture();
    put(*stage.control, "ShowScale", true);
    EXPECT_EQ(stage.control->barRectangle(), QRect(10, 0, 100, 300));
    EXPECT_NE(test::firstDifference(stage.picture(), before), "");
    EXPECT_EQ(stage.pixel(0, 299), plain(Fore)); // the tick of the minimum begins left of the control
    stage.resize({120, 301});
    EXPECT_GT(stage.control->barRectangle().left(), 15);
    EXPECT_EQ(stage.control->barRectangle().right() + 1, 110);
    put(*stage.control, "ShowScale", false);
    EXPECT_GT(stage.control->barRectangle().left(), 15);
}

TEST(ValueBarPicture, ControlNarrowerThanItsMarkersKeepsTheBarWhereItWas)
{
    for (const QSize size : {QSize(19, 30), QSize(9, 9), QSize(3, 70), QSize(1, 1)}) {
        for (const int scale : {1, 2}) {
            Stage stage({44, 50});
            prepare(stage);
            stage.resize(size);
            EXPECT_EQ(stage.control->barRectangle(), QRect(10, 0, 24, 50));
            ExpectedBar expected(stage, scale, QRect(10, 0, 24, 50));
            EXPECT_EQ(test::firstDifference(stage.picture(scale), expected.draw()), "")
                << size.width() << " by " << size.height() << " at " << scale;
        }
    }
}

TEST(ValueBarPicture, DrawingEndsWhereItDividesByZero)
{
    for (const bool withScale : {false, true}) {
        Stage stage({120, 300});
        prepare(stage);
        put(*stage.control, "ShowScale", withScale);
        EXPECT_THROW(put(*stage.control, "Max", 0), values::RuntimeError);
        stage.resize({120, 301});
        EXPECT_EQ(test::firstDifference(stage.picture(), ExpectedBar(stage, 1).draw()), "");
    }
    Stage stage({120, 300});
    prepare(stage);
    put(*stage.control, "ShowScale", true);
    EXPECT_THROW(put(*stage.control, "TickCount", 0), values::RuntimeError);
    EXPECT_EQ(stage.pixel(60, 299), stage.surface.palette().color(QPalette::Base));
    EXPECT_EQ(stage.pixel(0, 299), plain(Back)); // no tick, no marker
    EXPECT_EQ(stage.pixel(0, 75), plain(Back));
}

TEST(ValueBarPicture, TransparentBarShowsWhatLiesBehindIt)
{
    Stage stage({60, 100});
    prepare(stage);
    put(*stage.control, "BackStyle", 0);
    EXPECT_EQ(stage.pixel(2, 2), QColor(10, 200, 220));
    EXPECT_EQ(stage.pixel(30, 2), stage.surface.palette().color(QPalette::Base));
}

TEST(ValueBarPicture, BorderTakesOnePixelAllRound)
{
    Stage stage({60, 100});
    prepare(stage);
    put(*stage.control, "BorderStyle", 1);
    EXPECT_EQ(stage.control->barRectangle(), QRect(10, 0, 38, 98));
    EXPECT_EQ(stage.pixel(0, 50), stage.surface.palette().color(QPalette::WindowText));
    EXPECT_EQ(stage.pixel(59, 99), stage.surface.palette().color(QPalette::WindowText));
    EXPECT_EQ(stage.pixel(1, 1), plain(Back));
    EXPECT_EQ(stage.pixel(11, 1), stage.surface.palette().color(QPalette::Base));
}
