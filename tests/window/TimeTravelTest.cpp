// A panel at a moment of the past: what was stored, and nothing that acts.

#include "WindowFixture.h"

#include "binding/MemberTable.h"
#include "site/LocalTime.h"
#include "support/FakeHistory.h"
#include "support/Properties.h"
#include "surface/host/Surface.h"
#include "surface/host/WidgetControl.h"
#include "surface/intrinsic/CommandButton.h"
#include "window/PanelDocument.h"
#include "window/PanelEditor.h"
#include "window/PanelTime.h"
#include "window/PastFrame.h"

#include <QAccessible>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

#include <functional>

using namespace zan;
using namespace zan::window;
using binding::Variant;
using site::HistoryTime;
using site::LinkState;
using values::Name;
using values::Ref;

namespace {

constexpr HistoryTime Moment = 1'600'000'000'000;
constexpr HistoryTime Second = 1000;

/// A history that tells how often it is asked, and does something meanwhile.
class AskedHistory : public fake::FakeHistory
{
public:
    mutable int asked = 0;
    std::function<void()> onValues;
    std::size_t answers = 1000; ///< at most so many values

    std::vector<Past> valuesAt(Time moment) const override
    {
        ++asked;
        if (const auto action = onValues)
            action();
        std::vector<Past> values = FakeHistory::valuesAt(moment);
        values.resize(std::min(values.size(), answers));
        return values;
    }
};

class TimeTravel : public WindowTest
{
protected:
    TimeTravel()
    {
        logger->live->history = history;
        logger->link->state = LinkState::Connected;
        panel->resize(400, 300);
    }

    /// A channel of the window RTD with its series, as it is now.
    Ref<fake::FakeChannel> channel(const char* key, const Variant& now, std::int64_t period = Second)
    {
        const QString name = QString::fromLatin1(key);
        const Ref<fake::FakeChannel> made = logger->channel(QStringLiteral("RTD"), name);
        made->value = now;
        made->label = name;
        history->list.push_back(
            {std::int64_t(history->list.size()) + 1, QStringLiteral("RTD"), name, name, {}, {}, period});
        return made;
    }
    void record(std::int64_t series, HistoryTime time, const Variant& value) { history->put(series, time, value); }
    void load(const QByteArray& controls)
    {
        fill("MAIN", controls.constData());
        panel->LoadWindow(QStringLiteral("MAIN"));
    }
    /// One label on a channel that is 5 now and was 3 at the moment.
    void loadLabel()
    {
        level = channel("LEVEL", 5);
        record(1, Moment, 3);
        load("<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|LEVEL</BINDTO></CONTROL>");
    }
    QString caption(int place = 1) { return property(place, "Caption"); }
    bool isCovered(int place)
    {
        const auto list = panel->Controls()->withoutRecord();
        return std::any_of(list.begin(), list.end(),
                           [&](const Ref<binding::Object>& one) { return one.get() == live(place).get(); });
    }
    PastFrame* frame() { return dynamic_cast<PastFrame*>(panel->findChild<QWidget*>(QStringLiteral("pastFrame"))); }
    QByteArray document() { return document::toXml(logger->scheme->windows->root); }

    Ref<AskedHistory> history = values::make<AskedHistory>();
    Ref<fake::FakeChannel> level;
};

QByteArray bound(const char* type, const char* rest = "")
{
    return QByteArray("<CONTROL><TYPE>") + type + "</TYPE><BINDTO>RTD|LEVEL</BINDTO>" + rest + "</CONTROL>";
}

} // namespace

// What is shown ------------------------------------------------------------------------------------------------

TEST_F(TimeTravel, ALabelShowsTheStoredValueAndThenTheLiveOneAtOnce)
{
    loadLabel();
    EXPECT_EQ(caption(), u"5");
    panel->showMoment(Moment);
    EXPECT_EQ(caption(), u"3");
    EXPECT_FALSE(panel->IsLive());
    level->value = 6;
    panel->ShowLive();
    EXPECT_EQ(caption(), u"6");
    EXPECT_TRUE(panel->IsLive());
}

TEST_F(TimeTravel, LabelUnitsAndFormatStandBesideTheStoredValue)
{
    level = channel("LEVEL", 5);
    level->units = QStringLiteral("m");
    level->format = QStringLiteral("0.00");
    record(1, Moment, 3);
    load(bound("VB.Label", "<SHOWLABELS>-1</SHOWLABELS><ADDLABELSEPERATORS>-1</ADDLABELSEPERATORS>"));
    panel->showMoment(Moment);
    EXPECT_EQ(caption(), u"LEVEL: 3.00 m");
}

TEST_F(TimeTravel, ADateIsLocalTime)
{
    loadLabel();
    panel->object()->invoke(Name("ShowAt"), binding::Access::Get,
                            std::array{Variant(site::dateOf(Moment + Second))});
    EXPECT_EQ(panel->time().moment(), Moment + Second);
    EXPECT_FALSE(values::toBoolean(panel->object()->get(Name("IsLive"))));
    panel->object()->invoke(Name("ShowLive"), binding::Access::Get, {});
    EXPECT_TRUE(values::toBoolean(panel->object()->get(Name("IsLive"))));
}

TEST_F(TimeTravel, TextBoxCheckBoxAndBarsShowTheStoredValue)
{
    level = channel("LEVEL", 0);
    record(1, Moment, 40);
    load(bound("VB.TextBox") +
         bound("VB.CheckBox", "<ACTION><CHECKEDCAPTION>on</CHECKEDCAPTION><UNCHECKEDCAPTION>off</UNCHECKEDCAPTION>"
                              "</ACTION>") +
         bound("ZanBenchWindow.ValueBar") + bound("MSComctlLib.ProgressBar"));
    EXPECT_EQ(property(2, "Caption"), u"off");
    panel->showMoment(Moment);
    EXPECT_EQ(property(1, "Text"), u"40");
    EXPECT_EQ(property(2, "Caption"), u"on");
    EXPECT_EQ(property(2, "Value"), u"1");
    EXPECT_EQ(property(3, "Value"), u"40");
    EXPECT_EQ(property(4, "Value"), u"40");
    panel->ShowLive();
    EXPECT_EQ(property(1, "Text"), u"0");
    EXPECT_EQ(property(2, "Caption"), u"off");
    EXPECT_EQ(property(3, "Value"), u"0");
    EXPECT_EQ(property(4, "Value"), u"0");
}

TEST_F(TimeTravel, LimitsThatFollowAChannelFollowItsPast)
{
    level = channel("LEVEL", 5);
    channel("LIMIT", 70);
    record(1, Moment, 3);
    record(2, Moment, 20);
    load(bound("ZanBenchWindow.ValueBar", "<BOUNDLIMIT>-1</BOUNDLIMIT><LIMITCHANNEL>RTD|LIMIT</LIMITCHANNEL>"
                                          "<LIMITOFFSET>4</LIMITOFFSET>"));
    EXPECT_EQ(property(1, "HighLimit"), u"74");
    panel->showMoment(Moment);
    EXPECT_EQ(property(1, "HighLimit"), u"24");
    EXPECT_EQ(property(1, "LowLimit"), u"16");
    panel->ShowLive();
    EXPECT_EQ(property(1, "HighLimit"), u"74");
}

TEST_F(TimeTravel, ABarWhoseLimitIsNotStoredIsCovered)
{
    level = channel("LEVEL", 5);
    logger->setValue(QStringLiteral("RTD"), QStringLiteral("LIMIT"), 70);
    record(1, Moment, 3);
    load(bound("ZanBenchWindow.ValueBar", "<BOUNDLIMIT>-1</BOUNDLIMIT><LIMITCHANNEL>RTD|LIMIT</LIMITCHANNEL>"));
    panel->showMoment(Moment);
    EXPECT_TRUE(isCovered(1));
    panel->ShowLive();
    EXPECT_TRUE(live(1)->visible());
    EXPECT_EQ(property(1, "HighLimit"), u"70");
}

TEST_F(TimeTravel, ALightComparesTheStoredValue)
{
    level = channel("LEVEL", 5);
    record(1, Moment, 9);
    load(bound("ZanBenchWindow.StatusLight", "<COMPAREVALUE>9</COMPAREVALUE>"));
    EXPECT_EQ(property(1, "Value"), u"False");
    panel->showMoment(Moment);
    EXPECT_EQ(property(1, "Value"), u"True");
    EXPECT_FALSE(isCovered(1));
    panel->ShowLive();
    EXPECT_EQ(property(1, "Value"), u"False");
}

TEST_F(TimeTravel, ABitTestReadsTheWordThatTheStoredValueWasMadeOf)
{
    struct Row
    {
        std::int32_t type;
        float multiplier, offset;
        const char* formula;
        double stored;
        int bit;
        bool isKnown, isSet;
    };
    const Row rows[] = {
        {0, 1, 0, "", 4, 2, true, true},         {0, 1, 0, "", 4, 1, true, false},
        {0, 0, 0, "", 4, 2, true, true}, // a multiplier of 0 counts as 1
        {2, 0.5F, 10, "", 12, 2, true, true},    {1, 1, 0, "", -1, 7, true, true},
        {1, 1, 0, "", -1, 8, true, false},       {0, 1, 0, "", 4.4, 2, false, false},
        {0, 1, 0, "", 300, 2, false, false},     {7, 1, 0, "", 4, 2, false, false},
        {0, 1, 0, "SQUARE", 4, 2, false, false},
    };
    level = channel("LEVEL", 0);
    load(bound("ZanBenchWindow.StatusLight", "<COMPARISON>BIT SET=</COMPARISON>"));
    for (const Row& row : rows) {
        level->dataType = row.type;
        level->multiplier = row.multiplier;
        level->offset = row.offset;
        level->formula = QString::fromLatin1(row.formula);
        logger->live->memory[0] = 255; // what is there now does not count
        record(1, Moment, row.stored);
        document::XMLOps::SetAttribute(panel->Controls()->Control(Variant(1))->XMLNode(), Name("COMPAREVALUE"),
                                       QString::number(row.bit), true);
        panel->showMoment(Moment);
        EXPECT_EQ(!isCovered(1), row.isKnown) << row.stored << " bit " << row.bit;
        if (row.isKnown) {
            EXPECT_EQ(property(1, "Value"), row.isSet ? u"True" : u"False") << row.stored << " bit " << row.bit;
        }
        panel->ShowLive();
    }
}

TEST_F(TimeTravel, WhatTheConnectionWasLikeIsNotStoredAndIsCovered)
{
    load("<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE><MODE>STATUS</MODE></CONTROL>");
    EXPECT_EQ(property(1, "Value"), u"True");
    panel->showMoment(Moment);
    EXPECT_TRUE(isCovered(1));
    EXPECT_FALSE(live(1)->visible());
    panel->ShowLive();
    EXPECT_TRUE(live(1)->visible());
    EXPECT_EQ(property(1, "Value"), u"True");
}

TEST_F(TimeTravel, AControlWithoutAChannelStaysAsItIs)
{
    load("<CONTROL><TYPE>VB.Label</TYPE><CAPTION>Pump</CAPTION></CONTROL>"
         "<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE></CONTROL>");
    test::put(*live(2), "Value", true);
    panel->showMoment(Moment);
    EXPECT_EQ(caption(1), u"Pump");
    EXPECT_EQ(property(2, "Value"), u"True");
    EXPECT_TRUE(live(2)->visible());
}

TEST_F(TimeTravel, ALabelOfRestrictionsSaysNothingOfThePast)
{
    load("<CONTROL><TYPE>VB.Label</TYPE><CAPTION>told now</CAPTION><BINDTO>ECANSVC|1|1</BINDTO></CONTROL>");
    panel->showMoment(Moment);
    EXPECT_EQ(caption(), u"-");
    panel->ShowLive();
    EXPECT_NE(caption(), u"-");
}

// Nothing stored -----------------------------------------------------------------------------------------------

TEST_F(TimeTravel, WhatIsNotStoredIsADashAndNeverANumber)
{
    level = channel("LEVEL", 5);
    level->units = QStringLiteral("m");
    load(bound("VB.Label") + bound("VB.Label", "<SHOWLABELS>-1</SHOWLABELS>") + bound("VB.TextBox"));
    panel->showMoment(Moment);
    EXPECT_EQ(caption(1), u"-");
    EXPECT_EQ(caption(2), u"LEVEL- m");
    EXPECT_EQ(property(3, "Text"), u"-");
}

TEST_F(TimeTravel, AControlThatCannotSayThatNothingIsStoredIsCovered)
{
    level = channel("LEVEL", 1);
    load(bound("VB.CheckBox") + bound("ZanBenchWindow.StatusLight") + bound("ZanBenchWindow.ValueBar") +
         bound("MSComctlLib.ProgressBar"));
    panel->showMoment(Moment);
    for (int place = 1; place <= 4; ++place) {
        EXPECT_TRUE(isCovered(place)) << place;
        EXPECT_FALSE(live(place)->visible()) << place;
    }
    EXPECT_EQ(frame()->covers().size(), 4u);
    // A moment of which something is stored uncovers them, and so does the present.
    record(1, Moment + Second, 1);
    panel->showMoment(Moment + Second);
    EXPECT_TRUE(panel->Controls()->withoutRecord().empty());
    for (int place = 1; place <= 4; ++place)
        EXPECT_TRUE(live(place)->visible()) << place;
    panel->showMoment(Moment);
    panel->ShowLive();
    for (int place = 1; place <= 4; ++place)
        EXPECT_TRUE(live(place)->visible()) << place;
}

TEST_F(TimeTravel, AValueBehindAGapIsNone)
{
    loadLabel();
    panel->showMoment(Moment + 3 * Second);
    EXPECT_EQ(caption(), u"3");
    panel->showMoment(Moment + 3 * Second + 1);
    EXPECT_EQ(caption(), u"-");
    panel->showMoment(Moment - 1);
    EXPECT_EQ(caption(), u"-");
}

TEST_F(TimeTravel, ASeriesOfUnknownPeriodHasNoGaps)
{
    loadLabel();
    history->list[0].period = 0;
    panel->showMoment(Moment + 3'000'000 * Second / 100);
    EXPECT_EQ(caption(), u"3");
    history->list[0].period = std::numeric_limits<std::int64_t>::max();
    panel->showMoment(Moment + 3'000'000 * Second / 100);
    EXPECT_EQ(caption(), u"3");
}

TEST_F(TimeTravel, AControlWhoseUpdateFailsIsCoveredAndTheNextOneIsShown)
{
    level = channel("LEVEL", 1);
    record(1, Moment, QStringLiteral("no number"));
    load(bound("ZanBenchWindow.StatusLight") + bound("VB.Label"));
    panel->showMoment(Moment);
    EXPECT_TRUE(isCovered(1));
    EXPECT_EQ(caption(2), u"no number");
}

// The logger meanwhile -----------------------------------------------------------------------------------------

TEST_F(TimeTravel, EventsOfTheLoggerTouchNoControlUntilThePanelIsLiveAgain)
{
    level = channel("LEVEL", 5);
    record(1, Moment, 3);
    load(bound("VB.Label") + "<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE></CONTROL>"
                             "<CONTROL><TYPE>VB.CommandButton</TYPE><ACTION><TYPE>VESPER</TYPE>"
                             "<FUNCTION>CONNECT</FUNCTION></ACTION></CONTROL>");
    EXPECT_EQ(caption(3), u"&Disconnect");
    test::put(*live(2), "Value", true);
    panel->showMoment(Moment);
    level->value = 8;
    Q_EMIT logger->NewBenchData();
    Q_EMIT logger->NewENTData();
    logger->link->enter(LinkState::Broken);
    EXPECT_EQ(caption(1), u"3");
    EXPECT_EQ(property(2, "Value"), u"True");
    EXPECT_EQ(caption(3), u"&Disconnect");
    EXPECT_TRUE(forms.boxes().empty());
    panel->ShowLive();
    EXPECT_EQ(caption(1), u"8");
    EXPECT_EQ(property(2, "Value"), u"False");
    EXPECT_EQ(caption(3), u"&Re-connect");
    EXPECT_EQ(forms.boxes().size(), 1u);
}

TEST_F(TimeTravel, ABarOutOfItsRangeGoesBackToWhatItShowedLive)
{
    level = channel("LEVEL", 20);
    record(1, Moment, 90);
    load(bound("MSComctlLib.ProgressBar"));
    EXPECT_EQ(property(1, "Value"), u"20");
    panel->showMoment(Moment);
    EXPECT_EQ(property(1, "Value"), u"90");
    level->value = 5000; // refused by the bar
    panel->ShowLive();
    EXPECT_EQ(property(1, "Value"), u"20");
}

TEST_F(TimeTravel, ABoxThatWasJustClickedIsStillLeftAloneOnceWhenThePanelIsLiveAgain)
{
    level = channel("LEVEL", 0);
    record(1, Moment, 0);
    load(bound("VB.CheckBox"));
    test::put(*live(1), "Value", 1); // the click
    const document::Node node = panel->Controls()->Control(Variant(1))->XMLNode();
    ASSERT_EQ(document::XMLOps::GetAttribute(node, Name("IGNORESCAN")), u"-1");
    panel->showMoment(Moment);
    EXPECT_EQ(property(1, "Value"), u"0");
    EXPECT_EQ(document::XMLOps::GetAttribute(node, Name("IGNORESCAN")), u"-1");
    panel->ShowLive(); // the scan that is left out
    EXPECT_EQ(property(1, "Value"), u"1");
    panel->Refresh();
    EXPECT_EQ(property(1, "Value"), u"0");
}

TEST_F(TimeTravel, OneQuestionIsAskedForAMomentHoweverManyControls)
{
    level = channel("LEVEL", 5);
    record(1, Moment, 3);
    QByteArray controls;
    for (int i = 0; i < 40; ++i)
        controls += bound("VB.Label");
    load(controls);
    panel->showMoment(Moment);
    EXPECT_EQ(history->asked, 1);
    EXPECT_EQ(caption(40), u"3");
    panel->Refresh();
    EXPECT_EQ(history->asked, 2);
}

// Nothing acts -------------------------------------------------------------------------------------------------

TEST_F(TimeTravel, NoClickActsAndNoControlTakesInput)
{
    level = channel("LEVEL", 1);
    record(1, Moment, 1);
    const char* const put = "<ACTION><TYPE>PUT</TYPE><PUTADDRESS>5</PUTADDRESS></ACTION>";
    load(bound("VB.CommandButton", put) + bound("VB.CheckBox", put) + bound("VB.TextBox"));
    panel->show();
    panel->showMoment(Moment);
    for (int place = 1; place <= 3; ++place) {
        auto* control = dynamic_cast<surface::WidgetControl*>(live(place).get());
        QWidget* widget = control->ensureWidget();
        EXPECT_FALSE(widget->isEnabled()) << place;
        EXPECT_TRUE(control->enabled()) << place; // the property is the document's
        QTest::mouseClick(widget, Qt::LeftButton);
        QTest::mouseDClick(widget, Qt::LeftButton);
        QTest::keyClick(widget, Qt::Key_Space);
    }
    EXPECT_EQ(property(2, "Value"), u"1");
    EXPECT_EQ(property(3, "Text"), u"1");
    dynamic_cast<surface::CommandButton&>(*live(1)).press();
    EXPECT_TRUE(logger->live->writes.empty());
    EXPECT_TRUE(forms.boxes().empty());
    EXPECT_TRUE(errors.empty());
    panel->ShowLive();
    EXPECT_TRUE(dynamic_cast<surface::WidgetControl&>(*live(1)).ensureWidget()->isEnabled());
    dynamic_cast<surface::CommandButton&>(*live(1)).press();
    EXPECT_EQ(logger->live->writes.size(), 1u);
}

namespace {

/// Forms whose user does something else before he answers.
class Interrupted : public surface::RecordingForms
{
public:
    std::function<void()> meanwhile;
    int messageBox(QWidget* owner, const QString& text, int style, const QString& title) override
    {
        if (const auto action = std::exchange(meanwhile, nullptr))
            action();
        return RecordingForms::messageBox(owner, text, style, title);
    }
    void showModal(QDialog& form) override
    {
        if (const auto action = std::exchange(meanwhile, nullptr))
            action();
        RecordingForms::showModal(form);
    }
};

} // namespace

TEST_F(TimeTravel, AnActionThatWaitedWhenThePanelLeftThePresentDoesNothingMore)
{
    level = channel("LEVEL", 1);
    const auto action = [](const char* content) {
        return bound("VB.CommandButton", (QByteArray("<ACTION>") + content + "</ACTION>").constData());
    };
    load(action("<TYPE>SET</TYPE>") + action("<TYPE>VESPER</TYPE><FUNCTION>PROGRAM</FUNCTION>") +
         action("<TYPE>VESPER</TYPE><FUNCTION>UNLOAD</FUNCTION>"));
    Interrupted interrupted;
    panel->setForms(&interrupted);
    for (const bool comesBack : {false, true}) {
        for (int place = 1; place <= 3; ++place) {
            interrupted.meanwhile = [&] {
                panel->showMoment(Moment);
                if (comesBack)
                    panel->ShowLive();
            };
            interrupted.answer(place == 1 ? QStringLiteral("7") : QStringLiteral("OK"));
            dynamic_cast<surface::CommandButton&>(*live(place)).press();
            EXPECT_FALSE(interrupted.meanwhile) << place;
            panel->ShowLive();
        }
    }
    EXPECT_TRUE(logger->live->writes.empty());
    EXPECT_EQ(logger->actions, 0);
    panel->setForms(&forms);
}

TEST_F(TimeTravel, AScriptUnderWayEndsWithoutABoxWhenThePanelLeavesThePresent)
{
    level = channel("LEVEL", 1);
    load(bound("VB.CommandButton",
               "<ACTION><TYPE>SCRIPT</TYPE><SCRIPT>Sub Main\\nOn Error Resume Next\\nMsgBox 1\\n"
               "Logger.AddAction 4\\nEnd Sub</SCRIPT></ACTION>"));
    Interrupted interrupted;
    panel->setForms(&interrupted);
    interrupted.meanwhile = [&] { panel->showMoment(Moment); };
    dynamic_cast<surface::CommandButton&>(*live(1)).press();
    EXPECT_EQ(logger->actions, 0);
    EXPECT_EQ(interrupted.boxes().size(), 1u);
    panel->ShowLive();
    dynamic_cast<surface::CommandButton&>(*live(1)).press();
    EXPECT_EQ(logger->actions, 4);
    panel->setForms(&forms);
}

TEST_F(TimeTravel, AScriptMaySendItsPanelToThePastAndEndsThere)
{
    level = channel("LEVEL", 1);
    load(bound("VB.CommandButton", "<ACTION><TYPE>SCRIPT</TYPE><SCRIPT>Sub Main\\nWindow.ShowAt Now - 1\\n"
                                   "Logger.AddAction 4\\nEnd Sub</SCRIPT></ACTION>"));
    dynamic_cast<surface::CommandButton&>(*live(1)).press();
    EXPECT_FALSE(panel->IsLive());
    EXPECT_EQ(logger->actions, 0);
    EXPECT_TRUE(forms.boxes().empty());
}

// Editing and saving -------------------------------------------------------------------------------------------

TEST_F(TimeTravel, NothingIsEditedInThePast)
{
    loadLabel();
    panel->showMoment(Moment);
    EXPECT_EQ(errorOf([&] { panel->setLockPositions(false); }), 5);
    EXPECT_TRUE(panel->LockPositions());
    EXPECT_EQ(errorOf([&] { panel->Undo(); }), 5);
    EXPECT_EQ(errorOf([&] { panel->Redo(); }), 5);
    EXPECT_EQ(errorOf([&] { panel->ImportKeel(QStringLiteral("none")); }), 5);
    bool hasRun = false;
    panel->edit([&](PanelEditor&) { hasRun = true; });
    EXPECT_FALSE(hasRun);
    EXPECT_EQ(errors, std::vector<int>{5});
    panel->setLockPositions(true); // is locked already
    panel->ShowLive();
    panel->setLockPositions(false);
    EXPECT_FALSE(panel->LockPositions());
}

TEST_F(TimeTravel, APanelThatIsBeingEditedStaysInThePresent)
{
    loadLabel();
    panel->setLockPositions(false);
    EXPECT_EQ(errorOf([&] { panel->showMoment(Moment); }), 5);
    EXPECT_TRUE(panel->IsLive());
    EXPECT_EQ(caption(), u"5");
    EXPECT_FALSE(frame());
}

TEST_F(TimeTravel, ASaveInThePastStoresWhatASaveBeforeItStored)
{
    level = channel("LEVEL", 5);
    record(1, Moment, 3);
    load(bound("VB.Label") + bound("VB.TextBox") + bound("VB.CheckBox") +
         bound("ZanBenchWindow.StatusLight", "<HIDEWHENTRUE>-1</HIDEWHENTRUE><COMPAREVALUE>3</COMPAREVALUE>") +
         bound("ZanBenchWindow.ValueBar") + bound("MSComctlLib.ProgressBar"));
    Q_EMIT logger->NewBenchData();
    panel->SaveWindow();
    const QByteArray before = document();
    for (const HistoryTime moment : {Moment, Moment - Second}) {
        panel->showMoment(moment);
        EXPECT_EQ(document(), before); // the look alone writes nothing
        panel->UpdateDocument();
        panel->SaveWindow();
        EXPECT_EQ(document(), before);
        EXPECT_EQ(caption(), moment == Moment ? u"3" : u"-"); // and what is shown stays the past
        EXPECT_EQ(property(4, "Visible"), u"False");
    }
    panel->ShowLive();
    EXPECT_EQ(property(4, "Visible"), u"True");
    panel->SaveWindow();
    EXPECT_EQ(document(), before);
}

TEST_F(TimeTravel, EachTypesRowNamesWhatItsUpdateWrites)
{
    level = channel("LEVEL", 0);
    channel("LIMIT", 70);
    record(1, Moment, 40);
    record(2, Moment, 20);
    int types = 0;
    for (const wrappers::ControlType& type : controlTypes()) {
        if (!type.live.update)
            continue;
        ++types;
        panel->ShowLive();
        panel->Clear();
        const QByteArray key = type.key.toUtf8();
        fill(key.constData(),
             bound(key.constData(), "<BOUNDLIMIT>-1</BOUNDLIMIT><LIMITCHANNEL>RTD|LIMIT</LIMITCHANNEL>")
                 .constData());
        panel->LoadWindow(type.key.toString());
        const Ref<surface::LiveControl> control = live(1);
        const auto look = [&] {
            std::map<QString, QString> values;
            for (const binding::Member& member : control->members().members()) {
                Variant value;
                if (member.kind == binding::Member::Kind::Property && member.put &&
                    control->tryGet(member.name, value) == binding::AccessStatus::Ok && !value.isObject())
                    values[member.name.text()] = values::toText(value);
            }
            return values;
        };
        const auto before = look();
        panel->showMoment(Moment);
        const auto past = look();
        EXPECT_TRUE(past != before) << key.constData();
        for (const auto& [name, value] : past) {
            const auto& writes = type.live.writes;
            const bool isNamed = std::any_of(writes.begin(), writes.end(), [&name = name](QStringView one) {
                return one.compare(name, Qt::CaseInsensitive) == 0;
            });
            // The caption of a light is that of its value.
            const bool follows = name == QLatin1String("Caption") && key == "ZanBenchWindow.StatusLight";
            if (!isNamed && !follows && name != QLatin1String("Visible")) {
                EXPECT_EQ(value, before.at(name)) << key.constData() << ' ' << name.toStdString();
            }
        }
        panel->ShowLive();
        EXPECT_TRUE(look() == before) << key.constData();
    }
    EXPECT_EQ(types, 6);
}

// Calls that fail, and hosts that do something else ---------------------------------------------------------------

TEST_F(TimeTravel, WhatCannotBeShownIsAnErrorAndThePanelStaysAsItIs)
{
    loadLabel();
    EXPECT_EQ(errorOf([&] { panel->ShowAt(QStringLiteral("soon")); }), 13);
    EXPECT_EQ(errorOf([&] { panel->showMoment(32'000'000'000'000); }), 5); // the year 2984
    logger->live->history = nullptr;
    EXPECT_EQ(errorOf([&] { panel->showMoment(Moment); }), 5);
    logger->live = nullptr;
    EXPECT_EQ(errorOf([&] { panel->showMoment(Moment); }), 91);
    EXPECT_TRUE(panel->IsLive());
    EXPECT_FALSE(frame());
    EXPECT_EQ(caption(), u"5");
    BenchWindow bare;
    EXPECT_EQ(errorOf([&] { bare.showMoment(Moment); }), 91);
    bare.ShowLive(); // is live
}

TEST_F(TimeTravel, AMomentThatALoggersClockIsAheadWithCanBeShown)
{
    loadLabel();
    const HistoryTime ahead = 32'000'000'000'000;
    record(1, ahead, 4);
    panel->showMoment(ahead);
    EXPECT_EQ(caption(), u"4");
}

TEST_F(TimeTravel, AHistoryThatFailsLeavesThePanelAtItsMoment)
{
    loadLabel();
    history->onValues = [] { throw 7; };
    EXPECT_THROW(panel->showMoment(Moment), int);
    EXPECT_TRUE(panel->IsLive());
    EXPECT_FALSE(frame());
    history->onValues = nullptr;
    panel->showMoment(Moment);
    history->onValues = [] { throw std::bad_alloc(); };
    EXPECT_THROW(panel->showMoment(Moment - Second), std::bad_alloc);
    EXPECT_EQ(panel->time().moment(), Moment);
    EXPECT_EQ(caption(), u"3");
    history->onValues = nullptr;
}

TEST_F(TimeTravel, SeriesThatAHistoryDoesNotAnswerForHaveNoValue)
{
    level = channel("LEVEL", 5);
    channel("FLOW", 6);
    record(1, Moment, 3);
    record(2, Moment, 4);
    load(bound("VB.Label") + "<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|FLOW</BINDTO></CONTROL>");
    history->answers = 1;
    panel->showMoment(Moment);
    EXPECT_EQ(caption(1), u"3");
    EXPECT_EQ(caption(2), u"-");
}

TEST_F(TimeTravel, SeriesThatComeLaterAreKnownAtTheNextMoment)
{
    loadLabel();
    history->list.clear();
    panel->showMoment(Moment);
    EXPECT_EQ(caption(), u"-");
    history->list.push_back(
        {7, QStringLiteral("rtd"), QStringLiteral("level"), {}, {}, {}, Second}); // keys ignore case
    record(7, Moment, 11);
    panel->showMoment(Moment);
    EXPECT_EQ(caption(), u"11");
}

TEST_F(TimeTravel, WhatAHistoryDoesMeanwhileStands)
{
    loadLabel();
    record(1, Moment + Second, 4);
    // Live again.
    panel->showMoment(Moment);
    history->onValues = [&] { panel->ShowLive(); };
    panel->showMoment(Moment + Second);
    EXPECT_TRUE(panel->IsLive());
    EXPECT_EQ(caption(), u"5");
    EXPECT_FALSE(frame());
    // Another moment.
    history->onValues = [&] {
        history->onValues = nullptr;
        panel->showMoment(Moment + Second);
    };
    panel->showMoment(Moment);
    EXPECT_EQ(panel->time().moment(), Moment + Second);
    EXPECT_EQ(caption(), u"4");
    // Unlocked.
    panel->ShowLive();
    history->onValues = [&] { panel->setLockPositions(false); };
    EXPECT_EQ(errorOf([&] { panel->showMoment(Moment); }), 5);
    EXPECT_TRUE(panel->IsLive());
    history->onValues = nullptr;
}

TEST_F(TimeTravel, APanelMayEndWhileItsHistoryIsAsked)
{
    loadLabel();
    const Ref<BenchWindowObject> face = panel->object();
    history->onValues = [&] { panel.reset(); };
    BenchWindow* const dying = panel.get();
    dying->showMoment(Moment);
    EXPECT_EQ(errorOf([&] { face->get(Name("IsLive")); }), 91);
}

TEST_F(TimeTravel, AHiddenPanelHasNoPast)
{
    loadLabel();
    panel->show();
    panel->showMoment(Moment);
    panel->hide();
    EXPECT_TRUE(panel->IsLive());
    EXPECT_EQ(errorOf([&] { panel->showMoment(Moment); }), 91);
}

TEST_F(TimeTravel, AWindowThatIsLoadedInThePastShowsTheMomentToo)
{
    loadLabel();
    fill("OTHER", bound("VB.Label").constData());
    panel->showMoment(Moment);
    panel->LoadWindow(QStringLiteral("OTHER"));
    EXPECT_FALSE(panel->IsLive());
    EXPECT_EQ(caption(), u"3");
    EXPECT_TRUE(frame());
    panel->Clear();
    EXPECT_FALSE(panel->IsLive());
    panel->LoadWindow(QStringLiteral("OTHER"));
    panel->ShowLive();
}

TEST_F(TimeTravel, AnotherLoggerBringsThePanelBackToLive)
{
    loadLabel();
    panel->showMoment(Moment);
    panel->setLogger(values::make<fake::FakeLogger>());
    EXPECT_TRUE(panel->IsLive());
    EXPECT_FALSE(frame());
    EXPECT_EQ(caption(), u"5");
}

// Frame and stamp ----------------------------------------------------------------------------------------------

TEST_F(TimeTravel, AFrameAndAStampTellThePastApartInPicturesToo)
{
    loadLabel();
    panel->show();
    panel->showMoment(Moment);
    const QImage picture = panel->grab().toImage();
    for (const QPoint place : {QPoint(2, 150), QPoint(397, 150), QPoint(200, 2), QPoint(200, 297)})
        EXPECT_EQ(picture.pixelColor(place), PastFrame::Colour) << place.x() << ' ' << place.y();
    EXPECT_EQ(frame()->stamp(), QStringLiteral("Past: ") + momentText(Moment));
    EXPECT_TRUE(QRect(0, 0, 400, 300).contains(frame()->stampRectangle()));
    panel->resize(500, 350);
    EXPECT_EQ(frame()->size(), QSize(500, 350));
    panel->ShowLive();
    EXPECT_FALSE(frame());
    EXPECT_NE(panel->grab().toImage().pixelColor(2, 150), PastFrame::Colour);
}

TEST_F(TimeTravel, TheStampIsSeenOfAScrolledPanelWhateverComesBesideIt)
{
    loadLabel();
    panel->resize(900, 700);
    QWidget window;
    QVBoxLayout rows(&window);
    QScrollArea area;
    area.setFrameShape(QFrame::NoFrame);
    QWidget bar;
    bar.setFixedHeight(120);
    rows.addWidget(&area);
    rows.addWidget(&bar);
    area.setWidget(panel.get());
    bar.hide();
    window.resize(400, 400);
    window.show();
    panel->showMoment(Moment);
    const auto isStampSeen = [&] {
        QCoreApplication::processEvents();
        const QRect seen(panel->mapFrom(area.viewport(), QPoint()), area.viewport()->size());
        return seen.contains(frame()->stampRectangle());
    };
    EXPECT_TRUE(isStampSeen());
    bar.show(); // what it takes is the area's, and not the panel's
    EXPECT_TRUE(isStampSeen());
    area.horizontalScrollBar()->setValue(200);
    area.verticalScrollBar()->setValue(150);
    EXPECT_TRUE(isStampSeen());
    bar.hide();
    window.resize(300, 250);
    EXPECT_TRUE(isStampSeen());
    area.takeWidget();
    panel->setParent(nullptr);
}

TEST_F(TimeTravel, TheStampLiesWhereItHidesLeast)
{
    load("<CONTROL><TYPE>VB.Label</TYPE><LEFT>3000</LEFT><TOP>0</TOP><WIDTH>3000</WIDTH><HEIGHT>600</HEIGHT>"
         "</CONTROL>");
    panel->showMoment(Moment);
    for (const QRect& control : {live(1)->bounds()})
        EXPECT_FALSE(frame()->stampRectangle().intersects(control));
}

TEST_F(TimeTravel, TheMouseGoesThroughTheFrameAndAReaderHearsTheMoment)
{
    level = channel("LEVEL", 1);
    load(bound("VB.CheckBox"));
    panel->show();
    panel->showMoment(Moment);
    EXPECT_TRUE(frame()->testAttribute(Qt::WA_TransparentForMouseEvents));
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(frame());
    ASSERT_TRUE(face);
    EXPECT_EQ(face->text(QAccessible::Name), frame()->stamp());
    EXPECT_EQ(face->text(QAccessible::Description), u"1 controls without a record");
}

TEST_F(TimeTravel, TheHostHearsOfEachMomentAndOfThePresent)
{
    loadLabel();
    std::vector<bool> heard;
    QObject::connect(panel.get(), &BenchWindow::MomentShown, panel.get(),
                     [&] { heard.push_back(panel->IsLive()); });
    panel->showMoment(Moment);
    panel->showMoment(Moment + Second);
    panel->ShowLive();
    panel->ShowLive();
    EXPECT_EQ(heard, (std::vector<bool>{false, false, true}));
}
