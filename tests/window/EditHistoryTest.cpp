#include "EditFixture.h"

using namespace zan;
using namespace zan::window;
using binding::Variant;
using values::Name;
using values::Ref;

namespace {

/// A panel whose tree and live state can be told as text, to be compared before and after.
class History : public EditTest
{
protected:
    /// Everything that undoing has to bring back.
    QString state()
    {
        QString text = nodeOf("A").xml();
        const auto list = panel->Controls();
        for (int place = 1; place <= list->Count(); ++place) {
            const auto control = live(place);
            text += QStringLiteral("\n%1 %2 %3,%4 %5x%6 tag %7 %8 %9")
                        .arg(control->name())
                        .arg(control->index())
                        .arg(control->left())
                        .arg(control->top())
                        .arg(control->width())
                        .arg(control->height())
                        .arg(control->tag())
                        .arg(control->visible())
                        .arg(wrapper(place)->Index());
        }
        return text;
    }
    void chooseAt(QPoint place, const QString& caption)
    {
        press(place, Qt::RightButton);
        if (forms.menu()) // a handle has none
            choose(caption);
    }
};

} // namespace

TEST_F(History, ThereIsNothingToUndoInAWindowThatWasJustLoaded)
{
    open({control("VB.Label", 600, 600, 1200, 400)});
    EXPECT_FALSE(panel->CanUndo());
    EXPECT_FALSE(panel->CanRedo());
    EXPECT_EQ(panel->EditCount(), 0);
    EXPECT_EQ(panel->UndoText(), QString());
    panel->Undo();
    panel->Redo();
}

TEST_F(History, AMoveIsOneStepWithItsNodeAndItsPlace)
{
    open({control("VB.CommandButton", 610, 600, 1200, 400)});
    const QString before = state();
    drag({60, 50}, {160, 90});
    const QString after = state();
    ASSERT_NE(after, before);
    EXPECT_EQ(panel->EditCount(), 1);
    EXPECT_EQ(panel->UndoText(), u"Move");
    panel->Undo();
    EXPECT_EQ(state(), before);
    EXPECT_TRUE(panel->CanRedo());
    EXPECT_EQ(panel->EditCount(), 0);
    panel->Redo();
    EXPECT_EQ(state(), after);
}

TEST_F(History, APressThatChangesNothingIsNoStep)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400), control("VB.Label", 3000, 600, 1200, 400)});
    drag({60, 50}, {160, 90});
    panel->Undo();
    press({60, 50});
    EXPECT_FALSE(panel->CanRedo() && panel->EditCount() > 0);
    script().press({60, 50}).move({90, 90}).key(Qt::Key_Escape).release({90, 90}).play();
    press({400, 400});
    press({400, 400}, Qt::RightButton);
    EXPECT_LE(panel->EditCount(), 1) << "only a position that was stored for the first time may count";
}

TEST_F(History, AResizeIsOneStep)
{
    open({control("VB.CommandButton", 600, 600, 1200, 405)});
    const QString before = state();
    drag({122, 69}, {135, 80});
    EXPECT_EQ(panel->UndoText(), u"Resize");
    EXPECT_EQ(panel->EditCount(), 1);
    panel->Undo();
    EXPECT_EQ(state(), before);
}

TEST_F(History, ADragOfAShapeIsOneStep)
{
    open({control("VB.Shape", 3000, 3000, 3000, 1800)});
    const QString before = state();
    drag({300, 260}, {340, 300});
    EXPECT_EQ(panel->EditCount(), 1);
    panel->Undo();
    EXPECT_EQ(state(), before);
    drag({400, 320}, {440, 360});
    EXPECT_EQ(panel->UndoText(), u"Resize");
}

TEST_F(History, ADropThatMovesTheOtherControlIsTakenBackThere)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("ZanBenchWindow.StatusLight", 6000, 3000, 1200, 400)});
    const QString before = state();
    drag({50, 50}, {415, 215});
    ASSERT_NE(state(), before);
    panel->Undo();
    EXPECT_EQ(state(), before);
}

TEST_F(History, ANewControlGoesAndComesBackAsItWas)
{
    open({control("VB.Label", 600, 600, 1200, 400)});
    const QString before = state();
    chooseAt({400, 300}, QStringLiteral("&Label"));
    const QString after = state();
    EXPECT_EQ(panel->UndoText(), u"Add");
    panel->Undo();
    EXPECT_EQ(state(), before);
    panel->Redo();
    EXPECT_EQ(state(), after);
    EXPECT_EQ(property(2, "Caption"), u"New Label");
}

TEST_F(History, ADeletedControlComesBackWithItsChannelItsKeyAndItsPlace)
{
    const auto channel = logger->scheme->window(QStringLiteral("A"))->channel(QStringLiteral("L"));
    channel->value = 3.5;
    open({control("VB.Label", 600, 600, 1200, 400),
          control("VB.TextBox", 3000, 600, 1200, 400, "<BINDTO>A|L</BINDTO>"),
          control("VB.Label", 6000, 600, 1200, 400)});
    ASSERT_EQ(channel->useCount, 1);
    const QString before = state();
    const Ref<surface::LiveControl> text = live(2);
    chooseAt({210, 45}, QStringLiteral("&Delete"));
    EXPECT_EQ(channel->useCount, 0);
    EXPECT_EQ(panel->Controls()->Count(), 2);
    panel->Undo();
    EXPECT_EQ(state(), before);
    EXPECT_EQ(channel->useCount, 1);
    EXPECT_EQ(live(2), text) << "the very control that was there";
    EXPECT_EQ(panel->Controls()->Control(Variant(QStringLiteral("@2")))->ControlType(), u"VB.TextBox");
    channel->value = 4.5;
    panel->Refresh();
    EXPECT_EQ(property(2, "Text"), u"4.5");
    // Its list key is its own again: a removal by that key finds it.
    panel->Controls()->Remove(Variant(QStringLiteral("@2")));
    EXPECT_EQ(property(2, "Left"), u"6000");
}

TEST_F(History, ADeletedControlHasHandlesAgainAndTakesClicks)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400), control("VB.CommandButton", 3000, 600, 1200, 400)});
    chooseAt({210, 50}, QStringLiteral("&Delete"));
    settle();
    EXPECT_FALSE(layer()->handleAt({197, 37}).frame);
    panel->Undo();
    settle();
    EXPECT_TRUE(layer()->handleAt({197, 37}).frame);
    drag({210, 50}, {250, 90});
    EXPECT_EQ(twips(2).topLeft(), QPointF(3600, 1200));
}

TEST_F(History, ADeletedControlLeavesNoHandlesBehind)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)}); // the template, which is hidden and not unloaded
    chooseAt({60, 50}, QStringLiteral("&Delete"));
    settle();
    EXPECT_FALSE(layer()->handleAt({37, 37}).frame);
    EXPECT_NE(panel->grab().toImage().pixelColor(37, 37), QColor(0, 0, 255));
}

TEST_F(History, DeletingTwiceTakesWhatHasTheIndexNowAndBothComeBack)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("VB.Label", 3000, 600, 1200, 400)});
    const QString before = state();
    press({50, 50}, Qt::RightButton);
    const std::shared_ptr<surface::PopupMenu> menu = forms.menu();
    choose(*menu, QStringLiteral("&Delete"));
    choose(*menu, QStringLiteral("&Delete"));
    EXPECT_EQ(panel->Controls()->Count(), 0);
    panel->Undo();
    panel->Undo();
    EXPECT_EQ(state(), before);
}

TEST_F(History, StackingIsTakenBack)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400), control("VB.TextBox", 600, 600, 1200, 400)});
    live(1)->zOrder(0);
    const int rank = live(1)->rank();
    chooseAt({50, 50}, QStringLiteral("&Send to Back"));
    ASSERT_LT(live(1)->rank(), live(2)->rank());
    EXPECT_EQ(panel->UndoText(), u"Send to Back");
    panel->Undo();
    EXPECT_EQ(live(1)->rank(), rank);
    EXPECT_GT(live(1)->rank(), live(2)->rank());
}

TEST_F(History, ANewEditForgetsWhatWasUndone)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)});
    drag({60, 50}, {160, 90});
    panel->Undo();
    chooseAt({400, 300}, QStringLiteral("&Label"));
    EXPECT_FALSE(panel->CanRedo());
    EXPECT_EQ(panel->UndoText(), u"Add");
}

TEST_F(History, AnotherWindowBeginsWithoutSteps)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)});
    drag({60, 50}, {160, 90});
    int told = 0;
    QObject::connect(panel.get(), &BenchWindow::EditsChanged, panel.get(), [&] { ++told; });
    panel->LoadWindow(QStringLiteral("B"));
    EXPECT_FALSE(panel->CanUndo());
    EXPECT_GT(told, 0);
}

TEST_F(History, WhatScriptsAndScansWriteIsNoStepAndStays)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)});
    panel->Controls()->Control(Variant(1))->setLeft(900);
    EXPECT_EQ(panel->EditCount(), 0);
    drag({70, 50}, {170, 90});
    document::XMLOps::SetAttribute(wrapper(1)->XMLNode(), Name("IGNORESCAN"), QStringLiteral("-1"));
    panel->Undo();
    EXPECT_EQ(stored(1, "IGNORESCAN"), u"-1");
    EXPECT_EQ(twips(1).left(), 900);
}

TEST_F(History, AControlThatAScriptHasRemovedIsPassedOver)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400), control("VB.Label", 3000, 600, 1200, 400)});
    drag({60, 50}, {160, 90});
    panel->Controls()->Remove(Variant(1));
    const QString before = state();
    panel->Undo();
    EXPECT_EQ(state().toStdString(), before.toStdString());
    EXPECT_TRUE(errors.empty());
}

TEST_F(History, NothingIsUndoneWhileSomethingIsBeingDragged)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)});
    drag({60, 50}, {160, 90});
    script().press({160, 90}).then([&] { panel->Undo(); }).release({200, 90}).play();
    EXPECT_EQ(panel->EditCount(), 2);
}

TEST_F(History, ScriptsReachItByName)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400)});
    drag({60, 50}, {160, 90});
    const auto object = panel->object();
    EXPECT_EQ(values::toText(object->get(Name("UndoText"))), u"Move");
    EXPECT_EQ(values::toLong(object->get(Name("EditCount"))), 1);
    object->get(Name("Undo"));
    EXPECT_EQ(values::toText(object->get(Name("CanUndo"))), u"False");
    EXPECT_EQ(values::toText(object->get(Name("CanRedo"))), u"True");
}

TEST_F(History, ADeletedControlComesBackWhenAScriptHasGivenItsKeyAway)
{
    open({control("VB.Label", 600, 600, 1200, 400), control("VB.Label", 3000, 600, 1200, 400)});
    const Ref<surface::LiveControl> deleted = live(2);
    chooseAt({210, 50}, QStringLiteral("&Delete"));
    panel->Controls()->Add(QStringLiteral("VB.TextBox"), QStringLiteral("@2"));
    panel->Undo();
    ASSERT_EQ(panel->Controls()->Count(), 3);
    EXPECT_EQ(live(2), deleted);
    EXPECT_TRUE(errors.empty());
    checkInvariants();
}
