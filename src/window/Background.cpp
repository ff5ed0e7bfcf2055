#include "window/Background.h"

#include "surface/host/Surface.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

namespace zan::window {

using surface::Picture;
using values::ErrorNumber;

namespace {

/// A folder that nobody else may enter and whose name nobody can know beforehand, so that nothing can wait in it
/// for the picture. Empty when none can be made.
QString makePrivateFolder()
{
    QTemporaryDir folder(QDir::temp().filePath(QStringLiteral("zanbench-XXXXXX")));
    folder.setAutoRemove(false);
    return folder.isValid() ? folder.path() : QString();
}

/// Writes a file that must not exist yet, through no link.
bool writeBitmap(const Picture& picture, const QString& name)
{
    QFile file(name);
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner) &&
           picture.image().save(&file, "BMP") && file.flush();
}

} // namespace

Background::~Background()
{
    removeTemporaryFile();
}

void Background::removeTemporaryFile()
{
    if (!m_isTemporary || m_file.isEmpty())
        return;
    QFile::remove(m_file);
    QDir().rmdir(QFileInfo(m_file).path()); // the picture's own folder, unless somebody has put something there
}

void Background::setPictureFile(const QString& file)
{
    m_file = file;
    m_isTemporary = false;
    refresh();
}

void Background::setStretch(bool stretch)
{
    m_stretch = stretch;
    refresh();
}

Ref<Picture> Background::picture() const
{
    return QFileInfo::exists(m_file) ? surface::loadPicture(m_file) : nullptr;
}

void Background::setPicture(const Ref<Picture>& picture)
{
    if (!picture) {
        m_surface.setPicture({});
        removeTemporaryFile();
        m_file.clear();
        return;
    }
    removeTemporaryFile();
    const QString folder = makePrivateFolder();
    m_file = QStringLiteral("%1/~%2.BMP").arg(folder.isEmpty() ? QDir::tempPath() : folder).arg(m_surface.hWnd());
    m_isTemporary = !folder.isEmpty();
    if (folder.isEmpty() || !writeBitmap(*picture, m_file)) {
        removeTemporaryFile();
        values::raise(
            ErrorNumber::PathFileAccess,
            QStringLiteral("The background picture could not be written to %1. Free some space or choose a "
                           "picture file instead.")
                .arg(m_file));
    }
    refresh();
}

void Background::refresh()
{
    if (m_file.isEmpty()) {
        m_surface.setPicture({});
        return;
    }
    if (!QFileInfo::exists(m_file))
        return;
    try {
        const Ref<Picture> loaded = surface::loadPicture(m_file);
        if (!loaded)
            return;
        if (!m_stretch || m_surface.size().isEmpty()) {
            m_surface.setPicture(loaded);
            return;
        }
        const qreal scale = m_surface.devicePixelRatioF();
        QImage stretched =
            loaded->image().scaled(m_surface.size() * scale, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        stretched.setDevicePixelRatio(scale);
        m_surface.setPicture(values::make<Picture>(stretched));
    } catch (const values::RuntimeError&) {
        // A file that holds no picture leaves the background as it is.
    }
}

} // namespace zan::window
