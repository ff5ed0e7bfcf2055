#include "display/StatusLightControl.h"

#include "DisplayFixture.h"
#include "binding/MemberTable.h"
#include "support/Properties.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace zan;
using display::DisplayControl;
using display::FlashClock;
using display::StatusLightControl;
using test::FakeTime;
using values::Colour;
using values::make;
using values::Name;
using values::Ref;
using values::Variant;

using zan::test::numberOf;
using zan::test::put;

namespace {

using Stage = test::Stage<StatusLightControl>;

struct RecordingHost final : DisplayControl::Host
{
    std::vector<std::string> names;
    void propertyChanged(binding::Name name) override { names.push_back(name.text().toStdString()); }
};

Variant read(StatusLightControl& light, const char* name)
{
    return light.get(Name(name));
}

} // namespace

TEST(StatusLight, OnlyTheBooleanTrueAndMinusOneAreTrue)
{
    Stage stage;
    const std::vector<std::pair<Variant, bool>> rows{
        {Variant(true), true},
        {Variant(false), false},
        {Variant(std::int16_t(-1)), true},
        {Variant(std::int32_t(-1)), true},
        {Variant(-1.0), true},
        {Variant(values::Currency{-10000}), true},
        {Variant(std::int16_t(1)), false},
        {Variant(std::int16_t(0)), false},
        {Variant(-1.5), false},
        {Variant(), false},
        {Variant::null(), false},
        {Variant::nothing(), false},
        {Variant(QStringLiteral("True")), false},
        {Variant(QStringLiteral("-1")), false},
    };
    for (const auto& [value, isTrue] : rows) {
        stage.control->setValue(value);
        EXPECT_EQ(stage.control->shownColour(), isTrue ? Colour{255} : Colour{128}) << int(value.kind());
        EXPECT_EQ(stage.control->caption(), isTrue ? u"TRUE" : u"FALSE");
    }
}

TEST(StatusLight, ValueKeepsWhatItWasGiven)
{
    Stage stage;
    stage.control->setValue(Variant(QStringLiteral("on")));
    EXPECT_EQ(read(*stage.control, "value").text(), u"on");
}

TEST(StatusLight, CaptionReadsStatusUntilTheFirstPicture)
{
    const auto light = make<StatusLightControl>();
    EXPECT_EQ(light->caption(), u"STATUS");
    light->setValue(Variant(false));
    EXPECT_EQ(light->caption(), u"FALSE");
}

TEST(StatusLight, CaptionIsReplacedAtTheNextPicture)
{
    Stage stage;
    stage.control->setCaption(QStringLiteral("mine"));
    EXPECT_EQ(stage.control->caption(), u"mine");
    stage.control->setValue(Variant(false));
    EXPECT_EQ(stage.control->caption(), u"FALSE");
    stage.control->setCaption(QStringLiteral("mine"));
    stage.resize({80, 20});
    EXPECT_EQ(stage.control->caption(), u"FALSE");
}

TEST(StatusLight, ColoursAndCaptionsShowInTheNextPictureOnly)
{
    Stage stage({20, 20});
    put(*stage.control, "FalseColour", values::rgb(0, 0, 9));
    put(*stage.control, "FalseCaption", QString());
    EXPECT_EQ(stage.control->shownColour(), Colour{128});
    EXPECT_EQ(stage.control->caption(), u"FALSE");
    stage.control->Refresh();
    EXPECT_EQ(stage.control->shownColour(), values::rgb(0, 0, 9));
    EXPECT_EQ(stage.control->caption(), u"");
    stage.control->setTrueColour(values::rgb(7, 0, 0));
    stage.control->setValue(Variant(true));
    EXPECT_EQ(stage.control->shownColour(), values::rgb(7, 0, 0));
}

TEST(StatusLight, MoveWithoutChangeOfSizeTakesNoPicture)
{
    Stage stage;
    stage.control->setCaption(QStringLiteral("mine"));
    stage.control->setLeft(3000);
    EXPECT_EQ(stage.control->caption(), u"mine");
}

TEST(StatusLight, WriteIsSeenInTheNextGrab)
{
    Stage stage({20, 20});
    stage.control->setTrueCaption(QString());
    put(*stage.control, "FalseCaption", QString());
    stage.control->setValue(Variant(true));
    EXPECT_EQ(stage.surface.grab().toImage().pixelColor(17, 15), QColor(255, 0, 0));
    stage.control->setValue(Variant(false));
    EXPECT_EQ(stage.surface.grab().toImage().pixelColor(17, 15), QColor(128, 0, 0));
}

// Flashing -----------------------------------------------------------------------------------------------------

TEST(StatusLight, FlashingAlternatesHalfAndFullEachSecondBeginningWithHalf)
{
    FakeTime time;
    Stage stage;
    stage.control->setValue(Variant(true));
    put(*stage.control, "Flash", true);
    for (const int red : {128, 255, 128, 255}) {
        (void)stage.picture();
        EXPECT_EQ(stage.control->shownColour(), Colour{red});
        time.pass(999);
        (void)stage.picture();
        EXPECT_EQ(stage.control->shownColour(), Colour{red});
        time.pass(1);
    }
}

TEST(StatusLight, FlashWithoutTheTrueStateRunsNoTimer)
{
    FakeTime time;
    Stage stage;
    put(*stage.control, "Flash", true);
    EXPECT_FALSE(stage.control->isFlashing());
    (void)stage.picture();
    EXPECT_EQ(FlashClock::shared().waiting(), 0U);
    EXPECT_EQ(stage.control->shownColour(), Colour{128});
    stage.control->setValue(Variant(true));
    EXPECT_TRUE(stage.control->isFlashing());
    EXPECT_EQ(stage.control->shownColour(), Colour{128}); // the phase has stayed False: half of 255
}

TEST(StatusLight, PhaseStaysWhileTheStateIsFalse)
{
    FakeTime time;
    Stage stage;
    put(*stage.control, "Flash", true);
    stage.control->setValue(Variant(true));
    time.pass(1500);
    stage.control->setValue(Variant(false));
    EXPECT_FALSE(stage.control->isFlashing());
    time.pass(10'700);
    stage.control->setValue(Variant(true));
    EXPECT_EQ(stage.control->shownColour(), Colour{255}); // the flash begins on the bright half
    time.pass(999);
    (void)stage.picture();
    EXPECT_EQ(stage.control->shownColour(), Colour{255}); // a new start counts its own second
    time.pass(1);
    (void)stage.picture();
    EXPECT_EQ(stage.control->shownColour(), Colour{128});
}

TEST(StatusLight, WritingTheSameValueDoesNotStartTheSecondAnew)
{
    FakeTime time;
    Stage stage;
    put(*stage.control, "Flash", true);
    stage.control->setValue(Variant(true));
    time.pass(900);
    stage.control->setValue(Variant(true));
    time.pass(100);
    (void)stage.picture();
    EXPECT_EQ(stage.control->shownColour(), Colour{255});
}

TEST(StatusLight, FlashTurnedOffShowsFullColourAndKeepsThePhase)
{
    FakeTime time;
    Stage stage;
    put(*stage.control, "Flash", true);
    stage.control->setValue(Variant(true));
    put(*stage.control, "Flash", false);
    EXPECT_FALSE(stage.control->isFlashing());
    EXPECT_EQ(stage.control->shownColour(), Colour{255});
    put(*stage.control, "Flash", true);
    EXPECT_EQ(stage.control->shownColour(), Colour{128});
}

TEST(StatusLight, EachLightKeepsThePhaseOfItsOwnTimer)
{
    FakeTime time;
    Stage first, second;
    put(*first.control, "Flash", true);
    put(*second.control, "Flash", true);
    first.control->setValue(Variant(true));
    time.pass(400);
    second.control->setValue(Variant(true));
    time.pass(600);
    (void)first.picture();
    (void)second.picture();
    EXPECT_EQ(first.control->shownColour(), Colour{255});
    EXPECT_EQ(second.control->shownColour(), Colour{128});
    time.pass(400);
    (void)second.picture();
    EXPECT_EQ(second.control->shownColour(), Colour{255});
}

TEST(StatusLight, TickTakesAPictureWithThePropertiesOfThatMoment)
{
    FakeTime time;
    Stage stage;
    put(*stage.control, "Flash", true);
    stage.control->setValue(Variant(true));
    stage.control->setTrueCaption(QStringLiteral("ALARM"));
    EXPECT_EQ(stage.control->caption(), u"TRUE");
    time.pass(1000); // the tick has taken ALARM, though nobody has looked
    stage.control->setTrueCaption(QStringLiteral("LATER"));
    EXPECT_EQ(stage.control->caption(), u"ALARM");
    time.pass(999);
    EXPECT_EQ(stage.control->caption(), u"ALARM");
    stage.control->setTrueColour(values::rgb(9, 0, 0));
    EXPECT_EQ(stage.control->shownColour(), Colour{255});
    time.pass(1001);
    EXPECT_EQ(stage.control->caption(), u"LATER");
    EXPECT_EQ(stage.control->shownColour(), values::rgb(9, 0, 0));
}

TEST(StatusLight, ThousandFlashingLightsThatNobodySeesWaitForNoTick)
{
    FakeTime time;
    surface::Surface surface;
    surface::ControlArray& array = surface.addArray<StatusLightControl>(QStringLiteral("Light"));
    for (std::int32_t index = 2; index <= 1000; ++index)
        array.load(index);
    for (std::int32_t index = 1; index <= 1000; ++index) {
        auto& light = static_cast<StatusLightControl&>(*array.find(index));
        light.move(0, 0, 300, 300);
        put(light, "Flash", true);
        light.setValue(Variant(true));
    }
    EXPECT_EQ(FlashClock::shared().waiting(), 0U);
    time.pass(1000);
    EXPECT_EQ(FlashClock::shared().waiting(), 0U);
    EXPECT_FALSE(surface.hasPendingChanges());
    // One that becomes visible shows the right half at once and waits from then on.
    auto& light = static_cast<StatusLightControl&>(*array.find(500));
    light.setVisible(true);
    surface.resize(50, 50);
    (void)surface.grab();
    EXPECT_EQ(light.shownColour(), Colour{255});
    EXPECT_EQ(FlashClock::shared().waiting(), 1U);
}

TEST(StatusLight, LightThatGoesLeavesTheClock)
{
    FakeTime time;
    {
        Stage stage;
        put(*stage.control, "Flash", true);
        stage.control->setValue(Variant(true));
        (void)stage.picture();
        EXPECT_EQ(FlashClock::shared().waiting(), 1U);
    }
    EXPECT_EQ(FlashClock::shared().waiting(), 0U);
    time.pass(5000);
}

// Properties, bag, copies --------------------------------------------------------------------------------------

TEST(StatusLight, PropertiesStandInTheOrderOfThePublicInterface)
{
    const auto light = make<StatusLightControl>();
    const std::vector<std::string> expected{"BackColor",   "BackStyle",    "BorderStyle", "Refresh",
                                            "Caption",     "TrueColour",   "FalseColour", "Value",
                                            "TrueCaption", "FalseCaption", "Flash"};
    std::vector<std::string> names;
    for (const binding::Member& member : light->members().members())
        names.push_back(member.name.text().toStdString());
    ASSERT_GE(names.size(), expected.size());
    EXPECT_EQ(std::vector<std::string>(names.end() - std::ptrdiff_t(expected.size()), names.end()), expected);
    for (const char* name : {"Enabled", "Font", "hWnd"})
        EXPECT_NE(light->members().find(Name(name)), nullptr) << name;
    EXPECT_EQ(light->members().find(Name("ForeColor")), nullptr);
    EXPECT_EQ(light->members().find(Name("hWnd"))->put, nullptr);
    EXPECT_EQ(light->members().find(Name("Value"))->type, binding::ValueType::Variant);
    EXPECT_EQ(light->members().find(Name("TrueColour"))->type, binding::ValueType::Colour);
    EXPECT_EQ(light->typeName(), u"StatusLight");
}

TEST(StatusLight, NewLightHasTheDefaults)
{
    Stage stage;
    StatusLightControl& light = *stage.control;
    EXPECT_TRUE(light.enabled());
    EXPECT_EQ(numberOf(light, "BackStyle"), 1);
    EXPECT_EQ(numberOf(light, "BorderStyle"), 0);
    EXPECT_EQ(light.trueColour(), Colour{255});
    EXPECT_EQ(light.falseColour(), Colour{128});
    EXPECT_EQ(light.trueCaption(), u"TRUE");
    EXPECT_EQ(light.falseCaption(), u"FALSE");
    EXPECT_FALSE(light.flash());
    EXPECT_EQ(values::toInteger(light.value()), 0);
    EXPECT_EQ(light.font()->name(), u"MS Sans Serif");
    EXPECT_DOUBLE_EQ(light.font()->points(), 8.25);
    EXPECT_TRUE(light.font()->bold());
    EXPECT_NE(light.hWnd(), 0);
}

TEST(StatusLight, UntouchedLightLeavesAnEmptyBag)
{
    binding::PropertyBag bag;
    make<StatusLightControl>()->WriteProperties(bag);
    EXPECT_TRUE(bag.entries().empty());
}

TEST(StatusLight, BagHoldsEveryChangedPropertyInOrder)
{
    Stage stage;
    StatusLightControl& light = *stage.control;
    light.setEnabled(false);
    light.setFont(make<surface::FontObject>()); // not bold
    put(light, "BackStyle", 0);
    put(light, "BorderStyle", 1);
    light.setTrueColour({1});
    put(light, "FalseColour", Colour{2});
    light.setTrueCaption(QStringLiteral("ON"));
    put(light, "FalseCaption", QStringLiteral("OFF"));
    put(light, "Flash", true);
    light.setValue(Variant(true));
    put(light, "BackColor", Colour{3});
    binding::PropertyBag bag;
    light.WriteProperties(bag);
    std::vector<std::string> names;
    for (const auto& entry : bag.entries())
        names.push_back(entry.name.text().toStdString());
    EXPECT_EQ(names,
              (std::vector<std::string>{"Enabled", "Font", "BackStyle", "BorderStyle", "Caption", "TrueColour",
                                        "FalseColour", "Value", "TrueCaption", "FalseCaption", "Flash"}));
    const auto other = make<StatusLightControl>();
    other->ReadProperties(bag);
    EXPECT_FALSE(other->enabled());
    EXPECT_FALSE(other->font()->bold());
    EXPECT_EQ(numberOf(*other, "BackStyle"), 0);
    EXPECT_EQ(numberOf(*other, "BorderStyle"), 1);
    EXPECT_EQ(other->trueColour(), Colour{1});
    EXPECT_EQ(other->falseColour(), Colour{2});
    EXPECT_EQ(other->trueCaption(), u"ON");
    EXPECT_EQ(other->falseCaption(), u"OFF");
    EXPECT_TRUE(other->flash());
    EXPECT_TRUE(other->isOn());
    EXPECT_EQ(other->caption(), u"ON");
    EXPECT_EQ(other->backColor(), values::ButtonFace); // not kept
}

TEST(StatusLight, BagOfWrongKindsCountsAsDefaults)
{
    binding::PropertyBag bag;
    for (const char* name : {"Enabled", "Font", "BackStyle", "BorderStyle", "TrueColour", "Flash"})
        bag.WriteProperty(Name(name), QStringLiteral("rubbish"));
    bag.WriteProperty(Name("FalseColour"), Variant(1e30));
    bag.WriteProperty(Name("TrueCaption"), Variant::null());
    const auto light = make<StatusLightControl>();
    put(*light, "Flash", true);
    light->ReadProperties(bag);
    EXPECT_TRUE(light->enabled());
    EXPECT_TRUE(light->font()->bold());
    EXPECT_EQ(light->trueColour(), Colour{255});
    EXPECT_EQ(light->falseColour(), Colour{128});
    EXPECT_EQ(light->trueCaption(), u"TRUE");
    EXPECT_FALSE(light->flash());
}

TEST(StatusLight, InitPropertiesGivesTheDefaultsBack)
{
    Stage stage;
    stage.control->setTrueColour({5});
    put(*stage.control, "Flash", true);
    stage.control->setValue(Variant(true));
    stage.control->InitProperties();
    EXPECT_EQ(stage.control->trueColour(), Colour{255});
    EXPECT_FALSE(stage.control->isFlashing());
    EXPECT_EQ(stage.control->caption(), u"FALSE");
}

TEST(StatusLight, ValueCaptionAndFontWritesMarkThePropertyChanged)
{
    Stage stage;
    RecordingHost host;
    stage.control->setHost(&host);
    stage.control->put(Name("Value"), Variant(false));
    stage.control->put(Name("Caption"), QStringLiteral("x"));
    stage.control->putReference(Name("Font"), Variant(make<surface::FontObject>()));
    stage.control->put(Name("TrueColour"), Variant(std::int32_t(3)));
    stage.control->put(Name("Flash"), true);
    EXPECT_EQ(host.names, (std::vector<std::string>{"Value", "Caption", "Font"}));
    stage.control->setHost(nullptr);
}

TEST(StatusLight, NewElementOfAnArrayIsACopyOfTheDesign)
{
    surface::Surface surface;
    surface::ControlArray& array =
        surface.addArray<StatusLightControl>(QStringLiteral("Light"), [](surface::LiveControl& design) {
            auto& light = static_cast<StatusLightControl&>(design);
            light.setTrueColour(values::rgb(0, 255, 0));
            light.setTrueCaption(QStringLiteral("RUN"));
            light.setValue(Variant(true));
            put(light, "BorderStyle", 1);
            light.move(0, 0, 975, 255);
        });
    const Ref<surface::LiveControl> second = array.load(2);
    auto& light = static_cast<StatusLightControl&>(*second);
    EXPECT_EQ(light.caption(), u"RUN");
    EXPECT_EQ(light.shownColour(), values::rgb(0, 255, 0));
    EXPECT_EQ(light.width(), 975.0F);
    light.setCaption(QStringLiteral("mine"));
    light.setLeft(300); // no change of size, so no new picture
    EXPECT_EQ(light.caption(), u"mine");
    EXPECT_NE(light.font(), static_cast<StatusLightControl&>(array.design()).font()); // a copy, not shared
}

TEST(StatusLight, StateIsSaidInWordsToo)
{
    Stage stage;
    stage.control->setTrueCaption(QStringLiteral("PUMP"));
    stage.control->setValue(Variant(true));
    EXPECT_EQ(stage.control->accessibleText(), u"PUMP: on");
    put(*stage.control, "FalseCaption", QString());
    stage.control->setValue(Variant(false));
    EXPECT_EQ(stage.control->accessibleText(), u"off");
}

TEST(StatusLight, BurstOfWritesPaintsOnce)
{
    static int paints = 0;
    struct CountingLight : StatusLightControl
    {
        void paint(surface::PaintContext& context, const QRect& rectangle) override
        {
            ++paints;
            StatusLightControl::paint(context, rectangle);
        }
    };
    test::Stage<CountingLight> stage;
    stage.surface.show();
    const auto settle = [&] {
        for (int round = 0; round < 20; ++round)
            QCoreApplication::processEvents();
    };
    settle();
    paints = 0;
    for (int round = 0; round < 101; ++round)
        stage.control->setValue(Variant(round % 2 == 0));
    EXPECT_EQ(paints, 0);
    settle();
    EXPECT_EQ(paints, 1);
}
