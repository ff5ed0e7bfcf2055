// Prints what a scheme of many channels and controls costs to open, to save, to look up and to read, and beside it
// what the bare toolkit or the bare tree needs for the same.

#include "document/Elements.h"
#include "trellis/SchemeFile.h"

#include <QFile>
#include <QSaveFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>

using namespace zan;
using trellis::SchemeFile;

namespace {

/// A scheme with one window of so many channels and as many controls, each bound to a channel.
QByteArray schemeText(int controls)
{
    QByteArray text = "<SCHEME>\n<NAME>Bench</NAME>\n<LOGGER>sim:1</LOGGER>\n<WINDOW>\n<KEY>RTD</KEY>\n";
    for (int i = 0; i < controls; ++i) {
        const QByteArray number = QByteArray::number(i);
        text += "<CHANNEL><KEY>Channel" + number + "</KEY><LABEL>Stage " + number +
                "</LABEL><UNITS>mm</UNITS><FORMAT>0.00</FORMAT><BASEADDRESS>" + number +
                "</BASEADDRESS><DATATYPE>3</DATATYPE><MULTIPLIER>0.1</MULTIPLIER><VISIBLE>-1</VISIBLE></CHANNEL>\n";
    }
    text += "<CONTAINER><GRIDSIZE>200</GRIDSIZE></CONTAINER>\n";
    for (int i = 0; i < controls; ++i) {
        const QByteArray number = QByteArray::number(i);
        text += "<CONTROL><TYPE>VB.Label</TYPE><KEY>@" + number + "</KEY><INDEX>" + number + "</INDEX><LEFT>" +
                number + "</LEFT><TOP>" + number +
                "</TOP><WIDTH>1200</WIDTH><HEIGHT>300</HEIGHT><BACKCOLOR>-2147483633"
                "</BACKCOLOR><USEWINDOWSETTINGS>-1</USEWINDOWSETTINGS><BINDTO>RTD|Channel" +
                number + "</BINDTO><FONT><NAME>Sans</NAME><SIZE>8.25</SIZE><WEIGHT>400</WEIGHT></FONT></CONTROL>\n";
    }
    return text + "</WINDOW>\n</SCHEME>\n";
}

/// A scheme file of that size, opened, in a folder of its own.
struct Bench
{
    explicit Bench(int controls)
    {
        QFile file(path);
        const QByteArray text = schemeText(controls);
        if (file.open(QIODevice::WriteOnly))
            file.write(text);
        file.close();
        scheme = SchemeFile::open(path).scheme;
        window = scheme->Windows()->Item(binding::Variant(1));
    }
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("bench.xml"));
    values::Ref<SchemeFile> scheme;
    values::Ref<site::SchemeWindow> window;
};

/// Bind strings of all channels in an order that no memory cache foresees.
std::vector<QString> bindStrings(int count, const char* window = "RTD")
{
    std::vector<QString> binds;
    for (int i = 0; i < count; ++i)
        binds.push_back(QStringLiteral("%1|Channel%2").arg(QLatin1String(window)).arg(i));
    std::shuffle(binds.begin(), binds.end(), std::mt19937(1));
    return binds;
}

void openScheme(benchmark::State& state)
{
    const Bench bench(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(SchemeFile::open(bench.path).scheme);
}

void saveScheme(benchmark::State& state)
{
    const Bench bench(int(state.range(0)));
    for (int turn = 0; auto _ : state) {
        bench.scheme->setName(QString::number(++turn));
        bench.scheme->Save();
    }
}

void writeText(benchmark::State& state)
{
    const Bench bench(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(document::toXml(bench.scheme->document()));
}

/// The same bytes through the toolkit's atomic file, which keeps no backup, looks at nobody's changes and leaves the
/// folder unsynchronised.
void bareSaveFile(benchmark::State& state)
{
    const Bench bench(int(state.range(0)));
    const QByteArray text = document::toXml(bench.scheme->document());
    for (auto _ : state) {
        QSaveFile file(bench.path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit())
            state.SkipWithError("not saved");
    }
}

void firstLookup(benchmark::State& state)
{
    const Bench bench(int(state.range(0)));
    const binding::Variant key(QStringLiteral("channel1"));
    document::Node first = bench.window->Item(binding::Variant(1))->XMLNode();
    for (auto _ : state) {
        first.child(document::element::Key).setText(QStringLiteral("Channel0")); // the index is out of date
        benchmark::DoNotOptimize(bench.window->Item(key));
    }
}

void lookUp(benchmark::State& state, const char* window)
{
    const Bench bench(int(state.range(0)));
    const auto windows = bench.scheme->Windows();
    const std::vector<QString> binds = bindStrings(int(state.range(0)), window);
    for (auto _ : state)
        for (const QString& bind : binds)
            benchmark::DoNotOptimize(site::findChannel(windows, bind));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void lookUpBindStrings(benchmark::State& state)
{
    lookUp(state, "RTD");
}

void lookUpMissingWindow(benchmark::State& state)
{
    lookUp(state, "GONE");
}

/// What a load does: each control's record is written to between two lookups.
void lookUpWhileControlsAreWritten(benchmark::State& state)
{
    const Bench bench(int(state.range(0)));
    const auto windows = bench.scheme->Windows();
    std::vector<document::Node> controls = bench.window->XML().children(document::element::Control);
    for (int turn = 0; auto _ : state) {
        ++turn;
        for (document::Node& control : controls) {
            QString bind;
            control.childText(document::element::BindTo, bind);
            benchmark::DoNotOptimize(site::findChannel(windows, bind));
            control.child(document::element::Index).setText(QString::number(turn));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void readLabelFormatUnits(benchmark::State& state)
{
    const Bench bench(int(state.range(0)));
    std::vector<values::Ref<site::Channel>> channels;
    for (std::int32_t i = 1; i <= bench.window->Count(); ++i)
        channels.push_back(bench.window->Item(binding::Variant(i)));
    for (auto _ : state)
        for (const auto& channel : channels) {
            benchmark::DoNotOptimize(channel->Label());
            benchmark::DoNotOptimize(channel->Format());
            benchmark::DoNotOptimize(channel->Units());
        }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void addChannels(benchmark::State& state)
{
    for (auto _ : state) {
        const auto scheme = SchemeFile::create(QStringLiteral("unsaved.xml"));
        const auto windows = scheme->Windows();
        const auto window = windows->Add(windows->createWindow(), QStringLiteral("RTD"));
        for (std::int64_t i = 0; i < state.range(0); ++i)
            window->Add(windows->createChannel())->setLabel(QStringLiteral("New"));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(openScheme)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(saveScheme)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(bareSaveFile)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(writeText)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(firstLookup)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(lookUpBindStrings)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(lookUpMissingWindow)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(lookUpWhileControlsAreWritten)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(readLabelFormatUnits)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(addChannels)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
