#include "zanbench/PanelLoader.h"

#include "document/Elements.h"
#include "values/Twips.h"

#include <algorithm>

namespace zan::host {

namespace {

constexpr QSize SmallestPanel(320, 200);
constexpr int LargestSide = 16384;
constexpr int Margin = 16;
const values::Name MapFileName("MapFile");

/// Whether the document of a window names a map file.
bool namesMap(const OpenedSite& site, const QString& key)
{
    namespace element = document::element;
    const Ref<site::SchemeWindow> window = site.scheme().Windows()->Item(binding::Variant(key));
    if (!window)
        return false;
    const document::Node record = window->XML().child(element::Container).child(element::SiteMap);
    for (document::Node child = record.firstChildElement(); child; child = child.nextSiblingElement()) {
        if (child.name().equalsIgnoringCase(MapFileName) && !child.text().isEmpty())
            return true;
    }
    return false;
}

} // namespace

std::unique_ptr<window::BenchWindow> loadPanel(const OpenedSite& site, const QString& key,
                                               const std::optional<binding::PropertyBag>& bag,
                                               const PreparePanel& prepare)
{
    auto panel = std::make_unique<window::BenchWindow>();
    if (prepare)
        prepare(*panel);
    if (bag) {
        panel->ReadProperties(*bag);
    } else {
        panel->InitProperties();
        // Panels of a site lie beside each other in the host's list; a map is for those whose document names one.
        panel->setShowSiteMap(namesMap(site, key));
    }
    panel->setLogger(site.logger());
    panel->LoadWindow(key);
    return panel;
}

QSize contentSize(const window::BenchWindow& panel)
{
    const auto controls = panel.Controls();
    if (!controls)
        return SmallestPanel;
    int width = 0, height = 0;
    for (std::int32_t i = 1; i <= controls->Count(); ++i) {
        const auto control = controls->Control(binding::Variant(i));
        if (!control->Visible())
            continue;
        const int left = values::twipsToPixels(control->Left()), top = values::twipsToPixels(control->Top());
        const int right = values::twipsToPixels(double(control->Left()) + control->Width());
        const int bottom = values::twipsToPixels(double(control->Top()) + control->Height());
        width = std::max(width, right + (left > 0 ? Margin : 0));
        height = std::max(height, bottom + (top > 0 ? Margin : 0));
    }
    return QSize(std::clamp(width, SmallestPanel.width(), LargestSide),
                 std::clamp(height, SmallestPanel.height(), LargestSide));
}

} // namespace zan::host
