#include "HostFixture.h"

#include "window/BenchWindow.h"
#include "window/ControlFactory.h"
#include "window/EditMenus.h"
#include "window/PanelEditor.h"

#include <QLabel>
#include <QMenu>

using namespace zan;
using host::MainWindow;
using window::PanelEditor;

class EditMenuTest : public HostTest
{
protected:
    EditMenuTest()
        : window(settings, dialogs)
    {
        host::OpenOptions options = offline();
        options.unlock = true;
        EXPECT_TRUE(window.openScheme(options));
    }
    QAction* action(const char* name) const { return window.findChild<QAction*>(QLatin1String(name)); }
    window::BenchWindow& panel() const { return *window.currentPanel(); }
    void addLabel() const
    {
        panel().edit([](PanelEditor& editor) { editor.newControl(QStringLiteral("VB.Label")); });
    }
    QMenu* menu(const QString& title) const
    {
        for (QAction* top : window.menuBar()->actions())
            if (top->text() == title)
                return top->menu();
        return nullptr;
    }
    /// As the user sees it when he opens it; separators as "-".
    static QStringList captions(QMenu& menu)
    {
        Q_EMIT menu.aboutToShow();
        QStringList texts;
        for (const QAction* action : menu.actions())
            texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
        return texts;
    }
    bool becomesUnchanged() const
    {
        return QTest::qWaitFor([this] { return !window.isWindowModified(); }, DeadlineMilliseconds);
    }

    mutable MainWindow window;
};

TEST_F(EditMenuTest, UndoAndRedoSayWhatTheyWouldDo)
{
    EXPECT_FALSE(action("undo")->isEnabled());
    EXPECT_EQ(action("undo")->text(), "&Undo");
    addLabel();
    EXPECT_TRUE(action("undo")->isEnabled());
    EXPECT_EQ(action("undo")->text(), "&Undo Add");
    EXPECT_FALSE(action("redo")->isEnabled());
    action("undo")->trigger();
    EXPECT_EQ(panel().Controls()->Count(), 1);
    EXPECT_FALSE(action("undo")->isEnabled());
    EXPECT_EQ(action("redo")->text(), "&Redo Add");
    action("redo")->trigger();
    EXPECT_EQ(panel().Controls()->Count(), 2);
}

TEST_F(EditMenuTest, TheUsualKeysUndoAndRedo)
{
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    addLabel();
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(panel().Controls()->Count(), 1);
    QTest::keyClick(&window, Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(panel().Controls()->Count(), 2);
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&window, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(panel().Controls()->Count(), 2);
}

TEST_F(EditMenuTest, UndoIsThatOfThePanelInFront)
{
    addLabel();
    window.showWindow("Second");
    EXPECT_FALSE(action("undo")->isEnabled());
    window.showWindow("First");
    EXPECT_TRUE(action("undo")->isEnabled());
}

TEST_F(EditMenuTest, EveryEditMarksTheTitleAtOnceAndUndoingAllTakesTheMarkAway)
{
    EXPECT_FALSE(window.isWindowModified());
    addLabel();
    EXPECT_TRUE(window.isWindowModified());
    panel().edit([](PanelEditor& editor) { editor.newControl(QStringLiteral("VB.TextBox")); });
    action("undo")->trigger();
    action("undo")->trigger();
    EXPECT_TRUE(becomesUnchanged());
    action("redo")->trigger();
    EXPECT_TRUE(window.isWindowModified());
}

TEST_F(EditMenuTest, APanelThatIsLoadedMeanwhileAddsNothingThatUndoingCouldNotTakeBack)
{
    addLabel();
    window.showWindow("Second");
    EXPECT_TRUE(window.hasUnsavedChanges());
    window.showWindow("First");
    action("undo")->trigger();
    EXPECT_TRUE(becomesUnchanged());
}

TEST_F(EditMenuTest, UndoingBehindASaveIsAChangeAndRedoingTakesItBack)
{
    addLabel();
    ASSERT_TRUE(window.save());
    EXPECT_FALSE(window.isWindowModified());
    action("undo")->trigger();
    EXPECT_TRUE(window.isWindowModified());
    EXPECT_TRUE(window.hasUnsavedChanges());
    action("redo")->trigger();
    EXPECT_TRUE(becomesUnchanged());
}

TEST_F(EditMenuTest, AnEditThatStandsOnThePanelAloneIsAChange)
{
    // What is placed is written into the document by the next save only.
    panel().edit([](PanelEditor& editor) { editor.newControl(QStringLiteral("VB.Shape")); });
    ASSERT_TRUE(window.save());
    panel().edit([this](PanelEditor& editor) {
        const auto control = panel().Controls()->Control(binding::Variant(std::int32_t(2)));
        window::EditHistory::Command step(editor.history(), QStringLiteral("Move"));
        step.watch(control);
        editor.PlaceControl(dynamic_cast<surface::LiveControl&>(*control->Control()), 1200.0F, 1200.0F);
    });
    EXPECT_TRUE(window.isWindowModified());
    ASSERT_TRUE(window.save());
    EXPECT_TRUE(read("site.scheme").contains("<LEFT>1200</LEFT>"));
}

TEST_F(EditMenuTest, TheWindowMenuOffersWhatARightClickOnTheSurfaceDoes)
{
    QMenu* shown = menu("&Window");
    ASSERT_TRUE(shown);
    QStringList expected;
    const std::shared_ptr<surface::PopupMenu> data = window::formRightClickMenu(panel());
    for (const surface::MenuItem& item : data->items)
        expected.append(item.isSeparator() ? QStringLiteral("-") : item.caption);
    ASSERT_EQ(expected.size(), 4);
    EXPECT_EQ(captions(*shown).mid(0, 4), expected);
    EXPECT_EQ(captions(*shown).mid(0, 4), expected) << "opening it again";
    EXPECT_FALSE(shown->actions()[3]->isChecked());

    QMenu* add = shown->actions()[0]->menu();
    ASSERT_TRUE(add);
    EXPECT_EQ(add->actions().size(), qsizetype(panel().newControlMenu().size()));
    add->actions()[0]->trigger();
    EXPECT_EQ(panel().Controls()->Count(), 2);
}

TEST_F(EditMenuTest, ThePanelsOwnLockTurnsTheLockOfAllPanels)
{
    window.showWindow("Second");
    const window::BenchWindow& second = panel();
    window.showWindow("First");
    QMenu* shown = menu("&Window");
    captions(*shown);
    shown->actions()[3]->trigger();
    EXPECT_TRUE(panel().LockPositions());
    EXPECT_TRUE(QTest::qWaitFor([this] { return action("lock")->isChecked(); }, DeadlineMilliseconds));
    EXPECT_TRUE(second.LockPositions());
    EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("lockState"))->text(), "Locked");
    captions(*shown);
    EXPECT_TRUE(shown->actions()[3]->isChecked());
}

TEST_F(EditMenuTest, GuidesAndKeysAreOffAtFirstHoldForAllPanelsAndAreRemembered)
{
    EXPECT_FALSE(panel().AlignmentGuides());
    EXPECT_FALSE(panel().KeyboardEditing());
    action("alignmentGuides")->trigger();
    action("keyboardEditing")->trigger();
    EXPECT_TRUE(panel().AlignmentGuides());
    EXPECT_TRUE(panel().KeyboardEditing());
    action("nextWindow")->trigger();
    EXPECT_TRUE(panel().AlignmentGuides());
    EXPECT_TRUE(panel().KeyboardEditing());

    MainWindow later(settings, dialogs);
    ASSERT_TRUE(later.openScheme(offline()));
    EXPECT_TRUE(later.currentPanel()->AlignmentGuides());
    EXPECT_TRUE(later.currentPanel()->KeyboardEditing());
}

TEST_F(EditMenuTest, DeletingNamesItsControlAndNeverMeansAnotherThatHasTakenItsPlace)
{
    addLabel();
    QMenu& edit = *menu("&Edit");
    captions(edit);
    EXPECT_FALSE(action("remove")->isEnabled()) << "the pointer has been over none";
    panel().editor().setCurrentControl(panel().Controls()->Control(binding::Variant(std::int32_t(1))));
    captions(edit);
    EXPECT_TRUE(action("remove")->text().startsWith("&Delete Label ")) << action("remove")->text().toStdString();
    action("remove")->trigger();
    EXPECT_EQ(panel().Controls()->Count(), 1);
    captions(edit);
    EXPECT_FALSE(action("remove")->isEnabled());
    EXPECT_FALSE(action("copy")->isEnabled());
    action("undo")->trigger();
    EXPECT_EQ(panel().Controls()->Count(), 2);
}

TEST_F(EditMenuTest, ACopyIsPastedOnTheSamePlace)
{
    panel().editor().setCurrentControl(panel().Controls()->Control(binding::Variant(std::int32_t(1))));
    captions(*menu("&Edit"));
    action("copy")->trigger();
    action("paste")->trigger();
    ASSERT_EQ(panel().Controls()->Count(), 2);
    EXPECT_EQ(panel().Controls()->Control(binding::Variant(std::int32_t(2)))->Left(), 150);
}

TEST_F(EditMenuTest, AKioskIsNotEdited)
{
    addLabel();
    window.enterKiosk();
    captions(*menu("&Edit"));
    for (const char* name : {"undo", "redo", "copy", "paste", "remove"})
        EXPECT_FALSE(action(name)->isEnabled()) << name;
}
