// Many labels (and text boxes) on a surface beside bare toolkit widgets that do the same, in one run: one QLabel or
// QLineEdit each in a plain widget, placed by hand. Times are medians in milliseconds; a ratio below 1 means that
// the surface is cheaper.

#include "surface/host/ControlArray.h"
#include "surface/host/Surface.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/TextBox.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <malloc.h>
#include <memory>
#include <vector>

using namespace zan;
using surface::Surface;
using values::Ref;

namespace {

constexpr int Columns = 40;
constexpr int CellWidth = 64;
constexpr int CellHeight = 16;
const QString Family = QStringLiteral("DejaVu Sans");

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

double measure(int runs, const std::function<void()>& prepare, const std::function<void()>& work)
{
    std::vector<double> times;
    for (int run = 0; run < runs; ++run) {
        prepare();
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
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

QSize gridSize(int count)
{
    return {std::min(count, Columns) * CellWidth, (count + Columns - 1) / Columns * CellHeight};
}

QPoint cellOf(int place)
{
    return {place % Columns * CellWidth, place / Columns * CellHeight};
}

QString textOf(int place, int tick)
{
    return QString::number(10.0 + 0.37 * tick + place % 90, 'f', 2);
}

/// One widget per value.
template <class Widget>
struct Bare
{
    explicit Bare(int count)
    {
        QFont font(Family);
        font.setPixelSize(11);
        for (int place = 0; place < count; ++place) {
            auto* widget = new Widget(QStringLiteral("0.00"), &window);
            widget->setGeometry(QRect(cellOf(place), QSize(CellWidth, CellHeight)));
            widget->setFont(font);
            widget->setToolTip(QStringLiteral("Value"));
            items.push_back(widget);
        }
        window.resize(gridSize(count));
    }
    void write(int place, const QString& text) { items[std::size_t(place)]->setText(text); }
    QWidget window;
    std::vector<Widget*> items;
};

void writeText(surface::Label& label, const QString& text)
{
    label.setCaption(text);
}

void writeText(surface::TextBox& box, const QString& text)
{
    box.setText(text);
}

/// The same on a surface, made as the panel makes it: each control with a font of its own, placed twice.
template <class Control>
struct Live
{
    explicit Live(int count)
    {
        surface::ControlArray& array = window.addArray<Control>(QStringLiteral("Item"));
        const auto font = values::make<surface::FontObject>();
        font->setName(Family);
        const values::Name toolTip("ToolTipText");
        const values::Name tag("Tag");
        for (int place = 0; place < count; ++place) {
            const Ref<surface::LiveControl> control = array.load(place + 2);
            auto& item = static_cast<Control&>(*control);
            item.setFont(copyFont(*font));
            item.move(0, float(place));
            item.setVisible(true);
            const QPoint cell = cellOf(place);
            item.setLeft(float(cell.x() * 15));
            item.setTop(float(cell.y() * 15));
            item.setWidth(float(CellWidth * 15));
            item.setHeight(float(CellHeight * 15));
            item.put(toolTip, QStringLiteral("Value"));
            item.put(tag, QString::number(place));
            writeText(item, QStringLiteral("0.00"));
            items.push_back(&item);
        }
        window.resize(gridSize(count));
    }
    void write(int place, const QString& text) { writeText(*items[std::size_t(place)], text); }
    Surface window;
    std::vector<Control*> items;
};

struct Figures
{
    double load = 0;
    double all = 0;
    double some = 0;
    double close = 0;
    double heap = 0;
};

template <class Window>
Figures run(int count, int runs)
{
    Figures figures;
    std::unique_ptr<Window> window;
    const auto make = [&] {
        window = std::make_unique<Window>(count);
        window->window.show();
        paintPending();
    };
    figures.load = measure(
        runs, [&] { window.reset(); }, make);
    int tick = 0;
    figures.all = measure(
        runs * 3, [&] { ++tick; },
        [&] {
            for (int place = 0; place < count; ++place)
                window->write(place, textOf(place, tick));
            paintPending();
        });
    figures.some = measure(
        runs * 3, [&] { ++tick; },
        [&] {
            for (int place = tick % 100; place < count; place += 100)
                window->write(place, textOf(place, tick));
            paintPending();
        });
    figures.close = measure(runs, make, [&] { window.reset(); });
    const std::size_t before = heapBytes();
    make();
    figures.heap = double(heapBytes() - before) / count;
    return figures;
}

void report(const char* what, int count, const char* unit, double live, double bare)
{
    std::printf("  %-34s %6d  surface %10.3f %s  bare %10.3f %s  ratio %6.3f\n", what, count, live, unit, bare,
                unit, live / bare);
}

template <class Control, class Widget>
double compare(int count, int runs)
{
    const Figures live = run<Live<Control>>(count, runs);
    const Figures bare = run<Bare<Widget>>(count, runs);
    report("make and first show", count, "ms", live.load, bare.load);
    report("write all and paint", count, "ms", live.all, bare.all);
    report("write 1 % and paint", count, "ms", live.some, bare.some);
    report("close", count, "ms", live.close, bare.close);
    report("heap per control", count, "B ", live.heap, bare.heap);
    return live.load;
}

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    std::printf("sizes in bytes: Label %zu, FontObject %zu\n", sizeof(surface::Label), sizeof(surface::FontObject));
    std::vector<double> loads;
    std::printf("labels\n");
    for (const int count : {100, 1000, 10000})
        loads.push_back(compare<surface::Label, QLabel>(count, count > 1000 ? 5 : 11));
    std::printf("  making 10,000 over making 1,000: %.2f\n", loads[2] / loads[1]);
    std::printf("text boxes\n");
    for (const int count : {100, 1000})
        compare<surface::TextBox, QLineEdit>(count, 5);
    return 0;
}
