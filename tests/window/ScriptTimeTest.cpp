// The time of a panel's scripts: a box, form or menu that waits for a person takes nothing off their limit, whoever
// has opened it.

#include "WindowFixture.h"

#include "surface/intrinsic/CommandButton.h"
#include "values/Failure.h"
#include "window/ActionEngine.h"
#include "window/PausingForms.h"

#include <QDialog>

using namespace zan;
using namespace zan::window;
using namespace std::chrono_literals;
using values::Ref;

namespace {

/// Whatever these forms show, the person takes a day over it.
class SlowPerson : public surface::RecordingForms
{
public:
    std::chrono::nanoseconds now{0};

    int messageBox(QWidget* owner, const QString& text, int style, const QString& title) override
    {
        now += 24h;
        return RecordingForms::messageBox(owner, text, style, title);
    }
    void popupMenu(QWidget*, const std::shared_ptr<surface::PopupMenu>&, QPoint) override { now += 24h; }
    void showModal(QDialog& form) override
    {
        now += 24h;
        RecordingForms::showModal(form);
    }
    void showForm(QWidget* owner, surface::ModalForm& form) override
    {
        now += 24h;
        RecordingForms::showForm(owner, form);
    }
    bool busy(QWidget*, std::chrono::milliseconds) override
    {
        now += 24h;
        return true;
    }
};

class ScriptTime : public WindowTest
{
protected:
    ScriptTime()
    {
        logger->link->state = site::LinkState::Connected;
        panel->setForms(&slow);
        panel->actions().setScriptClock([this] { return slow.now += 1us; });
    }
    ~ScriptTime() override { panel.reset(); }

    /// A panel whose script breaks off or goes on with the link, then works for some time and says that it got there.
    void load(const char* more = "")
    {
        fill("A", QByteArray("<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION><TYPE>SCRIPT</TYPE><SCRIPT>"
                             "Sub Main()\\nLogger.Link.Disconnect\\nFor i = 1 To 100000\\nNext\\n"
                             "Control.Caption = \"done\"\\nEnd Sub</SCRIPT></ACTION></CONTROL>")
                      .append(more)
                      .constData());
        panel->LoadWindow(QStringLiteral("A"));
        panel->show();
    }
    void runScript() { static_cast<surface::CommandButton&>(*live(1)).press(); }

    SlowPerson slow;
};

constexpr const char* ConnectButton = "<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION><TYPE>VESPER</TYPE>"
                                      "<FUNCTION>CONNECT</FUNCTION></ACTION></CONTROL>";

} // namespace

TEST_F(ScriptTime, TheBoxOfABrokenLinkTakesNoneOfIt)
{
    load(ConnectButton);
    logger->link->onDisconnect = [this] { logger->link->enter(site::LinkState::Broken); };
    runScript();
    ASSERT_EQ(slow.boxes().size(), 1u);
    EXPECT_EQ(slow.boxes()[0].text, u"Connection to site broken");
    EXPECT_EQ(property(1, "Caption"), u"done");
}

TEST_F(ScriptTime, TheProgressWindowsBoxTakesNoneOfIt)
{
    load();
    panel->ShowProgress();
    logger->link->onDisconnect = [this] { Q_EMIT logger->ConnectionError(QStringLiteral("Line dead.")); };
    runScript();
    ASSERT_EQ(slow.boxes().size(), 1u);
    EXPECT_EQ(slow.boxes()[0].text, u"Line dead.");
    EXPECT_EQ(property(1, "Caption"), u"done");
}

TEST_F(ScriptTime, NoFormAndNoMenuOfThePanelTakesAnyOfIt)
{
    load();
    QDialog form;
    int shown = 0;
    logger->link->onDisconnect = [&] {
        panel->forms().popupMenu(panel.get(), std::make_shared<surface::PopupMenu>(), {});
        panel->forms().showModal(form);
        ++shown;
    };
    runScript();
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(property(1, "Caption"), u"done");
}

TEST_F(ScriptTime, AHostThatWorksInACallOfTheScriptDoesTakeIt)
{
    load();
    logger->link->onDisconnect = [this] { slow.now += 24h; };
    runScript();
    ASSERT_EQ(slow.boxes().size(), 1u);
    EXPECT_TRUE(slow.boxes()[0].text.startsWith(u"Scripting error: ")) << qPrintable(slow.boxes()[0].text);
    EXPECT_EQ(property(1, "Caption"), u"");
}

TEST_F(ScriptTime, ThePanelMayGoInsideABoxThatStoppedIt)
{
    load(ConnectButton);
    struct Closing : surface::RecordingForms
    {
        std::function<void()> close;
        int messageBox(QWidget* owner, const QString& text, int style, const QString& title) override
        {
            close();
            return RecordingForms::messageBox(owner, text, style, title);
        }
    } closing;
    closing.close = [this] { panel.reset(); };
    panel->setForms(&closing);
    logger->link->onDisconnect = [this] { logger->link->enter(site::LinkState::Broken); };
    runScript();
    EXPECT_FALSE(panel);
    EXPECT_EQ(closing.boxes().size(), 1u);
}
