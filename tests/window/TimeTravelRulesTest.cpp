// A panel at a moment of the past: nothing acts, nothing is edited, and whatever its host does stands.

#include "TimeTravelFixture.h"

#include "binding/MemberTable.h"
#include "support/ListeningTool.h"
#include "support/Properties.h"
#include "surface/host/Surface.h"
#include "surface/host/WidgetControl.h"
#include "surface/intrinsic/CommandButton.h"
#include "window/PanelDocument.h"
#include "window/PanelEditor.h"

#include <QTest>

using namespace zan;
using namespace zan::window;

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

TEST_F(TimeTravel, AHostMayEndThePanelWhenItHearsOfAMoment)
{
    loadLabel();
    panel->showMoment(Moment);
    QObject::connect(panel.get(), &BenchWindow::MomentShown, qApp, [this] { panel.reset(); });
    panel->ShowLive();
    EXPECT_FALSE(panel);
}

TEST_F(TimeTravel, AToolThatIsToldOfWhatChangesMayEndThePanel)
{
    level = channel("LEVEL", 5);
    record(1, Moment, 3);
    fill("MAIN", (bound("VB.TextBox") + bound("VB.CheckBox")).constData());
    // At each of its events in turn, the way there and back.
    for (int fatal = 0;; ++fatal) {
        panel = std::make_unique<BenchWindow>();
        panel->setLogger(logger);
        panel->InitProperties();
        panel->LoadWindow(QStringLiteral("MAIN"));
        panel->show();
        panel->flush();
        int told = 0;
        {
            test::ListeningTool tool;
            tool.setListener([&](QAccessibleEvent& event) {
                // The toolkit tells of showing and hiding amid its own work on the widget, which must outlive that.
                const bool isToolkits =
                    event.type() == QAccessible::ObjectShow || event.type() == QAccessible::ObjectHide;
                if (!isToolkits && told++ == fatal)
                    panel.reset();
            });
            panel->showMoment(Moment);
            if (panel)
                panel->ShowLive();
        }
        if (panel) {
            EXPECT_GT(told, 2);
            EXPECT_EQ(told, fatal);
            break;
        }
    }
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
