#include "HostFixture.h"

#include "zanbench/KeptWindow.h"

#include "document/XMLOps.h"
#include "surface/forms/RecordingForms.h"
#include "window/BenchWindow.h"
#include "window/BenchWindowObject.h"

#include <QListWidget>

using namespace zan;
using host::MainWindow;
using values::Name;

namespace {

QByteArray scriptButton(const QByteArray& script)
{
    return "<CONTROL><TYPE>VB.CommandButton</TYPE><WIDTH>1500</WIDTH><HEIGHT>300</HEIGHT><ACTION><TYPE>SCRIPT</"
           "TYPE>"
           "<SCRIPT>Sub Main()\\n" +
           script + "\\nEnd Sub</SCRIPT></ACTION></CONTROL>";
}

} // namespace

/// Two windows; the first has a button with a script and a label with a tool tip.
class PanelPagesTest : public HostTest
{
protected:
    void open(const QByteArray& script)
    {
        write("site.scheme",
              "<SCHEME><NAME>Site</NAME><LOGGER>sim:?connect=0</LOGGER><WINDOW><KEY>First</KEY>"
              "<CHANNEL><KEY>A</KEY></CHANNEL><CONTAINER><BACKCOLOR>255</BACKCOLOR></CONTAINER>" +
                  scriptButton(script) +
                  "<CONTROL><TYPE>VB.Label</TYPE><TOOLTIPTEXT>first tip</TOOLTIPTEXT></CONTROL></WINDOW>"
                  "<WINDOW><KEY>Second</KEY><CONTROL><TYPE>VB.Label</TYPE><TOOLTIPTEXT>second tip"
                  "</TOOLTIPTEXT></CONTROL></WINDOW></SCHEME>");
        window = std::make_unique<MainWindow>(settings, dialogs);
        ASSERT_TRUE(window->openScheme(offline()));
        window->showWindow("First");
        window->site()->connectLink();
        ASSERT_TRUE(QTest::qWaitFor([this] { return window->site()->linkState() == site::LinkState::Connected; },
                                    DeadlineMilliseconds));
    }
    window::BenchWindow& panel() const { return *window->currentPanel(); }
    /// Runs the script behind the first control.
    void click()
    {
        panel().setForms(&boxes);
        panel().Controls()->Control(binding::Variant(1))->Control()->put(Name("Value"), binding::Variant(true));
    }
    QStringList listed() const
    {
        const auto* list = window->findChild<QListWidget*>(QStringLiteral("windowList"));
        QStringList keys;
        for (int i = 0; i < list->count(); ++i)
            keys << (list->item(i) == list->currentItem() ? QLatin1Char('*') : QLatin1Char(' ')) +
                        list->item(i)->text();
        return keys;
    }
    std::size_t controlsIn(const QByteArray& content, const QString& key) const
    {
        const document::Node scheme = document::XMLOps::LoadDocument(QString::fromUtf8(content));
        for (const document::Node& candidate : scheme.children(Name("WINDOW")))
            if (candidate.child(Name("KEY")).text() == key)
                return candidate.children(Name("CONTROL")).size();
        return 0;
    }

    surface::RecordingForms boxes; // outlive the window
    std::unique_ptr<MainWindow> window;
};

TEST_F(PanelPagesTest, TheWindowThatAScriptLeavesIsSavedWithAllItHad)
{
    open("Window.LoadWindow \"Second\"");
    panel().Controls()->Control(binding::Variant(2))->setToolTipText("edited before");
    click();
    EXPECT_EQ(boxes.boxes().size(), 0U);
    EXPECT_EQ(panel().CurrentWindow()->Key(), "Second");
    EXPECT_TRUE(window->windowTitle().startsWith("Site: Second"));
    EXPECT_EQ(listed(), (QStringList{" First", "*Second"}));
    ASSERT_TRUE(window->save());
    const QByteArray saved = read("site.scheme");
    EXPECT_EQ(controlsIn(saved, "First"), 2U);
    EXPECT_EQ(controlsIn(saved, "Second"), 1U);
    EXPECT_TRUE(saved.contains("edited before"));
    EXPECT_TRUE(saved.contains("<BACKCOLOR>255</BACKCOLOR>")) << "the container falls back to nothing";
    window->showWindow("First");
    EXPECT_EQ(panel().Controls()->Count(), 2);
    EXPECT_EQ(panel().BackColor().code, 255);
}

TEST_F(PanelPagesTest, AScriptThatSavesRightAfterItsLoadSavesTheWindowItLeft)
{
    open("Window.LoadWindow \"Second\"\\nWindow.SaveWindow");
    click();
    EXPECT_EQ(controlsIn(read("site.scheme"), "First"), 2U);
    EXPECT_FALSE(window->hasUnsavedChanges());
}

TEST_F(PanelPagesTest, ALoadOfAScriptIsNoEdit)
{
    open("Window.LoadWindow \"Second\"");
    click();
    EXPECT_FALSE(window->hasUnsavedChanges());
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(dialogs.unsavedQuestions.isEmpty());
}

TEST_F(PanelPagesTest, AWindowThatHasAPanelAlreadyIsTakenOverByTheOneThatLoadsIt)
{
    open("Window.LoadWindow \"Second\"");
    window->showWindow("Second");
    panel().Controls()->Control(binding::Variant(1))->setToolTipText("edited on its own panel");
    const QPointer<window::BenchWindow> former = &panel();
    window->showWindow("First");
    click();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !former; }, DeadlineMilliseconds)) << "one panel for each window";
    EXPECT_EQ(panel().Controls()->Control(binding::Variant(1))->ToolTipText(), "edited on its own panel");
    ASSERT_TRUE(window->save());
    EXPECT_EQ(controlsIn(read("site.scheme"), "Second"), 1U);
    EXPECT_TRUE(read("site.scheme").contains("edited on its own panel"));
}

TEST_F(PanelPagesTest, AScriptThatLoadsItsOwnWindowAgainDoesNotEmptyIt)
{
    open("Window.LoadWindow \"First\"");
    click();
    EXPECT_EQ(panel().CurrentWindow()->Key(), "First");
    EXPECT_EQ(panel().Controls()->Count(), 2);
    EXPECT_EQ(listed(), (QStringList{"*First", " Second"}));
    EXPECT_FALSE(window->hasUnsavedChanges());
}

TEST_F(PanelPagesTest, AClearedPanelLeavesItsWindowInTheDocument)
{
    open("Window.Clear");
    click();
    EXPECT_EQ(panel().Controls()->Count(), 0);
    EXPECT_EQ(listed(), (QStringList{" First", " Second"}));
    EXPECT_TRUE(window->windowTitle().contains("(no window)"));
    EXPECT_FALSE(window->hasUnsavedChanges());
    window->showWindow("First");
    EXPECT_EQ(panel().Controls()->Count(), 2);
}

TEST_F(PanelPagesTest, AWindowThatAScriptMakesIsListedAndAnUnsavedChange)
{
    open("Window.LoadWindow \"Third\"");
    click();
    EXPECT_EQ(listed(), (QStringList{" First", " Second", "*Third"}));
    EXPECT_TRUE(window->hasUnsavedChanges());
}

TEST_F(PanelPagesTest, TheMannersOfTheHostHoldForAWindowThatAScriptLoads)
{
    open("Window.LoadWindow \"Second\"");
    window->enterKiosk();
    click();
    EXPECT_TRUE(panel().LockMenu());
    EXPECT_TRUE(panel().LockPositions());
}

TEST_F(PanelPagesTest, AButtonShowsAnotherWindowThroughTheHostAndBothKeepTheirControls)
{
    open("Window.Host.Show \"second\"");
    const QPointer<window::BenchWindow> first = &panel();
    click();
    EXPECT_EQ(boxes.boxes().size(), 0U);
    EXPECT_EQ(panel().CurrentWindow()->Key(), "Second");
    EXPECT_EQ(listed(), (QStringList{" First", "*Second"}));
    ASSERT_TRUE(first);
    EXPECT_EQ(first->Controls()->Count(), 2);
}

TEST_F(PanelPagesTest, AWindowThatTheSchemeDoesNotHaveIsRefusedInTheScriptAndNotMade)
{
    open("Window.Host.Show \"Fourth\"");
    click();
    ASSERT_EQ(boxes.boxes().size(), 1U);
    EXPECT_TRUE(boxes.boxes()[0].text.contains("no window 'Fourth'")) << boxes.boxes()[0].text.toStdString();
    EXPECT_EQ(listed(), (QStringList{"*First", " Second"}));
}

TEST_F(PanelPagesTest, AScriptThatKeepsTheHostFindsNothingBehindItOnceTheProgramsWindowIsGone)
{
    open("");
    const values::Ref<binding::Object> host = panel().Host();
    window.reset();
    try {
        host->get(Name("Show"), std::vector<binding::Variant>{binding::Variant(QStringLiteral("First"))});
        ADD_FAILURE();
    } catch (const values::RuntimeError& error) {
        EXPECT_EQ(error.number(), 91);
    }
}

// Saving ---------------------------------------------------------------------------------------------------------

TEST_F(PanelPagesTest, SavingWhatNobodyHasEditedLeavesTheFileAsItWas)
{
    open("");
    const QByteArray before = read("site.scheme");
    window->showWindow("Second");
    ASSERT_TRUE(window->save());
    EXPECT_EQ(read("site.scheme"), before);
    EXPECT_FALSE(QFile::exists(path("site.scheme.bak")));
    ASSERT_TRUE(QFile::remove(schemePath()));
    ASSERT_TRUE(window->save());
    EXPECT_TRUE(QFile::exists(schemePath())) << "a file that is gone is written";
}

TEST_F(PanelPagesTest, LockingUnlockingAndHidingAreNoChanges)
{
    open("");
    const QByteArray before = read("site.scheme");
    for (const char* name : {"lock", "lock", "hideProtected", "hideProtected"}) {
        window->findChild<QAction*>(QLatin1String(name))->toggle();
        EXPECT_FALSE(window->hasUnsavedChanges()) << name;
        ASSERT_TRUE(window->save());
        EXPECT_EQ(read("site.scheme"), before) << name;
    }
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(dialogs.unsavedQuestions.isEmpty());
}

TEST_F(PanelPagesTest, ASaveThatFailsIsNoChangeByItself)
{
    open("");
    dialogs.chosenTarget = path("no such folder/copy.scheme");
    EXPECT_FALSE(window->saveAs());
    EXPECT_EQ(dialogs.errors.size(), 1);
    EXPECT_FALSE(window->hasUnsavedChanges());
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(dialogs.unsavedQuestions.isEmpty());
}

TEST_F(PanelPagesTest, AnEditThatWasTakenBackNeedsNoSave)
{
    open("");
    panel().Controls()->Control(binding::Variant(2))->setToolTipText("mine");
    writeScheme(); // somebody else's
    EXPECT_FALSE(window->save());
    EXPECT_EQ(dialogs.conflicts.size(), 1);
    panel().Controls()->Control(binding::Variant(2))->setToolTipText("first tip");
    EXPECT_TRUE(window->save());
    EXPECT_EQ(dialogs.conflicts.size(), 1);
}

TEST_F(PanelPagesTest, AnEditThatOnlyTheControlKnowsAndOneThatTakesAwayAreAskedAbout)
{
    open("");
    panel().Controls()->Control(binding::Variant(2))->Control()->put(Name("ForeColor"), binding::Variant(255));
    EXPECT_FALSE(window->close());
    EXPECT_EQ(dialogs.unsavedQuestions.size(), 1);
    ASSERT_TRUE(window->save());
    panel().Controls()->Control(binding::Variant(2))->setToolTipText({});
    EXPECT_FALSE(window->close()) << "taking an element away leaves no mark";
    EXPECT_EQ(dialogs.unsavedQuestions.size(), 2);
}

// The document of a window that is left -----------------------------------------------------------------------

TEST(KeptWindow, PutsBackWhatThePanelHasInItsOrderAndLeavesTheRestAlone)
{
    const document::Node window = document::XMLOps::LoadDocument(
        QStringLiteral("<WINDOW><KEY>W</KEY><CONTROL><A>1</A></CONTROL><!--note--><CONTAINER><G>3</G></CONTAINER>"
                       "<CHANNEL><KEY>C</KEY></CHANNEL><CONTROL><A>2</A></CONTROL></WINDOW>"));
    const QString before = window.xml();
    const host::KeptWindow kept(window);
    const document::Node channel = window.child(Name("CHANNEL"));
    for (const document::Node& control : window.children(Name("CONTROL")))
        window.removeChild(control);
    window.child(Name("CONTAINER")).child(Name("G")).setText(QStringLiteral("200"));
    kept.restore();
    EXPECT_EQ(window.xml(), before);
    EXPECT_TRUE(channel == window.child(Name("CHANNEL"))) << "a channel that somebody holds is the same";

    window.appendChild(window.createElement(Name("CHANNEL"), QStringLiteral("new")));
    window.removeChild(channel);
    kept.restore();
    EXPECT_EQ(window.xml(),
              "<WINDOW><KEY>W</KEY><CONTROL><A>1</A></CONTROL><!--note--><CONTAINER><G>3</G></CONTAINER>"
              "<CONTROL><A>2</A></CONTROL><CHANNEL>new</CHANNEL></WINDOW>");
}
