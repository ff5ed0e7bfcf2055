#include "trellis/FileReplacement.h"

#include <QFile>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <limits>
#include <sys/file.h>
#include <thread>

namespace zan::trellis {

using values::ErrorNumber;
using values::RuntimeError;

namespace {

constexpr int LinkLimit = 40; // the system's own
constexpr int LockAttempts = 100;
constexpr std::chrono::milliseconds LockPause{20};
constexpr int DeviceError = 57;
constexpr int DiskFull = 61;

int numberFor(int systemError)
{
    switch (systemError) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return DiskFull;
    case EIO:
        return DeviceError;
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
    case ENAMETOOLONG:
        return int(ErrorNumber::PathNotFound);
    default:
        return int(ErrorNumber::PathFileAccess);
    }
}

int writeAll(const FileDescriptor& file, const QByteArray& bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t count = ::write(file.number(), bytes.constData() + done, std::size_t(bytes.size() - done));
        if (count < 0 && errno != EINTR)
            return errno;
        if (count > 0)
            done += qsizetype(count);
    }
    return 0;
}

int writeThrough(FileDescriptor& file, const QByteArray& bytes)
{
    if (const int error = writeAll(file, bytes))
        return error;
    if (::fsync(file.number()) != 0)
        return errno;
    return file.close() ? 0 : errno;
}

FileDescriptor createFile(const QByteArray& path, mode_t mode)
{
    // Never through a link that somebody put there.
    return FileDescriptor(::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
}

QByteArray folderOf(const QByteArray& path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash > 0 ? path.left(slash) : slash == 0 ? QByteArray("/") : QByteArray(".");
}

} // namespace

FileReplacement::FileReplacement(const DiskFile& file)
    : m_shown(file.path())
    , m_target(QFile::encodeName(file.path()))
{
    resolveLinks();
    m_folder = folderOf(m_target);
    m_name = m_target.mid(m_target.lastIndexOf('/') + 1);
    if (m_name.isEmpty())
        fail(ENOENT);
    checkTarget();
    lockFolder();
    checkTarget(); // once more: it may have been replaced while we waited for the lock
    ::unlink(inFolder('.' + m_name + ".saving").constData());
    ::unlink(inFolder('.' + m_name + ".saving.bak").constData());
}

FileReplacement::~FileReplacement()
{
    if (!m_fresh.isEmpty())
        ::unlink(m_fresh.constData());
    if (!m_former.isEmpty())
        ::unlink(m_former.constData());
}

void FileReplacement::resolveLinks()
{
    for (int links = 0;; ++links) {
        struct stat status = {};
        if (::lstat(m_target.constData(), &status) != 0 || !S_ISLNK(status.st_mode))
            return;
        if (links == LinkLimit)
            fail(ELOOP);
        QByteArray aim(4096, Qt::Uninitialized);
        const ssize_t length = ::readlink(m_target.constData(), aim.data(), std::size_t(aim.size()));
        if (length < 0)
            fail(errno);
        aim.truncate(qsizetype(length));
        m_target = aim.startsWith('/') ? aim : folderOf(m_target) + '/' + aim;
    }
}

void FileReplacement::checkTarget()
{
    m_exists = ::stat(m_target.constData(), &m_status) == 0;
    if (!m_exists) {
        if (errno != ENOENT)
            fail(errno);
        return;
    }
    if (!S_ISREG(m_status.st_mode))
        fail(S_ISDIR(m_status.st_mode) ? EISDIR : EINVAL);
    // Renaming over it would need no permission on the file itself; whoever protected it meant it.
    if (::access(m_target.constData(), W_OK) != 0)
        fail(errno);
}

void FileReplacement::lockFolder()
{
    m_lock = FileDescriptor(::open(m_folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!m_lock)
        fail(errno, QFile::decodeName(m_folder));
    for (int attempt = 0; ::flock(m_lock.number(), LOCK_EX | LOCK_NB) != 0; ++attempt) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return; // a file system without locks: the rename alone is still all or nothing
        if (attempt == LockAttempts)
            throw RuntimeError(
                ErrorNumber::PathFileAccess,
                QStringLiteral("Cannot save \"%1\": another program is saving in its folder and does not "
                               "finish. Try again, or save under another name.")
                    .arg(m_shown));
        std::this_thread::sleep_for(LockPause);
    }
}

void FileReplacement::refuse() const
{
    throw RuntimeError(DiskFile::ChangedOnDisk,
                       QStringLiteral("\"%1\" was changed by somebody else since it was read, and has not been "
                                      "overwritten. Save under another name, or overwrite the other changes.")
                           .arg(m_shown));
}

void FileReplacement::write(const QByteArray& bytes)
{
    const QByteArray path = inFolder('.' + m_name + ".saving");
    FileDescriptor file = createFile(path, m_exists ? 0600 : 0666);
    if (!file)
        fail(errno);
    m_fresh = path;
    if (m_exists)
        takePermissions(file);
    if (const int error = writeThrough(file, bytes))
        fail(error);
}

void FileReplacement::takePermissions(const FileDescriptor& file) const
{
    // Where we may not give the file to its owner and group, it is ours, as any file that we write.
    const bool isGiven = ::fchown(file.number(), m_status.st_uid, m_status.st_gid) == 0;
    const mode_t mode = m_status.st_mode & (isGiven ? 07777 : 0777);
    if (::fchmod(file.number(), mode) != 0)
        fail(errno);
}

void FileReplacement::commit()
{
    if (m_exists)
        keepFormer();
    if (::rename(m_fresh.constData(), m_target.constData()) != 0)
        fail(errno);
    m_fresh.clear();
    if (m_exists) {
        if (::rename(m_former.constData(), inFolder(m_name + ".bak").constData()) != 0) {
            const int error = errno;
            // Without its backup the new content does not stand: the old one takes its place again.
            if (::rename(m_former.constData(), m_target.constData()) == 0)
                m_former.clear();
            fail(error, m_shown + QStringLiteral(".bak"));
        }
        m_former.clear();
    }
    syncFolder();
}

void FileReplacement::keepFormer()
{
    const QByteArray path = inFolder('.' + m_name + ".saving.bak");
    // A second name for the old content costs nothing and is never half written.
    if (::link(m_target.constData(), path.constData()) == 0) {
        m_former = path;
        return;
    }
    copyFormer(); // not every file system has links, and not every file may be linked
}

void FileReplacement::copyFormer()
{
    const DiskFile::Content content =
        DiskFile(QFile::decodeName(m_target)).read(std::numeric_limits<qsizetype>::max() - 1);
    if (content.error != 0 || content.tooLarge)
        fail(content.error != 0 ? content.error : EFBIG);
    const QByteArray path = inFolder('.' + m_name + ".saving.bak");
    FileDescriptor file = createFile(path, 0600);
    if (!file)
        fail(errno);
    m_former = path;
    takePermissions(file);
    if (const int error = writeThrough(file, content.bytes))
        fail(error);
}

void FileReplacement::syncFolder() const
{
    // Some file systems cannot synchronise a folder; what else can be done has been done then.
    if (::fsync(m_lock.number()) != 0 && errno == EIO)
        throw RuntimeError(DeviceError,
                           QStringLiteral("\"%1\" has been written, but the disk reports an error and may "
                                          "lose it. Save it on another disk too.")
                               .arg(m_shown));
}

void FileReplacement::fail(int systemError, const QString& where) const
{
    const QString place = where.isEmpty() ? m_shown : where;
    throw RuntimeError(
        numberFor(systemError),
        QStringLiteral("Cannot save \"%1\": %2. Nothing has been changed there; put that right and save "
                       "again, or save under another name.")
            .arg(place, reasonText(systemError)));
}

} // namespace zan::trellis
