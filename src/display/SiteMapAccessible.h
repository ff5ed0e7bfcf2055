#pragma once

namespace zan::display {

class SiteMapView;

namespace SiteMapAccessible {

/// Makes site maps known to the toolkit's accessibility: a tree with an item for each site, with name, description and
/// the action of choosing it. Done once per process.
void install();
/// A map goes: assistive tools that still hold one find it invalid.
void forget(const SiteMapView& view);
/// The map has got other sites, or they look otherwise.
void tellSites(SiteMapView& view);
/// The keyboard is at another site.
void tellFocus(SiteMapView& view);

} // namespace SiteMapAccessible

} // namespace zan::display
