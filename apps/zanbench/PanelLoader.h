#pragma once

#include "zanbench/OpenedSite.h"

#include "binding/PropertyBag.h"
#include "window/BenchWindow.h"

#include <QSize>

#include <functional>
#include <memory>

namespace zan::host {

/// What a panel is given before anything happens on it: who shows its boxes, who hears of its errors.
using PreparePanel = std::function<void(window::BenchWindow&)>;

/// A panel of this window of the site, loaded and locked, with the design values that a bag has kept. Raises what
/// loading raises. Each window has a panel of its own, because a panel empties the window it showed before. A load
/// can already show boxes and report errors: who wants them says so in `prepare`.
std::unique_ptr<window::BenchWindow> loadPanel(const OpenedSite& site, const QString& key,
                                               const std::optional<binding::PropertyBag>& bag = std::nullopt,
                                               const PreparePanel& prepare = {});

/// Pixels that the panel needs to show all its visible controls and a small margin to the right and below; a
/// control that begins at the very edge is a background and needs none. Never smaller than a small panel.
QSize contentSize(const window::BenchWindow& panel);

} // namespace zan::host
