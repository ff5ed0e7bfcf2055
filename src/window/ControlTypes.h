#pragma once

#include "wrappers/ControlType.h"

namespace zan::window {

/// Key of the panel's one site map.
inline constexpr QStringView SiteMapType = u"SITEMAP";

/// The types of control that every panel knows; the rows with a caption are in the new-control menu's order.
wrappers::ControlTypes controlTypes();

} // namespace zan::window
