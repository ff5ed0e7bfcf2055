#include "window/Background.h"

#include "surface/host/Surface.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace zan::window {

using surface::Picture;
using values::ErrorNumber;

namespace {

/// Beside the other temporary files of the user, told apart by process and window.
QString temporaryFileName(std::int32_t windowHandle)
{
    return QDir::temp().filePath(
        QStringLiteral("~zanbench-%1-%2.bmp").arg(QCoreApplication::applicationPid()).arg(windowHandle));
}

} // namespace

Background::~Background()
{
    removeTemporaryFile();
}

void Background::removeTemporaryFile()
{
    if (m_isTemporary && QFileInfo::exists(m_file))
        QFile::remove(m_file);
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
    m_file = temporaryFileName(m_surface.hWnd());
    m_isTemporary = true;
    if (!picture->image().save(m_file, "BMP"))
        values::raise(
            ErrorNumber::PathFileAccess,
            QStringLiteral("The background picture could not be written to %1. Free some space or choose a "
                           "picture file instead.")
                .arg(m_file));
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
