// What assistive tools are told when controls change, and what their actions do.
#include "support/ListeningTool.h"
#include "surface/SurfaceFixture.h"
#include "surface/intrinsic/CheckBox.h"
#include "surface/intrinsic/CommandButton.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/OptionButton.h"
#include "surface/intrinsic/PictureBox.h"
#include "surface/intrinsic/ProgressBar.h"
#include "surface/intrinsic/Shape.h"
#include "surface/intrinsic/TextBox.h"
#include "values/Convert.h"

#include <QCheckBox>
#include <QHash>
#include <QLineEdit>
#include <QRadioButton>

#include <functional>
#include <stdexcept>

namespace zan::surface::tests {

namespace {

void put(LiveControl& control, const char* name, const binding::Variant& value)
{
    control.put(binding::Name(name), value);
}

class AccessibleNews : public SurfaceTest
{
protected:
    AccessibleNews()
    {
        surface->resize(600, 400);
        surface->show();
    }
    /// The tool has looked around, and hears of what comes.
    void listen()
    {
        settle();
        tool.take();
    }
    /// Of what the painted controls are asked for by the next turn.
    QStringList told()
    {
        settle();
        return tool.take();
    }
    QAccessibleInterface* root() const { return QAccessible::queryAccessibleInterface(surface.get()); }
    QAccessibleInterface* faceAt(int index) const { return root()->child(index); }

    Meaning meaningOf(const LiveControl* control) override
    {
        ++asked;
        if (throws)
            throw std::runtime_error("no channel");
        return control ? meanings.value(control) : Meaning{QStringLiteral("Overview"), {}};
    }

    QHash<const LiveControl*, Meaning> meanings;
    int asked = 0;
    bool throws = false;
    test::ListeningTool tool;
};

/// Ends the surface when it is asked what a control means.
struct EndingOwner : SurfaceEvents
{
    std::unique_ptr<Surface>* place = nullptr;
    Meaning meaningOf(const LiveControl*) override
    {
        place->reset();
        return {QStringLiteral("last words"), {}};
    }
};

} // namespace

// Names and values ---------------------------------------------------------------------------------------------

TEST_F(AccessibleNews, ALabelOfAChannelSaysTheChannelAndItsTextWithUnits)
{
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    put(*label, "Caption", QStringLiteral("1.5"));
    EXPECT_EQ(faceAt(0)->text(QAccessible::Name), u"1.5");
    meanings[label.get()] = {QStringLiteral("Pump 1 level"), QStringLiteral("m")};
    EXPECT_EQ(faceAt(0)->role(), QAccessible::StaticText);
    EXPECT_EQ(faceAt(0)->text(QAccessible::Name), u"Pump 1 level: 1.5 m");
    EXPECT_EQ(faceAt(0)->text(QAccessible::Value), u"1.5 m");
    put(*label, "Caption", QStringLiteral("Pump 1 level: 1.5 m"));
    EXPECT_EQ(faceAt(0)->text(QAccessible::Value), u"Pump 1 level: 1.5 m") << "units that are shown are said once";
    EXPECT_EQ(faceAt(0)->text(QAccessible::Name), u"Pump 1 level: 1.5 m") << "and so is the channel";
    put(*label, "Caption", QString());
    EXPECT_EQ(faceAt(0)->text(QAccessible::Value), u"") << "no units without a number";
    EXPECT_EQ(faceAt(0)->text(QAccessible::Name), u"Pump 1 level");
}

TEST_F(AccessibleNews, ABarSaysValueAndRangeAsNumbersToo)
{
    const auto bar = show<ProgressBar>(QStringLiteral("pbar"), {10, 10, 80, 20});
    meanings[bar.get()] = {QStringLiteral("Tank"), QStringLiteral("m")};
    put(*bar, "Max", 200.0);
    put(*bar, "Value", 40.0);
    EXPECT_EQ(faceAt(0)->role(), QAccessible::ProgressBar);
    EXPECT_EQ(faceAt(0)->text(QAccessible::Name), u"Tank");
    EXPECT_EQ(faceAt(0)->text(QAccessible::Value), u"40, in m");
    QAccessibleValueInterface* value = faceAt(0)->valueInterface();
    ASSERT_TRUE(value);
    EXPECT_EQ(value->currentValue(), 40.0);
    EXPECT_EQ(value->minimumValue(), 0.0);
    EXPECT_EQ(value->maximumValue(), 200.0);
    value->setCurrentValue(80.0);
    EXPECT_EQ(bar->value(), 40) << "nobody sets what is only shown";
    EXPECT_TRUE(faceAt(0)->state().readOnly);
    show<Label>(QStringLiteral("Label"), {10, 50, 80, 20});
    EXPECT_FALSE(faceAt(0)->valueInterface()) << "a label lies lower";
}

TEST_F(AccessibleNews, ControlsWithoutAnyNameAreNamedByKindAndNumber)
{
    show<Shape>(QStringLiteral("Shape"), {10, 10, 80, 20});
    show<PictureBox>(QStringLiteral("Pic"), {10, 40, 80, 20});
    showNew<PictureBox>(QStringLiteral("Pic"), {10, 70, 80, 20});
    show<ProgressBar>(QStringLiteral("pbar"), {10, 100, 80, 20});
    QStringList names;
    for (int i = 0; i < root()->childCount(); ++i)
        names.append(faceAt(i)->text(QAccessible::Name));
    names.sort();
    EXPECT_EQ(names, (QStringList{"Picture 1", "Picture 2", "Progress bar 1", "Shape 1"}));
    EXPECT_EQ(root()->text(QAccessible::Name), u"Overview");
}

TEST_F(AccessibleNews, AnOwnerThatThrowsCostsItsPartOfTheNameOnly)
{
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    put(*label, "Caption", QStringLiteral("1.5"));
    throws = true;
    EXPECT_EQ(faceAt(0)->text(QAccessible::Name), u"1.5");
    EXPECT_EQ(root()->text(QAccessible::Name), u"");
    EXPECT_TRUE(errors.isEmpty());
}

TEST_F(AccessibleNews, InputWidgetsWithoutACaptionAreNamedByWhatTheyStandFor)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 80, 20});
    const auto check = show<CheckBox>(QStringLiteral("cbCheck"), {10, 40, 80, 20});
    meanings[box.get()] = {QStringLiteral("Setpoint"), {}};
    meanings[check.get()] = {QStringLiteral("Pump 1"), {}};
    listen();
    EXPECT_EQ(box->widget()->accessibleName(), u"Setpoint");
    EXPECT_EQ(check->widget()->accessibleName(), u"Pump 1");
    put(*check, "Caption", QStringLiteral("Automatic"));
    EXPECT_EQ(told().filter(QStringLiteral("name Automatic")).isEmpty(), false);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(check->widget())->text(QAccessible::Name), u"Automatic");
    EXPECT_EQ(QAccessible::queryAccessibleInterface(box->widget())->role(), QAccessible::EditableText);
}

// News ---------------------------------------------------------------------------------------------------------

TEST_F(AccessibleNews, TheNewTextOfALabelIsToldOnceATurn)
{
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    listen();
    put(*label, "Caption", QStringLiteral("1.5 m"));
    put(*label, "Caption", QStringLiteral("1.6 m"));
    EXPECT_EQ(told(), QStringList{"name 1.6 m"});
}

TEST_F(AccessibleNews, TheNewTextOfALabelOfAChannelIsToldWithTheChannel)
{
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    meanings[label.get()] = {QStringLiteral("Pump 1 level"), QStringLiteral("m")};
    listen();
    put(*label, "Caption", QStringLiteral("1.5"));
    EXPECT_EQ(told(), QStringList{"name Pump 1 level: 1.5 m"});
}

TEST_F(AccessibleNews, AChangeThatSaysTheSameIsNotTold)
{
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    put(*label, "Caption", QStringLiteral("a"));
    listen();
    put(*label, "ForeColor", std::int32_t(255));
    put(*label, "Caption", QStringLiteral("b"));
    put(*label, "Caption", QStringLiteral("a"));
    EXPECT_EQ(told(), QStringList());
}

TEST_F(AccessibleNews, AControlThatDidNotChangeIsNotAskedAgain)
{
    show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    const auto other = showNew<Label>(QStringLiteral("Label"), {10, 40, 80, 20});
    listen();
    asked = 0;
    put(*other, "ForeColor", std::int32_t(255));
    settle();
    EXPECT_EQ(asked, 1);
}

TEST_F(AccessibleNews, TheValueOfABarIsToldAsANumber)
{
    const auto bar = show<ProgressBar>(QStringLiteral("pbar"), {10, 10, 80, 20});
    listen();
    put(*bar, "Value", 40.0);
    EXPECT_EQ(told(), QStringList{"value Progress bar 1=40"});
}

TEST_F(AccessibleNews, AControlThatCanNoLongerBeUsedTellsItsState)
{
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    put(*label, "Caption", QStringLiteral("a"));
    listen();
    put(*label, "Enabled", false);
    EXPECT_EQ(told(), QStringList{"state a"});
    EXPECT_TRUE(faceAt(0)->state().disabled);
    put(*label, "Enabled", true);
    EXPECT_EQ(told(), QStringList{"state a"});
}

TEST_F(AccessibleNews, ComingAndGoingIsToldOfTheControlAndOfTheSurface)
{
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    put(*label, "Caption", QStringLiteral("a"));
    listen();
    put(*label, "Visible", false);
    EXPECT_EQ(told(), (QStringList{"children Overview", "hide a"}));
    EXPECT_EQ(root()->childCount(), 0);
    put(*label, "Visible", true);
    EXPECT_EQ(told(), (QStringList{"children Overview", "show a"}));
    showNew<Label>(QStringLiteral("Label"), {10, 40, 80, 20});
    EXPECT_EQ(told(), (QStringList{"children Overview", "show Text 2"}));
    surface->array(QStringLiteral("Label"))->unload(2);
    EXPECT_EQ(told(), QStringList{"children Overview"});
}

TEST_F(AccessibleNews, AnotherPictureIsOneChangeAndNotOneForEachControl)
{
    listen();
    for (int i = 0; i < 100; ++i)
        showNew<Label>(QStringLiteral("Label"), {10, 2 * i, 80, 20});
    EXPECT_EQ(told(), QStringList{"children Overview"});
    put(*surface->array(QStringLiteral("Label"))->item(50), "Caption", QStringLiteral("later"));
    EXPECT_EQ(told(), QStringList{"name later"}) << "what was not told singly is known all the same";
}

TEST_F(AccessibleNews, NothingIsToldOfASurfaceThatNobodySees)
{
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    surface->hide();
    listen();
    put(*label, "Caption", QStringLiteral("quiet"));
    EXPECT_EQ(told(), QStringList());
    EXPECT_TRUE(faceAt(0)->state().invisible);
    surface->show();
    listen();
    put(*label, "Caption", QStringLiteral("loud"));
    EXPECT_EQ(told(), QStringList{"name loud"});
}

// Nobody listens -----------------------------------------------------------------------------------------------

class UnheardNews : public SurfaceTest
{
protected:
    Meaning meaningOf(const LiveControl*) override
    {
        ++asked;
        return {};
    }
    int asked = 0;
};

TEST_F(UnheardNews, NobodyIsAskedForAnythingAndNoWidgetIsNamed)
{
    surface->show();
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 40, 80, 20});
    settle();
    put(*label, "Caption", QStringLiteral("a"));
    settle();
    EXPECT_EQ(asked, 0);
    EXPECT_EQ(box->widget()->accessibleName(), u"");
    const test::ListeningTool late;
    settle();
    EXPECT_EQ(box->widget()->accessibleName(), u"Text box 1") << "a tool that comes later finds names";
}

// Actions ------------------------------------------------------------------------------------------------------

TEST_F(AccessibleNews, PressingAPaintedControlIsAClickWhereAClickActs)
{
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    QAccessibleActionInterface* action = faceAt(0)->actionInterface();
    ASSERT_TRUE(action);
    EXPECT_EQ(action->actionNames(), QStringList());
    action->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(takeLog(), QStringList());
    meanings[label.get()] = {{}, {}, true};
    EXPECT_EQ(action->actionNames(), QStringList{QAccessibleActionInterface::pressAction()});
    action->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(takeLog(), QStringList{"click Label(1)"});
    action->doAction(QAccessibleActionInterface::increaseAction());
    put(*label, "Enabled", false);
    action->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(takeLog(), QStringList());
}

TEST_F(AccessibleNews, TogglingACheckBoxIsAClick)
{
    const auto check = show<CheckBox>(QStringLiteral("cbCheck"), {10, 10, 80, 20});
    listen();
    const auto toggle = [&] {
        QAccessible::queryAccessibleInterface(check->widget())
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::toggleAction());
        settle();
        return values::toLong(check->get(binding::Name("Value")));
    };
    takeLog();
    EXPECT_EQ(toggle(), 1);
    EXPECT_EQ(takeLog(), QStringList{"click cbCheck(1)"});
    EXPECT_TRUE(QAccessible::queryAccessibleInterface(check->widget())->state().checked);
    EXPECT_EQ(toggle(), 0);
    put(*check, "Value", 2);
    settle();
    EXPECT_EQ(toggle(), 0) << "greyed goes to unchecked";
    EXPECT_EQ(static_cast<QCheckBox*>(check->widget())->checkState(), Qt::Unchecked);
}

TEST_F(AccessibleNews, TogglingAnOptionButtonChoosesItAndNeverTakesTheMarkAway)
{
    const auto option = show<OptionButton>(QStringLiteral("obOption"), {10, 10, 80, 20});
    put(*option, "Caption", QStringLiteral("&Automatic"));
    listen();
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(option->widget());
    EXPECT_EQ(face->role(), QAccessible::RadioButton);
    EXPECT_EQ(face->text(QAccessible::Name), u"Automatic");
    EXPECT_TRUE(face->state().checkable);
    EXPECT_FALSE(face->state().checked);
    const auto toggle = [&] {
        face->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        settle();
    };
    takeLog();
    for (int round = 0; round < 2; ++round) {
        toggle();
        EXPECT_TRUE(option->value());
        EXPECT_TRUE(static_cast<QRadioButton*>(option->widget())->isChecked());
        EXPECT_TRUE(face->state().checked);
    }
    EXPECT_EQ(takeLog(), QStringList{"click obOption(1)"});
}

TEST_F(AccessibleNews, ATextThatAToolSetsIsTyped)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 80, 20});
    listen();
    takeLog();
    QAccessible::queryAccessibleInterface(box->widget())->setText(QAccessible::Value, QStringLiteral("4.5"));
    EXPECT_EQ(box->accessibleText(), u"4.5");
    EXPECT_EQ(takeLog(), QStringList{"text Text(1)"});
}

// The tree -----------------------------------------------------------------------------------------------------

TEST_F(AccessibleNews, APaintedControlOverAWidgetIsThereOnce)
{
    show<TextBox>(QStringLiteral("Text"), {10, 10, 80, 20});
    const auto over = show<PictureBox>(QStringLiteral("Pic"), {20, 5, 20, 40});
    listen();
    ASSERT_GT(surface->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly).size(), 1) << "it has a host";
    EXPECT_EQ(root()->childCount(), 2);
    EXPECT_EQ(faceAt(0)->role(), QAccessible::Graphic);
    EXPECT_EQ(faceAt(1)->role(), QAccessible::EditableText);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(root()->indexOfChild(faceAt(i)), i);
    EXPECT_EQ(root()->indexOfChild(nullptr), -1);
}

TEST_F(AccessibleNews, ManyInputWidgetsAreInGroupsAndEachIsThereOnce)
{
    constexpr int Count = 250;
    for (int i = 0; i < Count; ++i)
        showNew<CheckBox>(QStringLiteral("cbCheck"), {10 + 22 * (i % 25), 10 + 22 * (i / 25), 20, 20});
    listen();
    QSet<QObject*> seen;
    for (int i = 0; i < root()->childCount(); ++i) {
        QAccessibleInterface* group = faceAt(i);
        ASSERT_EQ(group->role(), QAccessible::Grouping);
        EXPECT_EQ(root()->indexOfChild(group), i);
        for (int place = 0; place < group->childCount(); ++place) {
            EXPECT_EQ(group->child(place)->role(), QAccessible::CheckBox);
            EXPECT_EQ(group->child(place)->parent(), group);
            EXPECT_EQ(group->indexOfChild(group->child(place)), place);
            seen.insert(group->child(place)->object());
        }
    }
    EXPECT_EQ(seen.size(), Count);
}

TEST_F(AccessibleNews, WhatLiesOutsideIsOffscreenAndWhatReachesOutEndsAtTheEdge)
{
    show<Label>(QStringLiteral("Label"), {580, 10, 80, 20});
    showNew<Label>(QStringLiteral("Label"), {700, 10, 80, 20});
    EXPECT_EQ(faceAt(0)->rect().width(), 20);
    EXPECT_TRUE(root()->rect().contains(faceAt(0)->rect()));
    EXPECT_FALSE(faceAt(0)->state().offscreen);
    EXPECT_TRUE(faceAt(1)->state().offscreen);
}

// Hostile listeners --------------------------------------------------------------------------------------------

TEST_F(AccessibleNews, AListenerMayTakeTheSurfaceAwayInTheMiddle)
{
    const auto first = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    const auto second = showNew<Label>(QStringLiteral("Label"), {10, 40, 80, 20});
    listen();
    tool.setListener([this](QAccessibleEvent&) { surface.reset(); });
    put(*first, "Caption", QStringLiteral("a"));
    put(*second, "Caption", QStringLiteral("b"));
    EXPECT_EQ(told(), QStringList{"name a"}) << "and nothing more is told of what has gone";
}

TEST_F(AccessibleNews, AListenerMayUnloadTheControlThatItHearsOfAndTheNext)
{
    show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    const auto second = showNew<Label>(QStringLiteral("Label"), {10, 40, 80, 20});
    const auto third = showNew<Label>(QStringLiteral("Label"), {10, 70, 80, 20});
    listen();
    tool.setListener([this](QAccessibleEvent& event) {
        if (event.type() == QAccessible::NameChanged && surface->array(u"Label")->uBound() == 3) {
            surface->array(u"Label")->unload(3);
            surface->array(u"Label")->unload(2);
        }
    });
    put(*second, "Caption", QStringLiteral("b"));
    put(*second, "Enabled", false);
    put(*third, "Caption", QStringLiteral("c"));
    EXPECT_EQ(told(), (QStringList{"name b", "children Overview"}));
    EXPECT_EQ(root()->childCount(), 1);
}

TEST_F(AccessibleNews, AListenerMayShowAnotherPictureAndRunATurnOfTheEventLoop)
{
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    listen();
    bool isFirst = true;
    tool.setListener([&](QAccessibleEvent&) {
        if (!std::exchange(isFirst, false))
            return;
        for (int i = 0; i < 100; ++i)
            showNew<Label>(QStringLiteral("Label"), {10, 2 * i, 80, 20});
        settle();
    });
    put(*label, "Caption", QStringLiteral("a"));
    EXPECT_EQ(told(), (QStringList{"name a", "children Overview"}));
    EXPECT_EQ(root()->childCount(), 101);
}

TEST_F(AccessibleNews, AnOwnerThatIsAskedMayTakeTheSurfaceAway)
{
    EndingOwner owner;
    owner.place = &surface;
    const auto label = show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    listen();
    surface->setEvents(&owner);
    put(*label, "Caption", QStringLiteral("a"));
    EXPECT_EQ(told(), QStringList());
    EXPECT_FALSE(surface);
}

TEST_F(AccessibleNews, ATextOfAFaceMayCostTheSurface)
{
    EndingOwner owner;
    owner.place = &surface;
    show<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    surface->setEvents(&owner);
    EXPECT_EQ(faceAt(0)->text(QAccessible::Name), u"last words");
    EXPECT_FALSE(surface);
}

TEST_F(AccessibleNews, AFaceOfAControlThatHasGoneSaysNothing)
{
    const auto label = showNew<Label>(QStringLiteral("Label"), {10, 10, 80, 20});
    listen();
    const QAccessible::Id id = QAccessible::uniqueId(faceAt(0));
    put(*label, "Caption", QStringLiteral("last words"));
    surface->array(u"Label")->unload(2);
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
    EXPECT_EQ(told(), QStringList{"children Overview"});
}

TEST_F(AccessibleNews, AFaceOfAnInputWidgetEndsWithTheWidget)
{
    const auto check = showNew<CheckBox>(QStringLiteral("cbCheck"), {10, 10, 80, 20});
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 40, 80, 20});
    listen();
    const auto faceOf = [](const WidgetControl& control) {
        return QAccessible::uniqueId(QAccessible::queryAccessibleInterface(control.widget()));
    };
    const QAccessible::Id unloaded = faceOf(*check), left = faceOf(*box);
    surface->array(u"cbCheck")->unload(2);
    settle();
    EXPECT_EQ(QAccessible::accessibleInterface(unloaded), nullptr);
    tool.setListener([this](QAccessibleEvent&) { surface.reset(); });
    put(*box, "Text", QStringLiteral("b")); // the surface goes in the middle, its widgets later
    settle();
    EXPECT_FALSE(surface);
    EXPECT_EQ(QAccessible::accessibleInterface(left), nullptr);
}

/// The toolkit tells of input widgets in the middle of what we do to them.
class HostileDuringWidgets : public AccessibleNews, public testing::WithParamInterface<int>
{
protected:
    void change(const std::function<void()>& atEvent)
    {
        const auto check = show<CheckBox>(QStringLiteral("cbCheck"), {10, 10, 80, 20});
        const auto box = show<TextBox>(QStringLiteral("Text"), {10, 40, 80, 20});
        const auto later = showNew<CommandButton>(QStringLiteral("CommandButton"), {10, 80, 80, 20});
        listen();
        int countdown = GetParam();
        tool.setListener([&](QAccessibleEvent&) {
            if (countdown-- == 0)
                atEvent();
        });
        put(*check, "Caption", QStringLiteral("a"));
        put(*check, "Value", 1);
        put(*check, "Enabled", false);
        put(*box, "Text", QStringLiteral("b"));
        put(*box, "Visible", false);
        put(*later, "Caption", QStringLiteral("c"));
        settle();
        settle();
        EXPECT_LT(countdown, 0) << "there was such an event";
        tool.setListener({});
    }
};

TEST_P(HostileDuringWidgets, AnyEventMayShowHideAndUnloadControls)
{
    change([this] {
        for (const Ref<LiveControl>& control : surface->controls())
            control->setVisible(!control->visible());
        surface->array(u"CommandButton")->unload(2);
    });
    EXPECT_TRUE(surface);
}

TEST_P(HostileDuringWidgets, AnyEventMayTakeTheSurfaceAway)
{
    change([this] { surface.reset(); });
    EXPECT_FALSE(surface);
}

INSTANTIATE_TEST_SUITE_P(AtEvent, HostileDuringWidgets, testing::Range(0, 8));

} // namespace zan::surface::tests
