// Rearranging a panel by keyboard.

#include "EditFixture.h"

#include "support/Properties.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>

using namespace zan;
using namespace zan::window;
using values::Ref;

namespace {

class EditKeysOf : public EditTest
{
protected:
    void openAll(bool unlocked = true)
    {
        open({control("VB.CommandButton", 600, 600, 1200, 400), control("VB.Label", 3000, 600, 1200, 400),
              control("VB.TextBox", 6000, 600, 1200, 400)},
             unlocked);
        panel->setKeyboardEditing(true);
        panel->activateWindow();
        panel->setFocus();
        settle();
        panel->editor().setCurrentControl({}); // the first control with a keyboard has had it
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(panel->window()->windowHandle(), key, modifiers);
    }
    const surface::LiveControl* framed() { return layer() ? layer()->framed() : nullptr; }
};

} // namespace

TEST_F(EditKeysOf, AreOffAtFirstAndReachedByName)
{
    EXPECT_FALSE(panel->KeyboardEditing());
    test::put(*panel->object(), "KeyboardEditing", QStringLiteral("True"));
    EXPECT_TRUE(panel->KeyboardEditing());
}

TEST_F(EditKeysOf, TabWalksTheControlsRoundTheEndAndTheCurrentOneIsFramed)
{
    openAll();
    for (const int place : {1, 2, 3, 1}) {
        key(Qt::Key_Tab);
        EXPECT_EQ(panel->editor().currentControl(), wrapper(place));
        EXPECT_EQ(framed(), live(place).get());
        settle();
        const QRect bounds = live(place)->bounds();
        EXPECT_EQ(panel->grab().toImage().pixelColor(bounds.left() - 2, bounds.center().y() + 6),
                  QColor(255, 128, 0));
    }
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(panel->editor().currentControl(), wrapper(3));
    panel->setLockPositions(true);
    EXPECT_FALSE(framed());
    panel->setLockPositions(false);
    EXPECT_EQ(framed(), live(3).get());
    panel->setKeyboardEditing(false);
    EXPECT_FALSE(framed());
}

TEST_F(EditKeysOf, ArrowsMoveByAGridStepAndWithShiftByAPixel)
{
    openAll();
    key(Qt::Key_Tab);
    key(Qt::Key_Right);
    EXPECT_EQ(twips(1).topLeft(), QPointF(800, 600));
    key(Qt::Key_Down);
    key(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(twips(1).topLeft(), QPointF(785, 800));
    key(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(twips(1), QRectF(785, 785, 1200, 400));
    EXPECT_EQ(stored(1, "LEFT"), u"785");
    EXPECT_EQ(stored(1, "TOP"), u"785");
    EXPECT_EQ(panel->EditCount(), 4) << "each press is a step";
    EXPECT_EQ(panel->UndoText(), u"Move");
    for (int step = 0; step < 4; ++step)
        panel->Undo();
    EXPECT_EQ(twips(1), QRectF(600, 600, 1200, 400));
}

TEST_F(EditKeysOf, WithCtrlTheySize)
{
    openAll();
    key(Qt::Key_Tab);
    key(Qt::Key_Right, Qt::ControlModifier);
    key(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(twips(1), QRectF(600, 600, 1400, 200));
    key(Qt::Key_Left, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(twips(1).width(), 1385);
    key(Qt::Key_Up, Qt::ControlModifier);
    key(Qt::Key_Up, Qt::ControlModifier);
    EXPECT_EQ(twips(1).height(), 0) << "and nothing below";
    EXPECT_EQ(panel->EditCount(), 4) << "what changes nothing is no step";
    EXPECT_EQ(panel->UndoText(), u"Resize");
}

TEST_F(EditKeysOf, NothingGoesBeyondTheLeftOrTheUpperEdge)
{
    openAll();
    key(Qt::Key_Tab);
    for (int time = 0; time < 5; ++time)
        key(Qt::Key_Left);
    EXPECT_EQ(twips(1).left(), 0);
    EXPECT_EQ(panel->EditCount(), 3);
}

TEST_F(EditKeysOf, DelDeletesTheCurrentControlAndNoOtherAfterwards)
{
    openAll();
    key(Qt::Key_Tab);
    key(Qt::Key_Delete);
    EXPECT_EQ(panel->Controls()->Count(), 2);
    EXPECT_FALSE(framed());
    key(Qt::Key_Delete);
    EXPECT_EQ(panel->Controls()->Count(), 2);
    EXPECT_TRUE(errors.empty());
    panel->Undo();
    EXPECT_EQ(panel->Controls()->Count(), 3);
    EXPECT_EQ(twips(1), QRectF(600, 600, 1200, 400));
}

TEST_F(EditKeysOf, CtrlCAndCtrlVCopyAndPasteAndThePastedOneIsCurrent)
{
    openAll();
    key(Qt::Key_Tab);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), wrapper(1)->XMLNode().xml());
    key(Qt::Key_V, Qt::ControlModifier);
    ASSERT_EQ(panel->Controls()->Count(), 4);
    EXPECT_EQ(panel->editor().currentControl(), wrapper(4));
    key(Qt::Key_Right);
    EXPECT_EQ(twips(4).left(), 800);
    EXPECT_EQ(twips(1).left(), 600);
    QGuiApplication::clipboard()->setText(QStringLiteral("words"));
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(panel->Controls()->Count(), 4);
    EXPECT_EQ(panel->EditCount(), 2);
}

TEST_F(EditKeysOf, KeysOfATextBoxGoToTheEditorAndNothingIsTyped)
{
    openAll();
    const QString text = property(3, "Text");
    live(3)->takeKeyboard(Qt::MouseFocusReason);
    EXPECT_EQ(panel->editor().currentControl(), wrapper(3));
    key(Qt::Key_Right);
    EXPECT_EQ(twips(3).left(), 6200);
    key(Qt::Key_Tab);
    EXPECT_EQ(panel->editor().currentControl(), wrapper(1));
    key(Qt::Key_A);
    EXPECT_EQ(property(3, "Text"), text) << "the keyboard is the panel's now";
}

TEST_F(EditKeysOf, OnALockedPanelOrUnderLockMenuOrSwitchedOffTheyDoNothing)
{
    openAll();
    key(Qt::Key_Tab);
    const QRectF before = twips(1);
    const auto tryAll = [&] {
        for (const Qt::Key pressed : {Qt::Key_Right, Qt::Key_Delete})
            key(pressed);
        key(Qt::Key_V, Qt::ControlModifier);
    };
    panel->setLockPositions(true);
    tryAll();
    panel->setLockPositions(false);
    panel->setLockMenu(true);
    EXPECT_FALSE(framed());
    tryAll();
    panel->setLockMenu(false);
    panel->setKeyboardEditing(false);
    tryAll();
    EXPECT_EQ(twips(1), before);
    EXPECT_EQ(panel->Controls()->Count(), 3);
    EXPECT_EQ(panel->EditCount(), 0);
}

TEST_F(EditKeysOf, TheirKeysAreNoShortcutsOfTheWindowWhileTheyMeanSomething)
{
    openAll();
    const auto isKept = [&](Qt::Key pressed, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::ShortcutOverride, pressed, modifiers);
        event.ignore();
        QCoreApplication::sendEvent(panel->focusWidget(), &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(isKept(Qt::Key_Delete, {})) << "there is no current control";
    key(Qt::Key_Tab);
    EXPECT_TRUE(isKept(Qt::Key_Delete, {}));
    EXPECT_TRUE(isKept(Qt::Key_C, Qt::ControlModifier));
    EXPECT_FALSE(isKept(Qt::Key_Z, Qt::ControlModifier));
    panel->setLockPositions(true);
    EXPECT_FALSE(isKept(Qt::Key_Delete, {}));
}

TEST_F(EditKeysOf, ADeletedControlLeavesTheKeyboardToThePanelAndNotToTheNextControl)
{
    open({control("VB.TextBox", 600, 600, 1200, 400), control("VB.TextBox", 3000, 600, 1200, 400)});
    panel->activateWindow();
    settle();
    live(1)->takeKeyboard(Qt::MouseFocusReason);
    ASSERT_EQ(panel->editor().currentControl(), wrapper(1));
    panel->editor().remove();
    settle();
    EXPECT_EQ(panel->window()->focusWidget(), &panel->surface());
    live(1)->takeKeyboard(Qt::MouseFocusReason);
    const QWidget* kept = panel->window()->focusWidget();
    panel->Undo();
    panel->editor().setCurrentControl(wrapper(1));
    panel->editor().remove();
    settle();
    EXPECT_EQ(panel->window()->focusWidget(), kept) << "another control has it and keeps it";
}

TEST_F(EditKeysOf, AssistiveToolsFindTheCurrentControlInFocus)
{
    openAll();
    test::put(*live(2), "Caption", QStringLiteral("Stage"));
    auto* root = QAccessible::queryAccessibleInterface(const_cast<surface::Surface*>(&panel->surface()));
    ASSERT_TRUE(root);
    settle();
    key(Qt::Key_Tab);
    key(Qt::Key_Tab);
    QAccessibleInterface* face = root->focusChild();
    ASSERT_TRUE(face);
    EXPECT_EQ(face->text(QAccessible::Name), u"Stage");
    EXPECT_TRUE(face->state().focused);
    EXPECT_TRUE(face->state().selected);
    key(Qt::Key_Tab); // to the text box: its own face
    EXPECT_EQ(root->focusChild()->role(), QAccessible::EditableText);
    EXPECT_FALSE(face->state().focused);
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    panel->setLockPositions(true);
    EXPECT_FALSE(face->state().selected) << "nothing is edited any more";
}

TEST_F(EditKeysOf, TheFrameFollowsItsControlAndGoesWithIt)
{
    openAll();
    key(Qt::Key_Tab);
    live(1)->move(3000, 3000);
    settle();
    EXPECT_EQ(panel->grab().toImage().pixelColor(198, 220), QColor(255, 128, 0));
    panel->LoadWindow(QStringLiteral("B"));
    EXPECT_FALSE(framed());
}

TEST_F(EditKeysOf, AFramedControlThatAScriptRemovesTakesItsFrameAlong)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("VB.Label", 3000, 600, 1200, 400)});
    panel->setKeyboardEditing(true);
    panel->editor().setCurrentControl(wrapper(2));
    ASSERT_EQ(framed(), live(2).get());
    panel->Controls()->Remove(binding::Variant(2));
    EXPECT_FALSE(framed());
}
