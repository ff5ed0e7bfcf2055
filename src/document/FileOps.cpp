#include "document/FileOps.h"

#include "document/StringOps.h"

#include <QFileInfo>

namespace zan::document::FileOps {

QString GetFileExtension(const QString& path)
{
    const qsizetype dot = path.lastIndexOf(u'.');
    return StringOps::TrimTabs(dot < 0 ? QString() : path.sliced(dot + 1));
}

QString GetFileTitle(const QString& path)
{
    const qsizetype start = path.lastIndexOf(u'\\') + 1;
    const qsizetype dot = path.lastIndexOf(u'.');
    // COMPAT: the last dot of all counts, so that a dot in a folder's name leaves a file without one no title.
    if (dot >= 0 && dot < start)
        return {};
    return StringOps::TrimTabs(dot < 0 ? path.sliced(start) : path.sliced(start, dot - start));
}

QString GetFileName(const QString& path)
{
    const QString title = GetFileTitle(path);
    if (title.isEmpty())
        return {};
    const QString extension = GetFileExtension(path);
    return StringOps::TrimTabs(extension.isEmpty() ? title : title + u'.' + extension);
}

QString GetFilePath(const QString& path)
{
    return StringOps::TrimTabs(path.first(path.lastIndexOf(u'\\') + 1));
}

bool FileExists(const QString& path)
{
    QString name = path;
    name.remove(u'"');
    if (name.isEmpty() || name.contains(QChar(u'\0')))
        return false;
    if (QFileInfo(name).isFile())
        return true;
    return name.contains(u'\\') && QFileInfo(name.replace(u'\\', u'/')).isFile();
}

} // namespace zan::document::FileOps
