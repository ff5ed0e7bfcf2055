#pragma once

#include <QString>

class QPixmap;

namespace zan::host {

/// Why a file's name is none of a picture that we write, in plain words; empty for a good one. The extension names
/// the format.
QString pictureNameProblem(const QString& file);

/// Writes the picture whole or not at all, in the format of its name; why it could not be written, or nothing.
[[nodiscard]] QString writePicture(const QPixmap& picture, const QString& file);

/// The extensions of pictures, as "png, jpg".
QString pictureExtensions();

} // namespace zan::host
