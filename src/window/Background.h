#pragma once

#include "surface/host/Picture.h"

#include <QString>

namespace zan::surface {
class Surface;
}

namespace zan::window {

using values::Ref;

/// The picture behind a panel's controls. It always lives in a file; a picture object handed over is written to a
/// temporary bitmap file first ("~", the window's handle, ".BMP", in a folder of its own that only the user may enter),
/// which goes when the background goes or gets another picture.
class Background
{
public:
    explicit Background(surface::Surface& surface)
        : m_surface(surface)
    {}
    ~Background();
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    const QString& pictureFile() const noexcept { return m_file; }
    /// A temporary file that was in use is left behind.
    void setPictureFile(const QString& file);
    /// Whether the file is one that this background wrote itself.
    bool isTemporary() const noexcept { return m_isTemporary && !m_file.isEmpty(); }
    bool stretch() const noexcept { return m_stretch; }
    void setStretch(bool stretch);
    /// The picture of the file, loaded anew and never stretched; nothing when there is no such file.
    Ref<surface::Picture> picture() const;
    /// Raises 75 when the temporary file cannot be written.
    void setPicture(const Ref<surface::Picture>& picture);
    /// Shows the picture at the surface's present size. A missing or broken file leaves what is shown.
    void refresh();

private:
    void removeTemporaryFile();

    surface::Surface& m_surface;
    QString m_file;
    bool m_isTemporary = false;
    bool m_stretch = false;
};

} // namespace zan::window
