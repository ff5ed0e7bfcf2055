#include "trellis/FileReplacement.h"

#include <QFile>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <limits>
#include <sys/file.h>
#include <sys/xattr.h>
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
constexpr qsizetype LongestName = 255;
constexpr qsizetype LongestAttribute = 65536; // bytes, of a value and of the list of names
constexpr qsizetype AddedToName = sizeof("..saving.bak") - 1;
const QByteArray AccessList = "system.posix_acl_access";

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

QByteArray nameOf(const QByteArray& path)
{
    return path.mid(path.lastIndexOf('/') + 1);
}

/// Follows the symbolic links that a path ends in. 0, or errno for what leads nowhere that can be named.
int followLinks(QByteArray& path)
{
    for (int links = 0;; ++links) {
        struct stat status = {};
        if (::lstat(path.constData(), &status) != 0 || !S_ISLNK(status.st_mode))
            return 0;
        if (links == LinkLimit)
            return ELOOP;
        QByteArray aim(4096, Qt::Uninitialized);
        const ssize_t length = ::readlink(path.constData(), aim.data(), std::size_t(aim.size()));
        if (length < 0)
            return errno;
        aim.truncate(qsizetype(length));
        path = aim.startsWith('/') ? aim : folderOf(path) + '/' + aim;
    }
}

/// Names of the extended attributes of a file; none where its file system has none.
QByteArrayList attributesOf(const QByteArray& path)
{
    QByteArray names(LongestAttribute, '\0');
    const ssize_t length = ::listxattr(path.constData(), names.data(), std::size_t(names.size()));
    names.truncate(qsizetype(std::max<ssize_t>(length, 0)));
    QByteArrayList list = names.split('\0');
    list.removeAll(QByteArray());
    return list;
}

/// Gives one attribute of a file to another. 0 or errno.
int copyAttribute(const QByteArray& from, const FileDescriptor& to, const QByteArray& name)
{
    QByteArray value(LongestAttribute, Qt::Uninitialized);
    const ssize_t length = ::getxattr(from.constData(), name.constData(), value.data(), std::size_t(value.size()));
    if (length < 0)
        return errno;
    return ::fsetxattr(to.number(), name.constData(), value.constData(), std::size_t(length), 0) == 0 ? 0 : errno;
}

/// Whether an attribute is part of what people keep in a file: their own and its access list. What the system keeps
/// there for itself (labels, capabilities) it gives to a new file as it sees fit.
bool isKept(const QByteArray& name)
{
    return name.startsWith("user.") || name == AccessList;
}

} // namespace

bool FileReplacement::hasRoomFor(const DiskFile& file)
{
    QByteArray target = QFile::encodeName(file.path());
    return followLinks(target) != 0 || nameOf(target).size() + AddedToName <= LongestName;
}

FileReplacement::FileReplacement(const DiskFile& file)
    : m_shown(file.path())
    , m_target(QFile::encodeName(file.path()))
{
    if (const int error = followLinks(m_target))
        fail(error);
    m_folder = folderOf(m_target);
    m_name = nameOf(m_target);
    if (m_name.isEmpty())
        fail(ENOENT);
    if (m_name.size() + AddedToName > LongestName)
        fail(ENAMETOOLONG);
    checkTarget();
    lockFolder();
    ::unlink(inFolder('.' + m_name + ".saving").constData());
    ::unlink(inFolder('.' + m_name + ".saving.bak").constData());
    checkTarget(); // once more: it may have been replaced while we waited for the lock
    refuseSecondName();
}

FileReplacement::~FileReplacement()
{
    if (!m_fresh.isEmpty())
        ::unlink(m_fresh.constData());
    if (!m_former.isEmpty())
        ::unlink(m_former.constData());
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

/// A replaced file is another file: its other names would go on with the former content, unnoticed.
void FileReplacement::refuseSecondName() const
{
    if (m_exists && m_status.st_nlink > 1)
        throw RuntimeError(ErrorNumber::PathFileAccess,
                           QStringLiteral("Cannot save \"%1\": the file has another name as well (a hard link), "
                                          "which would keep the former content. Nothing has been changed there; "
                                          "save under another name.")
                               .arg(m_shown));
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
    // A list that the folder gives to its new files would add to what the file allows.
    ::fremovexattr(file.number(), AccessList.constData());
    if (::fchmod(file.number(), mode) != 0)
        fail(errno);
    for (const QByteArray& name : attributesOf(m_target)) {
        const int error = isKept(name) ? copyAttribute(m_target, file, name) : 0;
        if (error != 0 && error != ENODATA)
            fail(error);
    }
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
        ::unlink(m_former.constData()); // renaming over another name of the same file leaves both
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
