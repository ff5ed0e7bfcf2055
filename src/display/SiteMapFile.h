#pragma once

#include "document/Node.h"

#include <QString>

namespace zan::display::SiteMapFile {

/// Most sites of a map; a map of more cannot be shown, because places in it are 16-bit.
inline constexpr std::size_t MostSites = 32'767;

/// Reads a map file: an XML document without a doctype, of reasonable size. Null when there is no such file, or none
/// that can be read.
document::Node read(const QString& path);
/// Whether the site and all sites below it are no more than MostSites.
bool isShowable(const document::Node& root);

} // namespace zan::display::SiteMapFile
