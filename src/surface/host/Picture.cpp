#include "surface/host/Picture.h"

#include "binding/MemberTable.h"
#include "surface/host/Handles.h"
#include "surface/host/Metafile.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <array>

namespace zan::surface {

using values::ErrorNumber;

namespace {

/// Largest file read and largest picture made of it: enough for any screen, too little to hurt.
constexpr qint64 LargestPictureFile = 64LL * 1024 * 1024;
constexpr int LargestPictureSide = 16384;
constexpr qint64 LargestPictureArea = 32LL * 1024 * 1024;
const QByteArray Wmf = QByteArrayLiteral("wmf");
constexpr double HundredthMillimetresPerPixel = 2540.0 / 96.0;

bool isReasonable(QSize size)
{
    return size.width() > 0 && size.height() > 0 && size.width() <= LargestPictureSide &&
           size.height() <= LargestPictureSide && qint64(size.width()) * size.height() <= LargestPictureArea;
}

/// The format by the file's first bytes, whatever its name says; empty for others.
QByteArray formatOf(QFile& file)
{
    const QByteArray head = file.peek(6);
    if (head.startsWith("BM"))
        return "bmp";
    if (head == "GIF87a" || head == "GIF89a")
        return "gif";
    if (head.startsWith("\xff\xd8\xff"))
        return "jpg";
    return Metafile::isMetafile(head) ? Wmf : QByteArray();
}

/// Reads a picture of pixels. What is too large is refused by its head, before there is anything of it in memory.
QImage readPixels(QFile& file, const QByteArray& format)
{
    QImageReader reader(&file, format);
    reader.setAutoDetectImageFormat(false);
    reader.setAutoTransform(true);
    return isReasonable(reader.size()) ? reader.read() : QImage();
}

} // namespace

Picture::Picture(QImage image)
    : m_image(std::move(image))
    , m_handle(Handles::next())
{}

Picture::~Picture() = default;

const binding::MemberTable& Picture::members() const
{
    using binding::readOnly;
    return binding::table([] {
        return binding::MemberTable("Picture", nullptr,
                                    {
                                        readOnly<&Picture::handle>("Handle").asDefault(),
                                        readOnly<&Picture::width>("Width"),
                                        readOnly<&Picture::height>("Height"),
                                        readOnly<&Picture::type>("Type"),
                                    });
    });
}

const QPixmap& Picture::pixmap() const
{
    if (m_pixmap.isNull() && !m_image.isNull())
        m_pixmap = QPixmap::fromImage(m_image);
    return m_pixmap;
}

std::int32_t Picture::width() const
{
    return qRound(m_image.width() * HundredthMillimetresPerPixel);
}

std::int32_t Picture::height() const
{
    return qRound(m_image.height() * HundredthMillimetresPerPixel);
}

Ref<Picture> loadPicture(const QString& file)
{
    if (file.isEmpty())
        return {};
    const QFileInfo info(file);
    if (!info.exists())
        values::raise(ErrorNumber::FileNotFound);
    if (!info.isFile()) // a folder, a pipe: reading might never end
        values::raise(ErrorNumber::PathFileAccess);
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        values::raise(ErrorNumber::PathFileAccess);
    const QByteArray format = formatOf(source);
    if (format.isEmpty() || source.size() > LargestPictureFile)
        values::raise(ErrorNumber::InvalidPicture);
    QImage image =
        format == Wmf ? Metafile::draw(source.read(Metafile::LargestFile + 1)) : readPixels(source, format);
    if (image.isNull() || !isReasonable(image.size()))
        values::raise(ErrorNumber::InvalidPicture);
    return values::make<Picture>(std::move(image));
}

} // namespace zan::surface
