#pragma once

#include "trellis/DiskFile.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

namespace zan::host {

/// Edits of a scheme that have not been saved: the whole scheme as it would be saved, and what it was made of.
struct KeptEdits
{
    QString scheme;          ///< full path of the scheme's file
    QDateTime time;          ///< of the last edit
    trellis::FileStamp base; ///< what the scheme's file held when it was read or saved last
    QByteArray content;      ///< the text of the scheme with the edits
};

struct EditsRead
{
    std::optional<KeptEdits> edits;
    QString problem; ///< in plain words without a full stop, when there are none
};

/// The text of a file of edits: a head of a few lines, an empty line, the scheme. Sums in the head tell a file that is
/// damaged or cut.
QByteArray editsToText(const KeptEdits& edits);
EditsRead editsFromText(const QByteArray& text);

} // namespace zan::host
