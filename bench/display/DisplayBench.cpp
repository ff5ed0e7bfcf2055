// Status lights and value bars on a panel beside bare widgets, in one run. The panel's side is a whole scan: each
// control's settings are read from its document, its channel is evaluated, the live control is written to and painted.
// A bare widget is told a number, fills one rectangle and draws one text. Times are medians in milliseconds; a ratio
// below 1 means that the panel is cheaper.

#include "display/StatusLightControl.h"
#include "display/ValueBarControl.h"
#include "document/XMLOps.h"
#include "livedata/Scan.h"
#include "surface/host/ControlArray.h"
#include "surface/host/Surface.h"
#include "window/ControlTypes.h"
#include "wrappers/BenchControl.h"
#include "wrappers/BenchControls.h"

#include "support/FakeSite.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPainter>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <type_traits>
#include <vector>

using namespace zan;
using values::make;
using values::Ref;
using values::Variant;

namespace {

const values::Name valueName("Value");
constexpr int Columns = 40;
constexpr QSize LightSize(65, 17);
constexpr QSize BarSize(40, 100);

double median(std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

double milliseconds(const std::function<void()>& work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

void paintPending()
{
    for (int turn = 0; turn < 3; ++turn)
        QCoreApplication::processEvents();
}

QRect cellOf(int place, QSize size)
{
    return {QPoint(place % Columns * size.width(), place / Columns * size.height()), size};
}

QSize gridSize(int count, QSize size)
{
    return {std::min(count, Columns) * size.width(), (count + Columns - 1) / Columns * size.height()};
}

double valueAt(int place, int tick)
{
    return (place * 7 + tick * 13) % 100;
}

/// The simplest live control that a host could write.
class BareWidget : public QWidget
{
public:
    using QWidget::QWidget;
    void setValue(double value)
    {
        m_value = value;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), m_value > 50 ? QColor(255, 0, 0) : QColor(128, 0, 0));
        painter.drawText(rect(), Qt::AlignCenter, QString::number(m_value));
    }

private:
    double m_value = 0;
};

struct Bare
{
    Bare(int count, QSize size)
    {
        for (int place = 0; place < count; ++place) {
            auto* widget = new BareWidget(&window);
            widget->setGeometry(cellOf(place, size));
            items.push_back(widget);
        }
        window.resize(gridSize(count, size));
    }
    void scan(int tick)
    {
        for (std::size_t place = 0; place < items.size(); ++place)
            items[place]->setValue(valueAt(int(place), tick));
    }
    void write(int tick) { items.front()->setValue(valueAt(0, tick)); }

    QWidget window;
    std::vector<BareWidget*> items;
};

/// Controls of one type on a panel, each bound to a channel of its own.
template <class Control>
struct Panel
{
    Panel(int count, QSize size, const char* type)
    {
        collection->AttachLogger(logger);
        surface::ControlArray& array = window.addArray<Control>(QStringLiteral("Item"));
        for (int place = 0; place < count; ++place) {
            const Ref<surface::LiveControl> control = array.load(place + 2);
            const QRect cell = cellOf(place, size);
            control->move(float(cell.x() * 15), float(cell.y() * 15), float(cell.width() * 15),
                          float(cell.height() * 15));
            control->setVisible(true);
            const auto channel = make<fake::FakeChannel>();
            channel->label = QStringLiteral("Stage");
            channel->units = QStringLiteral("m");
            channel->format = QStringLiteral("0.00");
            channels.push_back(channel);
            const auto wrapper = make<wrappers::BenchControl>();
            wrapper->setControl(control);
            wrapper->setControlType(QString::fromLatin1(type));
            wrapper->setChannel(channel);
            document::XMLOps::SetAttribute(wrapper->XMLNode(), values::Name("COMPARISON"), QStringLiteral(">"));
            document::XMLOps::SetAttribute(wrapper->XMLNode(), values::Name("COMPAREVALUE"), QStringLiteral("50"));
            wrappers.push_back(wrapper);
            items.push_back(Ref<Control>(static_cast<Control*>(control.get())));
        }
        window.resize(gridSize(count, size));
    }
    void scan(int tick)
    {
        for (std::size_t place = 0; place < channels.size(); ++place)
            channels[place]->value = Variant(valueAt(int(place), tick));
        for (const auto& wrapper : wrappers)
            liveData.update(*wrapper, *collection);
    }
    /// Each write changes the picture: a light has two states, a bar any value.
    void write(int tick)
    {
        constexpr bool IsLight = std::is_same_v<Control, display::StatusLightControl>;
        items.front()->put(valueName, IsLight ? Variant(tick % 2 == 0) : Variant(valueAt(0, tick)));
    }

    surface::Surface window;
    Ref<fake::FakeLogger> logger = make<fake::FakeLogger>();
    Ref<wrappers::BenchControls> collection = make<wrappers::BenchControls>();
    livedata::Scan liveData{window::controlTypes()};
    std::vector<Ref<fake::FakeChannel>> channels;
    std::vector<Ref<wrappers::BenchControl>> wrappers;
    std::vector<Ref<Control>> items;
};

struct Times
{
    double panel;
    double bare;
};

/// Both sides in turn, so that whatever else the machine does meets both alike.
template <class PanelStep, class BareStep>
Times inTurn(int runs, PanelStep&& panelStep, BareStep&& bareStep)
{
    std::vector<double> panel, bare;
    for (int run = 0; run < runs; ++run) {
        bare.push_back(milliseconds([&] {
            bareStep(run);
            paintPending();
        }));
        panel.push_back(milliseconds([&] {
            panelStep(run);
            paintPending();
        }));
    }
    return {median(panel), median(bare)};
}

void print(const char* name, int count, const char* what, const Times& times)
{
    std::printf("%-14s %5d  %-15s %9.4f  bare %9.4f  ratio %5.2f\n", name, count, what, times.panel, times.bare,
                times.panel / times.bare);
}

template <class Control>
void compare(const char* name, int count, QSize size, const char* type)
{
    Bare bare(count, size);
    Panel<Control> panel(count, size, type);
    bare.window.show();
    panel.window.show();
    paintPending();
    print(name, count, "scan and paint",
          inTurn(
              41, [&](int run) { panel.scan(run); }, [&](int run) { bare.scan(run); }));
    print(name, count, "one write",
          inTurn(
              401, [&](int run) { panel.write(run); }, [&](int run) { bare.write(run); }));
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    for (const int count : {100, 1000, 4000}) {
        compare<display::StatusLightControl>("status lights", count, LightSize, "ZanBenchWindow.StatusLight");
        compare<display::ValueBarControl>("value bars", count, BarSize, "ZanBenchWindow.ValueBar");
    }
}
