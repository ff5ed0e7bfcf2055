#pragma once

#include "binding/Object.h"
#include "surface/Forward.h"

#include <QImage>
#include <QPixmap>
#include <QString>

#include <cstdint>

namespace zan::surface {

using binding::Object;
using values::Ref;

/// A picture, shared by reference. Never changes after it was made.
class Picture : public Object
{
public:
    explicit Picture(QImage image);
    ~Picture() override;
    const binding::MemberTable& members() const override;

    const QImage& image() const noexcept { return m_image; }
    /// The picture in the form that draws fastest; made on first use.
    const QPixmap& pixmap() const;
    /// Measures in 0.01 mm at 96 logical pixels to the inch, as picture objects count them.
    std::int32_t width() const;
    std::int32_t height() const;
    /// Small number that names this picture in the process; never 0.
    std::int32_t handle() const noexcept { return m_handle; }
    std::int16_t type() const noexcept { return 1; }

private:
    QImage m_image;
    mutable QPixmap m_pixmap;
    std::int32_t m_handle;
};

/// Loads a bmp, gif (its first frame), jpg or wmf file; the last takes at most Metafile::LongestWait. Raises 53 when there is no such file, 75 when it cannot be read,
/// 481 when it holds no picture of these kinds or one of unreasonable size.
/// An empty name gives no picture.
Ref<Picture> loadPicture(const QString& file);

} // namespace zan::surface
