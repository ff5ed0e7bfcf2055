#include "window/Background.h"

#include "surface/host/Surface.h"
#include "values/Failure.h"
#include "window/BackgroundOps.h"
#include "window/TemporaryPicture.h"

#include <QFileInfo>
#include <QPointer>

namespace zan::window {

using surface::Picture;
using values::ErrorNumber;

Background::Background(surface::Surface& surface, std::function<surface::HostForms&()> forms)
    : m_surface(surface)
    , m_forms(std::move(forms))
{
    static const bool isCleared = (TemporaryPicture::clearAbandoned(), true); // once in a program's life
    static_cast<void>(isCleared);
}

Background::~Background() = default;

void Background::setPictureFile(const QString& file)
{
    if (m_temporary)
        m_temporary->leave();
    m_temporary.reset();
    m_file = file;
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
    const Ref<Picture> wanted = picture; // the caller's may be the surface's
    m_temporary.reset();
    if (!wanted) {
        m_surface.setPicture({});
        m_file.clear();
        m_read = {};
        return;
    }
    const QString name = QStringLiteral("~%1.BMP").arg(m_surface.hWnd());
    m_temporary = TemporaryPicture::write(wanted->image(), name);
    if (!m_temporary) {
        m_file = TemporaryPicture::userFolder() + u'/' + name;
        values::raise(
            ErrorNumber::PathFileAccess,
            QStringLiteral("The background picture could not be written below %1. Free some space, see to it that "
                           "the folder is yours alone, or choose a picture file instead.")
                .arg(TemporaryPicture::userFolder()));
    }
    m_file = m_temporary->file();
    refresh();
}

/// The picture of the file, decoded once for as long as the file is the same: while a panel is being sized it is asked
/// for at every step.
Ref<Picture> Background::readPicture()
{
    const QFileInfo info(m_file);
    ReadFile read{m_file, info.lastModified(), info.size(), {}};
    if (m_read.picture && m_read.name == read.name && m_read.changed == read.changed && m_read.size == read.size)
        return m_read.picture;
    read.picture = surface::loadPicture(m_file);
    m_read = std::move(read);
    return m_read.picture;
}

void Background::refresh()
{
    if (m_file.isEmpty()) {
        m_read = {};
        m_surface.setPicture({});
        return;
    }
    if (!QFileInfo::exists(m_file))
        return;
    // Whatever goes wrong, a file that holds no picture above all, leaves the background as it is.
    values::attempt([this] {
        const QPointer<surface::Surface> alive(&m_surface);
        Ref<Picture> shown = readPicture();
        if (shown && m_stretch && !m_surface.size().isEmpty())
            shown = BackgroundOps::StretchToBackground(m_surface, shown->image(), m_forms());
        if (shown && alive)
            alive->setPicture(shown);
    });
}

} // namespace zan::window
