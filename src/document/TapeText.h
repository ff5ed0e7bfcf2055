#pragma once

#include <QByteArrayView>
#include <QString>

namespace zan::document {

/// How the bytes of a text become characters.
enum class TextRule {
    Text,      ///< references and CDATA sections are resolved, line ends become line feeds
    Attribute, ///< references are resolved, every blank becomes a space
    Plain      ///< line ends become line feeds, everything else stands as it is
};

/// The text of bytes that have been checked.
QString decodeText(QByteArrayView raw, TextRule rule);

/// The character of a reference that starts here with its &, and `at` behind its semicolon; 0 for one that is not
/// known, 0xFFFF (which is no character) for one that names no character that XML allows. `at` stays then. The bytes
/// end with a zero.
char32_t readReference(const char*& at) noexcept;

} // namespace zan::document
