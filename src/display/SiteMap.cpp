#include "display/SiteMap.h"

#include "surface/host/Surface.h"
#include "values/Twips.h"

namespace zan::display {

namespace {

constexpr int DesignWidth = 4800; // twips
constexpr int DesignHeight = 3600;

} // namespace

SiteMap::SiteMap(QWidget* parent)
    : ControlWidget([] { return Ref<surface::LiveControl>(values::make<SiteMapControl>()); },
                    QSize(values::twipsToPixels(DesignWidth), values::twipsToPixels(DesignHeight)), Unit::Twips,
                    parent)
{
    control().setHost(this);
    surface().setFocusPolicy(Qt::NoFocus);
    setFocusProxy(control().ensureWidget());
}

SiteMap::~SiteMap()
{
    control().setHost(nullptr);
}

void SiteMap::loadScheme(const QString& site)
{
    Q_EMIT LoadScheme(site);
}

void SiteMap::propertyChanged(binding::Name name)
{
    Q_EMIT PropertyChanged(name.text());
}

void SiteMap::popupMenu(const Variant& menu, const std::optional<Variant>& flags, const std::optional<Variant>& x,
                        const std::optional<Variant>& y, const std::optional<Variant>& defaultMenu)
{
    const auto given = [](const std::optional<Variant>& argument) { return argument.value_or(Variant::missing()); };
    Q_EMIT PopupMenuWanted(menu, given(flags), given(x), given(y), given(defaultMenu));
}

} // namespace zan::display
