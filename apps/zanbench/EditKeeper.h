#pragma once

#include "zanbench/EditsFile.h"
#include "zanbench/HostDialogs.h"

#include "trellis/SchemeFile.h"

#include <QStringList>

namespace zan::host {

/// Keeps the unsaved edits of an open scheme in a file beside it, so that a program that is killed loses none, and
/// offers those that an earlier program has left.
class EditKeeper
{
public:
    explicit EditKeeper(EditsPlace place);

    struct Offer
    {
        values::Ref<trellis::SchemeFile>
            restored;      ///< the scheme with the edits that the user wants back; else empty
        QStringList notes; ///< what else was found, a sentence each
    };
    /// Asks about edits that were left of a scheme that has just been read; its `name` is for the question. Those that
    /// are restored are kept on until they are saved or discarded, and those that the user leaves for later stay too.
    Offer offer(const trellis::SchemeFile& saved, const QString& name, HostDialogs& dialogs);

    /// An edit has been made now.
    void edited() { m_lastEdit = QDateTime::currentDateTimeUtc(); }
    /// Keeps what the scheme's tree holds. Why that failed, as a sentence, when it has not failed the same way just
    /// before; empty else.
    QString keep(const trellis::SchemeFile& scheme);
    /// Everything is saved, or the user does not want it.
    void drop() { m_file.drop(); }
    /// The file with the edits; empty while none are kept.
    const QString& file() const { return m_file.file(); }

private:
    EditsFile m_file;
    QDateTime m_lastEdit;
    trellis::FileStamp m_kept; // of what the file holds
    QString m_problem;         // told last
};

/// What a command says that uses a scheme as it was saved while there are edits of it to be had back; empty when there
/// are none.
QString editsNote(const EditsPlace& place, const trellis::SchemeFile& saved);

} // namespace zan::host
