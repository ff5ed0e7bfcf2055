#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace zan::surface::FontTable {

/// The installed family that a font name stands for: the name itself when it is installed, else the first installed
/// substitute of a classic name, else the application's family.
QString installedFamily(const QString& name);

/// The one character set of a classic font that has only one ("Terminal" 255, "Symbol" 2); nothing for others.
/// COMPAT: a name without a letter names no font, and what stands in for it has character set 0.
std::optional<std::int16_t> charsetOfName(const QString& name);

} // namespace zan::surface::FontTable
