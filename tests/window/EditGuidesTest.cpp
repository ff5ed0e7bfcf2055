// Alignment help while something is dragged.

#include "EditFixture.h"

#include "support/Properties.h"

using namespace zan;
using namespace zan::window;
using values::Ref;

namespace {

class EditGuides : public EditTest
{
protected:
    /// Something to align with at 203 pixels, off the grid, and one of each way of dragging.
    void openAll()
    {
        open({control("VB.Picture", 3045, 600, 1500, 405), control("VB.CommandButton", 600, 3000, 1200, 400),
              control("VB.Label", 600, 4200, 1200, 400), control("VB.Shape", 600, 5400, 1200, 1200)});
    }
    QList<QLine> during;
    void dragWithGuides(QPoint from, QPoint to)
    {
        script()
            .press(from)
            .move((from + to) / 2)
            .move(to)
            .then([this] { during = layer()->guides(); })
            .release(to)
            .play();
    }
};

} // namespace

TEST_F(EditGuides, AreOffAtFirstAndReachedByName)
{
    EXPECT_FALSE(panel->AlignmentGuides());
    test::put(*panel->object(), "AlignmentGuides", QStringLiteral("True"));
    EXPECT_TRUE(panel->AlignmentGuides());
}

TEST_F(EditGuides, WhileTheyAreOffNothingPulls)
{
    openAll();
    dragWithGuides({60, 210}, {220, 210}); // to 200 pixels, three from the picture's edge
    EXPECT_TRUE(during.isEmpty());
    EXPECT_EQ(twips(2).left(), 3000);
}

TEST_F(EditGuides, APulledControlStaysWithTheOtherAndOffTheGrid)
{
    openAll();
    panel->setAlignmentGuides(true);
    dragWithGuides({60, 210}, {220, 210});
    EXPECT_FALSE(during.isEmpty());
    EXPECT_EQ(twips(2).left(), 3045);
    EXPECT_EQ(stored(2, "LEFT"), u"3045");
    dragWithGuides({60, 290}, {220, 290});
    EXPECT_FALSE(during.isEmpty());
    EXPECT_EQ(twips(3).left(), 3045) << "a label, which is dropped";
    EXPECT_EQ(stored(3, "LEFT"), u"3045");
    dragWithGuides({80, 400}, {240, 400});
    EXPECT_FALSE(during.isEmpty());
    EXPECT_EQ(twips(4).left(), 3045) << "a shape";
    EXPECT_TRUE(layer()->guides().isEmpty()) << "the lines go with the drag";
    EXPECT_EQ(panel->EditCount(), 3);
    for (int step = 0; step < 3; ++step)
        panel->Undo();
    EXPECT_EQ(twips(2).left(), 600);
}

TEST_F(EditGuides, TheDirectionThatIsNotAlignedSnapsToTheGrid)
{
    openAll();
    panel->setAlignmentGuides(true);
    dragWithGuides({60, 210}, {220, 220});
    EXPECT_EQ(twips(2), QRectF(3045, 3200, 1200, 400)) << "3150 from the top goes to 3200";
}

TEST_F(EditGuides, AltSwitchesThemOnForAsLongAsItIsHeld)
{
    openAll();
    QWindow* window = panel->window()->windowHandle();
    const auto moveWithAlt = [&](QPoint place) {
        QMouseEvent move(QEvent::MouseMove, place, panel->mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                         Qt::AltModifier);
        QCoreApplication::sendEvent(window, &move);
    };
    script()
        .press({60, 210})
        .then([&] {
            moveWithAlt({220, 210});
            during = layer()->guides();
        })
        .move({221, 210})
        .then([&] { EXPECT_TRUE(layer()->guides().isEmpty()); })
        .release({221, 210})
        .play();
    EXPECT_FALSE(during.isEmpty());
    EXPECT_EQ(twips(2).left(), 3000) << "3015 on the grid: Alt was up in the end";
}

TEST_F(EditGuides, AResizeIsPulledToo)
{
    openAll();
    panel->setAlignmentGuides(true);
    dragWithGuides({122, 229}, {202, 260}); // the right edge to 200 pixels
    EXPECT_FALSE(during.isEmpty());
    EXPECT_EQ(twips(2).width(), 163 * 15);
}

TEST_F(EditGuides, EscLeavesNoLines)
{
    openAll();
    panel->setAlignmentGuides(true);
    const std::pair<QPoint, QPoint> drags[] = {
        {{60, 210}, {220, 210}}, {{60, 290}, {220, 290}}, {{80, 400}, {240, 400}}, {{122, 229}, {202, 260}}};
    for (const auto& [from, to] : drags) {
        script()
            .press(from)
            .move(to)
            .then([this] { during = layer()->guides(); })
            .key(Qt::Key_Escape)
            .release(to)
            .play();
        EXPECT_FALSE(during.isEmpty());
        EXPECT_TRUE(layer()->guides().isEmpty());
    }
    EXPECT_EQ(panel->EditCount(), 0);
}

TEST_F(EditGuides, TheLinesAreDrawnOverThePanel)
{
    openAll();
    panel->setAlignmentGuides(true);
    QColor line;
    script()
        .press({60, 210})
        .move({220, 210})
        .then([&] { line = panel->grab().toImage().pixelColor(203, 120); })
        .release({220, 210})
        .play();
    EXPECT_EQ(line, QColor(230, 0, 120));
    EXPECT_NE(panel->grab().toImage().pixelColor(203, 120), QColor(230, 0, 120));
}
