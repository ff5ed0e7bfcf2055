// Rearranging a panel by mouse and menu, with the input that a user makes.

#include "EditFixture.h"

#include "support/Properties.h"
#include "surface/intrinsic/Shape.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace zan;
using namespace zan::window;
using binding::Variant;
using surface::LiveControl;
using surface::PopupMenu;
using tests::PointerScript;
using values::Name;
using values::Ref;
using wrappers::iBenchControl;

namespace {

class EditMode : public EditTest
{};

const QStringList labelMenu{u"&Edit"_qs, u"&Copy"_qs, QString(), u"&Delete"_qs, u"&Send to Back"_qs};

} // namespace

// Presses -----------------------------------------------------------------------------------------------------

TEST_F(EditMode, WithLockMenuEveryPressIsTheHostsAndNoMenuComesUp)
{
    open({control("VB.Label", 600, 600, 1200, 300)});
    panel->setLockMenu(true);
    press({45, 45}, Qt::RightButton);
    press({45, 45});
    press({400, 400}, Qt::RightButton);
    EXPECT_EQ(hostPresses, (std::vector<int>{2, 1, 2}));
    EXPECT_FALSE(forms.menu());
    EXPECT_EQ(twips(1), QRectF(600, 600, 1200, 300));
}

TEST_F(EditMode, ARightPressOpensTheControlsMenuOnALockedPanelToo)
{
    open({control("VB.Label", 600, 600, 1200, 300), control("VB.CommandButton", 3000, 600, 1200, 400)}, false);
    press({45, 45}, Qt::RightButton);
    EXPECT_EQ(menuCaptions(), labelMenu);
    EXPECT_EQ(panel->editor().currentControl(), wrapper(1));
    press({210, 45}, Qt::MiddleButton);
    EXPECT_EQ(menuCaptions(), labelMenu) << "every button but the left one";
    EXPECT_EQ(panel->editor().currentControl(), wrapper(2));
}

TEST_F(EditMode, ALeftPressOnALockedPanelSnapsAButtonAndLeavesALabelAlone)
{
    open({control("VB.CommandButton", 610, 590, 1210, 410), control("VB.Label", 3010, 590, 1210, 310)}, false);
    press({60, 45});
    EXPECT_EQ(twips(1), QRectF(600, 600, 1200, 400));
    press({210, 45});
    EXPECT_EQ(twips(2), QRectF(3010, 590, 1210, 310));
}

TEST_F(EditMode, AButtonIsMovedSnappedAndNotClicked)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400, "<ACTION><TYPE>VESPER</TYPE></ACTION>")});
    drag({60, 50}, {160, 90});
    EXPECT_EQ(twips(1), QRectF(2000, 1200, 1200, 400)) << "2100 goes to the even multiple of 200";
    EXPECT_EQ(stored(1, "LEFT"), u"2100") << "the node keeps where the move ended, until it is brought up to date";
    EXPECT_TRUE(forms.boxes().empty()) << "no click, so no action";
}

TEST_F(EditMode, WhileNothingSnapsAPlacementTakesTheSizeAway)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)});
    panel->setSnapToGrid(false);
    press({60, 50});
    EXPECT_EQ(twips(1), QRectF(600, 600, 0, 0));
}

TEST_F(EditMode, AGridOfNothingRaisesTheDivisionErrorToTheHost)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)});
    panel->setGridSize(0);
    press({60, 50});
    EXPECT_EQ(errors, std::vector<int>{11});
}

TEST_F(EditMode, APressWhoseTagFindsNoWrapperIsToldToTheHost)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)});
    script().move({60, 50}).play();
    test::put(*live(1), "Tag", QStringLiteral("7"));
    press({60, 50});
    EXPECT_EQ(errors, std::vector<int>{9});
}

TEST_F(EditMode, TheCurrentControlFollowsThePointerWhileUnlocked)
{
    open({control("VB.Label", 600, 600, 1200, 300), control("VB.Picture", 3000, 600, 1200, 600)});
    script().move({45, 45}).play();
    EXPECT_EQ(panel->editor().currentControl(), wrapper(1));
    script().move({210, 45}).play();
    EXPECT_EQ(panel->editor().currentControl(), wrapper(1)) << "a picture does not take it by hovering";
    panel->setLockPositions(true);
    panel->editor().setCurrentControl({});
    script().move({45, 45}).play();
    EXPECT_FALSE(panel->editor().currentControl());
}

TEST_F(EditMode, TheKeyboardSelectsToo)
{
    open({control("VB.TextBox", 600, 600, 1200, 300), control("VB.TextBox", 3000, 600, 1200, 300)});
    live(2)->setFocus();
    EXPECT_EQ(panel->editor().currentControl(), wrapper(2));
}

// Drag and drop -----------------------------------------------------------------------------------------------

TEST_F(EditMode, ALabelLetGoOverItselfMovesByTheDragAndIsStored)
{
    open({control("VB.Label", 600, 600, 3000, 800)});
    drag({60, 60}, {90, 70});
    EXPECT_EQ(twips(1), QRectF(1000, 800, 3000, 800)) << "450 and 150 twips further, snapped";
    EXPECT_EQ(stored(1, "LEFT"), u"1000");
    EXPECT_EQ(panel->editor().currentControl(), wrapper(1));
}

TEST_F(EditMode, ALabelLetGoOnTheSurfaceKeepsItsGrabPointUnderThePointer)
{
    open({control("VB.Label", 600, 600, 1200, 400)});
    drag({50, 50}, {250, 210});
    EXPECT_EQ(twips(1), QRectF(3600, 3000, 1200, 400));
    EXPECT_EQ(stored(1, "LEFT"), u"3600");
}

TEST_F(EditMode, ADropPastTheLeftEdgeGivesZeroAndNothingNegative)
{
    open({control("VB.Label", 3000, 600, 1200, 400)});
    drag({260, 50}, {20, 210});
    EXPECT_EQ(twips(1).left(), 0);
    EXPECT_EQ(stored(1, "LEFT"), u"0") << "the position is stored with force";
}

TEST_F(EditMode, WhatIsDroppedOnMovesAndTheSourceStays)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("ZanBenchWindow.StatusLight", 6000, 3000, 1200, 400)});
    drag({50, 50}, {410, 210});
    EXPECT_EQ(twips(1), QRectF(600, 600, 1200, 400));
    // 600 and 600, and the 150 by 150 twips inside the light less the 150 by 150 of the grab.
    EXPECT_EQ(twips(2), QRectF(600, 600, 1200, 400));
    EXPECT_EQ(panel->editor().currentControl(), wrapper(1)) << "the source is what was edited";
}

TEST_F(EditMode, ADropOnACheckBoxGoesOnToTheSurface)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("VB.CheckBox", 6000, 3000, 1200, 400)});
    drag({50, 50}, {410, 210});
    EXPECT_EQ(twips(1), QRectF(6000, 3000, 1200, 400));
    EXPECT_EQ(twips(2), QRectF(6000, 3000, 1200, 400));
}

TEST_F(EditMode, ADropOnAnyOtherControlDoesNothing)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("VB.TextBox", 6000, 3000, 1200, 400)});
    drag({50, 50}, {410, 210});
    EXPECT_EQ(twips(1), QRectF(600, 600, 1200, 400));
    EXPECT_EQ(twips(2), QRectF(6000, 3000, 1200, 400));
}

TEST_F(EditMode, AWindowlessLabelIsDroppedOnThroughAShape)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("VB.Shape", 5000, 2600, 4000, 2000)});
    drag({50, 50}, {410, 210});
    EXPECT_EQ(twips(1), QRectF(6000, 3000, 1200, 400)) << "a shape has no window: the surface gets the drop";
}

TEST_F(EditMode, ARemovedSourceEndsTheDragQuietly)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("VB.Label", 6000, 3000, 1200, 400)});
    script()
        .press({50, 50})
        .then([&] { panel->Controls()->Remove(Variant(1)); })
        .move({100, 100})
        .release({300, 300})
        .play();
    EXPECT_EQ(panel->Controls()->Count(), 1);
    EXPECT_TRUE(errors.empty());
}

TEST_F(EditMode, APanelThatGoesAwayDuringAMoveIsLeftAlone)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)});
    script().press({60, 50}).move({80, 60}).then([&] { panel.reset(); }).play();
    EXPECT_FALSE(panel);
}

TEST_F(EditMode, EscPutsADraggedButtonBack)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)});
    script().press({60, 50}).move({300, 300}).key(Qt::Key_Escape).release({300, 300}).play();
    EXPECT_EQ(twips(1), QRectF(600, 600, 1200, 400));
}

// Shapes and the marker ---------------------------------------------------------------------------------------

TEST_F(EditMode, AShapeIsDraggedByItsMiddleSizedByItsLastCornerAndNotMovedByTheOthers)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    drag({300, 260}, {340, 300});
    EXPECT_EQ(twips(1), QRectF(3600, 3600, 3000, 1800));
    drag({440, 360}, {480, 400}); // the bottom right corner
    EXPECT_EQ(twips(1), QRectF(3600, 3600, 3600, 2400));
    drag({240, 240}, {300, 300}); // the top left one
    EXPECT_EQ(twips(1), QRectF(3600, 3600, 3600, 2400));
}

TEST_F(EditMode, TheMarkerStandsOnTheCornerOfTheSelectedShapeAndStays)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    EXPECT_FALSE(hasMarker());
    drag({300, 260}, {340, 300});
    ASSERT_TRUE(hasMarker());
    const QRect marker = *layer()->marker();
    EXPECT_EQ(marker.size(), QSize(7, 7));
    EXPECT_EQ(panel->grab().toImage().pixelColor(marker.center()), QColor(255, 0, 0));
    EXPECT_FALSE(panel->editor().selectedShape()) << "letting go ends the selection";
    panel->setLockPositions(true);
    EXPECT_FALSE(hasMarker()) << "with nothing selected a lock hides it";
}

TEST_F(EditMode, TheLeftButtonTakesTheFirstOfTwoShapesAndTheRightButtonTheLast)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800), control("VB.Shape", 3000, 3000, 3000, 1800)});
    drag({300, 260}, {320, 260});
    EXPECT_EQ(twips(1).left(), 3200 + 200 * 0);
    EXPECT_EQ(twips(2).left(), 3000);
    press({300, 260}, Qt::RightButton);
    EXPECT_EQ(panel->editor().currentControl(), wrapper(2));
    EXPECT_EQ(menuCaptions(), labelMenu);
}

TEST_F(EditMode, AHiddenTemplateThatNoControlUsesIsHitByNeitherButton)
{
    open({control("VB.Label", 600, 600, 1200, 300)});
    // The template of the shapes lies at its place of the design, hidden.
    const QPoint onTemplate(60, 200);
    press(onTemplate);
    EXPECT_FALSE(hasMarker());
    press(onTemplate, Qt::RightButton);
    EXPECT_FALSE(panel->editor().currentControl());
    EXPECT_EQ(menuCaptions().first(), u"&Add");
}

TEST_F(EditMode, ALockedPanelDoesNotMoveItsShapes)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)}, false);
    drag({300, 260}, {340, 300});
    EXPECT_EQ(twips(1), QRectF(3000, 3000, 3000, 1800));
    EXPECT_FALSE(hasMarker());
}

TEST_F(EditMode, TheWindowsMouseUpEventIsNeverFired)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    int ups = 0;
    QObject::connect(panel.get(), &BenchWindow::MouseUp, panel.get(), [&] { ++ups; });
    press({20, 20});
    press({300, 260});
    panel->setLockMenu(true);
    press({20, 20});
    EXPECT_EQ(ups, 0);
}

// Menus -------------------------------------------------------------------------------------------------------

TEST_F(EditMode, TheSurfacesMenuHasItsFourEntriesAndTellsTheLock)
{
    open({});
    press({400, 400}, Qt::RightButton);
    EXPECT_EQ(menuCaptions(), (QStringList{u"&Add"_qs, u"&Paste"_qs, u"&Properties"_qs, u"&Lock Positions"_qs}));
    EXPECT_FALSE(forms.menu()->items[3].checked);
    choose(QStringLiteral("&Lock Positions"));
    EXPECT_TRUE(panel->LockPositions());
    press({400, 400}, Qt::RightButton);
    EXPECT_TRUE(forms.menu()->items[3].checked);
}

TEST_F(EditMode, ANewControlLiesWhereTheSurfaceWasRightClicked)
{
    open({});
    press({400, 200}, Qt::RightButton);
    choose(QStringLiteral("&Label"));
    ASSERT_EQ(panel->Controls()->Count(), 1);
    EXPECT_EQ(twips(1), QRectF(6000, 3000, 800, 200)) << "825 by 225, snapped to 200";
    EXPECT_EQ(property(1, "Caption"), u"New Label");
    EXPECT_EQ(stored(1, "TYPE"), u"VB.Label");
    EXPECT_EQ(stored(1, "KEY"), u"");
    press({400, 400}, Qt::RightButton);
    choose(QStringLiteral("&Command Button"));
    EXPECT_EQ(property(2, "Caption"), u"");
}

TEST_F(EditMode, ACopyPastedTwiceLiesTwiceOnTheCopiedOne)
{
    open({control("VB.Label", 600, 600, 1200, 400, "<CAPTION>Level</CAPTION>")});
    press({50, 50}, Qt::RightButton);
    choose(QStringLiteral("&Copy"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), wrapper(1)->XMLNode().xml());
    for (int time = 0; time < 2; ++time) {
        press({400, 400}, Qt::RightButton);
        choose(QStringLiteral("&Paste"));
    }
    ASSERT_EQ(panel->Controls()->Count(), 3);
    for (const int place : {2, 3}) {
        EXPECT_EQ(twips(place), twips(1));
        EXPECT_EQ(property(place, "Caption"), u"Level");
        EXPECT_EQ(stored(place, "KEY"), u"@1") << "the node keeps the key of the copied control";
        EXPECT_EQ(property(place, "Tag"), QString::number(place));
    }
    // The list keys are '@' and the places.
    panel->Controls()->Remove(Variant(QStringLiteral("@3")));
    EXPECT_EQ(panel->Controls()->Count(), 2);
}

TEST_F(EditMode, PastingWhatIsNoControlLeavesThePanelAsItIs)
{
    open({control("VB.Label", 600, 600, 1200, 400)});
    const QString tree = nodeOf("A").xml();
    const QString nested = QStringLiteral("<X>").repeated(100'000);
    for (const QString& text :
         {QStringLiteral("just words"), QString(), QStringLiteral("<CONTROL"), QStringLiteral("<CONTROL/>"),
          QStringLiteral("<WINDOW><CONTROL><TYPE>VB.Label</TYPE></CONTROL></WINDOW>"),
          QStringLiteral("<control><TYPE>VB.Label</TYPE></control>"),
          QStringLiteral("<CONTROL><TYPE>No.Such</TYPE></CONTROL>"),
          QStringLiteral("<!DOCTYPE CONTROL [<!ENTITY a 'b'>]><CONTROL><TYPE>VB.Label</TYPE></CONTROL>"),
          QStringLiteral("<CONTROL><TYPE>VB.Label</TYPE>") + nested,
          QStringLiteral("<CONTROL><TYPE>VB.Label</TYPE></CONTROL>") + QString(17'000'000, u' ')}) {
        QGuiApplication::clipboard()->setText(text);
        press({400, 400}, Qt::RightButton);
        choose(QStringLiteral("&Paste"));
        EXPECT_EQ(panel->Controls()->Count(), 1) << text.left(60).toStdString();
    }
    EXPECT_EQ(nodeOf("A").xml(), tree);
    EXPECT_TRUE(errors.empty());
}

TEST_F(EditMode, ADeclarationAndACommentBeforeThePastedControlArePassedOver)
{
    open({});
    QGuiApplication::clipboard()->setText(QStringLiteral(
        "<?xml version=\"1.0\"?><!-- copied --><CONTROL><TYPE>VB.Label</TYPE><CAPTION>x</CAPTION></CONTROL>"));
    press({400, 400}, Qt::RightButton);
    choose(QStringLiteral("&Paste"));
    ASSERT_EQ(panel->Controls()->Count(), 1);
    EXPECT_EQ(property(1, "Caption"), u"x");
}

TEST_F(EditMode, DeleteTakesTheCurrentControlWithoutAsking)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("VB.Label", 3000, 600, 1200, 400)});
    press({50, 50}, Qt::RightButton);
    choose(QStringLiteral("&Delete"));
    EXPECT_EQ(panel->Controls()->Count(), 1);
    EXPECT_EQ(stored(1, "LEFT"), u"3000");
    EXPECT_TRUE(panel->editor().currentControl()) << "it goes on pointing at the removed one";
    EXPECT_TRUE(forms.boxes().empty());
}

TEST_F(EditMode, SendToBackStacksTheControlsInTheirOrder)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400), control("VB.TextBox", 600, 600, 1200, 400)});
    live(1)->zOrder(0);
    ASSERT_GT(live(1)->rank(), live(2)->rank());
    press({50, 50}, Qt::RightButton);
    choose(QStringLiteral("&Send to Back"));
    EXPECT_LT(live(1)->rank(), live(2)->rank());
}

TEST_F(EditMode, AMenuOutlivesItsPanel)
{
    open({control("VB.Label", 600, 600, 1200, 400)});
    press({50, 50}, Qt::RightButton);
    const std::shared_ptr<PopupMenu> menu = forms.menu();
    panel.reset();
    for (const surface::MenuItem& item : menu->items) {
        if (item.choose)
            item.choose();
    }
    EXPECT_TRUE(errors.empty());
}

// Handles -----------------------------------------------------------------------------------------------------

TEST_F(EditMode, AnUnlockedPanelHasHandlesAroundEachControlWithAWindow)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400), control("VB.Label", 3000, 600, 1200, 400)});
    const QImage picture = panel->grab().toImage();
    EXPECT_EQ(picture.pixelColor(37, 37), QColor(0, 0, 255));
    EXPECT_NE(picture.pixelColor(197, 37), QColor(0, 0, 255)) << "a label has no window";
    panel->setLockPositions(true);
    EXPECT_NE(panel->grab().toImage().pixelColor(37, 37), QColor(0, 0, 255));
}

TEST_F(EditMode, AResizeByAHandleIsStoredAndNotSnapped)
{
    open({control("VB.CommandButton", 600, 600, 1200, 405)});
    const int screenLeft = panel->mapToGlobal(QPoint(0, 0)).x();
    drag({122, 69}, {135, 80});
    // COMPAT: the left edge is taken from the screen and not from the panel.
    EXPECT_EQ(twips(1), QRectF(600 + screenLeft * 15, 600, 1395, 570));
    EXPECT_EQ(stored(1, "WIDTH"), u"1395");
}
