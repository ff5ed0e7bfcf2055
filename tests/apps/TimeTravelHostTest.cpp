// The host's way into the past: its bar, its playing, and all panels together.

#include "HostFixture.h"

#include "history/HistoryStore.h"
#include "support/FakeHistory.h"
#include "surface/host/LiveControl.h"
#include "values/Convert.h"
#include "window/BenchWindow.h"
#include "window/PanelTime.h"
#include "zanbench/TimeBar.h"
#include "zanbench/TimePlayer.h"

using namespace zan;
using host::MainWindow;
using host::TimePlayer;
using site::HistoryTime;
using values::Name;
using values::Variant;

namespace {

constexpr HistoryTime First = 1'600'000'000'000;
constexpr HistoryTime Second = 1000;
constexpr int Records = 100;

class TimeTravelHost : public HostTest
{
protected:
    /// A hundred records of the level, a second apart: 0, 1, 2 ...
    void record() const
    {
        history::HistoryPlace place;
        place.kind = history::HistoryPlace::Kind::Sqlite;
        place.file = schemePath() + QStringLiteral(".history");
        const auto store = values::make<history::HistoryStore>(place);
        const auto columns = std::make_shared<site::HistoryColumns>();
        columns->push_back({0, QStringLiteral("First"), QStringLiteral("A"), {}, {}, {}, Second});
        for (int i = 0; i < Records; ++i)
            store->keep(First + i * Second, columns, {Variant(i)});
        ASSERT_TRUE(store->flush());
    }
    std::unique_ptr<MainWindow> open()
    {
        auto window =
            std::make_unique<MainWindow>(settings, dialogs, host::HostStatus::Clock(), [this] { return now; });
        EXPECT_TRUE(window->openScheme(offline()));
        return window;
    }
    /// The same, and waits until the history has been read: it is opened by a thread of its own.
    std::unique_ptr<MainWindow> openRecorded()
    {
        auto window = open();
        EXPECT_TRUE(QTest::qWaitFor([&] { return part<QSlider>(*window, "timeSlider")->isEnabled(); },
                                    DeadlineMilliseconds));
        return window;
    }
    static QAction* action(const MainWindow& window, const char* name)
    {
        return window.findChild<QAction*>(QLatin1String(name));
    }
    template <class Part>
    static Part* part(const MainWindow& window, const char* name)
    {
        return window.findChild<Part*>(QLatin1String(name));
    }
    static QString shown(const MainWindow& window)
    {
        return values::toText(
            window.currentPanel()->Controls()->Control(Variant(std::int32_t(1)))->Control()->get(Name("Caption")));
    }
    static QString word(const MainWindow& window) { return part<QLabel>(window, "timeWord")->text(); }

    std::int64_t now = 0;
};

} // namespace

TEST(TimePlayer, GoesByTheClockHoweverOftenItIsAsked)
{
    std::int64_t now = 500;
    TimePlayer player([&] { return now; });
    player.setSpeed(1000);
    player.play(First);
    now += 60'000;
    EXPECT_EQ(player.moment(), First + 60'000'000);
    player.setSpeed(2); // from where it is
    now += 1000;
    EXPECT_EQ(player.moment(), First + 60'002'000);
    player.stop();
    EXPECT_FALSE(player.isPlaying());
}

TEST_F(TimeTravelHost, TheBarOpensBelowThePanelsAndLeadsThere)
{
    record();
    const auto window = openRecorded();
    EXPECT_TRUE(part<QWidget>(*window, "timeBar")->isHidden());
    ASSERT_TRUE(action(*window, "timeTravel")->isEnabled());
    EXPECT_FALSE(action(*window, "live")->isEnabled());
    action(*window, "timeTravel")->trigger();
    EXPECT_FALSE(part<QWidget>(*window, "timeBar")->isHidden());
    EXPECT_TRUE(window->currentPanel()->IsLive());
    auto* slider = part<QSlider>(*window, "timeSlider");
    slider->setValue(slider->minimum());
    EXPECT_EQ(window->currentPanel()->time().moment(), First);
    EXPECT_EQ(shown(*window), u"0");
    slider->setValue(slider->maximum());
    EXPECT_EQ(shown(*window), u"99");
    part<QDateTimeEdit>(*window, "timeMoment")->setDateTime(QDateTime::fromMSecsSinceEpoch(First + 7 * Second));
    EXPECT_EQ(shown(*window), u"7");
    EXPECT_TRUE(action(*window, "live")->isEnabled());
    action(*window, "live")->trigger();
    EXPECT_TRUE(window->currentPanel()->IsLive());
    EXPECT_EQ(shown(*window), u"");
    EXPECT_FALSE(part<QWidget>(*window, "timeBar")->isHidden());
}

TEST_F(TimeTravelHost, StepsGoFromRecordToRecordAndSayWhereTheyEnd)
{
    record();
    const auto window = openRecorded();
    window->time().goTo(First + 2 * Second + 300);
    window->time().step(1);
    EXPECT_EQ(window->time().moment(), First + 3 * Second);
    window->time().step(-1);
    window->time().step(-1);
    EXPECT_EQ(window->time().moment(), First + Second);
    window->time().step(-1);
    EXPECT_EQ(word(*window), u"");
    window->time().step(-1);
    EXPECT_EQ(window->time().moment(), First);
    EXPECT_EQ(word(*window), u"First record");
}

TEST_F(TimeTravelHost, PlayingShowsWhatIsDueAndStopsAtTheLastRecord)
{
    record();
    const auto window = openRecorded();
    auto* speed = part<QComboBox>(*window, "timeSpeed");
    speed->setCurrentIndex(speed->findData(10));
    window->time().play(true);
    EXPECT_EQ(shown(*window), u"0");
    now += 4'200; // one late look
    window->time().advance();
    EXPECT_EQ(shown(*window), u"42");
    speed->setCurrentIndex(speed->findData(1));
    now += 3'000;
    window->time().advance();
    EXPECT_EQ(shown(*window), u"45");
    EXPECT_EQ(part<QToolButton>(*window, "timePlay")->text(), u"&Pause");
    now += 1'000'000;
    window->time().advance();
    EXPECT_EQ(window->time().moment(), First + (Records - 1) * Second);
    EXPECT_EQ(word(*window), u"End of the records");
    EXPECT_EQ(part<QToolButton>(*window, "timePlay")->text(), u"&Play");
    now += 1'000'000;
    window->time().advance(); // nothing is played any more
    EXPECT_EQ(word(*window), u"End of the records");
}

TEST_F(TimeTravelHost, PausingStaysWhereItIs)
{
    record();
    const auto window = openRecorded();
    window->time().play(true);
    now += 5'000;
    window->time().advance();
    window->time().play(false);
    now += 5'000;
    window->time().advance();
    EXPECT_EQ(shown(*window), u"5");
    window->time().play(true); // on from there
    now += 1'000;
    window->time().advance();
    EXPECT_EQ(shown(*window), u"6");
}

TEST_F(TimeTravelHost, AllPanelsTravelTogether)
{
    record();
    const auto window = openRecorded();
    window::BenchWindow* first = window->currentPanel();
    window->showWindow(QStringLiteral("Second"));
    window::BenchWindow* second = window->currentPanel();
    window->time().goTo(First);
    EXPECT_EQ(first->time().moment(), First);
    EXPECT_EQ(second->time().moment(), First);
    // What is played is shown by the panel in front; another one follows when it comes there.
    window->time().play(true);
    now += 9'000;
    window->time().advance();
    window->showWindow(QStringLiteral("First"));
    EXPECT_EQ(first->time().moment(), First + 9 * Second);
    window->time().goLive();
    EXPECT_TRUE(first->IsLive());
    EXPECT_TRUE(second->IsLive());
}

TEST_F(TimeTravelHost, APanelThatIsOpenedInThePastShowsIt)
{
    record();
    const auto window = openRecorded();
    window->time().goTo(First);
    window->showWindow(QStringLiteral("Second"));
    EXPECT_FALSE(window->currentPanel()->IsLive());
}

TEST_F(TimeTravelHost, WithoutAHistoryThereIsAReasonInsteadOfABar)
{
    {
        MainWindow window(settings, dialogs);
        EXPECT_FALSE(action(window, "timeTravel")->isEnabled());
    }
    writeScheme("<HISTORY>none</HISTORY>");
    const auto window = open();
    EXPECT_FALSE(action(*window, "timeTravel")->isEnabled());
    EXPECT_EQ(action(*window, "timeTravel")->toolTip(), u"This site keeps no history");
}

TEST_F(TimeTravelHost, AnEmptyHistorySaysSo)
{
    const auto window = open();
    action(*window, "timeTravel")->trigger();
    EXPECT_EQ(word(*window), u"Nothing is stored yet");
    EXPECT_FALSE(part<QSlider>(*window, "timeSlider")->isEnabled());
    window->time().play(true);
    window->time().step(1);
    EXPECT_TRUE(window->currentPanel()->IsLive());
}

TEST_F(TimeTravelHost, TheBarOpensToItsHistoryAsSoonAsThatIsRead)
{
    record();
    const auto window = open();
    action(*window, "timeTravel")->trigger(); // whatever is known by now
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return part<QSlider>(*window, "timeSlider")->isEnabled(); }, DeadlineMilliseconds));
    EXPECT_EQ(word(*window), u"");
    EXPECT_TRUE(window->currentPanel()->IsLive());
    part<QSlider>(*window, "timeSlider")->setValue(0);
    EXPECT_EQ(window->time().moment(), First);
}

TEST_F(TimeTravelHost, UnlockingLeadsBackToLive)
{
    record();
    const auto window = openRecorded();
    window->time().goTo(First);
    action(*window, "lock")->setChecked(false);
    EXPECT_TRUE(window->currentPanel()->IsLive());
    EXPECT_FALSE(window->currentPanel()->LockPositions());
    EXPECT_TRUE(dialogs.errors.isEmpty());
    // An unlocked panel stays in the present, and the user is told why.
    window->time().goTo(First);
    EXPECT_TRUE(window->currentPanel()->IsLive());
    EXPECT_FALSE(window->time().isPast());
    EXPECT_FALSE(part<QWidget>(*window, "errorBar")->isHidden());
}

TEST_F(TimeTravelHost, ASchemeThatIsOpenedNextBeginsLive)
{
    record();
    const auto window = openRecorded();
    window->time().goTo(First);
    ASSERT_TRUE(window->openScheme(offline()));
    EXPECT_TRUE(window->currentPanel()->IsLive());
    EXPECT_FALSE(window->time().isPast());
}

TEST_F(TimeTravelHost, EverythingOnTheBarHasANameForReaders)
{
    const auto window = open();
    for (const char* name :
         {"timeSlider", "timeMoment", "timeBefore", "timePlay", "timeNext", "timeSpeed", "timeLive"})
        EXPECT_FALSE(part<QWidget>(*window, name)->accessibleName().isEmpty()) << name;
}
