#include "zanbench/PictureFile.h"

#include <QFileInfo>
#include <QPixmap>
#include <QSaveFile>
#include <QStringList>

#include <array>

namespace zan::host {

namespace {

struct PictureFormat
{
    QLatin1String extension;
    const char* format; ///< the toolkit's name of it
};

constexpr std::array<PictureFormat, 5> Formats{{
    {QLatin1String("png"), "PNG"},
    {QLatin1String("jpg"), "JPG"},
    {QLatin1String("jpeg"), "JPG"},
    {QLatin1String("bmp"), "BMP"},
    {QLatin1String("ppm"), "PPM"},
}};

const PictureFormat* formatOf(const QString& file)
{
    const QString extension = QFileInfo(file).suffix();
    for (const PictureFormat& row : Formats)
        if (extension.compare(row.extension, Qt::CaseInsensitive) == 0)
            return &row;
    return nullptr;
}

} // namespace

QString pictureExtensions()
{
    QStringList all;
    for (const PictureFormat& row : Formats)
        all.append(row.extension);
    return all.join(QStringLiteral(", "));
}

QString pictureNameProblem(const QString& file)
{
    if (formatOf(file))
        return {};
    return QStringLiteral("The name '%1' tells no picture format: its extension must be one of %2.")
        .arg(file, pictureExtensions());
}

QString writePicture(const QPixmap& picture, const QString& file)
{
    const PictureFormat* format = formatOf(file);
    if (!format)
        return pictureNameProblem(file);
    QSaveFile target(file);
    if (!target.open(QIODevice::WriteOnly) || !picture.save(&target, format->format) || !target.commit())
        return QStringLiteral("The picture %1 could not be written: %2").arg(file, target.errorString());
    return {};
}

} // namespace zan::host
