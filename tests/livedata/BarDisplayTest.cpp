#include "livedata/BarDisplay.h"

#include "display/ValueBarControl.h"
#include "livedata/Scan.h"
#include "surface/host/ControlArray.h"
#include "surface/host/Surface.h"
#include "surface/intrinsic/CheckBox.h"
#include "surface/intrinsic/ProgressBar.h"
#include "window/ControlTypes.h"

#include "LiveRecorder.h"
#include "support/Properties.h"

#include <gtest/gtest.h>

using namespace zan;
using livedata::UpdateCheckBox;
using livedata::UpdateProgressBar;
using livedata::UpdateValueBar;
using test::errorOf;
using values::Name;
using values::Ref;
using values::Variant;
using Writes = std::vector<std::string>;

namespace {

using document::Node;

class CheckDisplay : public testing::Test, protected test::LiveStage
{
protected:
    Writes scan()
    {
        live->takeWrites();
        UpdateCheckBox(*wrapper);
        return live->takeWrites();
    }
    Node action() { return wrapper->XMLNode().child(Name("ACTION")); }
    QString attribute(const char* name) { return document::XMLOps::GetAttribute(wrapper->XMLNode(), Name(name)); }
};

class BarDisplay : public testing::Test, protected test::LiveStage
{
protected:
    BarDisplay()
    {
        channel->label = QStringLiteral("Stage");
        channel->format = QStringLiteral("0.0");
    }
    Writes scan()
    {
        live->takeWrites();
        UpdateValueBar(*wrapper, *collection);
        return live->takeWrites();
    }
};

/// A check box on a surface whose clicks are handled as a panel does it: mark the next scan, then run the action
/// unless the box is disabled.
class ClickedBox : public testing::Test, protected test::LiveStage, protected surface::SurfaceEvents
{
protected:
    ClickedBox()
    {
        surface.addArray<surface::CheckBox>(QStringLiteral("cbCheck"));
        box = Ref<surface::CheckBox>(static_cast<surface::CheckBox*>(surface.array(u"cbCheck")->item(1).get()));
        surface.setEvents(this);
        wrapper->setControl(box);
    }
    ~ClickedBox() override { surface.setEvents(nullptr); }
    void clicked(surface::LiveControl*) override
    {
        ++clicks;
        set("IGNORESCAN", "-1");
        if (box->enabled())
            ++actions;
    }
    /// What the user does.
    void tick(std::int16_t value) { test::put(*box, "Value", value); }

    surface::Surface surface;
    Ref<surface::CheckBox> box;
    int clicks = 0;
    int actions = 0;
};

class ProgressDisplay : public testing::Test, protected test::LiveStage
{
protected:
    ProgressDisplay()
    {
        surface.addArray<surface::ProgressBar>(QStringLiteral("pbar"));
        bar = Ref<surface::ProgressBar>(static_cast<surface::ProgressBar*>(surface.array(u"pbar")->item(1).get()));
        wrapper->setControl(bar);
        channel->label = QStringLiteral("Tank");
        channel->units = QStringLiteral("m3");
        channel->format = QStringLiteral("0.0");
    }
    QString tip()
    {
        UpdateProgressBar(*wrapper);
        return bar->toolTipText();
    }

    surface::Surface surface;
    Ref<surface::ProgressBar> bar;
};

} // namespace

// Check box ----------------------------------------------------------------------------------------------------

TEST_F(CheckDisplay, WithoutChannelItSaysSoAndIsUncheckedAndStaysEnabled)
{
    EXPECT_EQ(scan(), (Writes{"Caption=No channel", "Value=0"}));
    EXPECT_FALSE(action());
}

TEST_F(CheckDisplay, ValueIsWrittenWhileDisabledAndTheCaptionAfterwards)
{
    bind(Variant(0));
    scan();
    set(action(), "UNCHECKEDCAPTION", "Pump off");
    set(action(), "CHECKEDCAPTION", "Pump on");
    EXPECT_EQ(scan(), (Writes{"Enabled=False", "Value=0", "Enabled=True", "Caption=Pump off"}));
    bind(Variant(3));
    EXPECT_EQ(scan(), (Writes{"Enabled=False", "Value=1", "Enabled=True", "Caption=Pump on"}));
}

TEST_F(CheckDisplay, ActionIsMadeWhereTheNodeHasNone)
{
    bind(Variant(0));
    EXPECT_FALSE(action());
    scan();
    EXPECT_TRUE(action());
    scan();
    EXPECT_EQ(wrapper->XMLNode().children(Name("ACTION")).size(), 1U);
}

TEST_F(CheckDisplay, EmptyChannelIsZero)
{
    bind(Variant());
    EXPECT_EQ(scan().at(1), "Value=0");
    set(action(), "UNCHECKEDVALUE", "1");
    EXPECT_EQ(scan().at(1), "Value=1");
    set(action(), "UNCHECKEDVALUE", "none");
    EXPECT_EQ(scan().at(1), "Value=0");
}

TEST_F(CheckDisplay, OneScanIsLeftOutAfterAClick)
{
    bind(Variant(1));
    set("IGNORESCAN", "-1");
    EXPECT_TRUE(scan().empty());
    EXPECT_EQ(attribute("IGNORESCAN"), u"");
    EXPECT_EQ(scan().at(1), "Value=1");
}

TEST_F(CheckDisplay, BoxWithoutChannelDoesNotAskWhetherToIgnoreTheScan)
{
    set("IGNORESCAN", "-1");
    EXPECT_EQ(scan().size(), 2U);
    EXPECT_EQ(attribute("IGNORESCAN"), u"-1");
}

TEST_F(CheckDisplay, FailuresAreNotTrapped)
{
    bind(Variant::null());
    EXPECT_EQ(errorOf([&] { scan(); }), 94);
    bind(Variant(QStringLiteral("dry")));
    EXPECT_EQ(errorOf([&] { scan(); }), 13);
    bind(Variant(1));
    live->refused["Value"] = 380;
    EXPECT_EQ(errorOf([&] { scan(); }), 380);
}

TEST_F(ClickedBox, ChangeThatComesFromTheDataRunsNoActionButMutesTheNextScan)
{
    bind(Variant(1));
    UpdateCheckBox(*wrapper);
    EXPECT_EQ(test::numberOf(*box, "Value"), 1);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(actions, 0);
    EXPECT_TRUE(box->enabled());
    channel->value = Variant(0);
    UpdateCheckBox(*wrapper); // muted
    EXPECT_EQ(test::numberOf(*box, "Value"), 1);
    UpdateCheckBox(*wrapper);
    EXPECT_EQ(test::numberOf(*box, "Value"), 0);
    EXPECT_EQ(actions, 0);
}

TEST_F(ClickedBox, ClickIsNotUndoneByTheScanThatStillHoldsTheOldValue)
{
    bind(Variant(0));
    UpdateCheckBox(*wrapper);
    tick(1);
    EXPECT_EQ(actions, 1);
    UpdateCheckBox(*wrapper); // the channel has not followed yet
    EXPECT_EQ(test::numberOf(*box, "Value"), 1);
    EXPECT_EQ(actions, 1);
    UpdateCheckBox(*wrapper); // it never did: the scan after that shows the channel
    EXPECT_EQ(test::numberOf(*box, "Value"), 0);
    EXPECT_EQ(actions, 1);
}

TEST_F(ClickedBox, BoxWithoutChannelRunsItsActionASecondTimeAtTheNextScan)
{
    tick(1);
    EXPECT_EQ(actions, 1);
    UpdateCheckBox(*wrapper);
    EXPECT_EQ(test::numberOf(*box, "Value"), 0);
    EXPECT_EQ(actions, 2);
    UpdateCheckBox(*wrapper); // unchanged from now on
    EXPECT_EQ(actions, 2);
}

// Value bar ----------------------------------------------------------------------------------------------------

TEST_F(BarDisplay, ShowsTheValueAndNamesItInTheTip)
{
    channel->units = QStringLiteral("m");
    bind(Variant(1.25));
    EXPECT_EQ(scan(), (Writes{"Value=1.25", "TOOLTIPTEXT=Stage 1.3 (m) "}));
    EXPECT_EQ(wrapper->ToolTipText(), u"Stage 1.3 (m) ");
}

TEST_F(BarDisplay, TipWithoutUnitsHasNoBracketsAndNoBlankAtItsEnd)
{
    bind(Variant(2));
    EXPECT_EQ(scan().at(1), "TOOLTIPTEXT=Stage 2.0");
}

TEST_F(BarDisplay, WithoutChannelItStaysAsItIs)
{
    EXPECT_TRUE(scan().empty());
}

TEST_F(BarDisplay, BoundLimitsMoveWithTheirChannelAlsoWithoutAChannelOfItsOwn)
{
    logger->setValue(QStringLiteral("RTD"), QStringLiteral("SETPOINT"), Variant(40));
    set("BOUNDLIMIT", "-1");
    set("LIMITCHANNEL", "rtd|setpoint");
    set("LIMITOFFSET", "2.5");
    EXPECT_EQ(scan(), (Writes{"HighLimit=42.5", "LowLimit=37.5"}));
    set("LIMITOFFSET", "0");
    EXPECT_EQ(scan(), (Writes{"HighLimit=40", "LowLimit=40"}));
    bind(Variant(1));
    EXPECT_EQ(scan().size(), 4U);
}

TEST_F(BarDisplay, EmptyLimitChannelCountsAsZero)
{
    logger->channel(QStringLiteral("RTD"), QStringLiteral("SETPOINT"));
    set("BOUNDLIMIT", "1");
    set("LIMITCHANNEL", "RTD|SETPOINT");
    set("LIMITOFFSET", "5");
    EXPECT_EQ(scan(), (Writes{"HighLimit=5", "LowLimit=-5"}));
}

TEST_F(BarDisplay, LimitsThatAreNotBoundOrResolveToNothingStay)
{
    logger->setValue(QStringLiteral("RTD"), QStringLiteral("SETPOINT"), Variant(40));
    set("LIMITCHANNEL", "RTD|SETPOINT");
    EXPECT_TRUE(scan().empty());
    set("BOUNDLIMIT", "-1");
    for (const char* nothing : {"", "RTD", "RTD|GONE", "GONE|SETPOINT", "|"}) {
        set("LIMITCHANNEL", nothing);
        EXPECT_TRUE(scan().empty()) << nothing;
    }
    logger->scheme->windows->failure = values::RuntimeError(values::ErrorNumber::PathFileAccess);
    set("LIMITCHANNEL", "RTD|SETPOINT");
    EXPECT_TRUE(scan().empty());
}

TEST_F(BarDisplay, BarThatCannotBeDrawnEndsTheScan)
{
    surface::Surface surface;
    surface.addArray<display::ValueBarControl>(QStringLiteral("ValueBar"));
    const auto control = surface.array(u"ValueBar")->item(1);
    auto& bar = static_cast<display::ValueBarControl&>(*control);
    EXPECT_EQ(errorOf([&] { test::put(bar, "Max", 0); }), 11);
    wrapper->setControl(control);
    bind(Variant(30));
    EXPECT_EQ(errorOf([&] { UpdateValueBar(*wrapper, *collection); }), 11);
    EXPECT_EQ(test::numberOf(bar, "Value"), 30);
    EXPECT_EQ(bar.toolTipText(), u""); // the tip was to come after
}

TEST_F(BarDisplay, FailuresAreNotTrapped)
{
    bind(Variant(1));
    live->refused["Value"] = 11; // a bar whose Max equals its Min
    EXPECT_EQ(errorOf([&] { scan(); }), 11);
    live->refused.clear();
    logger->setValue(QStringLiteral("RTD"), QStringLiteral("SETPOINT"), Variant(QStringLiteral("dry")));
    set("BOUNDLIMIT", "-1");
    set("LIMITCHANNEL", "RTD|SETPOINT");
    EXPECT_EQ(errorOf([&] { scan(); }), 13);
    const auto alone = values::make<wrappers::BenchControls>();
    EXPECT_EQ(errorOf([&] { UpdateValueBar(*wrapper, *alone); }), 91);
}

// Progress bar -------------------------------------------------------------------------------------------------

TEST_F(ProgressDisplay, ShowsTheValueAndNamesItWithTheRangeInTheTip)
{
    bind(Variant(12.5));
    EXPECT_EQ(tip(), u"Tank = 12.5 m3  (Min=0 Max=100)");
    EXPECT_EQ(bar->value(), 12.5F);
}

TEST_F(ProgressDisplay, TipWithoutUnitsKeepsTheBlankBeforeTheTwo)
{
    channel->units.clear();
    bind(Variant(1));
    EXPECT_EQ(tip(), u"Tank = 1.0   (Min=0 Max=100)");
}

TEST_F(ProgressDisplay, ValueOutsideTheRangeLeavesTheBarAndStillWritesTheTip)
{
    bind(Variant(40));
    tip();
    bind(Variant(101));
    EXPECT_EQ(tip(), u"Tank = 101.0 m3  (Min=0 Max=100)");
    EXPECT_EQ(bar->value(), 40.0F);
    bar->setMaximum(200);
    EXPECT_EQ(tip(), u"Tank = 101.0 m3  (Min=0 Max=200)");
    EXPECT_EQ(bar->value(), 101.0F);
}

TEST_F(ProgressDisplay, TipGoesToTheLiveControlAndNotToTheDocument)
{
    bind(Variant(1));
    const QString before = wrapper->XMLNode().xml();
    tip();
    EXPECT_EQ(wrapper->XMLNode().xml(), before);
}

TEST_F(ProgressDisplay, NothingIsReported)
{
    EXPECT_EQ(tip(), u""); // no channel
    bind(Variant::null());
    EXPECT_EQ(tip(), u"m3  (Min=0 Max=100)"); // the value has no text
    wrapper->setControl({});
    EXPECT_EQ(errorOf([&] { UpdateProgressBar(*wrapper); }), 0);
}

TEST_F(BarDisplay, ScanChoosesTheRoutineByType)
{
    livedata::Scan scanner{window::controlTypes()};
    const std::pair<const char*, const char*> rows[]{{"VB.CheckBox", "Enabled=False"},
                                                     {"ZanBenchWindow.ValueBar", "Value=7"},
                                                     {"MSComctlLib.ProgressBar", "Value=7"},
                                                     {"ZanBenchWindow.StatusLight", "VISIBLE=True"}};
    bind(Variant(7));
    for (const auto& [type, first] : rows) {
        wrapper->setControlType(QString::fromLatin1(type));
        live->takeWrites();
        scanner.update(*wrapper, *collection);
        ASSERT_FALSE(live->writes.empty()) << type;
        EXPECT_EQ(live->writes[0], first) << type;
        wrapper->setControlType(QString::fromLatin1(type).toUpper());
        live->takeWrites();
        scanner.update(*wrapper, *collection);
        EXPECT_TRUE(live->writes.empty()) << type;
    }
}
