// What rearranging a panel costs: a move of the pointer until it is painted, unlocking and locking beside bare widgets
// in the places of the handles, one edit with its entry in the history, and keeping the edits of a scheme in a file. Times are medians of processor time, which
// other programs on the machine disturb least.

#include "document/XMLOps.h"
#include "support/FakeSite.h"

#include "surface/forms/RecordingForms.h"
#include "surface/host/Surface.h"
#include "window/BenchWindow.h"
#include "window/PanelEditor.h"

#ifdef ZAN_BENCH_HOST
#include "trellis/SchemeFile.h"
#include "zanbench/ChangeWatch.h"
#include "zanbench/EditKeeper.h"

#include <QFile>
#include <QTemporaryDir>
#endif

#include <QApplication>
#include <QMouseEvent>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <vector>

using namespace zan;
using values::Ref;
using values::Variant;

namespace {

constexpr int Columns = 40;
constexpr int CellWidth = 48;
constexpr int CellHeight = 24;
constexpr int Side = 16; // of a control, so that its handles have room

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

double timeOf(const std::function<void()>& work)
{
    const double start = processorTime();
    work();
    return processorTime() - start;
}

void paintPending()
{
    for (int turn = 0; turn < 3; ++turn)
        QCoreApplication::processEvents();
}

QRect cellOf(int place)
{
    return {place % Columns * CellWidth + 10, place / Columns * CellHeight + 10, CellWidth - Side, Side - 2};
}

QSize extentOf(int count)
{
    return {Columns * CellWidth + 40, (count + Columns - 1) / Columns * CellHeight + 40};
}

/// A panel of so many controls with a window each, unlocked or not.
struct Panel
{
    explicit Panel(int count)
    {
        const document::Node root = logger->scheme->window(QStringLiteral("A"))->XML();
        for (int place = 0; place < count; ++place) {
            const QRect cell = cellOf(place);
            root.appendChild(document::XMLOps::LoadDocument(
                QStringLiteral("<CONTROL><TYPE>MSComctlLib.ProgressBar</TYPE><LEFT>%1</LEFT><TOP>%2</TOP>"
                               "<WIDTH>%3</WIDTH><HEIGHT>%4</HEIGHT></CONTROL>")
                    .arg(cell.x() * 15)
                    .arg(cell.y() * 15)
                    .arg(cell.width() * 15)
                    .arg(cell.height() * 15)));
        }
        window.setForms(&forms);
        window.InitProperties();
        window.setShowSiteMap(false);
        window.setLogger(logger);
        window.LoadWindow(QStringLiteral("A"));
        window.resize(extentOf(count));
        window.show();
        paintPending();
    }
    Ref<wrappers::iBenchControl> control(int place) { return window.Controls()->Control(Variant(place)); }

    void mouse(QEvent::Type type, QPoint place, Qt::MouseButton button, Qt::MouseButtons held)
    {
        QWidget* target = window.childAt(place);
        QMouseEvent event(type, target->mapFrom(&window, QPointF(place)), window.mapToGlobal(QPointF(place)),
                          button, held, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &event);
    }

    surface::RecordingForms forms;
    Ref<fake::FakeLogger> logger = values::make<fake::FakeLogger>();
    window::BenchWindow window;
};

/// Counts what is painted.
struct Paints : QObject
{
    int count = 0;
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

/// Milliseconds from a move of the pointer to the repaint, while a control in the middle is being dragged across others.
double pointerMove(int count, bool withGuides)
{
    constexpr int Moves = 300;
    Panel panel(count);
    panel.window.setAlignmentGuides(withGuides);
    panel.window.setLockPositions(false);
    paintPending();
    std::vector<double> times;
    const QPoint from = cellOf(std::min(count, 500) / 2 + 20).center();
    Paints paints;
    QTimer::singleShot(0, [&] {
        QCoreApplication::instance()->installEventFilter(&paints);
        for (int move = 0; move < Moves; ++move) {
            const QPoint place = from + QPoint(move % 101 * 3 - 150, move % 37 * 2 - 37);
            times.push_back(timeOf([&] {
                panel.mouse(QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton);
                paintPending();
            }));
        }
        panel.mouse(QEvent::MouseButtonRelease, from, Qt::LeftButton, Qt::NoButton);
    });
    panel.mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    if (times.size() != Moves || paints.count < Moves) {
        std::fprintf(stderr, "the drag has not followed the pointer\n");
        std::exit(1);
    }
    return median(times);
}

struct Switched
{
    std::vector<double> on;
    std::vector<double> off;
};

/// Milliseconds of entering and leaving the unlocked state, painted.
void measureUnlocking(int count)
{
    constexpr int Runs = 15;
    Switched handles;
    Switched bare;
    double first = 0;
    {
        Panel panel(count);
        for (int run = 0; run <= Runs; ++run) {
            const double on = timeOf([&] {
                panel.window.setLockPositions(false);
                paintPending();
            });
            (run == 0 ? first = on : (handles.on.push_back(on), on));
            handles.off.push_back(timeOf([&] {
                panel.window.setLockPositions(true);
                paintPending();
            }));
        }
    }
    QWidget window;
    window.resize(extentOf(count));
    std::vector<QWidget*> widgets;
    double made = 0;
    for (int place = 0; place < count; ++place) {
        for (int handle = 0; handle < 8; ++handle) {
            auto* widget = new QWidget(&window);
            widget->setGeometry(cellOf(place).x() + handle % 3 * 8, cellOf(place).y() + handle / 3 * 5, 5, 5);
            widget->setAutoFillBackground(true);
            widget->setPalette(QPalette(QColor(0, 0, 255)));
            widget->hide();
            widgets.push_back(widget);
        }
    }
    window.show();
    paintPending();
    for (int run = 0; run <= 2; ++run) {
        const double on = timeOf([&] {
            for (QWidget* widget : widgets)
                widget->show();
            paintPending();
        });
        (run == 0 ? made = on : (bare.on.push_back(on), on));
        bare.off.push_back(timeOf([&] {
            for (QWidget* widget : widgets)
                widget->hide();
            paintPending();
        }));
    }
    const auto row = [&](const char* what, double panel, double widgetsTime) {
        std::printf("%-38s %6d  panel %9.3f ms   bare %9.3f ms   ratio %6.3f\n", what, count, panel, widgetsTime,
                    panel / widgetsTime);
    };
    row("unlocking for the first time", first, made);
    row("unlocking", median(handles.on), median(bare.on));
    row("locking", median(handles.off), median(bare.off));
}

struct StepCost
{
    double move;
    double undo;
    double remove;
    double putBack;
};

/// Microseconds of one edit, its entry in the history included; nothing is painted.
StepCost step(int count)
{
    constexpr int Steps = 400;
    Panel panel(count);
    std::vector<double> moves;
    std::vector<double> undos;
    std::vector<double> removals;
    std::vector<double> returns;
    window::PanelEditor& editor = panel.window.editor();
    for (int run = 0; run < Steps; ++run) {
        const Ref<wrappers::iBenchControl> control = panel.control(1 + run * 7 % count);
        moves.push_back(1e3 * timeOf([&] {
                            window::EditHistory::Command command(editor.history(), QStringLiteral("Move"));
                            command.watch(control);
                            control->Move(control->Left() + 15.0F, control->Top());
                            control->UpdateNode();
                        }));
        undos.push_back(1e3 * timeOf([&] { panel.window.Undo(); }));
    }
    for (int run = 0; run < 40; ++run) {
        editor.setCurrentControl(panel.control(1 + run * 7 % count));
        removals.push_back(1e3 * timeOf([&] { editor.remove(); }));
        returns.push_back(1e3 * timeOf([&] { panel.window.Undo(); }));
    }
    return {median(moves), median(undos), median(removals), median(returns)};
}

#ifdef ZAN_BENCH_HOST
class FileLogger final : public fake::FakeLogger
{
public:
    Ref<trellis::SchemeFile> file;
    Ref<site::Scheme> Scheme() override { return file; }
};

/// Milliseconds of keeping one edit of a scheme of so many labels: its steps, and all of them together, in which the
/// program does not answer.
void measureKeeping(int count)
{
    constexpr int Runs = 15;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("bench.scheme"));
    {
        QFile file(path);
        QByteArray text = "<SCHEME><NAME>Bench</NAME><WINDOW><KEY>A</KEY><CONTAINER/>";
        for (int place = 0; place < count; ++place) {
            const QRect cell = cellOf(place);
            text += QStringLiteral("<CONTROL><TYPE>VB.Label</TYPE><LEFT>%1</LEFT><TOP>%2</TOP><WIDTH>%3</WIDTH>"
                                   "<HEIGHT>%4</HEIGHT><CAPTION>Label %5</CAPTION></CONTROL>")
                        .arg(cell.x() * 15)
                        .arg(cell.y() * 15)
                        .arg(cell.width() * 15)
                        .arg(cell.height() * 15)
                        .arg(place)
                        .toUtf8();
        }
        if (!file.open(QIODevice::WriteOnly) || file.write(text + "</WINDOW></SCHEME>") < 0)
            return;
    }
    surface::RecordingForms forms;
    const Ref<FileLogger> logger = values::make<FileLogger>();
    logger->file = trellis::SchemeFile::open(path).scheme;
    window::BenchWindow panel;
    panel.setForms(&forms);
    panel.InitProperties();
    panel.setLogger(logger);
    panel.LoadWindow(QStringLiteral("A"));
    panel.UpdateDocument();
    host::ChangeWatch watch(logger->file);
    host::EditKeeper keeper({path, folder.path()});
    std::vector<double> updates, comparisons, writes, wholes;
    for (int run = 0; run < Runs; ++run) {
        const auto control = panel.Controls()->Control(Variant(1 + run * 7 % count));
        control->setLeft(control->Left() + 15);
        updates.push_back(timeOf([&] { panel.UpdateDocument(); }));
        comparisons.push_back(timeOf([&] { watch.compare(); }));
        writes.push_back(timeOf([&] { keeper.keep(*logger->file); }));
        wholes.push_back(updates.back() + comparisons.back() + writes.back());
    }
    std::printf("%-10d %12.2f %12.2f %12.2f %12.2f\n", count, median(updates), median(comparisons), median(writes),
                median(wholes));
    keeper.drop();
}
#endif

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    for (const bool guides : {false, true}) {
        const double thousand = pointerMove(1000, guides);
        const double ten = pointerMove(10000, guides);
        std::printf("%-38s   1000 %9.3f ms   10000 %9.3f ms   ratio %6.3f\n",
                    guides ? "pointer move to repaint, with guides" : "pointer move to repaint", thousand, ten,
                    ten / thousand);
    }
    measureUnlocking(1000);
    std::printf("%-10s %12s %12s %12s %12s\n", "edit, us", "move", "undo of it", "delete", "undo of it");
    for (const int count : {100, 1000, 10000}) {
        const StepCost cost = step(count);
        std::printf("%-10d %12.2f %12.2f %12.2f %12.2f\n", count, cost.move, cost.undo, cost.remove, cost.putBack);
    }
#ifdef ZAN_BENCH_HOST
    std::printf("%-10s %12s %12s %12s %12s\n", "keep, ms", "update", "compare", "write", "all");
    for (const int count : {1000, 10000})
        measureKeeping(count);
#endif
    return 0;
}
