#pragma once

#include "binding/Object.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace zan::trellis {

/// What a file held when it was last read or written by us; by this we see whether somebody else has written
/// it.
struct FileStamp
{
    std::int64_t size = -1; ///< -1 when there was no file
    /// 128 bits of a hash that is fast, for it is taken at every opening; it need not resist anybody, for who can
    /// write the file can overwrite it without our help.
    std::uint64_t hash[2] = {};
    static FileStamp of(const QByteArray& content);
    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

/// A file that is read as a whole and replaced as a whole. A replacement is all or nothing: whenever the
/// process or the machine stops, the name stands for the old content or for the new one. Beside it lies one
/// backup, the content before the last replacement, under the name with ".bak" behind it.
///
/// Two programs that replace files of one folder at the same time wait for each other (an advisory lock on
/// the folder), so that neither overwrites what the other has just written without seeing it.
class DiskFile
{
public:
    /// The path may be relative to the present folder; it stays that file when the folder changes.
    explicit DiskFile(const QString& path);

    const QString& path() const noexcept { return m_path; }

    struct Content
    {
        QByteArray bytes;
        int error = 0;         ///< errno; 0 when `bytes` are the whole content
        bool tooLarge = false; ///< more than the bytes allowed; nothing was read
        bool exists() const noexcept;
    };
    /// Reads it all, at most this many bytes. Refuses what is no plain file (EISDIR, EINVAL), and never waits
    /// for one.
    Content read(std::int64_t maximum) const;
    /// What it holds at this moment. An unreadable file has no hash.
    FileStamp stamp() const;

    /// Whether its name leaves room for the names that a replacement needs beside it.
    bool canBeReplaced() const;
    /// Replaces the content and keeps the former one as the backup. With `expected`, refuses (ChangedOnDisk)
    /// when the file holds anything else; a file that is gone is written again. Permission bits stay, a
    /// symbolic link stays a link and its target is replaced; extended attributes and access lists stay. A file with
    /// a second name (a hard link) is refused, for that name would keep the former content. On any error the file and its backup are as
    /// before. Raises 57, 61, 75, 76 or ChangedOnDisk with a text that says what, where and what to do.
    void replace(const QByteArray& bytes, const std::optional<FileStamp>& expected) const;

    /// Number of the error that refuses to overwrite somebody else's work.
    static constexpr int ChangedOnDisk = 58;

private:
    QString m_path;
};

/// Why a call of the system failed, in plain words without a full stop.
QString reasonText(int systemError);

} // namespace zan::trellis
