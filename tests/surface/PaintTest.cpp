#include "surface/SurfaceFixture.h"
#include "surface/host/Picture.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/PictureBox.h"
#include "surface/intrinsic/ProgressBar.h"
#include "surface/intrinsic/Shape.h"
#include "surface/text/TextPainter.h"
#include "values/DosCharset.h"

#include "support/ErrorOf.h"
#include "support/Properties.h"
#include "surface/text/FontFace.h"

#include <QPainter>

namespace zan::surface::tests {

using test::put;

using test::errorOf;

namespace {

const Colour Red = values::rgb(255, 0, 0);
const Colour Green = values::rgb(0, 255, 0);
const Colour Blue = values::rgb(0, 0, 255);
const Colour Black = values::rgb(0, 0, 0);
const Colour White = values::rgb(255, 255, 255);

/// Bounds of everything in the area that does not have the colour; empty when all of it has.
QRect inkIn(const QImage& image, const QRect& area, QColor ground)
{
    QRect ink;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixelColor(x, y) != ground)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

} // namespace

class Painting : public SurfaceTest
{
protected:
    Painting() { surface->setBackColor(White); }

    Ref<Label> label(const QRect& pixels, const QString& caption)
    {
        const auto made = showNew<Label>(QStringLiteral("Label"), pixels);
        made->font()->setName(testFamily());
        put(*made, "ForeColor", Black);
        put(*made, "BackColor", White);
        made->setCaption(caption);
        return made;
    }
};

TEST_F(Painting, TheSurfaceIsFilledWithItsColourAndFramedWhenItHasABorder)
{
    surface->setBackColor(Green);
    EXPECT_EQ(pixel(0, 0), QColor(0, 255, 0));
    surface->setBorderStyle(1);
    EXPECT_EQ(pixel(0, 0), QColor(Qt::black));
    EXPECT_EQ(pixel(599, 399), QColor(Qt::black));
    EXPECT_EQ(pixel(1, 1), QColor(0, 255, 0));
    surface->setBackColor(values::ButtonFace);
    EXPECT_EQ(pixel(5, 5), QColor(225, 225, 225)) << "system colours come from the palette";
}

TEST_F(Painting, ABackgroundPictureLiesTopLeftUnderTheControls)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    surface->setPicture(values::make<Picture>(image));
    put(*label({20, 10, 60, 10}, {}), "BackColor", Blue);
    const QImage seen = picture();
    EXPECT_EQ(seen.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(39, 29), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(40, 0), QColor(Qt::white));
    EXPECT_EQ(seen.pixelColor(25, 15), QColor(Qt::blue));
    surface->setPicture({});
    EXPECT_EQ(pixel(0, 0), QColor(Qt::white));
}

TEST_F(Painting, AnOpaqueLabelFillsExactlyItsRectangle)
{
    const auto made = label({10, 20, 30, 12}, {});
    put(*made, "BackColor", Red);
    const QImage seen = picture();
    EXPECT_EQ(inkIn(seen, seen.rect(), Qt::white), QRect(10, 20, 30, 12));
    put(*made, "BackStyle", 0);
    EXPECT_EQ(inkIn(picture(), seen.rect(), Qt::white), QRect()) << "transparent";
}

TEST_F(Painting, CaptionsStandLeftRightOrInTheMiddle)
{
    const auto made = label({100, 50, 200, 20}, QStringLiteral("HHH"));
    const int advance = qRound(3 * made->font()->face().glyph('H').advance);
    const auto ink = [&](std::int16_t alignment) {
        put(*made, "Alignment", alignment);
        return inkIn(picture(), {100, 50, 200, 20}, Qt::white);
    };
    const QRect left = ink(0);
    const QRect right = ink(1);
    const QRect centre = ink(2);
    EXPECT_NEAR(left.left(), 100, 2);
    EXPECT_NEAR(right.right(), 299, 2);
    EXPECT_NEAR(centre.center().x(), 199, 2);
    EXPECT_NEAR(left.width(), advance, 3);
    EXPECT_EQ(left.size(), right.size());
    EXPECT_EQ(left.top(), right.top());
}

TEST_F(Painting, NothingOfALabelIsDrawnOutsideIt)
{
    label({100, 50, 40, 9}, QStringLiteral("jWWWWWWWWWWWWWWgj"));
    const QImage seen = picture();
    const QRect ink = inkIn(seen, seen.rect(), Qt::white);
    EXPECT_TRUE(QRect(100, 50, 40, 9).contains(ink));
    EXPECT_GE(ink.width(), 36);
}

TEST_F(Painting, ALabelBreaksItsLinesAtBlanksAndAtLineEnds)
{
    const auto made = label({0, 0, 60, 60}, QStringLiteral("HHHH HHHH HHHH"));
    const int line = made->font()->face().height();
    const auto lines = [&] {
        const QImage seen = picture();
        int count = 0;
        while (count < 5 && !inkIn(seen, {0, count * line, 60, line}, Qt::white).isEmpty())
            ++count;
        return count;
    };
    EXPECT_EQ(lines(), 3);
    made->setCaption(QStringLiteral("H\r\nH"));
    EXPECT_EQ(lines(), 2);
    made->setCaption(QStringLiteral("H\nH\rH"));
    EXPECT_EQ(lines(), 3);
    made->setCaption(QStringLiteral("HHHHHHHHHHHHHHHHH"));
    EXPECT_EQ(lines(), 1) << "a word stays in one piece";
}

TEST_F(Painting, AMnemonicIsUnderlinedAndItsMarkNotShown)
{
    const auto marked = label({0, 0, 80, 20}, QStringLiteral("&HH"));
    const auto plain = label({0, 40, 80, 20}, QStringLiteral("HH"));
    QImage seen = picture();
    const QRect markedInk = inkIn(seen, {0, 0, 80, 20}, Qt::white);
    const QRect plainInk = inkIn(seen, {0, 40, 80, 20}, Qt::white).translated(0, -40);
    const QRect letters(0, 0, 80, plainInk.bottom() + 1);
    EXPECT_EQ(inkIn(seen, letters, Qt::white), plainInk) << "the letters stand where they stand without it";
    EXPECT_EQ(markedInk.right(), plainInk.right());
    EXPECT_EQ(markedInk.bottom(), plainInk.bottom() + 2) << "the line under the letter";
    put(*marked, "UseMnemonic", false);
    EXPECT_GT(inkIn(picture(), {0, 0, 80, 20}, Qt::white).right(), plainInk.right());
    put(*marked, "UseMnemonic", true);
    marked->setCaption(QStringLiteral("a&&b"));
    put(*plain, "UseMnemonic", false);
    plain->setCaption(QStringLiteral("a&b"));
    seen = picture();
    EXPECT_EQ(inkIn(seen, {0, 0, 80, 20}, Qt::white), inkIn(seen, {0, 40, 80, 20}, Qt::white).translated(0, -40));
    marked->setCaption(QStringLiteral("end&"));
    picture(); // a mark with nothing behind it
}

TEST_F(Painting, TextsThatNeedLayoutAreDrawnInsideTheirLabelToo)
{
    for (const QString& text : {QStringLiteral("שלום"), QStringLiteral("e\u0301\u0301"), QStringLiteral("水位"),
                                QStringLiteral("😀"), QStringLiteral("\ufffe\u200d")}) {
        const auto made = label({50, 50, 80, 20}, text);
        const QImage seen = picture();
        EXPECT_TRUE(QRect(50, 50, 80, 20).contains(inkIn(seen, seen.rect(), Qt::white)) ||
                    inkIn(seen, seen.rect(), Qt::white).isEmpty());
        made->setVisible(false);
    }
    label({50, 50, 80, 20}, QStringLiteral("שלום"));
    EXPECT_FALSE(inkIn(picture(), {50, 50, 80, 20}, Qt::white).isEmpty());
}

TEST_F(Painting, AnAutoSizeLabelTakesTheSizeOfItsText)
{
    const auto made = label({10, 10, 100, 100}, QStringLiteral("HHHH"));
    FontFace& face = made->font()->face();
    put(*made, "AutoSize", true);
    EXPECT_EQ(made->bounds().height(), face.height());
    EXPECT_EQ(made->bounds().width(), int(std::ceil(4 * face.glyph('H').advance)));
    made->setCaption(QStringLiteral("H\nH"));
    EXPECT_EQ(made->bounds().height(), 2 * face.height());
    put(*made, "BorderStyle", 1);
    EXPECT_EQ(made->bounds().height(), 2 * face.height() + 4);
    put(*made, "BorderStyle", 0);
    put(*made, "WordWrap", true);
    made->setWidth(40 * 15);
    made->setCaption(QStringLiteral("HHH HHH HHH"));
    EXPECT_EQ(made->bounds().width(), 40);
    EXPECT_EQ(made->bounds().height(), 3 * face.height());
    const int before = made->bounds().height();
    made->font()->setSize({240000});
    EXPECT_GT(made->bounds().height(), before) << "a font that grows makes its label grow";
    put(*made, "WordWrap", false);
    put(*made, "Alignment", 1);
    made->setCaption(QStringLiteral("a"));
    const float right = made->left() + made->width();
    made->setCaption(QStringLiteral("aaaa"));
    EXPECT_FLOAT_EQ(made->left() + made->width(), right) << "a right-aligned label keeps its right edge";
}

TEST_F(Painting, ADisabledLabelIsGreyed)
{
    const auto made = label({0, 0, 80, 20}, QStringLiteral("HHHH"));
    put(*made, "ForeColor", Red);
    made->setEnabled(false);
    const QImage seen = picture();
    for (int x = 0; x < 80; ++x) {
        const QColor colour = seen.pixelColor(x, 6);
        EXPECT_LE(std::abs(colour.red() - colour.green()), 40) << "no red at " << x;
    }
}

TEST_F(Painting, DosCharactersAreShownAndKeptAsTheyWere)
{
    EXPECT_EQ(values::DosCharset::shown(QStringLiteral("A\u00c4\u00b3\u00f8")), QStringLiteral("A─│°"));
    for (char16_t character = 0x80; character <= 0xff; ++character) {
        const QString text = QChar(character);
        EXPECT_EQ(values::DosCharset::stored(values::DosCharset::shown(text)), text) << int(character);
    }
    const auto made = label({0, 0, 120, 20}, QStringLiteral("\u00db\u00db\u00db")); // three full blocks
    made->font()->setName(QStringLiteral("DejaVu Sans Mono"));
    made->font()->setCharset(255);
    EXPECT_EQ(made->caption(), QStringLiteral("\u00db\u00db\u00db"));
    const QRect ink = inkIn(picture(), {0, 0, 120, 20}, Qt::white);
    EXPECT_GE(ink.height(), 11) << "blocks fill the line";
    made->font()->setCharset(0);
    EXPECT_NE(inkIn(picture(), {0, 0, 120, 20}, Qt::white), ink);
}

TEST_F(Painting, UnderlinedAndStruckTextHasItsLinesAtEveryScale)
{
    surface->resize(200, 60);
    const auto made = label({10, 10, 180, 30}, QStringLiteral("n    n")); // nothing but the lines in the middle
    made->font()->setSize({180000});
    put(*made, "ForeColor", Red);
    const int middle = 10 + qRound(made->font()->face().glyph('n').advance * 1.6F);
    const auto lines = [&](int scale) {
        QImage image(200 * scale, 60 * scale, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        surface->render(&image);
        int count = 0;
        for (int y = 1; y < image.height(); ++y) {
            count += image.pixelColor(middle * scale, y) == QColor(Qt::red) &&
                     image.pixelColor(middle * scale, y - 1) != QColor(Qt::red);
        }
        return count;
    };
    for (const int scale : {1, 2}) {
        made->font()->setUnderline(false);
        made->font()->setStrikethrough(false);
        EXPECT_EQ(lines(scale), 0);
        made->font()->setUnderline(true);
        EXPECT_EQ(lines(scale), 1);
        made->font()->setStrikethrough(true);
        EXPECT_EQ(lines(scale), 2);
    }
}

TEST_F(Painting, AFontSharedByTwoLabelsChangesBoth)
{
    const auto first = label({0, 0, 200, 40}, QStringLiteral("HHHH"));
    const auto second = label({0, 50, 200, 40}, QStringLiteral("HHHH"));
    second->setFont(first->font());
    const QRect before = inkIn(picture(), {0, 50, 200, 40}, Qt::white);
    first->font()->setSize({200000});
    const QImage seen = picture();
    const QRect after = inkIn(seen, {0, 50, 200, 40}, Qt::white);
    EXPECT_GT(after.width(), before.width());
    EXPECT_EQ(after, inkIn(seen, {0, 0, 200, 40}, Qt::white).translated(0, 50));
    EXPECT_EQ(errorOf([&] { first->setFont({}); }), 91);
}

TEST_F(Painting, ShapesDrawInsideTheirRectangle)
{
    const auto shape = show<Shape>(QStringLiteral("Shape"), {50, 50, 60, 40});
    put(*shape, "BorderColor", Black);
    struct Row
    {
        std::int16_t kind;
        QRect expected;
    };
    const Row rows[]{{0, {50, 50, 60, 40}}, {1, {60, 50, 40, 40}}, {2, {50, 50, 60, 40}},
                     {3, {60, 50, 40, 40}}, {4, {50, 50, 60, 40}}, {5, {60, 50, 40, 40}}};
    for (const Row& row : rows) {
        put(*shape, "Shape", row.kind);
        for (const std::int16_t width : {std::int16_t(1), std::int16_t(6)}) {
            put(*shape, "BorderWidth", width);
            const QImage seen = picture();
            EXPECT_EQ(inkIn(seen, seen.rect(), Qt::white), row.expected) << "shape " << row.kind;
        }
    }
    put(*shape, "Shape", 0);
    put(*shape, "BorderStyle", 0);
    EXPECT_TRUE(inkIn(picture(), surface->rect(), Qt::white).isEmpty()) << "no border, no fill";
    EXPECT_EQ(errorOf([&] { put(*shape, "BorderWidth", 0); }), 380);
}

TEST_F(Painting, ARectangleHasItsBorderItsFillAndWhatIsBehindThePattern)
{
    const auto shape = show<Shape>(QStringLiteral("Shape"), {10, 10, 50, 50});
    put(*shape, "BorderColor", Black);
    put(*shape, "FillColor", Red);
    put(*shape, "BackColor", Green);
    put(*shape, "FillStyle", 0);
    QImage seen = picture();
    EXPECT_EQ(seen.pixelColor(10, 10), QColor(Qt::black));
    EXPECT_EQ(seen.pixelColor(59, 59), QColor(Qt::black));
    EXPECT_EQ(seen.pixelColor(11, 11), QColor(Qt::red));
    put(*shape, "FillStyle", 1);
    EXPECT_EQ(pixel(30, 30), QColor(Qt::white)) << "transparent";
    put(*shape, "BackStyle", 1);
    EXPECT_EQ(pixel(30, 30), QColor(0, 255, 0));
    put(*shape, "FillStyle", 2); // horizontal lines
    seen = picture();
    int lines = 0;
    for (int y = 11; y < 59; ++y) {
        lines += seen.pixelColor(30, y) == QColor(Qt::red);
        EXPECT_EQ(seen.pixelColor(30, y), seen.pixelColor(40, y)) << "lines run across";
    }
    EXPECT_GE(lines, 5);
    EXPECT_LE(lines, 12);
}

TEST_F(Painting, ASmoothProgressBarIsFilledInProportion)
{
    const auto bar = show<ProgressBar>(QStringLiteral("pbar"), {10, 10, 202, 22});
    put(*bar, "Scrolling", 1);
    const QColor filled(48, 140, 198);
    const QColor trough(225, 225, 225);
    struct Row
    {
        float value;
        int pixels;
    };
    for (const Row& row : {Row{0, 0}, Row{25, 50}, Row{50, 100}, Row{99.9F, 200}, Row{100, 200}}) {
        bar->setValue(row.value);
        const QImage seen = picture();
        int count = 0;
        for (int x = 11; x <= 210; ++x) // inside the sunken edge
            count += seen.pixelColor(x, 20) == filled;
        EXPECT_EQ(count, row.pixels) << row.value;
        EXPECT_EQ(seen.pixelColor(210, 20), row.pixels == 200 ? filled : trough);
    }
}

TEST_F(Painting, AVerticalProgressBarFillsFromTheBottomAndBlocksHaveGaps)
{
    const auto bar = show<ProgressBar>(QStringLiteral("pbar"), {10, 10, 22, 202});
    put(*bar, "Orientation", 1);
    put(*bar, "Scrolling", 1);
    bar->setValue(10);
    const QColor filled(48, 140, 198);
    QImage seen = picture();
    EXPECT_EQ(seen.pixelColor(20, 210), filled);
    EXPECT_EQ(seen.pixelColor(20, 191), filled);
    EXPECT_EQ(seen.pixelColor(20, 190), QColor(225, 225, 225));
    put(*bar, "Scrolling", 0);
    bar->setValue(100);
    seen = picture();
    int gaps = 0;
    for (int y = 11; y < 210; ++y)
        gaps += seen.pixelColor(20, y) != filled && seen.pixelColor(20, y + 1) == filled;
    EXPECT_EQ(gaps, (200 - 1) / (13 + 2)) << "blocks of two thirds of the thickness, two pixels apart";
}

TEST_F(Painting, AProgressBarKeepsItsLimitsAndItsValueBetweenThem)
{
    const auto bar = show<ProgressBar>(QStringLiteral("pbar"), {10, 10, 100, 20});
    bar->setValue(60);
    EXPECT_EQ(errorOf([&] { bar->setValue(100.5F); }), 380);
    EXPECT_EQ(errorOf([&] { bar->setValue(-1); }), 380);
    EXPECT_EQ(errorOf([&] { bar->setValue(NAN); }), 380);
    EXPECT_EQ(bar->value(), 60.0F) << "a refused value leaves the bar as it was";
    EXPECT_EQ(errorOf([&] { bar->setMinimum(100); }), 380) << "Min equal to Max";
    EXPECT_EQ(errorOf([&] { bar->setMaximum(0); }), 380);
    EXPECT_EQ(bar->minimum(), 0.0F);
    bar->setMaximum(50);
    EXPECT_EQ(bar->value(), 50.0F) << "the value moves to the limit";
    bar->setMinimum(-20);
    EXPECT_EQ(bar->value(), 50.0F);
}

TEST_F(Painting, APictureBoxShowsItsPictureInItsCornerAndCutsIt)
{
    QImage image(50, 50, QImage::Format_RGB32);
    image.fill(Qt::red);
    const auto box = show<PictureBox>(QStringLiteral("Pic"), {10, 10, 30, 80});
    put(*box, "BorderStyle", 0);
    put(*box, "BackColor", Blue);
    put(*box, "Picture", values::make<Picture>(image));
    QImage seen = picture();
    EXPECT_EQ(seen.pixelColor(10, 10), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(39, 59), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(40, 20), QColor(Qt::white)) << "cut at the box";
    EXPECT_EQ(seen.pixelColor(10, 60), QColor(Qt::blue));
    put(*box, "AutoSize", true);
    EXPECT_EQ(box->bounds().size(), QSize(50, 50));
    put(*box, "BorderStyle", 1);
    EXPECT_EQ(box->bounds().size(), QSize(54, 54));
    put(*box, "Picture", Variant::nothing());
    EXPECT_EQ(pixel(20, 20), QColor(Qt::blue));
}

TEST_F(Painting, AtScaleTwoEverythingIsDrawnInDeviceResolution)
{
    surface->resize(200, 100);
    label({10, 10, 101, 21}, QStringLiteral("HHH"));
    const auto shape = show<Shape>(QStringLiteral("Shape"), {120, 10, 50, 50});
    put(*shape, "BorderColor", Black);
    QImage image(400, 200, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2);
    surface->render(&image);
    EXPECT_EQ(image.pixelColor(240, 20), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(241, 21), QColor(Qt::black)) << "a border of one logical pixel is two wide";
    EXPECT_EQ(image.pixelColor(242, 22), QColor(Qt::white));
    const QRect small = inkIn(picture(), {10, 10, 101, 21}, Qt::white);
    const QRect large = inkIn(image, {20, 20, 202, 42}, Qt::white);
    EXPECT_NEAR(large.height(), 2 * small.height(), 2);
    EXPECT_NEAR(large.width(), 2 * small.width(), 4);
    bool odd = false; // finer than an enlarged picture: some row differs from its twin
    for (int y = 20; y < 62 && !odd; y += 2) {
        for (int x = 20; x < 222 && !odd; x += 2)
            odd = image.pixelColor(x, y) != image.pixelColor(x + 1, y + 1);
    }
    EXPECT_TRUE(odd);
}

TEST_F(Painting, ATextIsDrawnWhateverPenWasLeftBehind)
{
    const auto face = FontFace::find({.family = QStringLiteral("DejaVu Sans"), .pixels = 20});
    TextStyle style;
    style.colour = Qt::black;
    for (const double zoom : {0.75, 1.0, 1.5}) {
        for (const Qt::PenStyle left : {Qt::NoPen, Qt::DotLine}) {
            QImage image(100, 60, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::white);
            QPainter painter(&image);
            painter.scale(zoom, zoom);
            painter.setPen(QPen(Qt::black, 1, left));
            TextPainter().draw(painter, {0, 0, 60, 30}, QStringLiteral("ON"), *face, style);
            painter.end();
            EXPECT_FALSE(inkIn(image, image.rect(), Qt::white).isEmpty()) << zoom << " after pen " << int(left);
        }
    }
}

} // namespace zan::surface::tests
