#include "ProgramFixture.h"

#include "history/HistoryStore.h"
#include "window/PastFrame.h"
#include "zanbench/OpenedSite.h"

#include <QImage>

namespace {

using namespace zan;

constexpr site::HistoryTime Noon = 1'782'907'200'000; // 2026-07-01 12:00 UTC

/// A scheme with a history of three records of a level, the second one without a value.
class HistoryProgram : public ProgramFixture
{
protected:
    void record() const
    {
        history::HistoryPlace place;
        place.kind = history::HistoryPlace::Kind::Sqlite;
        place.file = historyPath();
        const auto store = values::make<history::HistoryStore>(place);
        const auto columns = std::make_shared<site::HistoryColumns>();
        columns->push_back({0,
                            QStringLiteral("First"),
                            QStringLiteral("A"),
                            QStringLiteral("Level"),
                            QStringLiteral("m"),
                            {},
                            1000});
        columns->push_back({0, QStringLiteral("First"), QStringLiteral("B"), {}, {}, {}, 1000});
        const std::vector<values::Variant> levels{values::Variant(1.25), values::Variant(), values::Variant(3.0)};
        for (std::size_t i = 0; i < levels.size(); ++i)
            store->keep(Noon + site::HistoryTime(i) * 1000, columns, {levels[i], values::Variant(double(i))});
        ASSERT_TRUE(store->flush());
    }
    QString historyPath() const { return schemePath() + QStringLiteral(".history"); }
    Outcome history(const QStringList& words) const { return run(QStringList{"history", schemePath()} + words); }
};

TEST_F(HistoryProgram, InfoSaysWhereAndHowMuch)
{
    record();
    const Outcome outcome = history({"info"});
    EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.contains("site.scheme.history")) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.out.contains("3 of 2 channels"));
    EXPECT_TRUE(outcome.out.contains("2026-07-01"));
}

TEST_F(HistoryProgram, ExportWritesTheTimesAndChannelsAskedFor)
{
    record();
    EXPECT_EQ(history({"export", "--utc"}).out.toStdString(),
              "Time (UTC),Level [m],B\r\n2026-07-01 12:00:00.000,1.25,0\r\n2026-07-01 12:00:01.000,,1\r\n"
              "2026-07-01 12:00:02.000,3,2\r\n");
    const Outcome part = history(
        {"export", "--channel", "first|a", "--from", "2026-07-01T12:00:01Z", "--utc", "--out", path("a.csv")});
    EXPECT_EQ(part.code, 0) << part.err.toStdString();
    EXPECT_EQ(read("a.csv").toStdString(), "Time (UTC),Level [m]\r\n2026-07-01 12:00:02.000,3\r\n");
    const Outcome again = history({"export", "--out", path("a.csv")});
    EXPECT_EQ(again.code, 1);
    EXPECT_TRUE(again.err.contains("is there already"));
    EXPECT_TRUE(history({"export", "--channel", "First|None"}).err.contains("no channel 'First|None'"));
}

TEST_F(HistoryProgram, CheckAndVacuumAreDoneOrSayWhyNot)
{
    EXPECT_TRUE(history({"info"}).err.contains("there is no file")) << "nothing has been recorded";
    EXPECT_EQ(history({"vacuum"}).code, 1);
    record();
    const Outcome check = history({"check"});
    EXPECT_EQ(check.code, 0) << check.err.toStdString();
    EXPECT_TRUE(check.out.contains("6 values of 2 channels"));
    EXPECT_EQ(history({"vacuum"}).code, 0);
    EXPECT_EQ(history({"check"}).code, 0);
    history::HistoryPlace place;
    place.kind = history::HistoryPlace::Kind::Sqlite;
    place.file = historyPath();
    const auto writer = values::make<history::HistoryStore>(place);
    writer->keep(Noon, std::make_shared<site::HistoryColumns>(1), {values::Variant(1.0)});
    ASSERT_TRUE(writer->flush());
    EXPECT_TRUE(history({"vacuum"}).err.contains("Another program is writing"));
    EXPECT_EQ(history({"export"}).code, 0) << "reading goes on";
}

TEST_F(HistoryProgram, ASchemeThatKeepsNoneOrNamesNonsenseSaysSo)
{
    write("site.scheme", "<SCHEME><HISTORY>none</HISTORY></SCHEME>");
    EXPECT_TRUE(history({"info"}).err.contains("keeps no history"));
    write("site.scheme", "<SCHEME><HISTORY>tape:3</HISTORY></SCHEME>");
    EXPECT_TRUE(history({"info"}).err.contains("HISTORY cannot be used"));
}

TEST_F(HistoryProgram, ARunWithoutAScreenLeavesNoHistoryBehind)
{
    const Outcome shot = run({"shot", schemePath(), "--out", path("o.png")});
    EXPECT_EQ(shot.code, 0) << shot.err.toStdString();
    EXPECT_FALSE(QFile::exists(historyPath()));
}

TEST_F(HistoryProgram, AShotOfAMomentIsFramedAndComesOutOfTheHistory)
{
    record();
    const auto shot = [&](const QString& at, const QString& name) {
        return run({"shot", schemePath(), "--at", at, "--out", path(name), "--size", "300x200"});
    };
    const Outcome first = shot(QStringLiteral("2026-07-01T12:00:00Z"), QStringLiteral("first.png"));
    EXPECT_EQ(first.code, 0) << first.err.toStdString();
    EXPECT_EQ(shot(QStringLiteral("2026-07-01T12:00:02Z"), QStringLiteral("third.png")).code, 0);
    const QImage picture(path("first.png"));
    EXPECT_EQ(picture.pixelColor(2, 100), window::PastFrame::Colour);
    EXPECT_NE(picture, QImage(path("third.png")));
    EXPECT_EQ(shot(QStringLiteral("yesterday"), QStringLiteral("none.png")).code, 2);
    EXPECT_EQ(shot(QStringLiteral("2926-07-01"), QStringLiteral("none.png")).code, 1);
    EXPECT_FALSE(QFile::exists(path("none.png")));
    for (const char* other : {"--offline", "--print"})
        EXPECT_EQ(run({"shot", schemePath(), "--at", "2026-07-01", "--out", path("none.png"), other}).code, 2);
}

TEST_F(HistoryProgram, AShotOfAMomentThatNothingIsStoredOfMakesNoHistory)
{
    const Outcome shot = run({"shot", schemePath(), "--at", "2026-07-01", "--out", path("none.png")});
    EXPECT_EQ(shot.code, 1) << shot.out.toStdString();
    EXPECT_FALSE(QFile::exists(historyPath()));
    EXPECT_FALSE(QFile::exists(path("none.png")));
}

TEST_F(HistoryProgram, APanelTestGoesToAMomentAndBack)
{
    const Outcome outcome = script("Window.ShowAt Now - 1\n"
                                   "If Window.IsLive Then Err.Raise 1001\n"
                                   "If Window.Controls(1).Control.Caption <> \"-\" Then Err.Raise 1002\n"
                                   "Window.ShowLive\n"
                                   "If Not Window.IsLive Then Err.Raise 1003\n"
                                   "Window.ShowAt Now + 1\n",
                                   {"--scheme", schemePath()});
    EXPECT_EQ(outcome.code, 1) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.err.contains("still to come")) << outcome.err.toStdString();
}

TEST_F(HistoryProgram, AnOpenedSiteRecordsWhatItsLoggerLogs)
{
    const auto opened = host::OpenedSite::open(schemePath(), {}, host::HistoryUse::Kept);
    ASSERT_TRUE(opened.site);
    const values::Ref<site::History> store = opened.site->logger()->Live()->History();
    ASSERT_TRUE(store);
    opened.site->connectLink();
    EXPECT_TRUE(QTest::qWaitFor([&] { return store->rowCount() > 0; }, DeadlineMilliseconds));
    EXPECT_EQ(store->series()[0].key, QStringLiteral("A"));
    EXPECT_EQ(opened.site->historyProblem(), QString());
    EXPECT_TRUE(QFile::exists(historyPath()));
}

} // namespace
