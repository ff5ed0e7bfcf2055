#pragma once

#include "values/Name.h"

/// Names of a map file's elements.
namespace zan::display::element {

inline const values::Name SiteMap("SITEMAP");
inline const values::Name Site("SITE");
inline const values::Name Name("NAME");
inline const values::Name Description("DESCRIPTION");
inline const values::Name Scheme("SCHEME");

} // namespace zan::display::element
