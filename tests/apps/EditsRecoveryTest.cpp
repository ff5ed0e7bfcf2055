#include "ProgramFixture.h"

#include "zanbench/EditsFile.h"

#include "window/BenchWindow.h"
#include "window/PanelEditor.h"

#include <QLabel>

#include <cstdio>

using namespace zan;
using host::HostDialogs;
using host::MainWindow;

namespace {

constexpr const char* Beside = ".site.scheme.edits";

void addLabel(const MainWindow& window)
{
    window.currentPanel()->edit([](window::PanelEditor& editor) { editor.newControl(QStringLiteral("VB.Label")); });
}

/// How many labels a text of a scheme has besides the one of the fixture.
qsizetype addedLabels(const QByteArray& text)
{
    return std::max<qsizetype>(0, text.count("VB.Label") - 1);
}

std::int32_t controlCount(const MainWindow& window)
{
    return window.currentPanel()->Controls()->Count();
}

} // namespace

class EditsRecoveryTest : public ProgramFixture
{
protected:
    host::OpenOptions unlocked() const
    {
        host::OpenOptions options = offline();
        options.unlock = true;
        return options;
    }
    bool isKept(const char* name = Beside) const { return QFile::exists(path(name)); }
    bool becomesKept(const char* name = Beside) const
    {
        return QTest::qWaitFor([&] { return QFileInfo(path(name)).size() > 0; }, DeadlineMilliseconds);
    }
    bool goesAway(const char* name = Beside) const
    {
        return QTest::qWaitFor([&] { return !isKept(name); }, DeadlineMilliseconds);
    }
    /// A program that ends without being closed leaves its edits, a label that was added.
    void leaveEdits()
    {
        MainWindow window(settings, dialogs);
        ASSERT_TRUE(window.openScheme(unlocked()));
        addLabel(window);
        ASSERT_TRUE(becomesKept());
    }
    static QString errorShown(const MainWindow& window)
    {
        const auto* bar = window.findChild<QFrame*>(QStringLiteral("errorBar"));
        return bar->isHidden() ? QString() : window.findChild<QLabel*>(QStringLiteral("errorText"))->text();
    }
};

TEST_F(EditsRecoveryTest, EditsAreKeptBesideTheSchemeUntilTheyAreSaved)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(unlocked()));
    EXPECT_FALSE(isKept());
    addLabel(window);
    ASSERT_TRUE(becomesKept());
    const host::EditsRead kept = host::editsFromText(read(Beside));
    ASSERT_TRUE(kept.edits);
    EXPECT_EQ(addedLabels(kept.edits->content), 1);
    ASSERT_TRUE(window.save());
    EXPECT_FALSE(isKept());
    EXPECT_EQ(read("site.scheme"), kept.edits->content) << "what is kept is what would be saved";
}

TEST_F(EditsRecoveryTest, LaterEditsAreKeptToo)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(unlocked()));
    addLabel(window);
    ASSERT_TRUE(becomesKept());
    window.currentPanel()->edit([](window::PanelEditor& editor) { editor.newControl("VB.CommandButton"); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return read(Beside).contains("VB.CommandButton"); }, DeadlineMilliseconds));
}

TEST_F(EditsRecoveryTest, WhatAScriptChangesIsKeptToo)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(unlocked()));
    window.currentPanel()->Controls()->Control(binding::Variant(std::int32_t(1)))->setToolTipText("by a script");
    ASSERT_TRUE(becomesKept());
    EXPECT_TRUE(read(Beside).contains("by a script"));
}

TEST_F(EditsRecoveryTest, WhatAScriptChangesOnThePanelAloneIsKeptToo)
{
    writeScheme(
        "<WINDOW><KEY>Script</KEY><CONTAINER/><CONTROL><TYPE>VB.CommandButton</TYPE><LEFT>300</LEFT><TOP>300"
        "</TOP><WIDTH>900</WIDTH><HEIGHT>300</HEIGHT><ACTION><TYPE>SCRIPT</TYPE><SCRIPT>Sub Main()\\nControl.Left "
        "= 4567\\nEnd Sub"
        "</SCRIPT></ACTION></CONTROL></WINDOW>");
    MainWindow window(settings, dialogs);
    host::OpenOptions options = unlocked();
    options.offline = false;
    options.window = QStringLiteral("Script");
    ASSERT_TRUE(window.openScheme(options));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.site()->linkState() == site::LinkState::Connected; },
                                DeadlineMilliseconds));
    EXPECT_FALSE(isKept());
    const auto button = window.currentPanel()->Controls()->Control(binding::Variant(std::int32_t(1)));
    window.currentPanel()->setLockPositions(true);
    button->Control()->put(values::Name("Value"), binding::Variant(true));
    ASSERT_TRUE(becomesKept());
    EXPECT_TRUE(read(Beside).contains("4567"));
}

TEST_F(EditsRecoveryTest, UndoingAllPutsTheKeptEditsAway)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(unlocked()));
    addLabel(window);
    ASSERT_TRUE(becomesKept());
    window.currentPanel()->Undo();
    EXPECT_TRUE(goesAway());
}

TEST_F(EditsRecoveryTest, ClosingPutsThemAwayWhenTheUserDiscardsThemAndNotWhenHeTurnsBack)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(unlocked()));
    addLabel(window);
    ASSERT_TRUE(becomesKept());
    dialogs.unsavedAnswer = HostDialogs::Unsaved::Cancel;
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(isKept());
    dialogs.unsavedAnswer = HostDialogs::Unsaved::Discard;
    EXPECT_TRUE(window.close());
    EXPECT_FALSE(isKept());
}

TEST_F(EditsRecoveryTest, DiscardingForASchemeThatCannotBeOpenedLosesNothing)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(unlocked()));
    addLabel(window);
    ASSERT_TRUE(becomesKept());
    dialogs.unsavedAnswer = HostDialogs::Unsaved::Discard;
    host::OpenOptions broken;
    broken.scheme = path("missing.scheme");
    EXPECT_FALSE(window.openScheme(broken));
    EXPECT_TRUE(isKept());
    EXPECT_EQ(controlCount(window), 2);
}

TEST_F(EditsRecoveryTest, TheNextStartOffersThemAndRestoresThemToBeSaved)
{
    leaveEdits();
    dialogs.editsAnswer = HostDialogs::Edits::Restore;
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    ASSERT_EQ(dialogs.editsQuestions.size(), 1);
    EXPECT_TRUE(
        dialogs.editsQuestions[0].startsWith("Test site has edits that were not saved. The last one was made on "))
        << dialogs.editsQuestions[0].toStdString();
    EXPECT_FALSE(dialogs.editsQuestions[0].contains("changed by somebody else"));
    EXPECT_EQ(controlCount(window), 2);
    EXPECT_TRUE(window.hasUnsavedChanges());
    EXPECT_TRUE(isKept()) << "they are not saved yet";
    EXPECT_EQ(addedLabels(read("site.scheme")), 0);
    ASSERT_TRUE(window.save());
    EXPECT_EQ(addedLabels(read("site.scheme")), 1);
    EXPECT_FALSE(isKept());
    EXPECT_TRUE(dialogs.conflicts.isEmpty());
    EXPECT_FALSE(window.hasUnsavedChanges());
}

TEST_F(EditsRecoveryTest, RestoredEditsSurviveTheNextCrashToo)
{
    leaveEdits();
    dialogs.editsAnswer = HostDialogs::Edits::Restore;
    {
        MainWindow window(settings, dialogs);
        ASSERT_TRUE(window.openScheme(offline()));
    }
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_EQ(dialogs.editsQuestions.size(), 2);
    EXPECT_EQ(controlCount(window), 2);
}

TEST_F(EditsRecoveryTest, DiscardedEditsAreGoneForGood)
{
    leaveEdits();
    dialogs.editsAnswer = HostDialogs::Edits::Discard;
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_EQ(controlCount(window), 1);
    EXPECT_FALSE(window.hasUnsavedChanges());
    EXPECT_FALSE(isKept());
}

TEST_F(EditsRecoveryTest, EditsLeftForLaterStayAndNewOnesAreKeptBesideThem)
{
    leaveEdits();
    const QByteArray left = read(Beside);
    dialogs.editsAnswer = HostDialogs::Edits::Later;
    {
        MainWindow window(settings, dialogs);
        ASSERT_TRUE(window.openScheme(unlocked()));
        EXPECT_EQ(controlCount(window), 1);
        window.currentPanel()->edit([](window::PanelEditor& editor) { editor.newControl("VB.CommandButton"); });
        ASSERT_TRUE(becomesKept(".site.scheme.edits-2"));
    }
    EXPECT_EQ(read(Beside), left);
    dialogs.editsAnswer = HostDialogs::Edits::Discard;
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_EQ(dialogs.editsQuestions.size(), 3) << "both are asked about";
}

TEST_F(EditsRecoveryTest, AFileThatWasChangedSinceIsNotOverwrittenUnasked)
{
    leaveEdits();
    writeScheme("<NOTE>theirs</NOTE>");
    dialogs.editsAnswer = HostDialogs::Edits::Restore;
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_TRUE(dialogs.editsQuestions.at(0).contains("changed by somebody else"));
    EXPECT_EQ(controlCount(window), 2);
    EXPECT_FALSE(window.save());
    EXPECT_EQ(dialogs.conflicts.size(), 1);
    EXPECT_TRUE(read("site.scheme").contains("theirs"));
    EXPECT_TRUE(isKept());
}

TEST_F(EditsRecoveryTest, EditsThatWereSavedAfterAllAreNoQuestion)
{
    QByteArray kept;
    {
        MainWindow window(settings, dialogs);
        ASSERT_TRUE(window.openScheme(unlocked()));
        addLabel(window);
        ASSERT_TRUE(becomesKept());
        kept = read(Beside);
        ASSERT_TRUE(window.save());
    }
    write(Beside, kept); // killed between the save and the end of the file
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_TRUE(dialogs.editsQuestions.isEmpty());
    EXPECT_FALSE(isKept());
}

TEST_F(EditsRecoveryTest, WhatCannotBeRestoredIsToldAndLeftAlone)
{
    write(Beside, "rubbish");
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(unlocked()));
    EXPECT_TRUE(dialogs.editsQuestions.isEmpty());
    EXPECT_TRUE(errorShown(window).contains("cannot be restored: it was not written by this program"))
        << errorShown(window).toStdString();
    addLabel(window);
    EXPECT_TRUE(becomesKept(".site.scheme.edits-2"));
    EXPECT_EQ(read(Beside), "rubbish");
}

TEST_F(EditsRecoveryTest, ASumThatFitsMakesNoSchemeOfRubbish)
{
    host::KeptEdits edits{schemePath(), QDateTime::currentDateTimeUtc(), {}, "<SCHEME><WINDOW></SCHEME>"};
    write(Beside, host::editsToText(edits));
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_TRUE(dialogs.editsQuestions.isEmpty());
    EXPECT_TRUE(errorShown(window).contains("they are no scheme"));
    EXPECT_EQ(controlCount(window), 1);
}

TEST_F(EditsRecoveryTest, TwoWindowsOnOneSchemeKeepTheirOwnEdits)
{
    MainWindow first(settings, dialogs), second(settings, dialogs);
    ASSERT_TRUE(first.openScheme(unlocked()));
    addLabel(first);
    ASSERT_TRUE(becomesKept());
    ASSERT_TRUE(second.openScheme(unlocked()));
    EXPECT_TRUE(dialogs.editsQuestions.isEmpty()) << "nothing of the first is left over";
    EXPECT_TRUE(errorShown(second).contains("is being edited in another window"));
    addLabel(second);
    EXPECT_TRUE(becomesKept(".site.scheme.edits-2"));
    dialogs.unsavedAnswer = HostDialogs::Unsaved::Discard;
    EXPECT_TRUE(second.close());
    EXPECT_TRUE(isKept());
}

TEST_F(EditsRecoveryTest, SavingUnderAnotherNameTakesTheKeptEditsAlong)
{
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(unlocked()));
    addLabel(window);
    ASSERT_TRUE(becomesKept());
    dialogs.chosenTarget = path("copy.scheme");
    ASSERT_TRUE(window.saveAs());
    EXPECT_FALSE(isKept());
    addLabel(window);
    EXPECT_TRUE(becomesKept(".copy.scheme.edits"));
    EXPECT_FALSE(isKept());
}

TEST_F(EditsRecoveryTest, ALinkedSchemeHasItsEditsBesideTheFileItself)
{
    QDir(m_folder.path()).mkdir("links");
    ASSERT_TRUE(QFile::link(schemePath(), path("links/name.scheme")));
    host::OpenOptions options = unlocked();
    options.scheme = path("links/name.scheme");
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(options));
    addLabel(window);
    EXPECT_TRUE(becomesKept());
}

TEST_F(EditsRecoveryTest, EditsThatCannotBeKeptAnywhereAreToldOnce)
{
    for (const char* name : {"", "-2", "-3", "-4", "-5"})
        QDir(m_folder.path()).mkdir(QStringLiteral("%1%2").arg(Beside, QLatin1String(name)));
    write("unsaved", "a file where the user's own folder should be");
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(unlocked()));
    addLabel(window);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return errorShown(window).contains("not safe from a crash"); }, DeadlineMilliseconds))
        << errorShown(window).toStdString();
}

TEST_F(EditsRecoveryTest, AKioskDoesNotAsk)
{
    leaveEdits();
    MainWindow window(settings, dialogs);
    window.enterKiosk();
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_TRUE(dialogs.editsQuestions.isEmpty());
    EXPECT_EQ(controlCount(window), 1);
    EXPECT_TRUE(isKept());
}

TEST_F(EditsRecoveryTest, CommandsWithoutAScreenUseWhatIsSavedAndSaySoInOneLine)
{
    leaveEdits();
    const QByteArray kept = read(Beside);
    for (const QStringList& arguments :
         {QStringList{"windows", schemePath()}, QStringList{"shot", schemePath(), "--print", "--offline"}}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.contains("without the unsaved edits of")) << outcome.err.toStdString();
        EXPECT_EQ(outcome.err.count('\n'), 1) << outcome.err.toStdString();
    }
    EXPECT_EQ(read(Beside), kept);
}

// A program that is killed -----------------------------------------------------------------------------------------

namespace {

const QString SchemeVariable = QStringLiteral("KILLED_PROGRAM_SCHEME");

void say(const char* word, qsizetype number)
{
    std::printf("%s %lld\n", word, static_cast<long long>(number));
    std::fflush(stdout);
}

} // namespace

/// Not a test: what the test below starts and kills. Adds labels one after the other, without end, and says how many
/// it has added and how many are kept.
TEST(KilledProgram, DISABLED_EditsWithoutEnd)
{
    const QString scheme = qEnvironmentVariable(SchemeVariable.toLatin1());
    ASSERT_FALSE(scheme.isEmpty());
    FakeDialogs dialogs;
    host::Settings settings(QFileInfo(scheme).path() + "/settings.ini");
    MainWindow window(settings, dialogs);
    host::OpenOptions options;
    options.scheme = scheme;
    options.offline = options.unlock = true;
    ASSERT_TRUE(window.openScheme(options));
    qsizetype added = 0, kept = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        addLabel(window);
        say("edit", ++added);
        QFile file(QFileInfo(scheme).path() + '/' + Beside);
        const auto read = file.open(QIODevice::ReadOnly) ? host::editsFromText(file.readAll()) : host::EditsRead();
        const qsizetype now = read.edits ? addedLabels(read.edits->content) : 0;
        if (now != std::exchange(kept, now))
            say("kept", now);
    });
    timer.start(10);
    QApplication::exec();
}

class KilledProgramTest : public EditsRecoveryTest, public testing::WithParamInterface<int>
{};

TEST_P(KilledProgramTest, LosesNothingThatWasKept)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(SchemeVariable, schemePath());
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(),
                  {"--gtest_also_run_disabled_tests", "--gtest_filter=KilledProgram.*"});
    qsizetype added = 0, kept = 0;
    const auto take = [&] {
        while (process.canReadLine()) {
            const QByteArrayList words = process.readLine().trimmed().split(' ');
            if (words[0] == "edit")
                added = words[1].toLongLong();
            if (words[0] == "kept")
                kept = words[1].toLongLong();
        }
    };
    while (added < GetParam() && process.waitForReadyRead(DeadlineMilliseconds))
        take();
    ASSERT_GE(added, GetParam());
    process.kill();
    ASSERT_TRUE(process.waitForFinished(DeadlineMilliseconds));
    ASSERT_EQ(process.exitStatus(), QProcess::CrashExit);
    take();

    dialogs.editsAnswer = HostDialogs::Edits::Restore;
    MainWindow window(settings, dialogs);
    ASSERT_TRUE(window.openScheme(offline()));
    EXPECT_EQ(errorShown(window), "") << "whatever is found is whole";
    EXPECT_GE(controlCount(window) - 1, kept);
    EXPECT_LE(controlCount(window) - 1, added);
    EXPECT_EQ(dialogs.editsQuestions.size(), controlCount(window) > 1 ? 1 : 0);
    EXPECT_EQ(addedLabels(read("site.scheme")), 0);
}

// Before the first edits are kept, about then, and later.
INSTANTIATE_TEST_SUITE_P(Moments, KilledProgramTest, testing::Values(1, 20, 31, 62, 90, 100, 123));
