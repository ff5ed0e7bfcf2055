#pragma once

#include "document/Node.h"

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <cstdint>

namespace zan::document {

/// What a text may be before it is read. Exceeding a limit is an error, never a crash.
struct ParseLimits
{
    std::int64_t bytes = 128 * 1024 * 1024;
    std::int64_t elements = 8'000'000; ///< attributes, comments, instructions and texts count too
    int depth = Node::DeepestLevel;
    std::int64_t names = 65'536; ///< different names of elements and attributes
};

/// Where and why a text could not be read.
struct ParseError
{
    QString message; ///< what is wrong and what to do, in plain words, without the place
    int line = 0;    ///< from 1; 0 when the place is not known
    int column = 0;  ///< from 1
};

struct ParseResult
{
    Node document; ///< null when the text was refused
    ParseError error;
    explicit operator bool() const noexcept { return bool(document); }
};

/// Reads a whole XML document (UTF-8; UTF-16 with a byte order mark; Latin-1 family where declared). Doctypes are
/// refused, so are wrong nesting, invalid characters and text that exceeds the limits. Touches neither network
/// nor files. Blanks between elements are dropped where an element holds only elements and comments; all other
/// text is kept as it stands, comments, instructions and attributes too.
[[nodiscard]] ParseResult parseXml(const QByteArray& bytes, const ParseLimits& limits = {});
/// The same for text in memory.
[[nodiscard]] ParseResult parseXml(const QString& text, const ParseLimits& limits = {});

/// The document as UTF-8 with a declaration, indented by two blanks where an element holds only elements. Reading
/// it again gives the same tree. Characters that XML cannot hold are written as U+FFFD.
QByteArray toXml(const Node& document);

} // namespace zan::document
