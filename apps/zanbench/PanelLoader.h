#pragma once

#include "zanbench/OpenedSite.h"

#include "binding/PropertyBag.h"
#include "window/BenchWindow.h"

#include <QSize>

#include <memory>

namespace zan::host {

/// A panel of this window of the site, loaded and locked, with the design values that a bag has kept. Raises what
/// loading raises. Each window has a panel of its own, because a panel empties the window it showed before.
std::unique_ptr<window::BenchWindow> loadPanel(const OpenedSite& site, const QString& key,
                                               const std::optional<binding::PropertyBag>& bag = std::nullopt);

/// Pixels that the panel needs to show all its visible controls and a small margin to the right and below; a
/// control that begins at the very edge is a background and needs none. Never smaller than a small panel.
QSize contentSize(const window::BenchWindow& panel);

} // namespace zan::host
