#include "StoreFixture.h"

#include <csignal>
#include <random>

namespace zan::history {

namespace {

constexpr int Kills = 200;
constexpr int Channels = 10;

double valueAt(std::int64_t record, int channel)
{
    return double(record * 100 + channel);
}

/// Hands record after record over until it is killed; tells the parent how many are stored, whenever that changes.
[[noreturn]] void storeForEver(const HistoryPlace& place, std::int64_t next, int tell)
{
    StoreWriter::Limits limits;
    limits.tailRecords = 60;
    const auto store = make<HistoryStore>(place, limits);
    const auto all = columns(Channels);
    std::int64_t told = 0;
    for (std::int64_t record = next;; ++record) {
        std::vector<Variant> values;
        for (int i = 0; i < Channels; ++i)
            values.emplace_back(valueAt(record, i));
        store->keep(Noon + record * 1000, all, values);
        while (record - next - store->storedCount() > 40)
            ::usleep(200);
        const std::int64_t stored = store->storedCount();
        if (stored == told)
            continue;
        told = stored;
        const std::int64_t end = next + stored;
        if (::write(tell, &end, sizeof end) != sizeof end)
            _exit(2);
    }
}

} // namespace

class StoreKill : public StoreFolder
{};

TEST_F(StoreKill, AProgramKilledWhileStoringLosesNothingThatItCalledStored)
{
    std::mt19937 random(20261122);
    std::uniform_int_distribution<int> microseconds(0, 30'000);
    std::int64_t acknowledged = 0;
    for (int kill = 0; kill < Kills; ++kill) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            storeForEver(place(), acknowledged, ends[1]);
        close(ends[1]);
        ASSERT_EQ(::read(ends[0], &acknowledged, sizeof acknowledged), ssize_t(sizeof acknowledged));
        const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds(microseconds(random));
        while (std::chrono::steady_clock::now() < moment) {
        }
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the storing process ended by itself";
        std::int64_t later = 0;
        while (::read(ends[0], &later, sizeof later) == ssize_t(sizeof later))
            acknowledged = later;
        close(ends[0]);

        StoreReader reader(place());
        ASSERT_GE(reader.rowCount(), acknowledged) << "kill " << kill;
        const auto last = reader.rows(acknowledged - 1, 1, {1, Channels});
        ASSERT_EQ(last.size(), 1U);
        ASSERT_EQ(last[0].time, Noon + (acknowledged - 1) * 1000);
        ASSERT_EQ(numberIn(last[0].cells[1]), valueAt(acknowledged - 1, Channels - 1));
    }
    StoreReader reader(place());
    const StoreReader::CheckResult result = reader.check();
    EXPECT_EQ(result.mistakes, QStringList());
    EXPECT_GE(result.records, acknowledged * Channels);
    EXPECT_GT(result.blocks, Channels) << "kills have to hit the moving into blocks as well";
    std::int64_t record = 0;
    reader.eachRecord(1, EarliestTime, Noon + acknowledged * 1000, [&](HistoryTime time, QByteArrayView value) {
        ASSERT_EQ(time, Noon + record * 1000);
        ASSERT_EQ(numberIn(valueOf(value)), valueAt(record, 0));
        ++record;
    });
    EXPECT_EQ(record, acknowledged);
    EXPECT_TRUE(names(QStringLiteral("*.damaged-*")).isEmpty());
}

} // namespace zan::history
