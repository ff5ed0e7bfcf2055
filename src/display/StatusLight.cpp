#include "display/StatusLight.h"

#include "values/Twips.h"

namespace zan::display {

namespace {

constexpr int DesignWidth = 4800; // twips
constexpr int DesignHeight = 3600;

} // namespace

StatusLight::StatusLight(QWidget* parent)
    : DisplayWidget([] { return Ref<surface::LiveControl>(values::make<StatusLightControl>()); },
                    QSize(values::twipsToPixels(DesignWidth), values::twipsToPixels(DesignHeight)), parent)
{}

} // namespace zan::display
