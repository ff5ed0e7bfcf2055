#pragma once

#include "trellis/DiskFile.h"
#include "trellis/FileDescriptor.h"

#include <sys/stat.h>

namespace zan::trellis {

/// One replacement of a file, from the lock on its folder to the synchronised rename. When it ends without
/// commit(), for whatever reason, nothing has happened and its temporary files are gone.
///
/// Beside the file it uses two names of its own, ".NAME.saving" for the new content and ".NAME.saving.bak"
/// for the coming backup; what a killed process left there goes first.
class FileReplacement
{
public:
    /// Finds out where the file really lies, locks that folder and clears what was left behind.
    explicit FileReplacement(const DiskFile& file);
    /// Whether the file's name leaves room for the two names beside it. One that is too long can be read, but never
    /// replaced.
    static bool hasRoomFor(const DiskFile& file);
    ~FileReplacement();
    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    /// Raises the error for a file that somebody else has written.
    [[noreturn]] void refuse() const;
    /// Writes the new content beside the file, through to the disk.
    void write(const QByteArray& bytes);
    /// Puts the new content in the file's place and the former content in the backup's.
    void commit();

private:
    void lockFolder();
    void checkTarget();
    void refuseSecondName() const;
    void takePermissions(const FileDescriptor& file) const;
    void keepFormer();
    void copyFormer();
    void syncFolder() const;
    QByteArray inFolder(const QByteArray& name) const { return m_folder + '/' + name; }
    [[noreturn]] void fail(int systemError, const QString& where = {}) const;

    QString m_shown;     // the path as the user knows it
    QByteArray m_target; // the file behind all links
    QByteArray m_folder; // its folder
    QByteArray m_name;   // its name in there
    QByteArray m_fresh;  // path of the new content until it is in place
    QByteArray m_former; // path of the coming backup until it is in place
    FileDescriptor m_lock{-1};
    struct stat m_status = {}; // of the target
    bool m_exists = false;
};

} // namespace zan::trellis
