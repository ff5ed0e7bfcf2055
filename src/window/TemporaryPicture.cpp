#include "window/TemporaryPicture.h"

#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zan::window {

namespace {

const QString LockName = QStringLiteral("lock");
constexpr QFileDevice::Permissions OwnersAlone = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
/// How often another folder is tried when a program that clears up was quicker.
constexpr int Attempts = 5;

QByteArray native(const QString& path)
{
    return QFile::encodeName(path);
}

/// Whether this is a folder of ours, no link to one, that nobody else may enter.
bool isPrivateFolder(const QString& path)
{
    struct stat status = {};
    return ::lstat(native(path).constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == ::geteuid() && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
}

/// The folder of all pictures, made where there is none; false when there is none that could be trusted.
bool makeUserFolder()
{
    const QString folder = TemporaryPicture::userFolder();
    if (folder.isEmpty() || !QDir().mkpath(QFileInfo(folder).path()))
        return false;
    ::mkdir(native(folder).constData(), S_IRWXU); // it may be there
    return isPrivateFolder(folder);
}

/// Locks a file for as long as it is open. False when another program holds it, or has just taken it away.
bool holdLock(QFile& file)
{
    struct stat status = {};
    return ::flock(file.handle(), LOCK_EX | LOCK_NB) == 0 && ::fstat(file.handle(), &status) == 0 &&
           status.st_nlink > 0;
}

/// Opens a file that is there, through no link.
bool openPlain(QFile& file, const QString& name)
{
    const int number = ::open(native(name).constData(), O_RDWR | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK);
    return number >= 0 && file.open(number, QIODevice::ReadWrite, QFileDevice::AutoCloseHandle);
}

void removeFolder(const QString& folder, const QString& name)
{
    if (!name.isEmpty())
        QFile::remove(folder + u'/' + name);
    QFile::remove(folder + u'/' + LockName);
    QDir().rmdir(folder); // unless somebody has put something else there
}

void clearFolder(const QString& folder)
{
    static const QRegularExpression ownName(QStringLiteral("^~\\d+\\.BMP$"));
    if (!isPrivateFolder(folder))
        return;
    const QStringList names = QDir(folder).entryList(QDir::Files | QDir::System | QDir::Hidden);
    if (names.isEmpty()) {
        QDir().rmdir(folder); // a program ended, or is, between making it and locking it
        return;
    }
    QFile lock;
    if (!openPlain(lock, folder + u'/' + LockName) || !holdLock(lock))
        return; // left on purpose, or its program lives
    for (const QString& name : names.filter(ownName))
        QFile::remove(folder + u'/' + name);
    removeFolder(folder, QString());
}

} // namespace

QString TemporaryPicture::userFolder()
{
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return cache.isEmpty() ? QString() : cache + QStringLiteral("/zanbench/backgrounds");
}

std::unique_ptr<TemporaryPicture> TemporaryPicture::write(const QImage& image, const QString& name)
{
    for (int attempt = 0; attempt < Attempts && makeUserFolder(); ++attempt) {
        QTemporaryDir made(userFolder() + QStringLiteral("/zanbench-XXXXXX"));
        made.setAutoRemove(false);
        if (!made.isValid())
            return {};
        std::unique_ptr<TemporaryPicture> picture(new TemporaryPicture(made.path()));
        if (!picture->lock())
            continue;
        if (!picture->save(image, name))
            picture.reset();
        return picture;
    }
    return {};
}

TemporaryPicture::TemporaryPicture(const QString& folder)
    : m_folder(folder)
    , m_lock(folder + u'/' + LockName)
{}

TemporaryPicture::~TemporaryPicture()
{
    if (!m_isLeft)
        removeFolder(m_folder, m_name);
}

/// False when a program that clears up has found the folder before it was locked.
bool TemporaryPicture::lock()
{
    return m_lock.open(QIODevice::ReadWrite | QIODevice::NewOnly, OwnersAlone) && holdLock(m_lock);
}

/// Writes a file that must not exist yet, through no link.
bool TemporaryPicture::save(const QImage& image, const QString& name)
{
    m_name = name;
    QFile written(file());
    return written.open(QIODevice::WriteOnly | QIODevice::NewOnly, OwnersAlone) && image.save(&written, "BMP") &&
           written.flush();
}

QString TemporaryPicture::file() const
{
    return m_folder + u'/' + m_name;
}

void TemporaryPicture::leave()
{
    m_isLeft = true;
    m_lock.remove();
}

void TemporaryPicture::clearAbandoned()
{
    const QString folder = userFolder();
    if (folder.isEmpty() || !isPrivateFolder(folder))
        return;
    for (const QString& name : QDir(folder).entryList(QDir::Dirs | QDir::NoSymLinks | QDir::NoDotAndDotDot))
        clearFolder(folder + u'/' + name);
}

} // namespace zan::window
