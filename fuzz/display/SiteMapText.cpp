// Any bytes as a map file: refused, or a map whose sites can be chosen, changed and drawn; as a widget that scrolls.

#include "display/SiteMap.h"

#include "fuzz/support/MemoryFile.h"
#include "values/RuntimeError.h"

#include <QApplication>
#include <QImage>

#include <cstdint>

using namespace zan;
using fuzz::MemoryFile;
using fuzz::require;

namespace {

/// Error of a control array that is asked for an element it does not have.
constexpr int NoSuchElement = 340;

/// The number of the run-time error that a call raises; 0 for none.
template <class Call>
int errorOf(Call&& call)
{
    try {
        call();
    } catch (const values::RuntimeError& error) {
        return error.number();
    }
    return 0;
}

/// `selected`: the site that was selected in an earlier map of the same control, 0 for none; a load does not forget it.
void use(display::SiteMap& map, int& selected)
{
    display::SiteMapControl& control = map.control();
    const int count = control.chart().shownCount();
    require(count >= 1, "a map that is loaded shows a site");
    for (const int site : {1, count / 2 + 1, count}) {
        const int error = errorOf([&] { control.SelectSite(std::int16_t(site)); });
        if (selected > count) {
            require(error == NoSuchElement, "a selection that the new map does not reach stops the next one");
            continue;
        }
        require(error == 0, "a site that is shown can be selected");
        selected = site;
    }
    if (selected <= count)
        control.chooseSite(count);
    const auto sites = control.sites();
    for (std::int32_t place = 1; place <= std::min<std::int32_t>(sites->Count(), 20); ++place)
        require(bool(sites->Item(binding::Variant(place))), "a place of the list holds a site");
    QImage canvas(map.size(), QImage::Format_ARGB32_Premultiplied);
    map.render(&canvas);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    static QApplication* const application = [] {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        return new QApplication(count, arguments);
    }();
    (void)application;
    static display::SiteMap* map = nullptr;
    static int selected = 0;
    // A control that has lost its selected site selects none again: what comes after it needs another.
    if (!map || selected > map->control().chart().shownCount()) {
        delete map;
        map = new display::SiteMap;
        map->resize(200, 150);
        map->show();
        selected = 0;
    }
    const MemoryFile file(data, size);
    bool isLoaded = false;
    const int error = errorOf([&] { isLoaded = map->control().LoadMap(file.path()); });
    require(error == 0 || error == int(values::ErrorNumber::ObjectNotSet), "what holds no map is error 91");
    require(error == 0 || !isLoaded, "a map is loaded or refused");
    if (isLoaded)
        use(*map, selected);
    QCoreApplication::processEvents();
    return 0;
}
