// What a graph of stored records costs: its first picture, moves and zooms, and one record more; beside the bare plotting
// widget with every record in it. Processor time of one thread.
//
//     bench_graph [RECORDS of a channel] [RECORDS in the bare widget]

#include "BarePlot.h"
#include "FastHistory.h"

#include "support/FakeSite.h"
#include "surface/host/Surface.h"
#include "window/BenchWindow.h"
#include "zandata/ENTViewer.h"
#include "zandata/RecordModel.h"
#include "zandata/ZanDataControls.h"
#include "zandata/ZanGraph.h"
#include "zandata/data/Trend.h"

#include <QApplication>
#include <QScrollBar>
#include <QTableView>

#include <ctime>
#include <fstream>
#include <functional>
#include <string>

using namespace zan;
using namespace zan::bench;
using values::Ref;

namespace {

constexpr std::int64_t Channels = 8;
constexpr int Steps = 100;
const QSize Size(1000, 500);

double milliseconds(const std::function<void()>& work)
{
    const std::clock_t begin = std::clock();
    work();
    return double(std::clock() - begin) * 1000.0 / double(CLOCKS_PER_SEC);
}

double memoryInMegabytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmRSS:"))
            return std::stod(line.substr(6)) / 1024.0;
    }
    return 0;
}

/// What a change sets off: the panel's flush, the turn that reads, the repaint.
void settle()
{
    for (int turn = 0; turn < 3; ++turn)
        QCoreApplication::processEvents();
}

/// A panel with one graph, or one table, over a history.
struct Panel
{
    explicit Panel(const Ref<FastHistory>& store, const char* type)
    {
        logger->live->history = store;
        panel.InitProperties();
        panel.setShowSiteMap(false);
        panel.setLogger(logger);
        panel.resize(Size);
        wrapper = panel.Controls()->Add(QString::fromLatin1(type));
        wrapper->Move(0, 0.0F, float(Size.width() * 15), float(Size.height() * 15));
        panel.show();
        panel.flush();
        QCoreApplication::processEvents();
    }
    template <class Control>
    Control& control()
    {
        return dynamic_cast<Control&>(*wrapper->Control());
    }
    /// All turns of the event loop that a picture takes, and the picture.
    void draw()
    {
        panel.flush();
        const zandata::Trend& trend = control<zandata::ZanGraph>().trend();
        do
            settle();
        while (trend.isReadDue(Size.width()));
        panel.grab();
    }

    Ref<fake::FakeLogger> logger = values::make<fake::FakeLogger>();
    window::BenchWindow panel;
    Ref<wrappers::iBenchControl> wrapper;
};

struct Figures
{
    double first = 0, pan = 0, zoom = 0, append = 0;
};

/// One record more of every channel, and its picture.
double appending(Panel& panel, const Ref<FastHistory>& store)
{
    return milliseconds([&] {
               for (int step = 0; step < Steps; ++step) {
                   store->append();
                   Q_EMIT panel.logger->NewENTData();
                   panel.draw();
               }
           }) /
           Steps;
}

Figures ours(const Ref<FastHistory>& store)
{
    Figures figures;
    Panel panel(store, "ZanDataControls.ZanGraph");
    auto& graph = panel.control<zandata::ZanGraph>();
    figures.first = milliseconds([&] {
        Q_EMIT panel.logger->NewENTData();
        panel.draw();
    });
    figures.append = appending(panel, store);
    const double whole = double(graph.view().span());
    graph.view().zoom(0.1, double(FastHistory::Begin) + whole / 2);
    panel.draw();
    figures.pan = milliseconds([&] {
                      for (int step = 0; step < Steps; ++step) {
                          graph.view().pan(whole * 0.1 * 0.02);
                          panel.draw();
                      }
                  }) /
                  Steps;
    figures.zoom = milliseconds([&] {
                       for (int step = 0; step < Steps; ++step) {
                           graph.view().zoom(step % 80 < 40 ? 0.8 : 1.25, double(FastHistory::Begin) + whole / 2);
                           panel.draw();
                       }
                   }) /
                   Steps;
    return figures;
}

/// A record more in graphs of other lengths, beside that of the whole one.
void growth(std::int64_t records, double whole)
{
    std::printf("\nOne record more of %lld channels, drawn\n", static_cast<long long>(Channels));
    double empty = 0;
    const auto row = [&](std::int64_t count, double figure) {
        std::printf("    in a graph of %10lld records %9.2f ms %6.2f times that of an empty one\n",
                    static_cast<long long>(count), figure, figure / empty);
    };
    for (const std::int64_t count : {std::int64_t(0), std::int64_t(1000), records / 10}) {
        const auto store = values::make<FastHistory>(Channels, count);
        Panel panel(store, "ZanDataControls.ZanGraph");
        Q_EMIT panel.logger->NewENTData();
        panel.draw();
        const double figure = appending(panel, store);
        empty = count == 0 ? figure : empty;
        row(count, figure);
    }
    row(records, whole);
}

Figures bare(std::int64_t records)
{
    Figures figures;
    BarePlot plot(Channels, records, Size);
    figures.first = milliseconds([&] { plot.show(0, double(records)); });
    constexpr int Few = 10;
    figures.append = milliseconds([&] {
                         for (int step = 0; step < Few; ++step) {
                             plot.append(records + step);
                             plot.show(0, double(records + step));
                         }
                     }) /
                     Few;
    figures.pan = milliseconds([&] {
                      for (int step = 0; step < Few; ++step)
                          plot.show(double(records) * (0.4 + step * 0.002), double(records) * (0.5 + step * 0.002));
                  }) /
                  Few;
    figures.zoom = figures.pan;
    return figures;
}

void print(const char* what, double mine, double yardstick, const char* aim)
{
    std::printf("%-34s %9.2f ms %11.2f ms   %s\n", what, mine, yardstick, aim);
}

/// The mean of some steps, each with all that it sets off and its picture.
double steps(Panel& panel, int count, const std::function<void(int step)>& step)
{
    return milliseconds([&] {
               for (int i = 0; i < count; ++i) {
                   step(i);
                   settle();
                   panel.panel.grab();
               }
           }) /
           count;
}

void table(const Ref<FastHistory>& store)
{
    Panel panel(store, "ZanDataControls.ENTViewer");
    auto& table = panel.control<zandata::ENTViewer>();
    auto* view = qobject_cast<QTableView*>(table.widget());
    QScrollBar& bar = *view->verticalScrollBar();
    const double opening = steps(panel, 1, [&](int) {
        table.Refresh();
        panel.panel.flush();
    });
    const int rows = table.model().rowCount();
    const double jump = steps(panel, Steps, [&](int step) { bar.setValue(int(double(rows) * step / Steps)); });
    bar.setValue(rows / 2);
    const double line = steps(panel, Steps, [&](int) { bar.setValue(bar.value() + 1); });
    const double page = steps(panel, Steps, [&](int) { bar.triggerAction(QAbstractSlider::SliderPageStepAdd); });
    const double find = steps(panel, Steps, [&](int step) {
        table.find(FastHistory::Begin + FastHistory::Step * std::int64_t(rows) * step / Steps);
    });
    constexpr int Few = 20;
    const double append = steps(panel, Few, [&](int) {
        store->append();
        Q_EMIT panel.logger->NewENTData();
    });
    std::printf("\nTable of %d rows, each step with its picture\n", rows);
    const auto row = [](const char* what, double figure) {
        std::printf("    %-30s %9.2f ms   16 ms (60 a second)\n", what, figure);
    };
    row("opening", opening);
    row("a line further", line);
    row("a page further", page);
    row("a jump of the scroll bar", jump);
    row("a time found", find);
    row("one record more", append);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    zandata::provideControls();
    const std::int64_t records = argc > 1 ? std::atoll(argv[1]) : 10'000'000;
    const std::int64_t bareRecords = argc > 2 ? std::atoll(argv[2]) : std::min<std::int64_t>(records, 1'000'000);

    const auto store = values::make<FastHistory>(Channels, records);
    const double before = memoryInMegabytes();
    const Figures mine = ours(store);
    const double added = memoryInMegabytes() - before;
    const Figures yardstick = bare(bareRecords);

    std::printf("%lld channels of %lld records, %d x %d pixels; bare widget with %lld records a channel\n\n",
                static_cast<long long>(Channels), static_cast<long long>(records), Size.width(), Size.height(),
                static_cast<long long>(bareRecords));
    std::printf("%-34s %12s %14s   aim\n", "", "graph", "bare");
    print("first picture", mine.first, yardstick.first, "300 ms");
    print("picture of a move", mine.pan, yardstick.pan, "33.3 ms (30 a second)");
    print("picture of a zoom", mine.zoom, yardstick.zoom, "33.3 ms (30 a second)");
    print("one record more, drawn", mine.append, yardstick.append, "as in an empty graph");
    growth(records, mine.append);
    std::printf("\nMemory that the graph took: %.1f MB (points of all records: %.0f MB)\n", added,
                double(Channels * records) * 16 / 1e6);
    table(store);
    return 0;
}
