// A logger and a scheme are code of the host: each call of theirs may give Nothing, throw whatever C++ can throw, or
// come back to the panel, even to end it.

#include "WindowFixture.h"

#include "display/frmProgress.h"
#include "surface/intrinsic/CommandButton.h"
#include "window/ActionEngine.h"

#include <stdexcept>

using namespace zan;
using namespace zan::window;
using binding::Variant;
using document::Node;
using site::LinkState;
using values::ErrorNumber;
using values::Name;
using values::Ref;

namespace {

/// Something that no catch clause names.
struct NoErrorOfOurs
{};

class HostileSite : public WindowTest
{
protected:
    HostileSite() { logger->link->state = LinkState::Connected; }

    void loadButton(const char* action)
    {
        channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("GATE"));
        fill("A", (QByteArray("<CONTROL><TYPE>VB.CommandButton</TYPE><BINDTO>RTD|GATE</BINDTO><ACTION>") + action +
                   "</ACTION></CONTROL>")
                      .constData());
        panel->LoadWindow(QStringLiteral("A"));
    }
    void click() { static_cast<surface::CommandButton&>(*live(1)).press(); }

    Ref<fake::FakeChannel> channel;
};

constexpr int NotSet = int(ErrorNumber::ObjectNotSet);
constexpr const char* Set = "<TYPE>SET</TYPE>";
constexpr const char* Put = "<TYPE>PUT</TYPE><PUTADDRESS>5</PUTADDRESS>";
constexpr const char* Toggle = "<TYPE>TOGGLE</TYPE>";
constexpr const char* Connect = "<TYPE>VESPER</TYPE><FUNCTION>CONNECT</FUNCTION>";
constexpr const char* Script = "<TYPE>SCRIPT</TYPE><SCRIPT>Sub Main()\\nEnd Sub</SCRIPT>";

} // namespace

TEST_F(HostileSite, LoadRaisesObjectNotSetForAPartThatIsMissing)
{
    const auto load = [this] { return errorOf([this] { panel->LoadWindow(QStringLiteral("A")); }); };
    fake::FakeWindows& windows = *logger->scheme->windows;
    windows.makesWindows = false;
    EXPECT_EQ(load(), NotSet);
    windows.makesWindows = true;
    windows.storesWindows = false;
    EXPECT_EQ(load(), NotSet);
    windows.storesWindows = true;
    const auto kept = std::exchange(logger->scheme->windows, nullptr);
    EXPECT_EQ(load(), NotSet);
    logger->scheme->windows = kept;
    const auto scheme = std::exchange(logger->scheme, nullptr);
    EXPECT_EQ(load(), NotSet);
    logger->scheme = scheme;
    logger->scheme->window(QStringLiteral("B"))->node = Node();
    EXPECT_FALSE(panel->CurrentWindow()) << "nothing has become the window that is edited";
    EXPECT_EQ(load(), 0);
}

TEST_F(HostileSite, WhateverASchemeThrowsAtALoadReachesTheHostAndThePanelGoesOn)
{
    fake::FakeWindows& windows = *logger->scheme->windows;
    for (auto* step : {&windows.onItem, &windows.onCreate, &windows.onAdd, &logger->scheme->onWindows}) {
        *step = [] { throw std::runtime_error("disk gone"); };
        EXPECT_THROW(panel->LoadWindow(QStringLiteral("A")), std::runtime_error);
        *step = {};
    }
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(panel->CurrentWindow()->Key(), u"A");
}

TEST_F(HostileSite, SaveIsSilentWhateverTheSchemeDoes)
{
    panel->LoadWindow(QStringLiteral("A"));
    logger->scheme->onSave = [] { throw std::runtime_error("disk full"); };
    EXPECT_NO_THROW(panel->SaveWindow());
    logger->scheme->onSave = [] { throw NoErrorOfOurs(); };
    EXPECT_NO_THROW(panel->SaveWindow());
    logger->onScheme = [] { throw std::runtime_error("no scheme"); };
    EXPECT_NO_THROW(panel->SaveWindow());
    logger->onScheme = {};
    logger->scheme = nullptr;
    EXPECT_NO_THROW(panel->SaveWindow());
}

TEST_F(HostileSite, SchemeMayClearThePanelOrEndItWhileItSaves)
{
    panel->LoadWindow(QStringLiteral("A"));
    logger->scheme->onSave = [this] { panel->Clear(); };
    panel->SaveWindow();
    EXPECT_EQ(panel->CurrentWindow()->Key(), u"RTD");
    logger->scheme->onSave = [this] { panel.reset(); };
    panel->SaveWindow();
    EXPECT_FALSE(panel);
}

TEST_F(HostileSite, WindowThatTheSchemeLoadsWhileItIsAskedForAnotherStands)
{
    fill("B", "<CONTROL><TYPE>VB.Label</TYPE></CONTROL>");
    bool once = true;
    logger->scheme->windows->onItem = [&] {
        if (std::exchange(once, false))
            panel->LoadWindow(QStringLiteral("B"));
    };
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(panel->CurrentWindow()->Key(), u"B");
    EXPECT_EQ(panel->Controls()->Count(), 1);
}

TEST_F(HostileSite, PanelMayGoAtEveryCallOfALoad)
{
    int windows = 0;
    const auto without = [&, this](std::function<void()>& step) {
        if (!panel) {
            panel = std::make_unique<BenchWindow>();
            panel->setForms(&forms);
            panel->setLogger(logger);
        }
        step = [this] { panel.reset(); };
        BenchWindow& doomed = *panel;
        doomed.LoadWindow(QStringLiteral("W%1").arg(++windows)); // a window that is not there yet
        step = {};
        EXPECT_FALSE(panel) << windows;
    };
    without(logger->onScheme);
    without(logger->scheme->onWindows);
    without(logger->scheme->windows->onItem);
    without(logger->scheme->windows->onCreate);
    without(logger->link->onState);
}

TEST_F(HostileSite, LoggerThatHasAnotherOneSetWhenAskedForItsLinkHasItsWay)
{
    const auto other = values::make<fake::FakeLogger>();
    const auto first = values::make<fake::FakeLogger>();
    first->onLink = [&] { panel->setLogger(other); };
    panel->setLogger(first);
    EXPECT_EQ(panel->Logger().get(), other.get());
    EXPECT_EQ(panel->Controls()->logger().get(), other.get());
}

TEST_F(HostileSite, LoggerThatFailsToGiveItsLinkFailsAtTheHost)
{
    const auto failing = values::make<fake::FakeLogger>();
    failing->onLink = [] { throw std::runtime_error("no link"); };
    EXPECT_THROW(panel->setLogger(failing), std::runtime_error);
    failing->onLink = {};
    failing->link = nullptr;
    EXPECT_EQ(errorOf([&] { panel->setLogger(failing); }), 0);
    EXPECT_EQ(errorOf([&] { panel->LoadWindow(QStringLiteral("A")); }), 0) << "there is no state to be shown";
}

TEST_F(HostileSite, ClickNeedsALinkASchemeALiveAndAChannel)
{
    struct Row
    {
        const char* action;
        std::function<void(fake::FakeLogger&)> take;
    };
    const auto noLink = [](fake::FakeLogger& site) { site.link = nullptr; };
    const auto noLive = [](fake::FakeLogger& site) { site.live = nullptr; };
    const Row rows[] = {
        {Set, noLink},
        {Put, noLink},
        {Toggle, noLink},
        {Connect, noLink},
        {Toggle, noLive},
        {Put, noLive},
        {Put, [](fake::FakeLogger& site) { site.makesChannels = false; }},
        {Connect, [](fake::FakeLogger& site) { site.scheme = nullptr; }},
    };
    for (const Row& row : rows) {
        errors.clear();
        forms.clearBoxes();
        panel->Clear();
        logger = values::make<fake::FakeLogger>();
        logger->link->state = LinkState::Connected;
        panel->setLogger(logger);
        loadButton(row.action);
        row.take(*logger);
        click();
        EXPECT_EQ(errors, std::vector<int>{NotSet}) << row.action;
        EXPECT_TRUE(forms.boxes().empty()) << row.action;
    }
}

TEST_F(HostileSite, WhateverAClickRunsIntoReachesTheHostAsAnError)
{
    loadButton(Toggle);
    const int expected[] = {int(ErrorNumber::ExceptionOccurred), int(ErrorNumber::ExceptionOccurred),
                            int(ErrorNumber::OutOfMemory)};
    const std::function<void()> failures[] = {[] { throw std::runtime_error("line noise"); },
                                              [] { throw NoErrorOfOurs(); }, [] { throw std::bad_alloc(); }};
    for (std::size_t i = 0; i < std::size(failures); ++i) {
        errors.clear();
        logger->link->onState = failures[i];
        click();
        EXPECT_EQ(errors, std::vector<int>{expected[i]});
        errors.clear();
        logger->link->onState = {};
        logger->onLive = failures[i];
        click();
        EXPECT_EQ(errors, std::vector<int>{expected[i]});
        logger->onLive = {};
    }
}

TEST_F(HostileSite, ScriptWhoseSchemeCannotBeHadEndsInItsBox)
{
    loadButton(Script);
    logger->onScheme = [] { throw std::runtime_error("locked"); };
    click();
    ASSERT_EQ(forms.boxes().size(), 1u);
    EXPECT_EQ(forms.boxes()[0].text,
              u"Scripting error: An exception occurred: locked\n\nLine: 0\nPos: 507\nText: ");
    EXPECT_TRUE(errors.empty());
}

TEST_F(HostileSite, PanelMayGoAtEveryCallOfAnAction)
{
    const auto run = [this](const char* action, const std::function<std::function<void()>&()>& step) {
        panel = std::make_unique<BenchWindow>();
        panel->setForms(&forms);
        panel->setLogger(logger);
        for (const Node& left : nodeOf("A").children(Name("CONTROL")))
            nodeOf("A").removeChild(left);
        loadButton(action);
        const auto button = live(1);
        step() = [this] { panel.reset(); };
        static_cast<surface::CommandButton&>(*button).press();
        step() = {};
        EXPECT_FALSE(panel) << action;
    };
    for (const char* action : {Set, Put, Toggle, Script})
        run(
            action, [this]() -> auto& { return logger->link->onState; });
    for (const char* action : {Put, Toggle})
        run(
            action, [this]() -> auto& { return logger->onLive; });
    run(
        Connect, [this]() -> auto& { return logger->onLink; });
    run(
        Script, [this]() -> auto& { return logger->onScheme; });
}

TEST_F(HostileSite, LightAndBarWhoseLoggerFailsEndTheScanSilently)
{
    channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("GATE"));
    fill("A", "<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE><MODE>PROGRAM</MODE></CONTROL>"
              "<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE><BINDTO>RTD|GATE</BINDTO>"
              "<COMPARISON>BIT SET=</COMPARISON></CONTROL>"
              "<CONTROL><TYPE>ZanBenchWindow.ValueBar</TYPE><BOUNDLIMIT>-1</BOUNDLIMIT>"
              "<LIMITCHANNEL>RTD|GATE</LIMITCHANNEL></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    for (auto* step : {&logger->link->onState, &logger->onLink, &logger->onLive, &logger->onScheme,
                       &logger->scheme->onWindows, &logger->scheme->windows->onItem}) {
        *step = [] { throw NoErrorOfOurs(); };
        Q_EMIT logger->NewBenchData();
        *step = {};
    }
    EXPECT_TRUE(errors.empty());
}

TEST_F(HostileSite, ScriptsBoxOfAMissingSchemeSaysSo)
{
    loadButton(Script);
    logger->scheme = nullptr;
    click();
    EXPECT_TRUE(errors.empty());
    for (const auto& box : forms.boxes())
        EXPECT_TRUE(box.text.startsWith(u"Scripting error: ")) << qPrintable(box.text);
}
