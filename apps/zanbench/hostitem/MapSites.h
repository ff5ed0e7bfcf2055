#pragma once

#include "binding/Object.h"
#include "display/SiteMapControl.h"

namespace zan::host {

/// One site of a panel's map, as it lay when it was asked for. Measures are those of its label: twips in the scrolling
/// container, which do not change when it is scrolled.
class MapSite : public binding::Object
{
public:
    MapSite(QString key, const display::SiteBox& label)
        : m_key(std::move(key))
        , m_label(label)
    {}
    const QString& Key() const { return m_key; } ///< its caption
    float Left() const { return m_label.left; }
    float Top() const { return m_label.top; }
    float Width() const { return m_label.width; }
    float Height() const { return m_label.height; }
    const binding::MemberTable& members() const override;

private:
    QString m_key;
    display::SiteBox m_label;
};

/// The sites that a panel's map shows.
class MapSites : public binding::Object
{
public:
    explicit MapSites(values::Ref<display::SiteMapControl> map)
        : m_map(std::move(map))
    {}
    std::int32_t Count() const { return m_map->chart().shownCount(); }
    /// Site by number from 1, or by its caption; raises 9 for what is not there.
    values::Ref<MapSite> Item(const values::Variant& site) const;
    const binding::MemberTable& members() const override;

    /// Number of the site that a script names so, 0 when there is none.
    static int find(const display::SiteChart& chart, const values::Variant& site);

private:
    values::Ref<display::SiteMapControl> m_map;
};

} // namespace zan::host
