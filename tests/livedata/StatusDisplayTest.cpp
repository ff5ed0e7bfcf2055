#include "livedata/StatusDisplay.h"

#include "display/StatusLightControl.h"
#include "livedata/Scan.h"
#include "surface/host/ControlArray.h"
#include "surface/host/Surface.h"
#include "window/ControlTypes.h"
#include "wrappers/BenchControls.h"

#include "LiveRecorder.h"
#include "support/FakePanel.h"

#include <gtest/gtest.h>

#include <limits>

using namespace zan;
using livedata::UpdateStatusLight;
using site::LinkState;
using test::errorOf;
using values::Variant;
using Writes = std::vector<std::string>;

namespace {

class StatusDisplay : public testing::Test, protected test::LiveStage
{
protected:
    /// Scans once; the Value that the light got as text, or "none".
    std::string status()
    {
        live->takeWrites();
        live->properties.erase("Value");
        UpdateStatusLight(*wrapper, *collection);
        const Variant value = live->properties["Value"];
        if (value.isEmpty())
            return "none";
        EXPECT_TRUE(value.is(values::Kind::Boolean));
        return value.boolean() ? "True" : "False";
    }
    std::string compare(const char* comparison, const char* compareValue)
    {
        set("COMPARISON", comparison);
        set("COMPAREVALUE", compareValue);
        return status();
    }
    void feedData()
    {
        livedata::Scan scan{window::controlTypes()};
        collection->setLiveData(&scan);
        Q_EMIT logger->NewBenchData();
        collection->setLiveData(nullptr);
    }
};

} // namespace

// Comparison ---------------------------------------------------------------------------------------------------

TEST_F(StatusDisplay, GreaterOrEqualIsStrictAndGreaterIsInclusive)
{
    struct Row
    {
        const char* comparison;
        const char* below;
        const char* equal;
        const char* above;
    };
    for (const Row& row : {Row{"<", "True", "False", "False"}, Row{"<=", "True", "True", "False"},
                           Row{"=", "False", "True", "False"}, Row{">=", "False", "False", "True"},
                           Row{">", "False", "True", "True"}, Row{"NOT=", "True", "False", "True"}}) {
        bind(Variant(4));
        EXPECT_EQ(compare(row.comparison, "5"), row.below) << row.comparison;
        bind(Variant(5));
        EXPECT_EQ(compare(row.comparison, "5"), row.equal) << row.comparison;
        bind(Variant(5.5));
        EXPECT_EQ(compare(row.comparison, "5"), row.above) << row.comparison;
    }
}

TEST_F(StatusDisplay, DefaultIsEqualToZeroSoThatNoDataIsTrue)
{
    bind(Variant());
    EXPECT_EQ(status(), "True");
    bind(Variant(1));
    EXPECT_EQ(status(), "False");
}

TEST_F(StatusDisplay, CompareValueIsALeadingNumber)
{
    bind(Variant(0));
    EXPECT_EQ(compare("=", "abc"), "True");
    bind(Variant(12.5));
    EXPECT_EQ(compare("=", "12.5 metres"), "True");
}

TEST_F(StatusDisplay, UnknownOperatorLeavesFalseAndComparesNothing)
{
    bind(Variant(5));
    for (const char* unknown : {"<>", "not=", "Not=", "bit set=", "==", "= ", ""})
        EXPECT_EQ(compare(unknown, "5"), "False") << unknown;
    bind(Variant::null());
    EXPECT_EQ(compare("<>", "5"), "False");
}

TEST_F(StatusDisplay, EqualityIsExact)
{
    bind(Variant(0.1 + 0.2));
    EXPECT_EQ(compare("=", "0.3"), "False");
    bind(Variant(0.5F));
    EXPECT_EQ(compare("=", "0.5"), "True");
}

TEST_F(StatusDisplay, TextIsConvertedToANumberFirst)
{
    bind(Variant(QStringLiteral("10")));
    EXPECT_EQ(compare(">", "9"), "True"); // as texts it would be less
}

TEST_F(StatusDisplay, WhatIsNoNumberIsLessGreaterAndEqualToNothing)
{
    bind(Variant(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(compare("<=", "5"), "False");
    EXPECT_EQ(compare(">", "5"), "False");
    EXPECT_EQ(compare("NOT=", "5"), "True");
}

TEST_F(StatusDisplay, ValueThatCannotBeComparedRaisesAndLeavesTheLight)
{
    bind(Variant(QStringLiteral("dry")));
    EXPECT_EQ(errorOf([&] { compare("=", "0"); }), 13);
    bind(Variant::null());
    EXPECT_EQ(errorOf([&] { compare("=", "0"); }), 94);
    EXPECT_TRUE(live->writes.empty());
}

TEST_F(StatusDisplay, LightInChannelModeWithoutChannelIsNotTouched)
{
    set("HIDEWHENFALSE", "-1");
    EXPECT_EQ(status(), "none");
    EXPECT_TRUE(live->writes.empty());
}

// Bits ---------------------------------------------------------------------------------------------------------

TEST_F(StatusDisplay, BitTestsReadTheRawWordOfTheLogger)
{
    channel->baseAddress = 1000;
    channel->bytes = 2;
    logger->live->memory[1000] = 0b1010;
    bind(Variant(0)); // the scaled value has no say
    const std::pair<const char*, bool> bits[]{{"0", false}, {"1", true}, {"2", false}, {"3", true}, {"30", false}};
    for (const auto& [bit, isSet] : bits) {
        EXPECT_EQ(compare("BIT SET=", bit), isSet ? "True" : "False") << bit;
        EXPECT_EQ(compare("BIT CLEAR=", bit), isSet ? "False" : "True") << bit;
    }
}

TEST_F(StatusDisplay, BitNumberRoundsHalfToEven)
{
    channel->baseAddress = 1000;
    logger->live->memory[1000] = 0b0100;
    bind(Variant(0));
    EXPECT_EQ(compare("BIT SET=", "1.5"), "True");
    EXPECT_EQ(compare("BIT SET=", "2.5"), "True");
    EXPECT_EQ(compare("BIT SET=", "3"), "False");
}

TEST_F(StatusDisplay, BitNumberPastThirtyLeavesFalseForBothTests)
{
    channel->baseAddress = 1000;
    logger->live->memory[1000] = 0;
    bind(Variant(0));
    for (const char* bit : {"31", "32", "32767", "32768", "1e300"}) {
        EXPECT_EQ(compare("BIT SET=", bit), "False") << bit;
        EXPECT_EQ(compare("BIT CLEAR=", bit), "False") << bit;
    }
}

TEST_F(StatusDisplay, NegativeBitNumberIsAnEmptyMask)
{
    channel->baseAddress = 1000;
    logger->live->memory[1000] = 0x7FFFFFFF;
    bind(Variant(0));
    EXPECT_EQ(compare("BIT SET=", "-1"), "False");
    EXPECT_EQ(compare("BIT CLEAR=", "-1"), "True");
}

TEST_F(StatusDisplay, RawWordIsRoundedHalfToEven)
{
    channel->baseAddress = 1000;
    logger->live->memory[1000] = 2.5;
    bind(Variant(0));
    EXPECT_EQ(compare("BIT SET=", "1"), "True");
    EXPECT_EQ(compare("BIT SET=", "0"), "False");
}

TEST_F(StatusDisplay, FailedReadIsAWordOfZero)
{
    channel->baseAddress = 77; // the logger has nothing there
    bind(Variant(0));
    EXPECT_EQ(compare("BIT SET=", "0"), "False");
    EXPECT_EQ(compare("BIT CLEAR=", "0"), "True");
    logger->live->memory[77] = 4294967295.0; // no 32-bit integer
    EXPECT_EQ(compare("BIT SET=", "0"), "False");
    EXPECT_EQ(compare("BIT CLEAR=", "0"), "True");
}

TEST_F(StatusDisplay, FromABitTestOnNothingFailsVisibly)
{
    bind(Variant(0));
    live->refused["VISIBLE"] = 91;
    EXPECT_EQ(compare("BIT CLEAR=", "0"), "True");
    live->refused["Value"] = 380;
    EXPECT_EQ(errorOf([&] { status(); }), 0);
    set("COMPARISON", "=");
    EXPECT_EQ(errorOf([&] { status(); }), 91); // elsewhere it does
}

TEST_F(StatusDisplay, BitTestWithoutLoggerIsAFailedRead)
{
    const auto alone = values::make<wrappers::BenchControls>();
    bind(Variant(0));
    set("COMPARISON", "BIT CLEAR=");
    UpdateStatusLight(*wrapper, *alone);
    EXPECT_EQ(live->writes, (Writes{"VISIBLE=True", "Value=True"}));
}

// Logger status ------------------------------------------------------------------------------------------------

TEST_F(StatusDisplay, ConnectionStatusIsTrueInStateTwoOnly)
{
    set("MODE", "PROGRAM");
    for (int state = 0; state <= 4; ++state) {
        logger->link->state = LinkState(state);
        EXPECT_EQ(status(), state == 2 ? "True" : "False") << state;
    }
    set("PROGRAM", "anything");
    logger->link->state = LinkState::Connected;
    EXPECT_EQ(status(), "True");
    set("MODE", "channel"); // any other text than CHANNEL is the logger's status
    EXPECT_EQ(status(), "True");
}

TEST_F(StatusDisplay, DataStatusAsksForDataAndAConnectionAndKeepsTheDataThroughADisconnect)
{
    set("MODE", "PROGRAM");
    set("PROGRAM", "DATASTATUS");
    logger->link->enter(LinkState::Connected);
    EXPECT_EQ(status(), "False");
    feedData();
    EXPECT_EQ(status(), "True");
    logger->link->enter(LinkState::NotConnected);
    EXPECT_EQ(status(), "False");
    logger->link->enter(LinkState::Connected);
    EXPECT_EQ(status(), "True");
}

TEST_F(StatusDisplay, LoggerStatusWithoutLoggerRaises)
{
    const auto alone = values::make<wrappers::BenchControls>();
    set("MODE", "PROGRAM");
    EXPECT_EQ(errorOf([&] { UpdateStatusLight(*wrapper, *alone); }), 91);
}

// Visibility ---------------------------------------------------------------------------------------------------

TEST_F(StatusDisplay, VisibleIsWrittenBeforeValueAndBothAtEveryScan)
{
    bind(Variant(0));
    for (int scan = 0; scan < 2; ++scan) {
        status();
        EXPECT_EQ(live->writes, (Writes{"VISIBLE=True", "Value=True"}));
    }
}

TEST_F(StatusDisplay, EachStateCanHideTheLight)
{
    set("HIDEWHENTRUE", "-1");
    bind(Variant(0));
    status();
    EXPECT_EQ(live->writes, (Writes{"VISIBLE=False", "Value=True"}));
    EXPECT_FALSE(wrapper->Visible());
    bind(Variant(1));
    status();
    EXPECT_EQ(live->writes, (Writes{"VISIBLE=True", "Value=False"}));
    set("HIDEWHENFALSE", "1");
    status();
    EXPECT_EQ(live->writes, (Writes{"VISIBLE=False", "Value=False"}));
}

TEST_F(StatusDisplay, HideAttributesAreLeadingNumbers)
{
    bind(Variant(0));
    for (const char* text : {"0", "x", "0.0", ""}) {
        set("HIDEWHENTRUE", text);
        status();
        EXPECT_EQ(live->writes[0], "VISIBLE=True") << text;
    }
    for (const char* text : {"0.5", "7 times", "-1"}) {
        set("HIDEWHENTRUE", text);
        status();
        EXPECT_EQ(live->writes[0], "VISIBLE=False") << text;
    }
}

TEST_F(StatusDisplay, LightOnASurfaceShowsItsStateAndIsHidden)
{
    surface::Surface surface;
    surface.addArray<display::StatusLightControl>(QStringLiteral("StatusLight1"));
    const auto control = surface.array(u"StatusLight1")->item(1);
    auto& light = static_cast<display::StatusLightControl&>(*control);
    wrapper->setControl(control);
    set("HIDEWHENFALSE", "-1");
    bind(Variant(0));
    UpdateStatusLight(*wrapper, *collection);
    EXPECT_TRUE(light.isOn());
    EXPECT_TRUE(light.visible());
    bind(Variant(1));
    UpdateStatusLight(*wrapper, *collection);
    EXPECT_FALSE(light.isOn());
    EXPECT_FALSE(light.visible());
}

// Link ---------------------------------------------------------------------------------------------------------

TEST_F(StatusDisplay, LinkSetsEveryConnectionLightWhateverItsMode)
{
    livedata::Scan scan{window::controlTypes()};
    wrapper->setControlType(QStringLiteral("ZanBenchWindow.StatusLight"));
    bind(Variant(7)); // in channel mode
    live->takeWrites();
    scan.followLink(*wrapper, 2);
    EXPECT_EQ(live->takeWrites(), Writes{"Value=True"});
    for (const int state : {0, 1, 3, 4}) {
        scan.followLink(*wrapper, state);
        EXPECT_EQ(live->takeWrites(), Writes{"Value=False"});
    }
    EXPECT_EQ(status(), "False"); // the next scan asks the channel again
}

TEST_F(StatusDisplay, LinkLeavesOtherLightsAndOtherTypesAlone)
{
    livedata::Scan scan{window::controlTypes()};
    wrapper->setControlType(QStringLiteral("ZanBenchWindow.StatusLight"));
    set("PROGRAM", "DATASTATUS");
    scan.followLink(*wrapper, 2);
    set("PROGRAM", "CONNECTIONSTATUS");
    for (const char* other : {"VB.CommandButton", "zanbenchwindow.statuslight", "ZanBenchWindow.ValueBar"}) {
        wrapper->setControlType(QString::fromLatin1(other));
        scan.followLink(*wrapper, 2);
    }
    EXPECT_TRUE(live->writes.empty());
}

TEST_F(StatusDisplay, LinkHasNoTrap)
{
    livedata::Scan scan{window::controlTypes()};
    wrapper->setControlType(QStringLiteral("ZanBenchWindow.StatusLight"));
    live->refused["Value"] = 380;
    EXPECT_EQ(errorOf([&] { scan.followLink(*wrapper, 2); }), 380);
}

// Scan ---------------------------------------------------------------------------------------------------------

TEST_F(StatusDisplay, FailingLightEndsTheScanSilentlyAndTheControlsAfterItKeepTheirState)
{
    fake::FakePanelWindow window;
    livedata::Scan scan{window::controlTypes()};
    collection->setWindow(&window);
    collection->setLiveData(&scan);
    collection->setXMLNode(fake::tree("<WINDOW/>"));
    const auto label = [&] { return collection->Add(QStringLiteral("VB.Label")); };
    const auto first = label();
    const auto light = collection->Add(QStringLiteral("ZanBenchWindow.StatusLight"));
    const auto last = label();
    light->setControl(live);
    for (const auto& control : {first, light, last})
        control->setChannel(channel);
    channel->format = QStringLiteral("@");
    channel->value = Variant(QStringLiteral("no number"));
    Q_EMIT logger->NewBenchData();
    EXPECT_EQ(window.made[0]->caption, u"no number");
    EXPECT_EQ(window.made[2]->caption, u"");
    EXPECT_TRUE(collection->HaveData());
    // Asked for by the host, the same failure reaches the caller.
    EXPECT_EQ(errorOf([&] { collection->ScanControls(); }), 13);
    light->setControl(window.made[1]);
    collection->Clear();
    collection->setLiveData(nullptr);
    collection->setWindow(nullptr);
}
