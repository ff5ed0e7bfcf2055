#pragma once

#include <QString>

namespace zan::document::FileOps {

// Parts of a path, as text: `\` parts folders, `.` parts the extension, whatever the platform's own separator is.
// Tabs around each result are removed; a result of nothing but tabs raises 5, as StringOps::TrimTabs does.

/// Text after the last `.`; empty for a path that has none.
QString GetFileExtension(const QString& path);
/// Text between the last `\` and the last `.`, or to the end without a `.`; empty when the `.` stands before the `\`.
QString GetFileTitle(const QString& path);
/// Title, `.` and extension; the title alone without an extension; empty without a title.
QString GetFileName(const QString& path);
/// Text up to and including the last `\`; empty when there is none.
QString GetFilePath(const QString& path);
/// Whether a file (no folder) of that name exists, double quotes in the name left out. A name with `\` that is not
/// found is looked for with the platform's separator. Never raises.
bool FileExists(const QString& path);

} // namespace zan::document::FileOps
