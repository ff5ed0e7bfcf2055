#include "display/ValueBarControl.h"

#include "DisplayFixture.h"
#include "binding/MemberTable.h"
#include "support/ErrorOf.h"
#include "support/Properties.h"

#include <gtest/gtest.h>

using namespace zan;
using display::DisplayControl;
using display::FlashClock;
using display::ValueBarControl;
using test::FakeTime;
using values::Colour;
using values::make;
using values::Name;
using values::Variant;

using zan::test::errorOf;

using zan::test::colourOf;
using zan::test::flagOf;
using zan::test::numberOf;
using zan::test::put;

namespace {

using Stage = test::Stage<ValueBarControl>;

struct RecordingHost final : DisplayControl::Host
{
    std::vector<std::string> names;
    void propertyChanged(binding::Name name) override { names.push_back(name.text().toStdString()); }
};

/// Colour of the lowest row of the bar.
QColor foot(Stage& stage)
{
    return stage.pixel(stage.control->barRectangle().center().x(), stage.control->barRectangle().bottom());
}

constexpr int DivisionByZero = 11;

} // namespace

TEST(ValueBar, ValueEqualToALimitIsNormalAndDoesNotFlash)
{
    FakeTime time;
    Stage stage({60, 100});
    put(*stage.control, "Flash", true);
    for (const double value : {75.0, 25.0}) {
        put(*stage.control, "Value", value);
        EXPECT_FALSE(stage.control->isFlashing());
        EXPECT_EQ(foot(stage), QColor(0, 192, 0));
    }
    put(*stage.control, "Value", 75.001);
    EXPECT_TRUE(stage.control->isFlashing());
}

TEST(ValueBar, LowLimitIsTestedFirst)
{
    Stage stage({60, 100});
    put(*stage.control, "LowColour", values::rgb(0, 0, 200));
    put(*stage.control, "LowLimit", 80);
    put(*stage.control, "HighLimit", 20);
    put(*stage.control, "Value", 50);
    EXPECT_EQ(foot(stage), QColor(0, 0, 200));
}

TEST(ValueBar, ValueBelowTheMinimumIsAnEmptyBar)
{
    Stage stage({60, 100});
    put(*stage.control, "Value", -1);
    EXPECT_EQ(foot(stage), stage.surface.palette().color(QPalette::Base));
    EXPECT_EQ(stage.pixel(30, 75), stage.surface.palette().color(QPalette::Text)); // the line of the low limit
}

// Flashing -----------------------------------------------------------------------------------------------------

TEST(ValueBar, FlashesOutsideItsLimitsBeginningWithHalf)
{
    FakeTime time;
    Stage stage({60, 100});
    put(*stage.control, "Flash", true);
    put(*stage.control, "Value", 90);
    for (const int red : {128, 255, 128}) {
        EXPECT_EQ(foot(stage), QColor(red, 0, 0));
        time.pass(999);
        EXPECT_EQ(foot(stage), QColor(red, 0, 0));
        time.pass(1);
    }
}

TEST(ValueBar, FlashTurnedOffLeavesTheTimerUntilTheValueIsBackBetweenTheLimits)
{
    FakeTime time;
    Stage stage({60, 100});
    put(*stage.control, "Flash", true);
    put(*stage.control, "Value", 90);
    put(*stage.control, "Flash", false);
    EXPECT_TRUE(stage.control->isFlashing());
    EXPECT_EQ(foot(stage), QColor(255, 0, 0));
    time.pass(1000);
    put(*stage.control, "Flash", true); // the phase has gone on meanwhile
    EXPECT_EQ(foot(stage), QColor(255, 0, 0));
    put(*stage.control, "Value", 50);
    EXPECT_FALSE(stage.control->isFlashing());
}

TEST(ValueBar, ValueOutsideWithoutFlashStartsNoTimer)
{
    FakeTime time;
    Stage stage({60, 100});
    put(*stage.control, "Value", 90);
    EXPECT_FALSE(stage.control->isFlashing());
    EXPECT_EQ(foot(stage), QColor(255, 0, 0));
}

TEST(ValueBar, ZoneChangesWhileFlashingKeepTheTimer)
{
    FakeTime time;
    Stage stage({60, 100});
    put(*stage.control, "Flash", true);
    put(*stage.control, "Value", 90);
    time.pass(600);
    put(*stage.control, "Value", 10);
    time.pass(400);
    EXPECT_EQ(foot(stage), QColor(255, 0, 0));
}

TEST(ValueBar, HiddenBarWaitsForNoTick)
{
    FakeTime time;
    Stage stage({60, 100});
    put(*stage.control, "Flash", true);
    stage.control->setVisible(false);
    put(*stage.control, "Value", 90);
    (void)stage.picture();
    EXPECT_EQ(FlashClock::shared().waiting(), 0U);
    stage.control->setVisible(true);
    (void)stage.picture();
    EXPECT_EQ(FlashClock::shared().waiting(), 1U);
}

// Division by zero ---------------------------------------------------------------------------------------------

TEST(ValueBar, MaximumEqualToMinimumReachesTheWriterOfEveryDrawnProperty)
{
    Stage stage({60, 100});
    ValueBarControl& bar = *stage.control;
    EXPECT_EQ(errorOf([&] { bar.put(Name("Max"), Variant(0.0)); }), DivisionByZero);
    EXPECT_EQ(numberOf(bar, "Max"), 0.0); // the property has taken it
    const std::vector<std::pair<const char*, Variant>> writes{{"Value", 1.0},
                                                              {"HighLimit", 2.0},
                                                              {"LowLimit", 3.0},
                                                              {"HighColour", std::int32_t(4)},
                                                              {"NormalColour", std::int32_t(5)},
                                                              {"LowColour", std::int32_t(6)},
                                                              {"Flash", true},
                                                              {"Max", 0.0},
                                                              {"Min", 0.0},
                                                              {"ShowScale", true},
                                                              {"TickCount", std::int16_t(3)}};
    for (const auto& [name, value] : writes)
        EXPECT_EQ(errorOf([&, &name = name, &value = value] { bar.put(Name(name), value); }), DivisionByZero)
            << name;
    EXPECT_EQ(numberOf(bar, "Value"), 1.0);
    EXPECT_EQ(numberOf(bar, "TickCount"), 3);
    EXPECT_EQ(errorOf([&] { bar.Refresh(); }), DivisionByZero);
    EXPECT_EQ(bar.tryPut(Name("Value"), Variant(7.0)), binding::AccessStatus::Refused);
    EXPECT_EQ(numberOf(bar, "Value"), 7.0);
    EXPECT_EQ(errorOf([&] { bar.put(Name("Max"), Variant(10.0)); }), 0);
}

TEST(ValueBar, ScaleWithoutTicksReachesTheWriter)
{
    Stage stage({60, 100});
    EXPECT_EQ(errorOf([&] { put(*stage.control, "TickCount", 0); }), 0); // no scale, no division
    EXPECT_EQ(errorOf([&] { put(*stage.control, "ShowScale", true); }), DivisionByZero);
    EXPECT_EQ(errorOf([&] { put(*stage.control, "Value", 3); }), DivisionByZero);
    EXPECT_EQ(errorOf([&] { put(*stage.control, "TickCount", -3); }), 0);
}

TEST(ValueBar, PropertiesOfTheSurfaceDoNotDraw)
{
    Stage stage({60, 100});
    ValueBarControl& bar = *stage.control;
    EXPECT_EQ(errorOf([&] { put(bar, "Max", 0); }), DivisionByZero);
    EXPECT_EQ(errorOf([&] {
                  bar.put(Name("BackColor"), std::int32_t(1));
                  bar.put(Name("ForeColor"), std::int32_t(1));
                  bar.put(Name("Enabled"), false);
                  bar.put(Name("BackStyle"), std::int16_t(0));
                  bar.put(Name("BorderStyle"), std::int16_t(1));
                  bar.putReference(Name("Font"), Variant(make<surface::FontObject>()));
              }),
              0);
}

TEST(ValueBar, PropertiesOfTheSurfaceWaitForTheNextDrawing)
{
    Stage stage({60, 100});
    ValueBarControl& bar = *stage.control;
    stage.surface.show();
    (void)stage.surface.grab();
    stage.surface.flush();
    const std::pair<const char*, Variant> writes[] = {{"BackColor", std::int32_t(1)},
                                                      {"ForeColor", std::int32_t(2)},
                                                      {"Enabled", false},
                                                      {"BackStyle", std::int16_t(0)},
                                                      {"BorderStyle", std::int16_t(1)},
                                                      {"Font", Variant(make<surface::FontObject>())}};
    for (const auto& [name, value] : writes) {
        ASSERT_FALSE(stage.surface.hasPendingChanges()) << name;
        bar.put(Name(name), value);
        EXPECT_FALSE(stage.surface.hasPendingChanges()) << name;
    }
    bar.put(Name("Value"), 51.0);
    EXPECT_TRUE(stage.surface.hasPendingChanges()) << "the next drawing shows them all";
}

TEST(ValueBar, ResizingAndPaintingSwallowTheDivision)
{
    Stage stage({60, 100});
    EXPECT_EQ(errorOf([&] { put(*stage.control, "Max", 0); }), DivisionByZero);
    EXPECT_EQ(errorOf([&] {
                  stage.resize({70, 90});
                  (void)stage.picture();
              }),
              0);
}

TEST(ValueBar, TickCountOfZeroEndsTheDrawingBeforeTheTimer)
{
    FakeTime time;
    Stage stage({60, 100});
    put(*stage.control, "TickCount", 0);
    EXPECT_EQ(errorOf([&] { put(*stage.control, "ShowScale", true); }), DivisionByZero);
    EXPECT_EQ(errorOf([&] { put(*stage.control, "Flash", true); }), DivisionByZero);
    EXPECT_EQ(errorOf([&] { put(*stage.control, "Value", 90); }), DivisionByZero);
    EXPECT_FALSE(stage.control->isFlashing());
    put(*stage.control, "TickCount", 5);
    EXPECT_TRUE(stage.control->isFlashing());
    // Max equal to Min ends it after the timer.
    EXPECT_EQ(errorOf([&] { put(*stage.control, "Min", 100); }), DivisionByZero);
    EXPECT_EQ(errorOf([&] { put(*stage.control, "Value", 50); }), DivisionByZero);
    EXPECT_FALSE(stage.control->isFlashing());
}

TEST(ValueBar, NumbersOutOfRangeAreNoFailure)
{
    Stage stage({60, 100});
    for (const double number :
         {1e300, -1e300, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_EQ(errorOf([&] {
                      put(*stage.control, "Value", number);
                      put(*stage.control, "HighLimit", number);
                      put(*stage.control, "LowLimit", number);
                      (void)stage.picture();
                  }),
                  0);
    }
    EXPECT_EQ(errorOf([&] {
                  put(*stage.control, "Max", 1e300);
                  put(*stage.control, "Min", -1e300);
                  put(*stage.control, "ShowScale", true);
                  put(*stage.control, "TickCount", 32767);
                  stage.resize({70, 90});
                  (void)stage.picture();
              }),
              0);
}

// Properties, bag, copies --------------------------------------------------------------------------------------

TEST(ValueBar, PropertiesStandInTheOrderOfThePublicInterface)
{
    const auto bar = make<ValueBarControl>();
    const std::vector<std::string> expected{"BackColor",    "ForeColor", "Font",      "BackStyle", "BorderStyle",
                                            "Refresh",      "Value",     "HighLimit", "LowLimit",  "HighColour",
                                            "NormalColour", "LowColour", "Flash",     "Max",       "Min",
                                            "ShowScale",    "TickCount"};
    std::vector<std::string> names;
    for (const binding::Member& member : bar->members().members())
        names.push_back(member.name.text().toStdString());
    ASSERT_GE(names.size(), expected.size());
    EXPECT_EQ(std::vector<std::string>(names.end() - std::ptrdiff_t(expected.size()), names.end()), expected);
    for (const char* name : {"Enabled", "hWnd"})
        EXPECT_NE(bar->members().find(Name(name)), nullptr) << name;
    for (const char* name : {"Value", "HighLimit", "LowLimit", "Max", "Min"})
        EXPECT_EQ(bar->members().find(Name(name))->type, binding::ValueType::Double) << name;
    EXPECT_EQ(bar->members().find(Name("TickCount"))->type, binding::ValueType::Integer);
    EXPECT_EQ(bar->typeName(), u"ValueBar");
}

TEST(ValueBar, NewBarHasTheDefaults)
{
    const auto bar = make<ValueBarControl>();
    EXPECT_EQ(bar->backColor().code, std::int32_t(0x8000000F));
    EXPECT_EQ(bar->foreColor().code, std::int32_t(0x80000012));
    EXPECT_EQ(numberOf(*bar, "Value"), 50);
    EXPECT_EQ(numberOf(*bar, "HighLimit"), 75);
    EXPECT_EQ(numberOf(*bar, "LowLimit"), 25);
    EXPECT_EQ(colourOf(*bar, "HighColour"), Colour{255});
    EXPECT_EQ(colourOf(*bar, "NormalColour"), Colour{49152});
    EXPECT_EQ(colourOf(*bar, "LowColour"), Colour{255});
    EXPECT_FALSE(flagOf(*bar, "Flash"));
    EXPECT_EQ(numberOf(*bar, "Max"), 100);
    EXPECT_EQ(numberOf(*bar, "Min"), 0);
    EXPECT_FALSE(flagOf(*bar, "ShowScale"));
    EXPECT_EQ(numberOf(*bar, "TickCount"), 10);
    binding::PropertyBag bag;
    bar->WriteProperties(bag);
    EXPECT_TRUE(bag.entries().empty());
}

TEST(ValueBar, BagHoldsEveryChangedPropertyInOrder)
{
    Stage stage({60, 100});
    ValueBarControl& bar = *stage.control;
    const auto ambient = make<surface::FontObject>();
    put(bar, "BackColor", Colour{1});
    put(bar, "ForeColor", Colour{2});
    bar.setEnabled(false);
    const auto font = make<surface::FontObject>();
    font->setItalic(true);
    bar.setFont(font);
    put(bar, "BackStyle", 0);
    put(bar, "BorderStyle", 1);
    put(bar, "Value", 1);
    put(bar, "HighLimit", 2);
    put(bar, "LowLimit", 3);
    put(bar, "HighColour", Colour{4});
    put(bar, "NormalColour", Colour{5});
    put(bar, "LowColour", Colour{6});
    put(bar, "Flash", true);
    put(bar, "Max", 7);
    put(bar, "Min", -8);
    put(bar, "ShowScale", true);
    put(bar, "TickCount", 9);
    binding::PropertyBag bag;
    bar.WriteProperties(bag, ambient);
    std::vector<std::string> names;
    for (const auto& entry : bag.entries())
        names.push_back(entry.name.text().toStdString());
    EXPECT_EQ(names,
              (std::vector<std::string>{"BackColor", "ForeColor", "Enabled", "Font", "BackStyle", "BorderStyle",
                                        "Value", "HighLimit", "LowLimit", "HighColour", "NormalColour", "LowColour",
                                        "Flash", "Max", "Min", "ShowScale", "TickCount"}));
    Stage other({60, 100});
    other.control->ReadProperties(bag, ambient);
    binding::PropertyBag again;
    other.control->WriteProperties(again, ambient);
    ASSERT_EQ(again.entries().size(), bag.entries().size());
    EXPECT_EQ(numberOf(*other.control, "Value"), 1);
    EXPECT_EQ(numberOf(*other.control, "Min"), -8);
    EXPECT_EQ(numberOf(*other.control, "TickCount"), 9);
    EXPECT_TRUE(other.control->font()->italic());
    EXPECT_GT(other.control->barRectangle().left(), 10); // read with its scale, it is laid out with it
}

TEST(ValueBar, FontComesFromTheAmbientPropertiesAsACopy)
{
    const auto ambient = make<surface::FontObject>();
    ambient->setSize(values::Currency{200'000});
    const auto bar = make<ValueBarControl>();
    bar->InitProperties(ambient);
    EXPECT_DOUBLE_EQ(bar->font()->points(), 20.0);
    EXPECT_NE(bar->font(), ambient);
    binding::PropertyBag bag;
    bar->WriteProperties(bag, ambient);
    EXPECT_FALSE(bag.contains(Name("Font")));
}

TEST(ValueBar, BagThatCannotBeDrawnIsReadWithoutFailure)
{
    binding::PropertyBag bag;
    bag.WriteProperty(Name("Max"), Variant(0.0));
    bag.WriteProperty(Name("Value"), QStringLiteral("no number"));
    bag.WriteProperty(Name("TickCount"), Variant(1e9));
    Stage stage({60, 100});
    EXPECT_EQ(errorOf([&] { stage.control->ReadProperties(bag); }), 0);
    EXPECT_EQ(numberOf(*stage.control, "Max"), 0);
    EXPECT_EQ(numberOf(*stage.control, "Value"), 50);
    EXPECT_EQ(numberOf(*stage.control, "TickCount"), 10);
}

TEST(ValueBar, EveryWriteMarksThePropertyChangedAlsoOneThatRaises)
{
    Stage stage({60, 100});
    RecordingHost host;
    stage.control->setHost(&host);
    std::vector<std::string> written;
    for (const binding::Member& member : stage.control->members().members()) {
        const std::string name = member.name.text().toStdString();
        const bool own = name != "Tag" && name != "Left" && name != "Top" && name != "Width" && name != "Height" &&
                         name != "Visible" && name != "ToolTipText";
        if (!member.put || member.kind != binding::Member::Kind::Property || !own)
            continue;
        Variant value;
        ASSERT_EQ(stage.control->tryGet(member.name, value), binding::AccessStatus::Ok) << name;
        EXPECT_EQ(stage.control->tryPut(member.name, value), binding::AccessStatus::Ok) << name;
        written.push_back(name);
    }
    EXPECT_EQ(host.names, written);
    EXPECT_EQ(written.size(), 17U);
    host.names.clear();
    EXPECT_EQ(errorOf([&] { put(*stage.control, "Max", 0); }), DivisionByZero);
    EXPECT_EQ(host.names, std::vector<std::string>{"Max"});
    stage.control->setHost(nullptr);
}

TEST(ValueBar, NewElementOfAnArrayIsACopyOfTheDesign)
{
    surface::Surface surface;
    surface::ControlArray& array =
        surface.addArray<ValueBarControl>(QStringLiteral("ValueBar"), [](surface::LiveControl& design) {
            auto& bar = static_cast<ValueBarControl&>(design);
            put(bar, "Max", 20);
            put(bar, "TickCount", 4);
            put(bar, "ShowScale", true);
            bar.move(0, 0, 1695, 5055);
        });
    const values::Ref<surface::LiveControl> second = array.load(2);
    auto& bar = static_cast<ValueBarControl&>(*second);
    EXPECT_EQ(numberOf(bar, "Max"), 20);
    EXPECT_EQ(numberOf(bar, "TickCount"), 4);
    EXPECT_EQ(bar.barRectangle().height(), 337);
    EXPECT_GT(bar.barRectangle().left(), 10);
}

TEST(ValueBar, ValueRangeAndZoneAreSaidInWordsToo)
{
    Stage stage({60, 100});
    EXPECT_EQ(stage.control->accessibleText(), u"50 of 0 to 100, within the limits");
    put(*stage.control, "Value", 80.5);
    EXPECT_EQ(stage.control->accessibleText(), u"80.5 of 0 to 100, above the high limit of 75");
    put(*stage.control, "Value", -1);
    EXPECT_EQ(stage.control->accessibleText(), u"-1 of 0 to 100, below the low limit of 25");
}
