// Moves, drags and resizes that something comes in between of: data, Esc, other controls, removals, another window, and
// the end of the panel.

#include "EditFixture.h"

using namespace zan;
using namespace zan::window;
using binding::Variant;
using values::Ref;

namespace {

class EditDrag : public EditTest
{
protected:
    /// Two buttons, a label and a shape; what is moved is never the template of its array.
    void openAll()
    {
        while (const document::Node node = nodeOf("A").child(values::Name("CONTROL")))
            nodeOf("A").removeChild(node);
        open({control("VB.CommandButton", 9000, 600, 600, 400), control("VB.CommandButton", 600, 600, 1200, 400),
              control("VB.Label", 9000, 1800, 600, 400), control("VB.Label", 600, 1800, 1200, 400),
              control("VB.Shape", 9000, 3000, 600, 600), control("VB.Shape", 600, 3000, 1200, 1200)});
        before = all();
    }
    void renewPanel()
    {
        panel = std::make_unique<BenchWindow>();
        panel->setForms(&forms);
        panel->InitProperties();
        panel->setShowSiteMap(false);
        panel->setLogger(logger);
    }
    QString all()
    {
        QString text;
        for (int place = 1; place <= panel->Controls()->Count(); ++place) {
            const QRectF at = twips(place);
            text += QStringLiteral("%1 %2,%3 %4x%5\n")
                        .arg(live(place)->name())
                        .arg(at.x())
                        .arg(at.y())
                        .arg(at.width())
                        .arg(at.height());
        }
        return text;
    }
    /// Where a press moves a button, drags a label, drags a shape, and resizes a button by its last handle.
    static constexpr QPoint presses[] = {{60, 50}, {60, 130}, {80, 240}, {122, 69}};
    static constexpr int controls[] = {2, 4, 6, 2};
    QString before;
};

} // namespace

// Data --------------------------------------------------------------------------------------------------------

TEST_F(EditDrag, DataThatComesInDuringADragIsShownAtOnceAlsoOnWhatIsDragged)
{
    const auto channel = logger->scheme->window(QStringLiteral("A"))->channel(QStringLiteral("L"));
    channel->value = 1;
    open({control("VB.Label", 600, 600, 1200, 400, "<BINDTO>A|L</BINDTO>"),
          control("VB.TextBox", 3000, 600, 1200, 400, "<BINDTO>A|L</BINDTO>")});
    int value = 1;
    QStringList shown;
    const auto data = [&] {
        channel->value = ++value;
        Q_EMIT logger->NewBenchData();
        shown << property(1, "Caption") << property(2, "Text");
    };
    script().press({50, 50}).then(data).move({50, 200}).then(data).release({50, 200}).play();
    script().press({210, 50}).then(data).move({210, 200}).then(data).release({210, 200}).play();
    EXPECT_EQ(shown, QStringLiteral("2 2 3 3 4 4 5 5").split(u' '));
    EXPECT_EQ(twips(1).top(), 2800);
    EXPECT_EQ(twips(2).top(), 2800);
    EXPECT_EQ(panel->EditCount(), 2) << "what the scan writes is no edit";
    panel->Undo();
    panel->Undo();
    EXPECT_EQ(property(1, "Caption"), u"5") << "and is not taken back";
}

// Esc ---------------------------------------------------------------------------------------------------------

TEST_F(EditDrag, EscPutsEverythingBackAndIsNoEdit)
{
    openAll();
    for (const QPoint press : presses) {
        script().press(press).move({300, 300}).key(Qt::Key_Escape).move({400, 400}).release({400, 400}).play();
        EXPECT_EQ(all().toStdString(), before.toStdString());
    }
    EXPECT_EQ(panel->EditCount(), 0);
    EXPECT_FALSE(hasMarker());
}

// Other controls ----------------------------------------------------------------------------------------------

TEST_F(EditDrag, ADragAcrossOtherControlsChangesThemNot)
{
    openAll();
    for (const QPoint press : {presses[0], presses[1], presses[2]})
        script().press(press).move({610, 50}).move({615, 130}).move({610, 220}).move(press).release(press).play();
    EXPECT_EQ(all().toStdString(), before.toStdString());
}

TEST_F(EditDrag, WhatLiesOnTopTakesThePress)
{
    open({control("VB.CommandButton", 600, 600, 1200, 400), control("VB.TextBox", 600, 600, 1200, 400),
          control("VB.Label", 3000, 600, 1200, 400), control("VB.Label", 3000, 600, 1200, 400)});
    drag({60, 50}, {60, 150});
    EXPECT_EQ(twips(1).top(), 600);
    EXPECT_EQ(twips(2).top(), 2000);
    drag({210, 50}, {210, 150});
    EXPECT_EQ(twips(3).top(), 600);
    EXPECT_EQ(twips(4).top(), 2000);
}

// Removals ----------------------------------------------------------------------------------------------------

TEST_F(EditDrag, AControlThatIsRemovedUnderThePointerIsNoEditAndNoError)
{
    for (int way = 0; way < 4; ++way) {
        openAll();
        script()
            .press(presses[way])
            .move({300, 300})
            .then([&] { panel->Controls()->Remove(Variant(controls[way])); })
            .move({320, 320})
            .release({320, 320})
            .play();
        EXPECT_EQ(panel->Controls()->Count(), 5) << way;
        EXPECT_TRUE(errors.empty()) << way;
        EXPECT_FALSE(panel->CanUndo()) << way;
        EXPECT_FALSE(panel->editor().selectedShape()) << way;
        EXPECT_FALSE(hasMarker()) << way;
        checkInvariants();
        drag({610, 50}, {610, 350}); // and everything works as before
        EXPECT_EQ(panel->EditCount(), 1) << way;
    }
}

TEST_F(EditDrag, AnotherWindowThatIsLoadedUnderThePointerIsLeftAlone)
{
    fill("B", (control("VB.CommandButton", 610, 600, 1200, 400) + control("VB.Label", 610, 1800, 1200, 400) +
               control("VB.Shape", 610, 3000, 1200, 1200))
                  .toUtf8()
                  .constData());
    for (int way = 0; way < 4; ++way) {
        openAll();
        QString loaded;
        script()
            .press(presses[way])
            .move({300, 300})
            .then([&] {
                panel->LoadWindow(QStringLiteral("B"));
                panel->setLockPositions(false);
                loaded = all();
            })
            .move({320, 320})
            .release({320, 320})
            .play();
        EXPECT_EQ(all(), loaded) << way;
        EXPECT_FALSE(panel->CanUndo()) << way;
        EXPECT_TRUE(errors.empty()) << way;
        EXPECT_FALSE(hasMarker()) << way;
    }
}

TEST_F(EditDrag, APanelThatGoesUnderThePointerIsGone)
{
    for (int way = 0; way < 4; ++way) {
        renewPanel();
        openAll();
        script().press(presses[way]).move({300, 300}).then([&] { panel.reset(); }).play();
        EXPECT_FALSE(panel);
        settle();
    }
}

TEST_F(EditDrag, APanelThatIsHiddenUnderThePointerEndsQuietly)
{
    for (int way = 0; way < 4; ++way) {
        renewPanel();
        openAll();
        script().press(presses[way]).move({300, 300}).then([&] { panel->hide(); }).play();
        EXPECT_FALSE(panel->Controls());
        panel->Undo();
        EXPECT_FALSE(panel->CanUndo());
    }
    EXPECT_TRUE(errors.empty());
}

TEST_F(EditDrag, APanelMayGoWhenItsHostHearsOfThePointer)
{
    openAll();
    QObject::connect(panel.get(), &BenchWindow::MouseMove, QCoreApplication::instance(), [this] { panel.reset(); });
    script().press({80, 240}).move({90, 250}).play();
    EXPECT_FALSE(panel);
}

// What is pressed meanwhile -----------------------------------------------------------------------------------

TEST_F(EditDrag, MenusAndKeysDoNotGetThroughAMove)
{
    openAll();
    QStringList keys;
    QObject::connect(panel.get(), &BenchWindow::KeyDown, panel.get(),
                     [&](int code) { keys << QString::number(code); });
    panel->setFocus();
    script()
        .press(presses[0])
        .key(Qt::Key_A)
        .press({300, 300}, Qt::RightButton)
        .release({300, 300}, Qt::RightButton)
        .release(presses[0])
        .play();
    EXPECT_TRUE(keys.isEmpty());
    EXPECT_FALSE(forms.menu());
}
