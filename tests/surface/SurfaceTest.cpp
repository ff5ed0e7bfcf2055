#include "support/Properties.h"
#include "surface/SurfaceFixture.h"
#include "surface/intrinsic/CheckBox.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/PictureBox.h"
#include "surface/intrinsic/ProgressBar.h"
#include "surface/intrinsic/Shape.h"
#include "surface/intrinsic/TextBox.h"

#include <QAccessible>
#include <QBackingStore>
#include <QLineEdit>
#include <QPaintEvent>

namespace zan::surface::tests {

using test::put;

namespace {

const Colour Red = values::rgb(255, 0, 0);
const Colour Green = values::rgb(0, 255, 0);
const Colour Blue = values::rgb(0, 0, 255);

/// Notes what the toolkit asks to be painted.
struct PaintWatch : QObject
{
    int paints = 0;
    QRegion region;
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++paints;
            region += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }
};

} // namespace

class Surfaces : public SurfaceTest
{
protected:
    Surfaces() { surface->setBackColor(values::rgb(255, 255, 255)); }
    Ref<Label> block(const QRect& pixels, Colour colour)
    {
        const auto made = showNew<Label>(QStringLiteral("Label"), pixels);
        put(*made, "BackColor", colour);
        return made;
    }
    void open()
    {
        surface->show();
        settle();
    }
    /// What stands on the screen, without anything being painted for the asking.
    QColor onScreen(int x, int y)
    {
        return surface->backingStore()
                   ? static_cast<QImage*>(surface->backingStore()->paintDevice())->pixelColor(x, y)
                   : QColor();
    }
};

TEST_F(Surfaces, AChangeIsSeenInTheNextPictureWithoutTheEventLoop)
{
    const auto some = block({10, 10, 20, 20}, Red);
    open();
    put(*some, "BackColor", Green);
    EXPECT_EQ(pixel(15, 15), QColor(0, 255, 0));
    some->move(1500);
    EXPECT_EQ(pixel(15, 15), QColor(Qt::white));
    EXPECT_EQ(pixel(105, 15), QColor(0, 255, 0));
    const auto box = show<TextBox>(QStringLiteral("Text"), {200, 200, 80, 22});
    put(*box, "BackColor", Blue);
    EXPECT_EQ(pixel(240, 210), QColor(Qt::blue)) << "widgets made on the way into the picture are in it";
}

TEST_F(Surfaces, ABurstOfChangesIsPaintedOnceAndOnlyWhereItIs)
{
    std::vector<Ref<Label>> labels;
    for (int place = 0; place < 30; ++place)
        labels.push_back(block({place % 10 * 50, place / 10 * 50, 40, 20}, Red));
    open();
    PaintWatch watch;
    surface->installEventFilter(&watch);
    for (int round = 0; round < 5; ++round) {
        labels[3]->setCaption(QString::number(round));
        labels[17]->setCaption(QString::number(round));
    }
    EXPECT_TRUE(surface->hasPendingChanges());
    EXPECT_EQ(watch.paints, 0) << "nothing is painted in the middle of a burst";
    settle();
    EXPECT_EQ(watch.paints, 1);
    EXPECT_EQ(watch.region, QRegion(labels[3]->bounds()) + labels[17]->bounds());
    EXPECT_EQ(surface->lastPaintedControls(), 2);
    EXPECT_FALSE(surface->hasPendingChanges());
    labels[3]->setCaption(QString::number(4));
    settle();
    EXPECT_EQ(watch.paints, 1) << "a value that is there already paints nothing";
}

TEST_F(Surfaces, OverlappingNeighboursStayRightWhenOneOfThemChanges)
{
    const auto below = block({10, 10, 60, 60}, Red);
    const auto above = block({40, 40, 60, 60}, Green);
    open();
    put(*below, "BackColor", Blue);
    settle();
    EXPECT_EQ(onScreen(20, 20), QColor(Qt::blue));
    EXPECT_EQ(onScreen(50, 50), QColor(0, 255, 0)) << "the one above was painted again over it";
    put(*above, "BackStyle", 0);
    settle();
    EXPECT_EQ(onScreen(50, 50), QColor(Qt::blue));
    EXPECT_EQ(onScreen(90, 90), QColor(Qt::white));
}

TEST_F(Surfaces, WhatAControlLeavesIsPaintedAgain)
{
    const auto some = block({10, 10, 20, 20}, Red);
    open();
    some->move(1500, 1500.0F);
    settle();
    EXPECT_EQ(onScreen(15, 15), QColor(Qt::white));
    EXPECT_EQ(onScreen(105, 105), QColor(Qt::red));
    some->setVisible(false);
    settle();
    EXPECT_EQ(onScreen(105, 105), QColor(Qt::white));
    some->setVisible(true);
    settle();
    EXPECT_EQ(onScreen(105, 105), QColor(Qt::red));
    surface->array(u"Label")->unload(some->index());
    settle();
    EXPECT_EQ(onScreen(105, 105), QColor(Qt::white));
}

TEST_F(Surfaces, RandomEditsShowTheSameAsPaintingEverythingAnew)
{
    open();
    std::vector<Ref<Label>> labels;
    quint32 state = 7;
    const auto next = [&](quint32 below) {
        state = state * 1664525 + 1013904223;
        return int((state >> 8) % below);
    };
    for (int step = 0; step < 400; ++step) {
        const int action = next(6);
        if (labels.size() < 5 || (action == 0 && labels.size() < 300)) {
            labels.push_back(block({next(700) - 50, next(500) - 50, next(120), next(60)}, {next(0x1000000)}));
            continue;
        }
        Label& some = *labels[std::size_t(next(quint32(labels.size())))];
        if (!some.isLoaded())
            continue;
        switch (action) {
        case 1:
            some.move(float(next(700) - 50) * 15, float(next(500) - 50) * 15);
            break;
        case 2:
            put(some, "BackColor", Colour{next(0x1000000)});
            break;
        case 3:
            some.setVisible(next(3) > 0);
            break;
        case 4:
            some.zOrder(std::int16_t(next(2)));
            break;
        default:
            if (next(4) == 0)
                surface->array(u"Label")->unload(some.index());
            else
                some.setCaption(QString::number(step));
        }
        if (step % 3 == 0)
            settle();
        if (step % 40 == 39) {
            settle();
            const QImage screen = static_cast<QImage*>(surface->backingStore()->paintDevice())
                                      ->copy(surface->rect())
                                      .convertToFormat(QImage::Format_RGB32);
            ASSERT_EQ(screen, picture().convertToFormat(QImage::Format_RGB32)) << "after step " << step;
        }
    }
}

TEST_F(Surfaces, WindowlessControlsLieUnderAllOthers)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 80, 30});
    put(*box, "BackColor", Green);
    const auto picture1 = show<PictureBox>(QStringLiteral("Pic"), {10, 60, 80, 30});
    put(*picture1, "BackColor", Green);
    const auto label = block({0, 0, 200, 200}, Red);
    label->zOrder(0);
    const QImage seen = picture();
    EXPECT_EQ(seen.pixelColor(50, 30), QColor(0, 255, 0));
    EXPECT_EQ(seen.pixelColor(50, 75), QColor(0, 255, 0));
    EXPECT_EQ(seen.pixelColor(150, 150), QColor(Qt::red));
}

TEST_F(Surfaces, APaintedControlCanLieOverAWidget)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 80, 30});
    put(*box, "BackColor", Green);
    const auto over = show<PictureBox>(QStringLiteral("Pic"), {50, 10, 80, 30});
    put(*over, "BackColor", Red);
    put(*over, "BorderStyle", 0);
    over->zOrder();
    open();
    EXPECT_EQ(pixel(30, 25), QColor(0, 255, 0));
    EXPECT_EQ(pixel(70, 25), QColor(Qt::red));
    EXPECT_EQ(surface->controlAt({70, 25}).get(), over.get());
    put(*over, "BackColor", Blue);
    EXPECT_EQ(pixel(70, 25), QColor(Qt::blue)) << "it follows its properties there";
    over->zOrder(1);
    EXPECT_EQ(pixel(70, 25), QColor(0, 255, 0));
    EXPECT_EQ(pixel(110, 25), QColor(Qt::blue));
    EXPECT_EQ(surface->controlAt({70, 25}).get(), box.get());
    over->zOrder(0);
    over->move(7500);
    settle();
    EXPECT_EQ(pixel(70, 25), QColor(0, 255, 0));
    EXPECT_EQ(pixel(520, 25), QColor(Qt::blue)) << "away from the widget the surface draws it again";
    over->move(750);
    settle();
    surface->array(u"Text")->item(1)->setVisible(false);
    settle();
    EXPECT_EQ(pixel(70, 25), QColor(Qt::blue));
}

TEST_F(Surfaces, PaintedControlsOverAHostedOneAreHostedToo)
{
    surface->array(u"Pic")->load(2);
    show<TextBox>(QStringLiteral("Text"), {0, 0, 50, 30});
    const auto first = show<PictureBox>(QStringLiteral("Pic"), {40, 0, 50, 30});
    const auto second = Ref<PictureBox>(static_cast<PictureBox*>(surface->array(u"Pic")->item(2).get()));
    second->move(80 * 15, 0.0F, 50 * 15.0F, 30 * 15.0F);
    second->setVisible(true);
    first->zOrder();
    second->zOrder();
    put(*first, "BackColor", Red);
    put(*second, "BackColor", Green);
    put(*first, "BorderStyle", 0);
    put(*second, "BorderStyle", 0);
    open();
    EXPECT_EQ(pixel(45, 15), QColor(Qt::red));
    EXPECT_EQ(pixel(85, 15), QColor(0, 255, 0)) << "the upper one is not hidden by the host of the lower";
    surface->array(u"Pic")->unload(2);
    settle();
    EXPECT_EQ(pixel(85, 15), QColor(Qt::red));
}

TEST_F(Surfaces, FortyThousandControlsAreLoadedPaintedAndUnloaded)
{
    surface->resize(400, 300);
    for (const char* name : {"Label", "Text"}) {
        ControlArray* array = surface->array(QString::fromLatin1(name));
        for (int index = 2; index <= 20000; ++index) {
            const auto control = array->load(index);
            control->move(float(index % 400) * 15, float(index % 300) * 15, 300.0F, 150.0F);
            control->setVisible(true);
        }
    }
    open();
    EXPECT_FALSE(picture().isNull());
    for (const char* name : {"Label", "Text"}) {
        ControlArray* array = surface->array(QString::fromLatin1(name));
        for (int index = 20000; index >= 2; index -= 7)
            array->unload(index);
    }
    settle();
    surface.reset();
}

TEST_F(Surfaces, HostileMeasuresNeitherCrashNorHang)
{
    const auto some = block({0, 0, 10, 10}, Red);
    show<ProgressBar>(QStringLiteral("pbar"), {0, 0, 10, 10});
    show<TextBox>(QStringLiteral("Text"), {0, 0, 10, 10});
    const auto shape = show<Shape>(QStringLiteral("Shape"), {0, 0, 10, 10});
    put(*shape, "Shape", 4);
    for (int place = 0; place < 100; ++place)
        block({place, place, 5, 5}, Green);
    open();
    for (const float value : {1e30F, 3.4e38F, 0.0F, 1.5F, 1e9F}) {
        for (const Ref<LiveControl>& control : surface->controls()) {
            control->move(-value, value == 1e9F ? -1e9F : 0.0F, value, value);
        }
        settle();
        EXPECT_FALSE(picture().isNull());
    }
    some->setCaption(QString(100'000, QLatin1Char('W')));
    some->move(0, 0.0F, 3000.0F, 300.0F);
    settle();
    EXPECT_EQ(surface->controlAt({5, 5})->surface(), surface.get());
}

TEST_F(Surfaces, PropertiesKeepWhatTheyAreGiven)
{
    EXPECT_EQ(surface->backStyle(), 1);
    surface->setBackStyle(0);
    EXPECT_EQ(surface->backStyle(), 0);
    surface->setForeColor(Red);
    EXPECT_EQ(surface->foreColor(), Red);
    const auto font = values::make<FontObject>();
    surface->setSurfaceFont(font);
    EXPECT_EQ(surface->surfaceFont(), font);
    EXPECT_THROW(surface->setSurfaceFont({}), values::RuntimeError);
    EXPECT_GT(surface->hWnd(), 0);
    surface->cls();
}

TEST_F(Surfaces, AccessibilityToolsFindThePaintedControlsAmongTheWidgets)
{
    const auto label = block({10, 10, 80, 20}, Red);
    label->setCaption(QStringLiteral("&Stage 1.25 m"));
    put(*label, "ToolTipText", QStringLiteral("River stage"));
    const auto bar = show<ProgressBar>(QStringLiteral("pbar"), {10, 50, 100, 20});
    bar->setValue(40);
    put(*bar, "ToolTipText", QStringLiteral("Battery"));
    put(*show<CheckBox>(QStringLiteral("cbCheck"), {10, 100, 100, 20}), "Caption", QStringLiteral("Pump"));
    open();
    QAccessibleInterface* root = QAccessible::queryAccessibleInterface(surface.get());
    ASSERT_NE(root, nullptr);
    ASSERT_EQ(root->childCount(), 3);
    QAccessibleInterface* text = root->child(0);
    EXPECT_EQ(text->role(), QAccessible::StaticText);
    EXPECT_EQ(text->text(QAccessible::Name), u"Stage 1.25 m");
    EXPECT_EQ(text->text(QAccessible::Description), u"River stage");
    EXPECT_EQ(text->parent(), root);
    EXPECT_EQ(text->rect().topLeft(), surface->mapToGlobal(QPoint(10, 10)));
    EXPECT_EQ(root->indexOfChild(text), 0);
    QAccessibleInterface* progress = root->child(1);
    EXPECT_EQ(progress->role(), QAccessible::ProgressBar);
    EXPECT_EQ(progress->text(QAccessible::Name), u"Battery");
    EXPECT_EQ(progress->text(QAccessible::Value), u"40");
    EXPECT_EQ(root->child(2)->role(), QAccessible::CheckBox);
    EXPECT_EQ(root->child(2)->text(QAccessible::Name), u"Pump");
    EXPECT_EQ(root->indexOfChild(root->child(2)), 2);
    EXPECT_EQ(root->child(-1), nullptr);
    EXPECT_EQ(root->child(3), nullptr);
    const QPoint inBar = surface->mapToGlobal(QPoint(20, 60));
    EXPECT_EQ(root->childAt(inBar.x(), inBar.y()), progress);
    surface->array(u"Label")->unload(label->index());
    EXPECT_EQ(root->childCount(), 2);
}

TEST_F(Surfaces, APaletteChangeReachesSystemColours)
{
    surface->setBackColor(values::ButtonFace);
    const auto label = block({10, 10, 20, 20}, values::WindowBackground);
    open();
    QPalette palette = surface->palette();
    palette.setColor(QPalette::Base, Qt::yellow);
    palette.setColor(QPalette::Button, Qt::cyan);
    surface->setPalette(palette);
    settle();
    EXPECT_EQ(onScreen(15, 15), QColor(Qt::yellow));
    EXPECT_EQ(onScreen(100, 100), QColor(Qt::cyan));
    EXPECT_TRUE(label->visible());
}

} // namespace zan::surface::tests
