// The fine print of rearranging a panel: what a press, a placement, a shape and a command do in the odd cases.

#include "EditFixture.h"

#include "support/Properties.h"
#include "surface/intrinsic/PictureBox.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QMouseEvent>

using namespace zan;
using namespace zan::window;
using binding::Variant;
using values::Name;
using values::Ref;

namespace {

/// Remembers where menus came up.
struct PlacedMenus : surface::RecordingForms
{
    std::vector<QPoint> places;
    void popupMenu(QWidget* owner, const std::shared_ptr<surface::PopupMenu>& menu, QPoint place) override
    {
        places.push_back(place);
        RecordingForms::popupMenu(owner, menu, place);
    }
};

class EditRules : public EditTest
{
protected:
    QRect marker() { return layer()->marker().value_or(QRect()); }
};

} // namespace

// Presses and menus -------------------------------------------------------------------------------------------

TEST_F(EditRules, MenusComeUpAtThePointer)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("VB.Shape", 3000, 3000, 3000, 1800)});
    PlacedMenus placed;
    panel->setForms(&placed);
    for (const QPoint place : {QPoint(45, 50), QPoint(250, 250), QPoint(700, 500)}) {
        script().press(place, Qt::RightButton).release(place, Qt::RightButton).play();
        EXPECT_EQ(placed.places.back(), panel->mapToGlobal(place));
    }
    EXPECT_EQ(placed.places.size(), 3U);
    panel->setForms(nullptr);
}

TEST_F(EditRules, TheControlsMenuOpensOverAShapeAndNotOverTheBareSurface)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    press({250, 250}, Qt::RightButton);
    EXPECT_EQ(forms.menu()->name, u"mnuCtlRightClick");
    EXPECT_EQ(panel->editor().currentControl(), wrapper(1));
    press({700, 500}, Qt::RightButton);
    EXPECT_EQ(forms.menu()->name, u"mnuFormRightClick");
    EXPECT_FALSE(panel->editor().currentControl()) << "a right press on the surface begins with none";
}

TEST_F(EditRules, TheMouseOverTheSurfaceIsTheHostsToHearAndOverAControlIsNot)
{
    open({control("VB.Label", 600, 600, 1200, 400)}, false);
    std::vector<QPointF> moves;
    QObject::connect(panel.get(), &BenchWindow::MouseMove, panel.get(), [&](int, int, float x, float y) {
        moves.push_back({x, y});
    });
    script().move({400, 300}).move({45, 50}).play();
    panel->setLockPositions(false);
    script().move({401, 300}).move({46, 50}).play();
    EXPECT_EQ(moves, (std::vector<QPointF>{{6000, 4500}, {6015, 4500}}));
}

TEST_F(EditRules, ADoubleClickOnATextBoxIsNoEditCommand)
{
    const auto channel = logger->scheme->window(QStringLiteral("A"))->channel(QStringLiteral("L"));
    logger->link->state = site::LinkState::Connected;
    open({control("VB.TextBox", 610, 600, 1200, 400, "<BINDTO>A|L</BINDTO>")});
    QWidget* box = panel->childAt(60, 50);
    QMouseEvent event(QEvent::MouseButtonDblClick, box->mapFrom(panel.get(), QPointF(60, 50)),
                      panel->mapToGlobal(QPointF(60, 50)), Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(box, &event);
    EXPECT_EQ(forms.boxes().size(), 1U) << "it asks for a value";
    EXPECT_EQ(panel->EditCount(), 0);
}

TEST_F(EditRules, APointerOverAControlWhoseTagFindsNoWrapperIsToldToTheHost)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)});
    test::put(*live(1), "Tag", QStringLiteral("7"));
    script().move({60, 50}).play();
    EXPECT_EQ(errors, std::vector<int>{9});
}

// Placing -----------------------------------------------------------------------------------------------------

TEST_F(EditRules, AControlBeyondTheEdgeComesBackToZeroWhenItIsPressed)
{
    open({control("VB.CommandButton", -450, -300, 1200, 1000)}, false);
    press({20, 20});
    EXPECT_EQ(twips(1), QRectF(0, 0, 1200, 1000));
}

TEST_F(EditRules, ANegativePlaceIsZeroBeforeItIsSnappedAndWithoutSnappingToo)
{
    open({control("VB.Label", 3000, 3000, 1200, 400)});
    panel->setSnapToGrid(false);
    drag({260, 210}, {10, 8});
    EXPECT_EQ(twips(1), QRectF(0, 0, 0, 0));
}

TEST_F(EditRules, AHalfGridStepGoesToTheEvenMultipleAndLessThanHalfAStepHasNoSize)
{
    open({control("VB.CommandButton", 300, 500, 1200, 90)}, false);
    press({60, 36});
    EXPECT_EQ(twips(1), QRectF(400, 400, 1200, 0));
}

TEST_F(EditRules, ADropIsPlacedBeforeTheSourcesWrapperIsLookedForOnTheSurfaceAndAfterwardsOnAControl)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("ZanBenchWindow.StatusLight", 6000, 3000, 1200, 400)});
    test::put(*live(1), "Tag", QStringLiteral("7"));
    script().press({50, 50}).move({300, 300}).release({300, 300}).play();
    EXPECT_EQ(twips(1), QRectF(4400, 4400, 1200, 400));
    const QRectF light = twips(2);
    script().press({300, 300}).move({410, 210}).release({410, 210}).play();
    EXPECT_EQ(twips(2), light);
    // The pointer's way over it (hover), the drop on the surface, and the same once more with the drop on the light.
    EXPECT_FALSE(errors.empty());
    EXPECT_TRUE(std::all_of(errors.begin(), errors.end(), [](int number) { return number == 9; }));
}

TEST_F(EditRules, ASourceWithoutATagMovesNothingThatItIsDroppedOn)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("ZanBenchWindow.StatusLight", 6000, 3000, 1200, 400)});
    test::put(*live(1), "Tag", QString());
    panel->setLockPositions(false);
    const QRectF light = twips(2);
    std::size_t before = 0; // the pointer over it is told to the host
    script().press({50, 50}).move({410, 210}).then([&] { before = errors.size(); }).release({410, 210}).play();
    EXPECT_EQ(twips(2), light);
    EXPECT_EQ(errors.size(), before) << "the drop is no failure";
}

TEST_F(EditRules, ADropOutsideThePanelMovesNothing)
{
    open({control("VB.Label", 600, 600, 1200, 400)});
    script().press({50, 50}).move({-40, 50}).release({-40, 50}).play();
    EXPECT_EQ(twips(1), QRectF(600, 600, 1200, 400));
    EXPECT_EQ(panel->EditCount(), 0);
}

// Shapes and the marker ---------------------------------------------------------------------------------------

TEST_F(EditRules, AShapeIsCaughtUpToAHundredTwipsOutside)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    script().press({193, 260}).move({203, 260}).release({203, 260}).play(); // 105 twips outside
    EXPECT_EQ(twips(1).left(), 3000);
    script().press({194, 260}).move({214, 260}).release({214, 260}).play(); // 90 twips
    EXPECT_EQ(twips(1).left(), 3200) << "20 pixels further are 3300, snapped to the even multiple";
}

TEST_F(EditRules, EveryButtonButTheRightOneDragsAShape)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    script().press({300, 260}, Qt::MiddleButton).move({340, 300}).release({340, 300}, Qt::MiddleButton).play();
    EXPECT_EQ(twips(1).topLeft(), QPointF(3600, 3600));
    script().press({300, 300}, Qt::RightButton).move({340, 340}).release({340, 340}, Qt::RightButton).play();
    EXPECT_EQ(twips(1).topLeft(), QPointF(3600, 3600));
}

TEST_F(EditRules, OnlyTheLastCornerOfAShapeSizesIt)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    for (const QPoint corner : {QPoint(200, 200), QPoint(400, 200), QPoint(200, 320)}) {
        drag(corner, corner + QPoint(30, 30));
        EXPECT_EQ(twips(1), QRectF(3000, 3000, 3000, 1800));
        EXPECT_TRUE(hasMarker()) << "it is selected all the same";
    }
    drag({403, 323}, {440, 360});
    EXPECT_EQ(twips(1), QRectF(3000, 3000, 3600, 2400));
}

TEST_F(EditRules, AShapeThatCannotGetASizeKeepsTheOneItHas)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    script().press({400, 320}).move({300, 300}).move({150, 150}).release({150, 150}).play();
    EXPECT_EQ(twips(1), QRectF(3000, 3000, 1600, 1600)) << "1500 by 1500 was the last size there is";
    EXPECT_TRUE(errors.empty());
}

TEST_F(EditRules, TheNodeOfAShapeIsNotBroughtUpToDateByADrag)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    drag({300, 260}, {340, 300});
    EXPECT_EQ(stored(1, "LEFT"), u"3000");
    panel->UpdateDocument();
    EXPECT_EQ(stored(1, "LEFT"), u"3600");
}

TEST_F(EditRules, TheMarkerStaysWhereTheDragEndedWhateverTheShapeSnapsTo)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    drag({300, 260}, {307, 260});
    // 3105 and 3000, less half of 105 by 105, in pixels.
    EXPECT_EQ(marker(), QRect(404, 317, 7, 7));
    EXPECT_EQ(twips(1).left(), 3200);
    press({600, 500});
    EXPECT_EQ(marker(), QRect(404, 317, 7, 7)) << "a press that hits nothing leaves it as it is";
    press({250, 260});
    EXPECT_EQ(marker(), QRect(410, 317, 7, 7)) << "and the next that hits puts it where the shape is now";
}

TEST_F(EditRules, AGridOfNothingLeavesTheShapeSelectedUntilALockedClick)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    panel->setGridSize(0);
    drag({300, 260}, {340, 300});
    EXPECT_TRUE(errors.empty()) << "quietly";
    ASSERT_TRUE(panel->editor().selectedShape());
    EXPECT_EQ(twips(1).topLeft(), QPointF(3600, 3600));
    script().move({350, 300}).play();
    EXPECT_EQ(twips(1).topLeft(), QPointF(3750, 3600)) << "what is selected follows the pointer";
    panel->setLockPositions(true);
    EXPECT_FALSE(hasMarker());
    panel->setLockPositions(false);
    EXPECT_TRUE(hasMarker()) << "unlocking shows the marker of what is selected";
    panel->setLockPositions(true);
    press({600, 500});
    EXPECT_FALSE(panel->editor().selectedShape());
}

TEST_F(EditRules, ARightPressOverAShapeWithoutAWrapperEndsQuietlyWithoutAMenu)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    test::put(*live(1), "Tag", QStringLiteral("7"));
    press({300, 260}, Qt::RightButton);
    EXPECT_FALSE(forms.menu());
    EXPECT_TRUE(errors.empty());
}

// The selection -----------------------------------------------------------------------------------------------

TEST_F(EditRules, APlainClickTakesTheHandlesOfTheCurrentControlAwayOnALockedPanelOnly)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400), control("VB.Picture", 3000, 600, 1200, 600),
          control("VB.OptionButton", 6000, 600, 1200, 400), control("VB.TextBox", 9000, 600, 1200, 400)},
         false);
    for (const QPoint click : {QPoint(700, 500), QPoint(210, 50), QPoint(410, 50), QPoint(610, 50)}) {
        wrapper(1)->setShowGrabHandles(true);
        press({60, 50}, Qt::RightButton);
        EXPECT_TRUE(hasHandleAt({37, 37}));
        press(click);
        EXPECT_FALSE(wrapper(1)->ShowGrabHandles());
        EXPECT_FALSE(hasHandleAt({37, 37}));
    }
    panel->setLockPositions(false);
    press({60, 50}, Qt::RightButton);
    press({700, 500});
    EXPECT_TRUE(hasHandleAt({37, 37})) << "on an unlocked panel it does nothing";
}

TEST_F(EditRules, ALabelAndALightAreNoPlainClick)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400), control("VB.Label", 3000, 600, 1200, 400),
          control("ZanBenchWindow.StatusLight", 6000, 600, 1200, 400)},
         false);
    wrapper(1)->setShowGrabHandles(true);
    press({60, 50}, Qt::RightButton);
    press({210, 50});
    press({410, 50});
    EXPECT_TRUE(wrapper(1)->ShowGrabHandles());
}

// Commands ----------------------------------------------------------------------------------------------------

TEST_F(EditRules, AControlThatCannotBePlacedIsThereAllTheSameAndTheHostIsTold)
{
    open({});
    panel->setGridSize(0);
    press({400, 200}, Qt::RightButton);
    choose(QStringLiteral("&Label"));
    EXPECT_EQ(errors, std::vector<int>{11});
    ASSERT_EQ(panel->Controls()->Count(), 1);
    EXPECT_EQ(property(1, "Caption"), u"") << "its caption comes after its place";
    panel->Undo();
    EXPECT_EQ(panel->Controls()->Count(), 0);
}

TEST_F(EditRules, ACopyIsTheNodeAsItStandsAndPlainTextOnly)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)});
    drag({60, 50}, {160, 90});
    test::put(*live(1), "ToolTipText", QStringLiteral("not stored yet"));
    press({160, 90}, Qt::RightButton);
    choose(QStringLiteral("&Copy"));
    const QString text = QGuiApplication::clipboard()->text();
    EXPECT_EQ(text, wrapper(1)->XMLNode().xml());
    EXPECT_TRUE(text.contains(QLatin1String("<LEFT>2100</LEFT>"))) << "live it is at 2000";
    EXPECT_FALSE(text.contains(QLatin1String("not stored yet")));
    EXPECT_EQ(QGuiApplication::clipboard()->mimeData()->formats(), QStringList{QStringLiteral("text/plain")});
}

TEST_F(EditRules, WhatWasDeletedCanStillBeCopied)
{
    open({control("VB.Label", 600, 600, 1200, 400, "<CAPTION>Level</CAPTION>")});
    press({50, 50}, Qt::RightButton);
    const std::shared_ptr<surface::PopupMenu> menu = forms.menu();
    choose(*menu, QStringLiteral("&Delete"));
    QGuiApplication::clipboard()->clear();
    choose(*menu, QStringLiteral("&Copy"));
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains(QLatin1String("Level")));
    choose(*menu, QStringLiteral("&Delete"));
    EXPECT_EQ(errors, std::vector<int>{9}) << "there is no control of that place any more";
}

TEST_F(EditRules, CommandsWithoutACurrentControlCopyNothingAndCannotDelete)
{
    open({control("VB.Label", 600, 600, 1200, 400)});
    press({50, 50}, Qt::RightButton);
    const std::shared_ptr<surface::PopupMenu> menu = forms.menu();
    panel->Clear();
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    choose(*menu, QStringLiteral("&Copy"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"before");
    choose(*menu, QStringLiteral("&Delete"));
    EXPECT_EQ(errors, std::vector<int>{91});
    choose(*menu, QStringLiteral("&Send to Back"));
    EXPECT_EQ(errors.size(), 1U);
}

TEST_F(EditRules, APasteAfterARemovalMeetsItsOwnKeyAndFails)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("VB.Label", 3000, 600, 1200, 400),
          control("VB.Label", 6000, 600, 1200, 400)});
    press({50, 50}, Qt::RightButton);
    choose(QStringLiteral("&Copy"));
    press({210, 50}, Qt::RightButton);
    choose(QStringLiteral("&Delete"));
    press({400, 400}, Qt::RightButton);
    choose(QStringLiteral("&Paste"));
    EXPECT_EQ(errors, std::vector<int>{457});
    EXPECT_EQ(panel->Controls()->Count(), 2);
    EXPECT_EQ(panel->UndoText(), u"Delete");
    checkInvariants();
}

TEST_F(EditRules, WhatIsMadeOnAnUnlockedPanelHasHandlesAtOnce)
{
    open({});
    press({400, 200}, Qt::RightButton);
    choose(QStringLiteral("&Command Button"));
    settle();
    EXPECT_TRUE(hasHandleAt({397, 197}));
    drag({410, 210}, {210, 210});
    EXPECT_TRUE(hasHandleAt({197, 197}));
    EXPECT_FALSE(hasHandleAt({397, 197}));
}

// Handles -----------------------------------------------------------------------------------------------------

namespace {

/// A picture that remembers the heights it has had.
class Watched : public surface::PictureBox
{
public:
    void boundsChanged() override { heights.push_back(height()); }
    std::vector<float> heights;
};

class EditResize : public EditTest
{
protected:
    EditResize()
        : EditTest(wrappers::ControlTypes(rows))
    {}
    std::vector<float>& heights() { return static_cast<Watched&>(*live(1)).heights; }

private:
    static constexpr wrappers::ControlType rows[] = {
        {.key = u"Test.Watched",
         .menuCaption = u"&Watched",
         .arrayName = u"Watched",
         .design = {100, 100, 600, 600},
         .create = [] { return Ref<surface::LiveControl>(values::make<Watched>()); },
         .press = wrappers::OnPress::SystemMove,
         .selectsOnHover = true}};
};

} // namespace

TEST_F(EditResize, TheEndOfAResizeMovesTwiceTheFirstTimeTwentyTwipsShort)
{
    panel->move(120, 90); // the left edge is taken from the screen: off it every end of a resize moves
    open({control("Test.Watched", 3000, 3000, 1200, 1200)});
    heights().clear();
    script().press({282, 282}).move({292, 292}).release({292, 292}).play();
    EXPECT_EQ(twips(1).height(), 1350);
    ASSERT_GE(heights().size(), 2U);
    EXPECT_EQ(heights()[heights().size() - 2], 1330);
    EXPECT_EQ(heights().back(), 1350);
    EXPECT_EQ(stored(1, "HEIGHT"), u"1350");
}

TEST_F(EditResize, AResizeThatEndsWhereItBeganMovesNothingAndStoresThePlace)
{
    panel->setWindowFlag(Qt::FramelessWindowHint); // the left edge is taken from the screen
    panel->move(0, 0);
    open({control("Test.Watched", 3000, 3000, 1200, 1200)});
    ASSERT_EQ(panel->mapToGlobal(QPoint(0, 0)).x(), 0);
    document::XMLOps::SetAttribute(wrapper(1)->XMLNode(), Name("HEIGHT"), QStringLiteral("5"));
    heights().clear();
    script().press({282, 282}).release({282, 282}).play();
    EXPECT_TRUE(heights().empty());
    EXPECT_EQ(stored(1, "HEIGHT"), u"1200");
}

TEST_F(EditResize, EscTakesAResizeBack)
{
    open({control("Test.Watched", 3000, 3000, 1200, 1200)});
    script().press({282, 282}).move({300, 310}).key(Qt::Key_Escape).release({300, 310}).play();
    EXPECT_EQ(twips(1), QRectF(3000, 3000, 1200, 1200));
    EXPECT_EQ(panel->EditCount(), 0);
}

TEST_F(EditResize, AReleaseOverAControlWithHandlesEndsAResizeToo)
{
    open({control("Test.Watched", 3000, 3007, 1200, 1200)});
    panel->setLockMenu(true); // the press is the host's and moves nothing
    press({230, 230});
    EXPECT_EQ(twips(1).top(), 3000) << "the place is taken from the pixels of the window";
}
