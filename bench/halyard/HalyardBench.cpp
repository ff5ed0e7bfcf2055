// Prints what live polling costs per poll: the part on the user-interface thread step by step, a whole poll from
// asking to NewBenchData, and what the simulation needs on its own thread.

#include "halyard/HalyardLogger.h"
#include "halyard/LoggerFactory.h"
#include "halyard/SimulatedMemory.h"
#include "trellis/SchemeFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using namespace zan;
using namespace zan::halyard;

namespace {

QByteArray schemeText(int channels)
{
    QByteArray text = "<SCHEME><NAME>Bench</NAME><WINDOW><KEY>RTD</KEY>";
    for (int i = 0; i < channels; ++i) {
        const QByteArray number = QByteArray::number(i);
        text += "<CHANNEL><KEY>Channel" + number + "</KEY><LABEL>Stage " + number +
                "</LABEL><UNITS>mm</UNITS><FORMAT>0.00</FORMAT><BASEADDRESS>" + QByteArray::number(2 * i) +
                "</BASEADDRESS><DATATYPE>3</DATATYPE><MULTIPLIER>0.1</MULTIPLIER><VISIBLE>-1</VISIBLE></CHANNEL>";
    }
    return text + "</WINDOW></SCHEME>";
}

/// A site of so many signed words, one after the other, each scaled.
struct Site
{
    explicit Site(int channels)
    {
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write(schemeText(channels));
        file.close();
        scheme = trellis::SchemeFile::open(path).scheme;
    }
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("bench.xml"));
    values::Ref<site::Scheme> scheme;
};

/// Answers at once, every byte another one each time.
class InstantDriver final : public Driver
{
public:
    DriverResult open(const TextProgress&, CancelToken&) override { return {}; }
    DriverResult readBlock(std::int32_t, std::int32_t length, QByteArray& bytes, CancelToken&) override
    {
        bytes = QByteArray(length, char(++m_turn));
        return {};
    }
    DriverResult writeBlock(std::int32_t, const QByteArray&, CancelToken&) override { return {}; }
    DriverResult program(const PercentProgress&, CancelToken&) override { return {}; }
    DriverResult unload(const RecordSink&, const PercentProgress&, CancelToken&) override { return {}; }
    void close() noexcept override {}

private:
    unsigned m_turn = 0;
};

void perChannel(benchmark::State& state)
{
    state.counters["per channel"] = benchmark::Counter(double(state.range(0)) * double(state.iterations()),
                                                       benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void looksAtTheScheme(benchmark::State& state)
{
    const Site site(int(state.range(0)));
    ChannelTable table(ByteOrder::Big);
    table.refresh(site.scheme);
    for (auto _ : state)
        benchmark::DoNotOptimize(table.refresh(site.scheme));
}
BENCHMARK(looksAtTheScheme)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

void plansAnew(benchmark::State& state)
{
    const Site site(int(state.range(0)));
    for (auto _ : state) {
        ChannelTable table(ByteOrder::Big);
        table.refresh(site.scheme);
        benchmark::DoNotOptimize(planBlocks(table.layout(), BlockLimits()));
    }
    perChannel(state);
}
BENCHMARK(plansAnew)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// `step`: every how many bytes one changes from turn to turn.
void givesValues(benchmark::State& state, int step)
{
    const Site site(int(state.range(0)));
    ChannelTable table(ByteOrder::Big);
    table.refresh(site.scheme);
    MemoryImage image;
    QByteArray bytes(2 * state.range(0), '\0');
    for (auto _ : state) {
        for (qsizetype i = 0; step && i < bytes.size(); i += step)
            ++bytes[i];
        image.store(0, bytes);
        table.update(image);
    }
    perChannel(state);
}
BENCHMARK_CAPTURE(givesValues, all_changed, 2)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(givesValues, one_percent_changed, 200)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(givesValues, none_changed, 0)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// From asking for a poll to NewBenchData, every value changed; real time holds the way to the other thread and
/// back, CPU is that of the user-interface thread, which spins meanwhile.
void polls(benchmark::State& state)
{
    const Site site(int(state.range(0)));
    const auto logger =
        values::make<HalyardLogger>(std::make_unique<InstantDriver>(), site.scheme, systemClock(), LiveSettings());
    int polled = 0;
    QObject::connect(logger.get(), &site::Logger::NewBenchData, logger.get(), [&] { ++polled; });
    logger->AddAction(site::LiveAction);
    logger->Link()->Connect();
    while (polled == 0)
        QCoreApplication::processEvents();
    const auto live = logger->Live();
    for (auto _ : state) {
        const int before = polled;
        static_cast<HalyardLive&>(*live).pollNow();
        while (polled == before)
            QCoreApplication::processEvents();
    }
    perChannel(state);
}
BENCHMARK(polls)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->UseRealTime();

void simulates(benchmark::State& state)
{
    const auto channels = std::int32_t(state.range(0));
    SimulatedMemory memory(7, ByteOrder::Big, {});
    MemoryLayout layout;
    for (std::int32_t i = 0; i < channels; ++i)
        layout.push_back({2 * i, 2, DataType::SignedWord});
    memory.setLayout(layout);
    double seconds = 0;
    for (auto _ : state) {
        for (const MemoryBlock& block : planBlocks(layout, BlockLimits()))
            benchmark::DoNotOptimize(memory.read(block.address, block.length, seconds));
        seconds += 0.5;
    }
    perChannel(state);
}
BENCHMARK(simulates)->Arg(100)->Arg(10000)->Unit(benchmark::kMicrosecond);

void decodesAWord(benchmark::State& state)
{
    RawFormat format;
    format.type = DataType::SignedWord;
    format.length = 2;
    format.multiplier = state.range(0) ? 0.1 : 1;
    const std::uint8_t bytes[] = {1, 2};
    for (auto _ : state)
        benchmark::DoNotOptimize(decodeRaw(format, bytes));
}
BENCHMARK(decodesAWord)->ArgName("scaled")->Arg(0)->Arg(1);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
