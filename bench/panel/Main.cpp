// A panel of many bound labels beside bare toolkit labels that do the same, in one run: one QLabel per label in a
// plain widget, placed by hand; and beside the same labels as a stored form of the toolkit. Times are medians of
// processor time, which other programs on the machine disturb least; a ratio below 1 means that the panel is cheaper.

#include "BenchSite.h"
#include "StoredForm.h"

#include "values/Format.h"
#include "window/BenchWindow.h"

#include <QApplication>
#include <QLabel>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <malloc.h>
#include <memory>
#include <vector>

using namespace zan;
using values::Ref;
using values::Variant;

namespace {

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

/// Processor time of the program so far, in milliseconds.
double processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

/// Milliseconds of the median run; `prepare` is not counted.
double measure(int runs, const std::function<void()>& prepare, const std::function<void()>& work)
{
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        prepare();
        const double start = processorTime();
        work();
        times.push_back(processorTime() - start);
    }
    return median(times);
}

void paintPending()
{
    for (int turn = 0; turn < 3; ++turn)
        QCoreApplication::processEvents();
}

std::size_t heapBytes()
{
    malloc_trim(0);
    return mallinfo2().uordblks;
}

QSize gridSize(int labels)
{
    const int columns = std::min(labels, bench::Columns);
    return {columns * bench::LabelWidth, (labels + bench::Columns - 1) / bench::Columns * bench::LabelHeight};
}

/// One QLabel per label, as anybody would write it.
struct Bare
{
    explicit Bare(int count)
    {
        for (int i = 0; i < count; ++i) {
            auto* label = new QLabel(QStringLiteral("0.00"), &window);
            label->setGeometry((i % bench::Columns) * bench::LabelWidth, (i / bench::Columns) * bench::LabelHeight,
                               bench::LabelWidth, bench::LabelHeight);
            labels.push_back(label);
        }
        window.resize(gridSize(count));
    }
    void update(const std::vector<double>& values)
    {
        for (std::size_t i = 0; i < labels.size(); ++i)
            labels[i]->setText(QString::number(values[i], 'f', 2));
    }
    QWidget window;
    std::vector<QLabel*> labels;
};

struct Panel
{
    Panel(const QString& file, int count)
    {
        scheme = trellis::SchemeFile::open(file).scheme;
        logger = values::make<bench::BenchLogger>(scheme);
        window = std::make_unique<window::BenchWindow>();
        window->InitProperties();
        window->setShowSiteMap(false);
        window->setLogger(logger);
        window->LoadWindow(QStringLiteral("MAIN"));
        window->resize(gridSize(count));
    }
    void collectChannels(int count)
    {
        const Ref<site::SchemeWindow> home = scheme->Windows()->Item(Variant(u"RTD"));
        for (int i = 1; i <= count; ++i)
            channels.push_back(home->Item(Variant(i)));
    }
    void setValues(const std::vector<double>& values)
    {
        for (std::size_t i = 0; i < channels.size(); ++i)
            channels[i]->setValue(Variant(values[i]));
    }
    Ref<trellis::SchemeFile> scheme;
    Ref<bench::BenchLogger> logger;
    std::unique_ptr<window::BenchWindow> window;
    std::vector<Ref<site::Channel>> channels;
};

void report(const char* what, int count, const char* unit, double panel, double bare)
{
    std::printf("%-44s %6d  panel %10.3f %s   bare %10.3f %s   ratio %6.3f\n", what, count, panel, unit, bare, unit,
                panel / bare);
}

/// Milliseconds that something takes to be shown and to be closed again, run after run.
struct Life
{
    std::vector<double> shown;
    std::vector<double> closed;
};

template <class Make>
void live(Life& life, Make&& make)
{
    const double start = processorTime();
    auto one = make();
    paintPending();
    life.shown.push_back(processorTime() - start);
    const double end = processorTime();
    one.reset();
    life.closed.push_back(processorTime() - end);
}

/// One after the other in each run, so that a machine that is slower for a while is so for all of them.
double measureLoad(const QString& file, int count, int runs)
{
    const QString stored = file + QStringLiteral(".ui");
    if (bench::canLoadForms())
        bench::writeForm(stored, count);
    Life ours;
    Life bare;
    Life forms;
    for (int run = 0; run < runs; ++run) {
        live(ours, [&] {
            auto panel = std::make_unique<Panel>(file, count);
            panel->window->show();
            return panel;
        });
        live(bare, [&] {
            auto labels = std::make_unique<Bare>(count);
            labels->window.show();
            return labels;
        });
        if (bench::canLoadForms())
            live(forms, [&] {
                auto form = bench::loadForm(stored);
                form->resize(gridSize(count));
                form->show();
                return form;
            });
    }
    const double shown = median(ours.shown);
    report("load and first showing, file included", count, "ms", shown, median(bare.shown));
    if (bench::canLoadForms())
        std::printf("%-44s %6d  panel %10.3f ms   form %10.3f ms   ratio %6.3f\n", "the same beside a stored form",
                    count, shown, median(forms.shown), shown / median(forms.shown));
    report("closing, scheme included", count, "ms", median(ours.closed), median(bare.closed));
    return shown;
}

void measureScan(const QString& file, int count, int runs)
{
    Panel panel(file, count);
    panel.collectChannels(count);
    Bare bare(count);
    std::vector<double> values(std::size_t(count), 1.0);
    double tick = 0;
    const auto changeAll = [&] {
        tick += 0.37;
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = 10.0 + tick + double(i % 90);
    };
    const auto changeSome = [&] {
        tick += 0.37;
        for (std::size_t i = std::size_t(int(tick * 100) % 100); i < values.size(); i += 100)
            values[i] = 20.0 + tick + double(i % 90);
    };
    const auto panelScan = [&] {
        panel.setValues(values);
        Q_EMIT panel.logger->NewBenchData();
        paintPending();
    };
    const auto bareScan = [&] {
        bare.update(values);
        paintPending();
    };
    // Without painting: the windows are not shown yet.
    const double alone = measure(runs, changeAll, [&] {
        panel.setValues(values);
        panel.window->Refresh();
    });
    std::printf("%-44s %6d  panel %10.1f ns per control\n", "scan alone, all changed, nothing painted", count,
                alone * 1e6 / count);
    const double aloneSame = measure(
        runs, [] {}, [&] { panel.window->Refresh(); });
    std::printf("%-44s %6d  panel %10.1f ns per control\n", "scan alone, nothing changed", count,
                aloneSame * 1e6 / count);
    panel.window->show();
    paintPending();
    const double allPanel = measure(runs, changeAll, panelScan);
    const double somePanel = measure(runs, changeSome, panelScan);
    panel.window.reset();
    bare.window.show();
    paintPending();
    const double allBare = measure(runs, changeAll, bareScan);
    const double someBare = measure(runs, changeSome, bareScan);
    report("scan with painting, all changed", count, "ms", allPanel, allBare);
    report("scan with painting, 1 % changed", count, "ms", somePanel, someBare);
}

void measureMemory(const QString& file, int count)
{
    const std::size_t start = heapBytes();
    auto panel = std::make_unique<Panel>(file, count);
    panel->window->show();
    paintPending();
    const std::size_t withPanel = heapBytes();
    panel.reset();
    const std::size_t middle = heapBytes();
    auto bare = std::make_unique<Bare>(count);
    bare->window.show();
    paintPending();
    const std::size_t withBare = heapBytes();
    bare.reset();
    const double ours = double(withPanel - start) / count;
    const double theirs = double(withBare - middle) / count;
    report("heap per control, document included", count, "B", ours, theirs);
    // Half of that and more is the picture of the window on this platform, as large for both.
    const QSize size = gridSize(count);
    const double pixels = 4.0 * size.width() * size.height() / count;
    report("the same without the window's pixels", count, "B", ours - pixels, theirs - pixels);
}

/// Milliseconds of a load.
double measureAll(const QString& file, int count)
{
    const int runs = count > 1000 ? 11 : 31;
    const double load = measureLoad(file, count, runs);
    measureScan(file, count, runs);
    measureMemory(file, count);
    return load;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Freed memory stays with the program. Otherwise it hangs on where the last piece of a run lay whether the next run
    // pays for pages that the system takes back, clears and gives again.
    mallopt(M_MMAP_THRESHOLD, 32 << 20);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    QApplication application(argc, argv);
    QTemporaryDir folder;
    if (argc >= 3 && qstrcmp(argv[1], "--profile") == 0) {
        // One load, or so many, and nothing else, for a profiler.
        const int count = QByteArray(argv[2]).toInt();
        const int runs = argc > 3 ? QByteArray(argv[3]).toInt() : 1;
        const QString file = folder.filePath(QStringLiteral("profile.scheme"));
        bench::writeScheme(file, count);
        for (int run = 0; run < runs; ++run) {
            Panel panel(file, count);
            panel.window->show();
            paintPending();
        }
        return 0;
    }
    if (argc == 2) {
        // One number of labels only.
        const int count = QByteArray(argv[1]).toInt();
        const QString file = folder.filePath(QStringLiteral("one.scheme"));
        bench::writeScheme(file, count);
        measureAll(file, count);
        return 0;
    }
    std::vector<double> loads;
    for (const int count : {100, 1000, 10000}) {
        const QString file = folder.filePath(QStringLiteral("%1.scheme").arg(count));
        bench::writeScheme(file, count);
        loads.push_back(measureAll(file, count));
    }
    std::printf("load of 10,000 over load of 1,000: %.2f\n", loads[2] / loads[1]);
    const QString file = folder.filePath(QStringLiteral("many.scheme"));
    bench::writeScheme(file, 40000);
    try {
        const Panel panel(file, 40000);
        std::printf("document of 40,000 controls: loaded\n");
    } catch (const values::RuntimeError& error) {
        std::printf("document of 40,000 controls: error %d, %s\n", error.number(), error.what());
    }
    return 0;
}
