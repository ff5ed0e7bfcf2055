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

void use(display::SiteMap& map)
{
    display::SiteMapControl& control = map.control();
    const int count = control.chart().shownCount();
    require(count >= 1, "a map that is loaded shows a site");
    for (const int site : {1, count / 2 + 1, count})
        require(errorOf([&] { control.SelectSite(std::int16_t(site)); }) == 0,
                "a site that is shown can be selected");
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
    static display::SiteMap* const map = [] {
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
        new QApplication(count, arguments);
        auto* made = new display::SiteMap;
        made->resize(200, 150);
        made->show();
        return made;
    }();
    const MemoryFile file(data, size);
    bool isLoaded = false;
    const int error = errorOf([&] { isLoaded = map->control().LoadMap(file.path()); });
    require(error == 0 || error == int(values::ErrorNumber::ObjectNotSet), "what holds no map is error 91");
    require(error == 0 || !isLoaded, "a map is loaded or refused");
    if (isLoaded)
        use(*map);
    QCoreApplication::processEvents();
    return 0;
}
