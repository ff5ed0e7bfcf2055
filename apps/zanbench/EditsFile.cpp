#include "zanbench/EditsFile.h"

#include "document/XmlText.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace zan::host {

using trellis::FileDescriptor;

namespace {

constexpr int MostFiles = 5; // of one scheme in one folder
constexpr int NotClaimed = EBUSY;
const qint64 LargestText = document::ParseLimits().bytes + 128 * 1024; // a scheme and its head

/// The file itself, whatever links lead to it.
QString realPath(const QString& file)
{
    const QString canonical = QFileInfo(file).canonicalFilePath();
    return canonical.isEmpty() ? QFileInfo(file).absoluteFilePath() : canonical;
}

QString numbered(const QString& name, int number)
{
    return number == 1 ? name : QStringLiteral("%1-%2").arg(name).arg(number);
}

/// The lock is advisory, and goes with the process. A file system without locks has every file free.
bool lock(const FileDescriptor& file)
{
    return ::flock(file.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

FileDescriptor createFile(const QByteArray& path)
{
    return FileDescriptor(::open(path.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600));
}

int writeAll(const FileDescriptor& file, const QByteArray& bytes)
{
    for (qsizetype done = 0; done < bytes.size();) {
        const ssize_t count = ::write(file.number(), bytes.constData() + done, std::size_t(bytes.size() - done));
        if (count < 0 && errno != EINTR)
            return errno;
        done += std::max<qsizetype>(count, 0);
    }
    return ::fdatasync(file.number()) == 0 ? 0 : errno;
}

/// Whether a file of edits belongs to the scheme. One beside it may have been moved with its folder.
bool belongsTo(const KeptEdits& edits, const QString& file, const EditsPlace& place)
{
    const QString scheme = realPath(place.scheme);
    const bool isBeside = QFileInfo(file).path() == QFileInfo(scheme).path();
    return isBeside ? QFileInfo(edits.scheme).fileName() == QFileInfo(scheme).fileName() : edits.scheme == scheme;
}

/// Why a file is none that we have written, or nothing.
QString foreignness(const struct stat& status)
{
    if (!S_ISREG(status.st_mode) || status.st_nlink != 1)
        return QStringLiteral("it is no plain file");
    if (status.st_uid != ::geteuid())
        return QStringLiteral("it belongs to another user");
    return {};
}

void readEdits(FoundEdits& found, const EditsPlace& place)
{
    QFile file; // what was looked at, whoever takes its name meanwhile
    QByteArray text;
    if (file.open(found.lock.number(), QIODevice::ReadOnly | QIODevice::Unbuffered))
        text = file.read(LargestText + 1);
    if (text.size() > LargestText) {
        found.problem = QStringLiteral("it is too large");
        return;
    }
    EditsRead read = editsFromText(text);
    found.problem = read.problem;
    if (read.edits && !belongsTo(*read.edits, found.file, place)) {
        found.problem = QStringLiteral("it belongs to another scheme");
    } else if (read.edits) {
        found.edits = std::move(*read.edits);
        found.state = FoundEdits::State::Usable;
    }
}

/// Makes the user's own folder, for him alone.
void makeOwnFolder(const QString& folder)
{
    if (folder.isEmpty() || QFileInfo::exists(folder))
        return;
    QDir().mkpath(QFileInfo(folder).path());
    QDir().mkdir(folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
}

/// Nothing when there is no such file.
std::optional<FoundEdits> lookAt(const QString& file, const EditsPlace& place)
{
    FoundEdits found;
    found.file = file;
    const QByteArray path = QFile::encodeName(file);
    found.lock = FileDescriptor(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK));
    if (!found.lock) {
        if (errno == ENOENT || errno == ENOTDIR || errno == ENAMETOOLONG)
            return std::nullopt;
        found.problem = errno == ELOOP ? QStringLiteral("it is a link") : trellis::reasonText(errno);
        return found;
    }
    struct stat status = {};
    if (::fstat(found.lock.number(), &status) != 0)
        return std::nullopt;
    found.problem = foreignness(status);
    if (!found.problem.isEmpty())
        return found;
    if (!lock(found.lock)) {
        found.state = FoundEdits::State::InUse;
        return found;
    }
    if (status.st_size == 0) {
        ::unlink(path.constData());
        return std::nullopt;
    }
    readEdits(found, place);
    return found;
}

} // namespace

QStringList EditsPlace::candidates() const
{
    const QFileInfo real(realPath(scheme));
    const QByteArray digest = QCryptographicHash::hash(real.filePath().toUtf8(), QCryptographicHash::Sha1).toHex();
    QStringList files;
    for (int number = 1; number <= MostFiles; ++number)
        files.append(QStringLiteral("%1/%2").arg(real.path(), numbered('.' + real.fileName() + ".edits", number)));
    for (int number = 1; number <= MostFiles && !ownFolder.isEmpty(); ++number)
        files.append(
            QStringLiteral("%1/%2").arg(ownFolder, numbered(QString::fromLatin1(digest) + ".edits", number)));
    return files;
}

std::vector<FoundEdits> findEdits(const EditsPlace& place)
{
    std::vector<FoundEdits> all;
    for (const QString& file : place.candidates())
        if (std::optional<FoundEdits> found = lookAt(file, place))
            all.push_back(std::move(*found));
    std::stable_sort(all.begin(), all.end(),
                     [](const FoundEdits& a, const FoundEdits& b) { return a.edits.time > b.edits.time; });
    return all;
}

EditsFile::EditsFile(EditsPlace place)
    : m_place(std::move(place))
{}

void EditsFile::adopt(FoundEdits found)
{
    m_file = found.file;
    m_lock = std::move(found.lock);
}

/// The name may have been taken away from us and be another program's by now.
bool EditsFile::isOurs() const
{
    struct stat held = {}, named = {};
    return m_lock && ::fstat(m_lock.number(), &held) == 0 &&
           ::lstat(QFile::encodeName(m_file).constData(), &named) == 0 && held.st_ino == named.st_ino &&
           held.st_dev == named.st_dev;
}

int EditsFile::claim(const QString& file)
{
    FileDescriptor fresh = createFile(QFile::encodeName(file));
    if (!fresh)
        return errno;
    if (!lock(fresh))
        return NotClaimed; // somebody looks whether it is left over
    m_file = file;
    m_lock = std::move(fresh);
    return 0;
}

int EditsFile::replace(const QByteArray& bytes)
{
    const QByteArray path = QFile::encodeName(m_file), part = path + ".part";
    ::unlink(part.constData()); // of a process that was killed
    FileDescriptor fresh = createFile(part);
    if (!fresh)
        return errno;
    // Locked before it has the name: whoever finds it under the name finds it taken.
    lock(fresh);
    int error = writeAll(fresh, bytes);
    if (error == 0 && ::rename(part.constData(), path.constData()) != 0)
        error = errno;
    if (error != 0)
        ::unlink(part.constData());
    else
        m_lock = std::move(fresh);
    return error;
}

QString EditsFile::write(const KeptEdits& edits)
{
    KeptEdits complete = edits;
    complete.scheme = realPath(m_place.scheme);
    const QByteArray bytes = editsToText(complete);
    if (!isOurs()) {
        m_file.clear();
        m_lock.close();
    }
    int error = m_lock ? replace(bytes) : ENOENT;
    if (error == 0)
        return {};
    // Another place for it; the one that it had stays until there is a better one.
    EditsFile other(m_place);
    for (const QString& candidate : m_place.candidates()) {
        makeOwnFolder(QFileInfo(candidate).path() == m_place.ownFolder ? m_place.ownFolder : QString());
        const int refused = other.claim(candidate);
        if (refused == EEXIST || refused == NotClaimed)
            continue;
        error = refused == 0 ? other.replace(bytes) : refused;
        if (error == 0) {
            drop();
            *this = std::move(other);
            return {};
        }
        other.drop();
    }
    return trellis::reasonText(error);
}

void EditsFile::drop()
{
    if (isOurs())
        ::unlink(QFile::encodeName(m_file).constData());
    m_file.clear();
    m_lock.close();
}

} // namespace zan::host
