#pragma once

#include "surface/forms/HostForms.h"
#include "surface/host/Picture.h"

#include <QDateTime>
#include <QString>

#include <functional>
#include <memory>

namespace zan::surface {
class Surface;
}

namespace zan::window {

class TemporaryPicture;

using values::Ref;

/// The picture behind a panel's controls. It always lives in a file; a picture object handed over is written to a
/// temporary bitmap file first ("~", the window's handle, ".BMP"), which goes when the background goes or gets another
/// picture.
class Background
{
public:
    /// `forms` gives who shows a box, whenever there is something to tell.
    Background(surface::Surface& surface, std::function<surface::HostForms&()> forms);
    ~Background();
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    const QString& pictureFile() const noexcept { return m_file; }
    /// A temporary file that was in use is left behind.
    void setPictureFile(const QString& file);
    /// Whether the file is one that this background wrote itself.
    bool isTemporary() const noexcept { return bool(m_temporary); }
    bool stretch() const noexcept { return m_stretch; }
    void setStretch(bool stretch);
    /// The picture of the file, loaded anew and never stretched; nothing when there is no such file.
    Ref<surface::Picture> picture() const;
    /// Raises 75 when the temporary file cannot be written.
    void setPicture(const Ref<surface::Picture>& picture);
    /// Shows the picture at the surface's present size. A missing or broken file leaves what is shown.
    void refresh();

private:
    /// What the file held when it was read last: it is read again when it holds something else.
    struct ReadFile
    {
        QString name;
        QDateTime changed;
        qint64 size = -1;
        Ref<surface::Picture> picture;
    };

    Ref<surface::Picture> readPicture();

    surface::Surface& m_surface;
    std::function<surface::HostForms&()> m_forms;
    QString m_file;
    std::unique_ptr<TemporaryPicture> m_temporary;
    ReadFile m_read;
    bool m_stretch = false;
};

} // namespace zan::window
