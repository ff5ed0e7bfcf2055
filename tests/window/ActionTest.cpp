#include "WindowFixture.h"

#include "display/frmProgress.h"
#include "support/Properties.h"
#include "surface/intrinsic/CommandButton.h"
#include "window/ActionEngine.h"

#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>

using namespace zan;
using namespace zan::window;
using binding::Variant;
using site::LinkState;
using surface::HostForms;
using values::ErrorNumber;
using values::Name;
using values::Ref;

namespace {

class Action : public WindowTest
{
protected:
    Action() { logger->link->state = LinkState::Connected; }

    /// Loads one button with this ACTION content, bound to RTD|GATE.
    void button(const char* action, const char* type = "VB.CommandButton")
    {
        channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("GATE"));
        channel->label = QStringLiteral("Gate");
        fill("A", (QByteArray("<CONTROL><TYPE>") + type + "</TYPE><BINDTO>RTD|GATE</BINDTO><ACTION>" + action +
                   "</ACTION></CONTROL>")
                      .constData());
        panel->LoadWindow(QStringLiteral("A"));
    }
    void script(const QString& text)
    {
        button("<TYPE>SCRIPT</TYPE>");
        const document::Node action = panel->Controls()->Control(Variant(1))->XMLNode().child(Name("ACTION"));
        document::XMLOps::SetAttribute(action, Name("SCRIPT"), text, true);
    }
    void click(int place = 1)
    {
        const Ref<surface::LiveControl> control = live(place);
        if (auto* push = dynamic_cast<surface::CommandButton*>(control.get()))
            push->press();
        else
            test::put(*control, "Value", 1);
    }
    QString lastBox() const { return forms.boxes().empty() ? QString() : forms.boxes().back().text; }

    Ref<fake::FakeChannel> channel;
};

constexpr const char* Connect = "<TYPE>VESPER</TYPE><FUNCTION>CONNECT</FUNCTION>";
constexpr const char* ConnectShowing =
    "<TYPE>VESPER</TYPE><FUNCTION>CONNECT</FUNCTION><SHOWPROGRESS>-1</SHOWPROGRESS>";

} // namespace

TEST_F(Action, EverythingButAConnectNeedsAConnection)
{
    logger->link->state = LinkState::Connecting;
    for (const char* type : {"SET", "PUT", "TOGGLE", "SCRIPT", "ODD"}) {
        WindowTest::panel->Clear();
        button((QByteArray("<TYPE>") + type + "</TYPE>").constData());
        forms.clearBoxes();
        click();
        ASSERT_EQ(forms.boxes().size(), 1u) << type;
        EXPECT_EQ(lastBox(), u"You have to Connect to the site before you can perform this action");
        EXPECT_EQ(forms.boxes()[0].style, HostForms::Information);
    }
    EXPECT_TRUE(logger->live->writes.empty());
}

TEST_F(Action, ControlWithoutActionDoesNothing)
{
    fill("A", "<CONTROL><TYPE>VB.CommandButton</TYPE></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    click();
    EXPECT_TRUE(forms.boxes().empty());
    EXPECT_TRUE(errors.empty());
}

TEST_F(Action, NothingActsWhileTheLayoutIsUnlocked)
{
    button("<TYPE>PUT</TYPE><PUTVALUE>1</PUTVALUE><PUTADDRESS>5</PUTADDRESS>");
    panel->setLockPositions(false);
    click();
    EXPECT_TRUE(logger->live->writes.empty());
}

TEST_F(Action, SetAsksForAValueAndWritesItAsText)
{
    button("<TYPE>SET</TYPE>");
    channel->value = Variant(2.5);
    channel->format = QStringLiteral("0.00");
    forms.answer(QStringLiteral("7.25"));
    click();
    EXPECT_EQ(lastBox(), u"Set Channel");
    ASSERT_EQ(logger->live->writes.size(), 1u);
    EXPECT_EQ(logger->live->writes[0].channel.get(), channel.get());
    EXPECT_TRUE(logger->live->writes[0].value.isText());
    EXPECT_EQ(logger->live->writes[0].value.text(), u"7.25");
}

TEST_F(Action, SetThatIsCancelledWritesNothing)
{
    button("<TYPE>SET</TYPE>");
    click();
    EXPECT_TRUE(logger->live->writes.empty());
}

TEST_F(Action, SetAndToggleWithoutChannelEndSilently)
{
    for (const char* type : {"SET", "TOGGLE"}) {
        fill(type, (QByteArray("<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION><TYPE>") + type +
                    "</TYPE></ACTION></CONTROL>")
                       .constData());
        panel->LoadWindow(QString::fromLatin1(type));
        click();
    }
    EXPECT_TRUE(forms.boxes().empty());
    EXPECT_TRUE(logger->live->writes.empty());
    EXPECT_TRUE(errors.empty());
}

TEST_F(Action, PutWritesItsTextToAnAddressAsItsDataType)
{
    button("<TYPE>PUT</TYPE><PUTVALUE>12</PUTVALUE><PUTADDRESS>5120</PUTADDRESS><PUTDATATYPE>4</PUTDATATYPE>");
    click();
    ASSERT_EQ(logger->live->writes.size(), 1u);
    EXPECT_EQ(logger->live->writes[0].value.text(), u"12");
    EXPECT_EQ(logger->live->writes[0].channel->BaseAddress(), 5120);
    EXPECT_EQ(logger->live->writes[0].channel->DataType(), 4);
}

TEST_F(Action, PutOfNoTextWritesAnEmptyTextAndPutWithoutAddressNothing)
{
    button("<TYPE>PUT</TYPE><PUTADDRESS>9</PUTADDRESS>");
    click();
    ASSERT_EQ(logger->live->writes.size(), 1u);
    EXPECT_EQ(logger->live->writes[0].value.text(), u"");
    panel->Clear();
    fill("B",
         "<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION><TYPE>PUT</TYPE><PUTVALUE>1</PUTVALUE></ACTION></CONTROL>");
    panel->LoadWindow(QStringLiteral("B"));
    click();
    EXPECT_EQ(logger->live->writes.size(), 1u);
}

TEST_F(Action, ToggleWritesTheOtherValueAndUncheckedForAnyThirdOne)
{
    button("<TYPE>TOGGLE</TYPE><CHECKEDVALUE>10</CHECKEDVALUE><UNCHECKEDVALUE>20</UNCHECKEDVALUE>");
    struct Row
    {
        Variant value;
        double written;
    };
    for (const Row& row : {Row{Variant(20), 10}, Row{Variant(10), 20}, Row{Variant(3), 20}, Row{Variant(), 20},
                           Row{Variant::null(), 20}, Row{Variant(QStringLiteral("20")), 20},
                           Row{Variant(QStringLiteral("open")), 20}}) {
        channel->value = row.value;
        click();
        EXPECT_EQ(values::toDouble(logger->live->writes.back().value), row.written);
        EXPECT_TRUE(errors.empty());
    }
}

TEST_F(Action, ToggleOfWhatIsNoNumberWritesUncheckedAlsoWhereThatIsZero)
{
    button("<TYPE>TOGGLE</TYPE>");
    for (const Variant& value : {Variant(), Variant::null(), Variant(QStringLiteral("0"))}) {
        channel->value = value;
        click();
        EXPECT_EQ(values::toDouble(logger->live->writes.back().value), 0);
    }
    channel->value = Variant(0);
    click();
    EXPECT_EQ(values::toDouble(logger->live->writes.back().value), 1);
}

TEST_F(Action, WhatAnActionReadsIsNoUnsavedChange)
{
    button("<TYPE>TOGGLE</TYPE>");
    document::XMLOps::UnmarkChanged(logger->scheme->windows->root);
    click();
    EXPECT_EQ(logger->live->writes.size(), 1u);
    EXPECT_FALSE(isChanged());
}

TEST_F(Action, FailureOfAWriteReachesTheHostAndThePanelGoesOn)
{
    button("<TYPE>TOGGLE</TYPE>");
    logger->live->failure = values::RuntimeError(ErrorNumber::Overflow);
    click();
    EXPECT_EQ(errors, std::vector<int>{int(ErrorNumber::Overflow)});
    logger->live->failure.reset();
    click();
    EXPECT_EQ(logger->live->writes.size(), 2u);
}

TEST_F(Action, ConnectButtonConnectsFromRestAndDisconnectsOrCancelsOtherwise)
{
    struct Row
    {
        LinkState state;
        int connects;
        int disconnects;
    };
    button(Connect);
    for (const Row& row :
         {Row{LinkState::NotConnected, 1, 0}, Row{LinkState::Connecting, 0, 1}, Row{LinkState::Connected, 0, 1},
          Row{LinkState::Disconnecting, 0, 1}, Row{LinkState::Broken, 1, 0}}) {
        logger->link->connects = logger->link->disconnects = 0;
        logger->link->state = row.state;
        logger->actions = row.connects ? 0 : 3;
        click();
        EXPECT_EQ(logger->link->connects, row.connects) << int(row.state);
        EXPECT_EQ(logger->link->disconnects, row.disconnects) << int(row.state);
        EXPECT_EQ(logger->actions, row.connects ? 8 : 0) << int(row.state);
    }
}

TEST_F(Action, ProgressWindowSaysWhatIsDoneAndForWhichSite)
{
    logger->scheme->name = QStringLiteral("Weir");
    logger->link->state = LinkState::NotConnected;
    button(ConnectShowing);
    click();
    ASSERT_TRUE(panel->progressWindow());
    EXPECT_EQ(panel->progressWindow()->caption(), u"Connecting to: Weir");
    EXPECT_EQ(panel->progressWindow()->siteText(), u"Connecting to: Weir");
    Q_EMIT logger->Connected();
    EXPECT_FALSE(panel->progressWindow() && panel->progressWindow()->isVisible());
    logger->link->state = LinkState::Connected;
    click();
    ASSERT_TRUE(panel->progressWindow());
    EXPECT_EQ(panel->progressWindow()->caption(), u"Disconnecting from: Weir");
}

TEST_F(Action, ProgressWindowIsMadeAnewInTheVeryTurnInWhichTheFormerOneWent)
{
    panel->ShowProgress();
    const QPointer<display::frmProgress> first = panel->progressWindow();
    first->close();
    EXPECT_FALSE(panel->progressWindow()) << "its close box unloads it";
    panel->ShowProgress();
    const QPointer<display::frmProgress> second = panel->progressWindow();
    ASSERT_TRUE(second);
    EXPECT_NE(second.data(), first.data());
    second->unload();
    panel->ShowProgress();
    ASSERT_TRUE(panel->progressWindow());
    EXPECT_NE(panel->progressWindow().data(), second.data());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(panel->progressWindow() && panel->progressWindow()->isVisible());
}

TEST_F(Action, ProgramAsksFirstAndCancelClosesTheProgressWindowAgain)
{
    button("<TYPE>VESPER</TYPE><FUNCTION>PROGRAM</FUNCTION><SHOWPROGRESS>1</SHOWPROGRESS>");
    forms.answer(QStringLiteral("Cancel"));
    click();
    EXPECT_EQ(lastBox(), u"Warning - this will reset the logger");
    EXPECT_EQ(forms.boxes().back().style, HostForms::OkCancel);
    EXPECT_EQ(logger->actions, 0);
    EXPECT_FALSE(panel->progressWindow() && panel->progressWindow()->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    forms.answer(QStringLiteral("OK"));
    click();
    EXPECT_EQ(logger->actions, 1);
    ASSERT_TRUE(panel->progressWindow());
    EXPECT_EQ(panel->progressWindow()->caption(), u"Programming Logger");
    EXPECT_EQ(panel->progressWindow()->siteText(), u"Waiting for prompt...");
}

TEST_F(Action, ProgramWithoutConnectionGivesTheFirstBoxAndNoWarning)
{
    logger->link->state = LinkState::NotConnected;
    button("<TYPE>VESPER</TYPE><FUNCTION>PROGRAM</FUNCTION>");
    click();
    ASSERT_EQ(forms.boxes().size(), 1u);
    EXPECT_TRUE(lastBox().startsWith(u"You have to Connect"));
}

TEST_F(Action, UnloadSaysItsWordAndAddsTheAction)
{
    button("<TYPE>VESPER</TYPE><FUNCTION>UNLOAD</FUNCTION>");
    click();
    EXPECT_EQ(lastBox(), u"NB: Unload functionality not yet complete - get onto it Robin");
    EXPECT_EQ(forms.boxes().back().style, HostForms::Information);
    EXPECT_EQ(logger->actions, 2);
}

TEST_F(Action, CheckBoxClickMarksItsNodeRunsTheActionAndMutesOneScan)
{
    button("<TYPE>TOGGLE</TYPE><CHECKEDCAPTION>on</CHECKEDCAPTION><UNCHECKEDCAPTION>off</UNCHECKEDCAPTION>",
           "VB.CheckBox");
    channel->value = Variant(0);
    Q_EMIT logger->NewBenchData();
    EXPECT_EQ(property(1, "Caption"), u"off");
    click();
    ASSERT_EQ(logger->live->writes.size(), 1u);
    EXPECT_EQ(values::toDouble(logger->live->writes[0].value), 1);
    EXPECT_EQ(property(1, "Value"), u"1") << "the box shows its new state at once by itself";
    const document::Node node = panel->Controls()->Control(Variant(1))->XMLNode();
    EXPECT_EQ(node.child(Name("IGNORESCAN")).text(), u"-1");
    Q_EMIT logger->NewBenchData(); // the channel still holds the old value
    EXPECT_EQ(property(1, "Value"), u"1");
    EXPECT_FALSE(node.child(Name("IGNORESCAN")));
    Q_EMIT logger->NewBenchData();
    EXPECT_EQ(property(1, "Value"), u"0");
    EXPECT_EQ(logger->live->writes.size(), 1u) << "a change that comes from the data runs no action";
}

TEST_F(Action, TextBoxDoubleClickSetsItsChannelWhateverTheLinkAndTheLock)
{
    channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("GATE"));
    fill("A", "<CONTROL><TYPE>VB.TextBox</TYPE><BINDTO>RTD|GATE</BINDTO></CONTROL>"
              "<CONTROL><TYPE>VB.TextBox</TYPE></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    logger->link->state = LinkState::NotConnected;
    panel->setLockPositions(false);
    forms.answer(QStringLiteral("5"));
    panel->actions().setFromTextBox(panel->Controls()->Control(Variant(1)));
    ASSERT_EQ(logger->live->writes.size(), 1u);
    EXPECT_EQ(logger->live->writes[0].value.text(), u"5");
    panel->actions().setFromTextBox(panel->Controls()->Control(Variant(2)));
    EXPECT_EQ(forms.boxes().size(), 1u) << "without a channel nothing is asked";
}

// Scripts ------------------------------------------------------------------------------------------------------

TEST_F(Action, ScriptSeesItsFourItemsAndWritesThroughThem)
{
    logger->scheme->name = QStringLiteral("Weir");
    script(
        QStringLiteral("Sub Main()\\nControl.Caption = Scheme.Name & Window.Controls.Count & Logger.Link.State\\n"
                       "End Sub"));
    click();
    EXPECT_EQ(property(1, "Caption"), u"Weir12");
    EXPECT_TRUE(forms.boxes().empty()) << qPrintable(lastBox());
}

TEST_F(Action, ScriptWithARealLineBreakAndATabWorksAsWell)
{
    script(QStringLiteral("Sub Main()\n\\tControl.Caption = \"a\\tb\"\nEnd Sub"));
    click();
    EXPECT_EQ(property(1, "Caption"), u"a\tb");
}

TEST_F(Action, ScriptErrorEndsInOneBoxThatSaysWhere)
{
    script(QStringLiteral("Sub Main()\\nControl.NoSuch = 1\\nEnd Sub"));
    click();
    ASSERT_EQ(forms.boxes().size(), 1u);
    EXPECT_TRUE(lastBox().startsWith(u"Scripting error: ")) << qPrintable(lastBox());
    EXPECT_TRUE(lastBox().contains(u"\n\nLine: 2\nPos: 438\nText: ")) << qPrintable(lastBox());
    EXPECT_TRUE(errors.empty());
}

TEST_F(Action, ScriptWithoutMainEndsInTheBox)
{
    script(QStringLiteral("Dim x"));
    click();
    EXPECT_TRUE(lastBox().startsWith(u"Scripting error: "));
}

TEST_F(Action, ScriptThatClearsItsWindowEndsInPeace)
{
    script(QStringLiteral("Sub Main()\\nWindow.Clear\\nWindow.Controls.Add \"VB.Label\"\\nEnd Sub"));
    click();
    EXPECT_TRUE(forms.boxes().empty()) << qPrintable(lastBox());
    EXPECT_EQ(panel->Controls()->Count(), 1);
}

TEST_F(Action, ScriptThatLoadsAnotherWindowEndsInPeace)
{
    fill("B", "<CONTROL><TYPE>VB.Label</TYPE></CONTROL><CONTROL><TYPE>VB.Label</TYPE></CONTROL>");
    script(QStringLiteral("Sub Main()\\nWindow.LoadWindow \"B\"\\nEnd Sub"));
    click();
    EXPECT_TRUE(forms.boxes().empty()) << qPrintable(lastBox());
    EXPECT_EQ(panel->Controls()->Count(), 2);
    EXPECT_EQ(panel->CurrentWindow()->Key(), u"B");
}

TEST_F(Action, ScriptThatRemovesItsOwnControlEndsInPeace)
{
    script(QStringLiteral("Sub Main()\\nWindow.Controls.Remove 1\\nEnd Sub"));
    click();
    EXPECT_TRUE(forms.boxes().empty()) << qPrintable(lastBox());
    EXPECT_EQ(panel->Controls()->Count(), 0);
}

TEST_F(Action, ScriptThatDisconnectsEndsInPeace)
{
    logger->link->onDisconnect = [this] { logger->link->enter(LinkState::NotConnected); };
    script(QStringLiteral("Sub Main()\\nLogger.Link.Disconnect\\nEnd Sub"));
    click();
    EXPECT_EQ(logger->link->State(), LinkState::NotConnected);
    EXPECT_TRUE(forms.boxes().empty()) << qPrintable(lastBox());
}

namespace {

/// Does something while a box or a form is open.
class InterruptingForms : public surface::RecordingForms
{
public:
    std::function<void()> meanwhile;
    std::function<void(QDialog&)> onModal; ///< before the form is answered
    int messageBox(QWidget* owner, const QString& text, int style, const QString& title) override
    {
        run();
        return RecordingForms::messageBox(owner, text, style, title);
    }
    void showModal(QDialog& form) override
    {
        const QPointer<QDialog> open(&form);
        run();
        if (open && onModal)
            onModal(form);
        if (open)
            RecordingForms::showModal(form);
    }

private:
    void run()
    {
        if (const auto once = std::exchange(meanwhile, {}))
            once();
    }
};

} // namespace

TEST_F(Action, SecondRequestWhileAValueIsAskedForEndsQuietlyAndLeavesTheFirst)
{
    InterruptingForms interrupting;
    panel->setForms(&interrupting);
    button("<TYPE>SET</TYPE>");
    channel->value = Variant(1);
    interrupting.meanwhile = [&] {
        channel->value = Variant(2);
        channel->label = QStringLiteral("Second");
        click();
    };
    interrupting.answer(QString());
    QString shown;
    interrupting.onModal = [&](QDialog& form) {
        shown = form.findChild<QLineEdit*>()->text() + form.findChild<QLabel*>()->text();
    };
    click();
    EXPECT_EQ(shown, u"1Gate");
    EXPECT_EQ(interrupting.boxes().size(), 1u) << "the form was shown once";
    EXPECT_EQ(logger->live->writes.size(), 1u);
    EXPECT_TRUE(errors.empty());
    interrupting.onModal = {};
    interrupting.answer(QStringLiteral("5"));
    click();
    EXPECT_EQ(logger->live->writes.size(), 2u) << "the next request is answered again";
}

TEST_F(Action, DataArrivesWhileAScriptShowsABox)
{
    InterruptingForms interrupting;
    panel->setForms(&interrupting);
    script(QStringLiteral("Sub Main()\\nMsgBox \"hold\"\\nControl.Caption = \"done\"\\nEnd Sub"));
    interrupting.meanwhile = [this] { Q_EMIT logger->NewBenchData(); };
    click();
    EXPECT_EQ(property(1, "Caption"), u"done");
}

TEST_F(Action, ScriptMayBeInterruptedByTheScriptOfAnotherButton)
{
    InterruptingForms interrupting;
    panel->setForms(&interrupting);
    fill("A",
         "<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION><TYPE>SCRIPT</TYPE><SCRIPT>Dim x\\nSub Main()\\nx = 1\\n"
         "MsgBox \"hold\"\\nControl.Caption = \"first \" &amp; x\\nEnd Sub</SCRIPT></ACTION></CONTROL>"
         "<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION><TYPE>SCRIPT</TYPE><SCRIPT>Dim x\\nSub Main()\\nx = 2\\n"
         "Control.Caption = \"second \" &amp; x\\nEnd Sub</SCRIPT></ACTION></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    interrupting.meanwhile = [this] { click(2); };
    click(1);
    EXPECT_EQ(property(1, "Caption"), u"first 1");
    EXPECT_EQ(property(2, "Caption"), u"second 2");
}

TEST_F(Action, PanelMayGoWhileItsScriptShowsABox)
{
    InterruptingForms interrupting;
    panel->setForms(&interrupting);
    script(QStringLiteral("Sub Main()\\nMsgBox \"hold\"\\nWindow.GridSize = 5\\nEnd Sub"));
    const Ref<surface::LiveControl> control = live(1);
    interrupting.meanwhile = [this] { panel.reset(); };
    static_cast<surface::CommandButton&>(*control).press();
    EXPECT_FALSE(panel);
}

TEST_F(Action, ConnectionMayBreakWhileAValueIsAskedFor)
{
    InterruptingForms interrupting;
    panel->setForms(&interrupting);
    button("<TYPE>SET</TYPE>");
    interrupting.meanwhile = [this] { logger->link->enter(LinkState::Broken); };
    interrupting.answer(QStringLiteral("3"));
    click();
    ASSERT_EQ(logger->live->writes.size(), 1u) << "the logger decides what becomes of the value";
    EXPECT_TRUE(errors.empty());
}

TEST_F(Action, PanelMayGoWhileAValueIsAskedFor)
{
    InterruptingForms interrupting;
    panel->setForms(&interrupting);
    button("<TYPE>SET</TYPE>");
    const Ref<surface::LiveControl> control = live(1);
    interrupting.meanwhile = [this] { panel.reset(); };
    static_cast<surface::CommandButton&>(*control).press();
    EXPECT_TRUE(logger->live->writes.empty());
}

TEST_F(Action, ControlMayBeRemovedWhileItsValueIsAskedFor)
{
    InterruptingForms interrupting;
    panel->setForms(&interrupting);
    button("<TYPE>SET</TYPE>");
    interrupting.meanwhile = [this] { panel->Controls()->Clear(); };
    interrupting.answer(QStringLiteral("3"));
    click();
    EXPECT_EQ(logger->live->writes.size(), 1u);
}
