#include "display/ValueBar.h"

#include "values/Twips.h"

namespace zan::display {

namespace {

constexpr int DesignWidth = 4800; // twips
constexpr int DesignHeight = 3600;

} // namespace

ValueBar::ValueBar(QWidget* parent)
    : DisplayWidget([] { return Ref<surface::LiveControl>(values::make<ValueBarControl>()); },
                    QSize(values::twipsToPixels(DesignWidth), values::twipsToPixels(DesignHeight)), parent)
{}

} // namespace zan::display
