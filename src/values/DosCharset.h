#pragma once

#include <QChar>
#include <QString>

namespace zan::values::DosCharset {

/// The character that the DOS character set (code page 437) shows for a character 0x80 to 0xFF; others as they are.
char16_t shown(char16_t character) noexcept;
/// The text as it is shown. Only for display: the text itself keeps its characters.
QString shown(const QString& text);
/// The text that is shown as this one: what an edit field's content stands for.
QString stored(const QString& text);

} // namespace zan::values::DosCharset
