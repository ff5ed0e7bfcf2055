#pragma once

#include <QString>

namespace zan::document::StringOps {

/// The text without leading and trailing tabs; other blanks stay. Empty for no text. Raises 5 for a text of nothing
/// but tabs.
QString TrimTabs(const QString& text);
/// The text without leading and trailing tabs, blanks, line feeds and carriage returns. Never raises.
QString TrimWhitespace(const QString& text);

} // namespace zan::document::StringOps
