#include "zandata/ZanDataControls.h"

#include "surface/host/ProvidedControls.h"
#include "zandata/ENTViewer.h"
#include "zandata/ZanGraph.h"

namespace zan::zandata {

namespace {

template <class Control>
values::Ref<surface::LiveControl> make()
{
    return values::make<Control>();
}

} // namespace

void provideControls()
{
    surface::provideControl(u"ZanDataControls.ENTViewer", make<ENTViewer>);
    surface::provideControl(u"ZanDataControls.ZanGraph", make<ZanGraph>);
}

} // namespace zan::zandata
