#pragma once

#include "document/XmlText.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

namespace zan::document {

/// Line and column of a byte of a UTF-8 text, both from 1; the column counts characters.
ParseError errorAt(const QByteArray& utf8, qsizetype offset, const QString& message);

/// The text of sound UTF-8, every character of it: a mark that stands at the start of a piece is text there.
QString fromUtf8(QByteArrayView utf8);

/// The bytes of an XML text as UTF-8 without a byte order mark. A mark decides; without one the declared encoding
/// does: UTF-8, US-ASCII, ISO-8859-1 or windows-1252. Nothing, and the reason, for any other.
std::optional<QByteArray> toUtf8(const QByteArray& bytes, ParseError& error);
/// The same of bytes without a mark whose encoding has been told in another way, by one of those names in lower case.
std::optional<QByteArray> toUtf8(const QByteArray& bytes, QByteArrayView encoding, ParseError& error);
/// The same of text in memory, whatever encoding it declares.
std::optional<QByteArray> toUtf8(const QString& text, ParseError& error);

/// Checks that the text is sound UTF-8 of characters that XML allows, and has no more than so many `<`.
bool checkCharacters(const QByteArray& utf8, qsizetype mostTags, ParseError& error);

} // namespace zan::document
