// A site map beside as many bare labels in a scroll area, in one run: both at the same places, both with a name each.
// Loading is everything from the map file on disk (the labels: from their texts) to the first picture; a wheel step is
// the event and the picture after it, told beside an area of the same extent with nothing in it: what the toolkit itself
// takes to move the picture. Times are medians in milliseconds; a ratio below 1 means that the map is cheaper.

#include "display/SiteMap.h"
#include "display/SiteMapView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QScrollArea>
#include <QTemporaryDir>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

using namespace zan;

namespace {

constexpr QSize WindowSize(1000, 700);
constexpr int WheelSteps = 400;

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

/// A region: one site below the other in every column, as many columns as rows.
QByteArray mapText(int count)
{
    const int rows = std::max(1, int(std::sqrt(double(count))));
    int made = 0;
    const auto name = [&made] { return "<NAME>Site " + QByteArray::number(++made) + "</NAME>"; };
    QByteArray text = "<SITEMAP><SITE>" + name();
    for (bool first = true; made < count; first = false) {
        const int length = std::min(first ? rows - 1 : rows, count - made);
        for (int i = 0; i < length; ++i)
            text += "<SITE>" + name() + "<DESCRIPTION>Gauging station</DESCRIPTION><SCHEME>s.scheme</SCHEME>";
        for (int i = 0; i < length; ++i)
            text += "</SITE>";
    }
    return text + "</SITE></SITEMAP>";
}

/// What both sides show.
struct Region
{
    QString file;
    std::vector<QString> names;
    std::vector<QRect> places;
};

Region makeRegion(const QTemporaryDir& folder, int count)
{
    Region region;
    region.file = folder.filePath(QString::number(count));
    QFile file(region.file);
    if (!file.open(QIODevice::WriteOnly) || file.write(mapText(count)) < 0)
        std::exit(1);
    file.close();
    display::SiteMap map;
    map.control().LoadMap(region.file);
    const display::SiteChart& chart = map.control().chart();
    for (int site = 1; site <= chart.shownCount(); ++site) {
        region.names.push_back(chart.site(site).caption);
        region.places.push_back(chart.site(site).label.pixels());
    }
    return region;
}

std::unique_ptr<display::SiteMap> showMap(const Region& region)
{
    auto map = std::make_unique<display::SiteMap>();
    map->resize(WindowSize);
    map->control().LoadMap(region.file);
    map->show();
    paintPending();
    return map;
}

enum class Fill { Labels, Nothing };

std::unique_ptr<QScrollArea> showLabels(const Region& region, Fill fill = Fill::Labels)
{
    auto area = std::make_unique<QScrollArea>();
    area->resize(WindowSize);
    auto* content = new QWidget;
    QRect all;
    for (std::size_t i = 0; i < region.names.size(); ++i) {
        if (fill == Fill::Labels)
            (new QLabel(region.names[i], content))->setGeometry(region.places[i]);
        all |= region.places[i];
    }
    content->resize(all.right() + 9, all.bottom() + 9);
    area->setWidget(content);
    area->show();
    paintPending();
    return area;
}

double wheelStep(QWidget& viewport)
{
    std::vector<double> times;
    for (int step = 0; step < WheelSteps; ++step) {
        const QPoint notch(0, (step / 8) % 2 == 0 ? -120 : 120);
        const QPointF place = viewport.rect().center();
        times.push_back(milliseconds([&] {
            QWheelEvent event(place, viewport.mapToGlobal(place), QPoint(), notch, Qt::NoButton, Qt::NoModifier,
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(&viewport, &event);
            paintPending();
        }));
    }
    return median(times);
}

void row(const char* what, int count, double map, double labels)
{
    std::printf("%-24s %6d sites  map %9.3f  labels %9.3f  ratio %5.2f\n", what, count, map, labels, map / labels);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM",
            qEnvironmentVariableIsSet("QT_QPA_PLATFORM") ? qgetenv("QT_QPA_PLATFORM") : "offscreen");
    QApplication application(argc, argv);
    const QTemporaryDir folder;
    for (const int count : {100, 1000, 5000}) {
        const Region region = makeRegion(folder, count);
        std::vector<double> map, labels;
        for (int run = 0; run < 9; ++run) {
            // In turn, so that whatever else the machine does meets both alike.
            labels.push_back(milliseconds([&] { (void)showLabels(region).release()->deleteLater(); }));
            map.push_back(milliseconds([&] { (void)showMap(region).release()->deleteLater(); }));
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        row("load and first picture", count, median(map), median(labels));
        if (count < 1000)
            continue; // nothing to scroll
        const auto empty = showLabels(region, Fill::Nothing);
        const double floor = wheelStep(*empty->viewport());
        const auto area = showLabels(region);
        const double bare = wheelStep(*area->viewport());
        const auto shown = showMap(region);
        auto& view = static_cast<display::SiteMapView&>(*shown->control().ensureWidget());
        const double step = wheelStep(*view.viewport());
        row("wheel step", count, step, bare);
        std::printf("%-24s %6d sites  empty area %.3f; above it: map %.3f, labels %.3f\n", "", count, floor,
                    step - floor, bare - floor);
    }
    return 0;
}
