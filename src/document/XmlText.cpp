#include "document/XmlText.h"

#include "document/XmlEncoding.h"
#include "document/XmlReader.h"
#include "document/XmlWriter.h"

namespace zan::document {

namespace {

constexpr std::int64_t FewTags = 1000; // comments and CDATA may hold some `<` that are no tags

ParseResult refused(ParseError error)
{
    return {Node(), std::move(error)};
}

bool isTooLong(qsizetype size, const ParseLimits& limits, ParseError& error)
{
    if (size <= limits.bytes)
        return false;
    error.message = QStringLiteral("The text is longer than %1 bytes.").arg(limits.bytes);
    return true;
}

ParseResult parseUtf8(const QByteArray& utf8, const ParseLimits& limits)
{
    ParseError error;
    // Two tags per element at the most: a text of tags alone is refused before memory goes into it.
    if (isTooLong(utf8.size(), limits, error) || !checkCharacters(utf8, 2 * limits.elements + FewTags, error))
        return refused(std::move(error));
    XmlReader reader(utf8, limits);
    std::unique_ptr<Tape> tape = reader.read();
    return tape ? ParseResult{Tape::documentOf(std::move(tape)), {}} : refused(reader.error());
}

template <class Text>
ParseResult parseAny(const Text& text, const ParseLimits& limits)
{
    ParseError error;
    if (isTooLong(text.size(), limits, error))
        return refused(std::move(error));
    const std::optional<QByteArray> utf8 = toUtf8(text, error);
    return utf8 ? parseUtf8(*utf8, limits) : refused(std::move(error));
}

} // namespace

ParseResult parseXml(const QByteArray& bytes, const ParseLimits& limits)
{
    return parseAny(bytes, limits);
}

ParseResult parseXml(const QString& text, const ParseLimits& limits)
{
    return parseAny(text, limits);
}

QByteArray toXml(const Node& document)
{
    return document ? XmlWriter(XmlWriter::Layout::Indented).write(document.record()) : QByteArray();
}

} // namespace zan::document
