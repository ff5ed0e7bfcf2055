#include "HostFixture.h"

#include "document/XMLOps.h"
#include "surface/host/LiveControl.h"
#include "values/Convert.h"
#include "window/BenchWindow.h"

#include <QListWidget>
#include <QMenu>
#include <QPushButton>

using namespace zan;
using host::HostDialogs;
using host::MainWindow;
using values::Name;

class MainWindowTest : public HostTest
{
protected:
    static QString field(const MainWindow& window, const char* name)
    {
        return window.findChild<QLabel*>(QLatin1String(name))->text();
    }
    static QAction* action(const MainWindow& window, const char* name)
    {
        return window.findChild<QAction*>(QLatin1String(name));
    }
    static QStringList listed(const MainWindow& window)
    {
        QStringList keys;
        const auto* list = window.findChild<QListWidget*>(QStringLiteral("windowList"));
        for (int i = 0; i < list->count(); ++i)
            keys.append(list->item(i)->text());
        return keys;
    }
    /// A change of the panel as an edit makes it.
    static void edit(const MainWindow& window, const char* tip = "changed")
    {
        window.currentPanel()->Controls()->Control(binding::Variant(std::int32_t(1)))->setToolTipText(tip);
    }
    host::OpenOptions online() const
    {
        host::OpenOptions options = offline();
        options.offline = false;
        return options;
    }
};

TEST_F(MainWindowTest, WithoutASchemeOnlyWhatMakesSenseCanBeDone)
{
    MainWindow window(settings, dialogs);
    EXPECT_TRUE(action(window, "open")->isEnabled());
    for (const char* name : {"save", "saveAs", "connectLink", "lock", "nextWindow"})
        EXPECT_FALSE(action(window, name)->isEnabled()) << name;
    EXPECT_TRUE(listed(window).isEmpty());
    EXPECT_EQ(window.currentPanel(), nullptr);
}

TEST_F(MainWindowTest, ListsTheWindowsThatArePanelsAndShowsTheFirst)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_EQ(listed(window), (QStringList{"First", "Second"})) << "a window of channels alone is no panel";
    ASSERT_TRUE(window.currentPanel());
    EXPECT_EQ(window.currentPanel()->CurrentWindow()->Key(), "First");
    EXPECT_EQ(window.windowTitle(), "Test site: First[*] (simulated logger) - ZanBench");
    EXPECT_EQ(field(window, "linkState"), "Not connected");
    EXPECT_TRUE(dialogs.errors.isEmpty());
}

TEST_F(MainWindowTest, AnotherWindowLeavesTheFirstAsItWas)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    window::BenchWindow* first = window.currentPanel();
    window.showWindow("Second");
    EXPECT_EQ(window.currentPanel()->CurrentWindow()->Key(), "Second");
    window.showWindow("first");
    EXPECT_EQ(window.currentPanel(), first);
    ASSERT_TRUE(first->Controls()) << "hiding a page must not end its panel";
    EXPECT_EQ(first->Controls()->Count(), 1);
    EXPECT_TRUE(first->CurrentWindow()->XML().child(Name("CONTROL")));
}

TEST_F(MainWindowTest, PagesTurnRoundAtTheEnd)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    action(window, "nextWindow")->trigger();
    EXPECT_EQ(window.currentPanel()->CurrentWindow()->Key(), "Second");
    action(window, "nextWindow")->trigger();
    EXPECT_EQ(window.currentPanel()->CurrentWindow()->Key(), "First");
    action(window, "previousWindow")->trigger();
    EXPECT_EQ(window.currentPanel()->CurrentWindow()->Key(), "Second");
}

TEST_F(MainWindowTest, AWindowThatTheSchemeDoesNotHaveIsRefusedAndNotMade)
{
    MainWindow window(settings, dialogs);
    host::OpenOptions options = offline();
    options.window = "Third";
    EXPECT_FALSE(window.openScheme(options));
    ASSERT_EQ(dialogs.errors.size(), 1);
    EXPECT_TRUE(dialogs.errors[0].contains("Third"));
    ASSERT_TRUE(window.openScheme(offline()));
    window.showWindow("Third");
    EXPECT_EQ(window.currentPanel()->CurrentWindow()->Key(), "First");
    EXPECT_EQ(window.site()->scheme().Windows()->Count(), 3);
}

TEST_F(MainWindowTest, ASchemeThatCannotBeReadIsToldWithItsPlaceAndTheOpenOneStays)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    write("broken.scheme", "<SCHEME>\n<WINDOW></SCHEME>");
    host::OpenOptions broken = offline();
    broken.scheme = path("broken.scheme");
    EXPECT_FALSE(window.openScheme(broken));
    ASSERT_EQ(dialogs.errors.size(), 1);
    EXPECT_TRUE(dialogs.errors[0].contains("broken.scheme:2:")) << dialogs.errors[0].toStdString();
    EXPECT_EQ(listed(window), (QStringList{"First", "Second"}));
}

TEST_F(MainWindowTest, ConnectsAndFollowsTheLinkInWordsAndCaptions)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(online()));
    ASSERT_TRUE(QTest::qWaitFor([&] { return field(window, "dataAge") != "No data yet"; }, DeadlineMilliseconds));
    EXPECT_EQ(field(window, "linkState"), "Connected");
    EXPECT_EQ(action(window, "connectLink")->text(), "Dis&connect");
    const auto label = window.currentPanel()->Controls()->Control(binding::Variant(std::int32_t(1)))->Control();
    EXPECT_EQ(values::toText(label->get(Name("Caption"))), "42");

    action(window, "connectLink")->trigger();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return field(window, "linkState") == "Not connected"; }, DeadlineMilliseconds));
    EXPECT_EQ(action(window, "connectLink")->text(), "&Connect");
}

TEST_F(MainWindowTest, ARefusedConnectionIsToldWithoutStandingInTheWay)
{
    MainWindow window(settings, dialogs);
    host::OpenOptions options = online();
    options.logger = "sim:?connect=0&refuse=1";
    ASSERT_TRUE(window.openScheme(options));
    const auto* bar = window.findChild<QFrame*>(QStringLiteral("errorBar"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bar->isHidden(); }, DeadlineMilliseconds));
    EXPECT_TRUE(dialogs.errors.isEmpty());
}

TEST_F(MainWindowTest, ASchemeWhoseLoggerCannotBeUsedOpensAllTheSame)
{
    write("odd.scheme",
          "<SCHEME><NAME>Odd</NAME><LOGGER>carrier-pigeon:7</LOGGER><WINDOW><KEY>W</KEY></WINDOW></SCHEME>");
    host::OpenOptions options;
    options.scheme = path("odd.scheme");
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(options));
    EXPECT_EQ(field(window, "linkState"), "No logger");
    EXPECT_FALSE(action(window, "connectLink")->isEnabled());
    EXPECT_FALSE(window.findChild<QFrame*>(QStringLiteral("errorBar"))->isHidden());
}

TEST_F(MainWindowTest, ALoggerGivenByHandThatIsNoneOpensNothing)
{
    MainWindow window(settings, dialogs);
    host::OpenOptions options = online();
    options.logger = "carrier-pigeon:7";
    EXPECT_FALSE(window.openScheme(options));
    EXPECT_EQ(dialogs.errors.size(), 1);
}

TEST_F(MainWindowTest, AnEditIsShownAsUnsavedAndSavingTakesThatAway)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_FALSE(window.hasUnsavedChanges()) << "what loading fills in by itself is nobody's edit";
    edit(window, "by hand");
    EXPECT_TRUE(window.hasUnsavedChanges());
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return field(window, "changes") == "Unsaved changes"; }, DeadlineMilliseconds));
    EXPECT_TRUE(window.isWindowModified());
    ASSERT_TRUE(window.save());
    EXPECT_EQ(field(window, "changes"), "Saved");
    EXPECT_FALSE(window.isWindowModified());
    EXPECT_TRUE(read("site.scheme").contains("by hand"));
}

TEST_F(MainWindowTest, WhatARunningPanelWritesByItselfIsNoUnsavedChange)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    const document::Node control = window.currentPanel()->CurrentWindow()->XML().child(Name("CONTROL"));
    document::XMLOps::SetAttribute(control, Name("IGNORESCAN"), "-1");
    EXPECT_FALSE(window.hasUnsavedChanges()) << "a mark for the next scan";
    control.appendChild(control.createElement(Name("ACTION")));
    document::XMLOps::MarkChanged(control);
    EXPECT_FALSE(window.hasUnsavedChanges()) << "an element that holds nothing";
    document::XMLOps::SetAttribute(control.child(Name("ACTION")), Name("TYPE"), "SET");
    EXPECT_TRUE(window.hasUnsavedChanges());
    window.showWindow("Second");
    EXPECT_TRUE(window.hasUnsavedChanges()) << "loading another panel must not hide an edit";
}

TEST_F(MainWindowTest, TheFirstWindowIsLargeEnoughForItsPanel)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    window.show();
    const QSize panel = window.currentPanel()->minimumSize();
    const QWidget* shown = window.currentPanel()->parentWidget();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return shown->width() >= panel.width() && shown->height() >= panel.height(); }, DeadlineMilliseconds))
        << shown->width() << " x " << shown->height();
    EXPECT_LE(shown->width(), panel.width() + 40) << "and not much larger";
    EXPECT_LE(shown->height(), panel.height() + 40);
}

TEST_F(MainWindowTest, ChangesOfEveryWindowShownAreSavedTogether)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    edit(window, "tip one");
    window.showWindow("Second");
    edit(window, "tip two");
    ASSERT_TRUE(window.save());
    const QByteArray after = read("site.scheme");
    EXPECT_TRUE(after.contains("tip one"));
    EXPECT_TRUE(after.contains("tip two"));
}

TEST_F(MainWindowTest, ClosingWithChangesAsksAndObeys)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    ASSERT_TRUE(window.save());
    edit(window, "kept or not");

    dialogs.unsavedAnswer = HostDialogs::Unsaved::Cancel;
    EXPECT_FALSE(window.close());
    EXPECT_EQ(dialogs.unsavedQuestions, QStringList{"Test site"});
    EXPECT_FALSE(read("site.scheme").contains("kept or not"));

    dialogs.unsavedAnswer = HostDialogs::Unsaved::Discard;
    EXPECT_TRUE(window.close());
    EXPECT_FALSE(read("site.scheme").contains("kept or not"));

    dialogs.unsavedAnswer = HostDialogs::Unsaved::Save;
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(read("site.scheme").contains("kept or not"));
}

TEST_F(MainWindowTest, ClosingWithoutChangesDoesNotAsk)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    ASSERT_TRUE(window.save());
    EXPECT_TRUE(window.close());
    EXPECT_TRUE(dialogs.unsavedQuestions.isEmpty());
}

TEST_F(MainWindowTest, OpeningAnotherSchemeAsksAboutTheChangesOfThisOne)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    edit(window);
    write("other.scheme", "<SCHEME><NAME>Other</NAME><WINDOW><KEY>Solo</KEY></WINDOW></SCHEME>");
    host::OpenOptions other;
    other.scheme = path("other.scheme");
    EXPECT_FALSE(window.openScheme(other));
    EXPECT_EQ(listed(window), (QStringList{"First", "Second"}));
    dialogs.unsavedAnswer = HostDialogs::Unsaved::Discard;
    EXPECT_TRUE(window.openScheme(other));
    EXPECT_EQ(listed(window), QStringList{"Solo"});
    EXPECT_EQ(settings.recentFiles().value(0), path("other.scheme"));
}

TEST_F(MainWindowTest, AFileChangedByAnotherIsNotOverwrittenUnlessTheUserSaysSo)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    ASSERT_TRUE(window.save());
    edit(window, "mine");
    writeScheme("<NOTE>theirs</NOTE>");

    dialogs.conflictAnswer = HostDialogs::Conflict::Cancel;
    EXPECT_FALSE(window.save());
    EXPECT_EQ(dialogs.conflicts.size(), 1);
    EXPECT_TRUE(read("site.scheme").contains("theirs"));
    EXPECT_TRUE(window.hasUnsavedChanges());

    dialogs.conflictAnswer = HostDialogs::Conflict::SaveAs;
    dialogs.chosenTarget = path("copy.scheme");
    EXPECT_TRUE(window.save());
    EXPECT_TRUE(read("site.scheme").contains("theirs"));
    EXPECT_TRUE(read("copy.scheme").contains("mine"));
    EXPECT_EQ(settings.recentFiles().value(0), path("copy.scheme"));
}

TEST_F(MainWindowTest, TheUserMayOverwriteWhatAnotherHasWritten)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    ASSERT_TRUE(window.save());
    edit(window, "mine");
    writeScheme("<NOTE>theirs</NOTE>");
    dialogs.conflictAnswer = HostDialogs::Conflict::Overwrite;
    EXPECT_TRUE(window.save());
    EXPECT_TRUE(read("site.scheme").contains("mine"));
    EXPECT_FALSE(window.hasUnsavedChanges());
}

TEST_F(MainWindowTest, PanelsStartLockedAndTheLockHoldsForAllOfThem)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    window::BenchWindow* first = window.currentPanel();
    EXPECT_TRUE(first->LockPositions());
    action(window, "lock")->setChecked(false);
    EXPECT_FALSE(first->LockPositions());
    window.showWindow("Second");
    EXPECT_FALSE(window.currentPanel()->LockPositions()) << "a panel shown later too";
    action(window, "lock")->setChecked(true);
    EXPECT_TRUE(first->LockPositions());
    EXPECT_TRUE(window.currentPanel()->LockPositions());
}

TEST_F(MainWindowTest, PressingAButtonOfALockedPanelChangesNothing)
{
    QByteArray text = read("site.scheme");
    text.replace("VB.TextBox</TYPE>", "VB.CommandButton</TYPE><LEFT>155</LEFT><TOP>155</TOP>");
    write("site.scheme", text);
    MainWindow window(settings, dialogs);
    host::OpenOptions options = offline();
    options.window = "Second";
    ASSERT_TRUE(window.openScheme(options));
    window.show();
    const auto button = window.currentPanel()->Controls()->Control(binding::Variant(std::int32_t(1)));
    auto* widget = window.currentPanel()->findChild<QPushButton*>();
    ASSERT_TRUE(widget);
    QTest::mouseClick(widget, Qt::LeftButton);
    EXPECT_EQ(button->Left(), 155);
    EXPECT_FALSE(window.currentPanel()->CanUndo());
    EXPECT_FALSE(window.hasUnsavedChanges());
}

TEST_F(MainWindowTest, UnlockOnTheCommandLineUnlocks)
{
    MainWindow window(settings, dialogs);
    host::OpenOptions options = offline();
    options.unlock = true;
    ASSERT_TRUE(window.openScheme(options));
    EXPECT_FALSE(window.currentPanel()->LockPositions());
    EXPECT_FALSE(action(window, "lock")->isChecked());
}

TEST_F(MainWindowTest, AKioskShowsThePanelAloneWithItsMenusLocked)
{
    MainWindow window(settings, dialogs);
    window.enterKiosk();
    window.show();
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_TRUE(window.isFullScreen());
    EXPECT_TRUE(window.currentPanel()->LockMenu());
    EXPECT_TRUE(window.currentPanel()->LockPositions());
    EXPECT_FALSE(window.findChild<QListWidget*>(QStringLiteral("windowList"))->isVisible());
    EXPECT_FALSE(window.statusBar()->isVisible());
    EXPECT_FALSE(window.menuBar()->isVisible());
    EXPECT_FALSE(action(window, "lock")->isEnabled());
}

TEST_F(MainWindowTest, RemembersTheWindowShownLastAndThePanelsBag)
{
    {
        MainWindow window(settings, dialogs);
        ASSERT_TRUE(window.openScheme(offline()));
        window.showWindow("Second");
        window.currentPanel()->setEnabled(false);
        ASSERT_TRUE(window.save());
        ASSERT_TRUE(window.close());
    }
    ASSERT_TRUE(settings.bag(schemePath(), "Second"));
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_EQ(window.currentPanel()->CurrentWindow()->Key(), "Second");
    EXPECT_FALSE(window.currentPanel()->Enabled()) << "a design value that only the bag keeps";
}

TEST_F(MainWindowTest, ARunTimeErrorOfThePanelIsShownAboveIt)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    Q_EMIT window.currentPanel()->runtimeError(13, "Type mismatch");
    EXPECT_EQ(field(window, "errorText"), "Type mismatch (run-time error 13)");
}

TEST_F(MainWindowTest, ARecentFileThatIsGoneIsToldAndForgotten)
{
    MainWindow window(settings, dialogs);
    settings.addRecentFile(path("gone.scheme"));
    ASSERT_TRUE(window.openScheme(offline()));
    QAction* gone = nullptr;
    for (QAction* candidate : window.findChildren<QAction*>())
        if (candidate->text().endsWith("gone.scheme"))
            gone = candidate;
    ASSERT_TRUE(gone);
    gone->trigger();
    EXPECT_EQ(dialogs.errors.size(), 1);
    EXPECT_FALSE(settings.recentFiles().contains(path("gone.scheme")));
}

TEST_F(MainWindowTest, PanelsLargerThanTheWindowCanBeScrolled)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    // The label ends 6150 twips from the left and 4800 from the top.
    EXPECT_EQ(window.currentPanel()->minimumSize(), QSize(6150 / 15 + 16, 4800 / 15 + 16));
}

TEST_F(MainWindowTest, AScanThatResizesALabelIsNoUnsavedChange)
{
    QByteArray windows;
    for (const char* alignment : {"0", "1", "2"})
        windows += QByteArray("<CONTROL><TYPE>VB.Label</TYPE><LEFT>3000</LEFT><TOP>300</TOP><WIDTH>600</WIDTH>"
                              "<HEIGHT>300</HEIGHT><AUTOSIZE>-1</AUTOSIZE><BINDTO>First|A</BINDTO><ALIGNMENT>") +
                   alignment + "</ALIGNMENT></CONTROL>";
    QByteArray text = read("site.scheme");
    text.replace("<WINDOW><KEY>Second</KEY><CONTAINER/>", "<WINDOW><KEY>Second</KEY><CONTAINER/>" + windows);
    write("site.scheme", text);
    MainWindow window(settings, dialogs);
    host::OpenOptions options = online();
    options.window = "Second";
    ASSERT_TRUE(window.openScheme(options));
    const auto label = window.currentPanel()->Controls()->Control(binding::Variant(std::int32_t(2)));
    const float left = label->Left();
    ASSERT_TRUE(QTest::qWaitFor([&] { return label->Left() != left; }, DeadlineMilliseconds))
        << "42 has two figures";
    EXPECT_TRUE(window.save());
    EXPECT_EQ(read("site.scheme"), text) << "nothing to save";
    EXPECT_FALSE(window.hasUnsavedChanges());
}
