#include "zanbench/PanelLoader.h"

#include "values/Twips.h"

#include <algorithm>
#include <cmath>

namespace zan::host {

namespace {

constexpr QSize SmallestPanel(320, 200);
constexpr int LargestSide = 16384;
constexpr int LargestMargin = 16;

} // namespace

std::unique_ptr<window::BenchWindow> loadPanel(const OpenedSite& site, const QString& key,
                                               const std::optional<binding::PropertyBag>& bag)
{
    auto panel = std::make_unique<window::BenchWindow>();
    if (bag) {
        panel->ReadProperties(*bag);
    } else {
        panel->InitProperties();
        // Panels of a site lie beside each other in the host's list; a map on each of them is for who asks for it.
        panel->setShowSiteMap(false);
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
    double left = LargestMargin * values::TwipsPerPixel, top = left, right = 0, bottom = 0;
    for (std::int16_t i = 1; i <= controls->Count(); ++i) {
        const auto control = controls->Control(binding::Variant(i));
        if (!control->Visible())
            continue;
        left = std::min(left, double(control->Left()));
        top = std::min(top, double(control->Top()));
        right = std::max(right, double(control->Left()) + control->Width());
        bottom = std::max(bottom, double(control->Top()) + control->Height());
    }
    const int width = values::twipsToPixels(right + std::max(0.0, left));
    const int height = values::twipsToPixels(bottom + std::max(0.0, top));
    return QSize(std::clamp(width, SmallestPanel.width(), LargestSide),
                 std::clamp(height, SmallestPanel.height(), LargestSide));
}

} // namespace zan::host
