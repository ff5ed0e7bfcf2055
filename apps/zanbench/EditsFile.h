#pragma once

#include "zanbench/EditsText.h"

#include "trellis/FileDescriptor.h"

#include <vector>

namespace zan::host {

/// Where the edits of a scheme are kept.
struct EditsPlace
{
    QString scheme;    ///< the scheme's file
    QString ownFolder; ///< of the user, for schemes beside which nothing can be written

    /// Files that may hold edits, in the order in which they are tried: hidden ones beside the scheme, then those of
    /// the user's own folder. Several, because a program that runs has its file for itself.
    QStringList candidates() const;
};

/// A file of edits that was found. While it is held no other program of this kind takes it up.
struct FoundEdits
{
    enum class State {
        Usable,
        InUse,   ///< a program that runs is keeping its edits there
        Refused, ///< damaged, or somebody else's; `problem` says so
    };

    State state = State::Refused;
    QString file;
    QString problem; ///< of a refused one, a clause without a full stop
    KeptEdits edits; ///< of a usable one
    trellis::FileDescriptor lock{-1};
};

/// All that lies about of a scheme's edits, the latest first. Empty files, which a program leaves that ends before its
/// first edit is kept, are put away.
std::vector<FoundEdits> findEdits(const EditsPlace& place);

/// The file that this program keeps the edits of one scheme in. It is private to the user, replaced as a whole, never
/// through a link, and locked for as long as it is ours: the lock ends with the process, however that ends.
class EditsFile
{
public:
    explicit EditsFile(EditsPlace place);

    /// Goes on with a file that was found.
    void adopt(FoundEdits found);
    /// Keeps these edits in place of those before. Why they could not be kept, in plain words; empty when they are.
    /// What was kept before stays then.
    [[nodiscard]] QString write(const KeptEdits& edits);
    /// Nothing is to be kept any more.
    void drop();
    /// Full path; empty while nothing is kept.
    const QString& file() const { return m_file; }
    const EditsPlace& place() const { return m_place; }

private:
    bool isOurs() const;
    int claim(const QString& file);
    int replace(const QByteArray& bytes);

    EditsPlace m_place;
    QString m_file;
    trellis::FileDescriptor m_lock{-1};
};

} // namespace zan::host
