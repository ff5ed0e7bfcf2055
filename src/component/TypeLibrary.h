#pragma once

#include <QByteArray>

namespace zan::component {

/// Every class that can be reached by name, as a JSON text made from the member tables: members with kinds, types,
/// arguments and defaults, and events. The same each time.
QByteArray typeLibrary();

} // namespace zan::component
