#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace zan::keel {

/// How the bytes of an older window stand for characters.
enum class CodePage {
    Dos437, ///< what a terminal of the time showed unless told otherwise
    Dos850, ///< the same for western Europe: letters in place of some of the box characters
    Utf8,
};

/// "437", "CP850", "utf-8" and the like, case ignored; nothing for any other name.
std::optional<CodePage> codePageOfName(QStringView name);

struct DecodedText
{
    QString text;
    qsizetype invalidAt = -1; ///< place in the text of the first bytes that stand for no character; -1 for none
};

/// The characters of a line. In the DOS pages the bytes below a blank are the pictures that the terminal showed, but for
/// NUL, which is none, and the tab.
DecodedText decode(QByteArrayView bytes, CodePage page);

} // namespace zan::keel
