#pragma once

#include <QString>

namespace zan::surface {

/// What the font picker shows and returns: the character set, strikethrough and weight of a font are none of its
/// business.
struct FontChoice
{
    QString name;
    double size = 8.25; ///< points
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool operator==(const FontChoice&) const = default;
};

/// What the file picker is to ask for.
struct FileRequest
{
    QString title;
    QString folder; ///< where to begin; empty for wherever the program is
    QString file;   ///< the name it offers first
    /// Descriptions and patterns in turn, parted by '|', patterns of one description by ';'.
    QString filter;
    int filterIndex = 0;      ///< the description that it begins with, from 1; 0 for the first
    QString defaultExtension; ///< of a name that is given without one
    bool isSaved = false;     ///< the file is to be written: the user is asked before one that exists is taken
};

} // namespace zan::surface
