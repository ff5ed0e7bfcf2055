#include "display/SiteMapFile.h"

#include "display/SiteElements.h"
#include "document/XmlText.h"

#include <QFile>
#include <QFileInfo>

#include <vector>

namespace zan::display::SiteMapFile {

namespace {

constexpr qint64 LargestFile = 64 * 1024 * 1024;

/// The file's name as this platform writes it: maps are named in documents that may come from another one.
QString nativePath(const QString& path)
{
    if (path.contains(u'\\') && !QFileInfo::exists(path))
        return QString(path).replace(u'\\', u'/');
    return path;
}

} // namespace

document::Node read(const QString& path)
{
    if (path.isEmpty() || path.contains(QChar(u'\0')))
        return {};
    QFile file(nativePath(path));
    // A folder or a pipe is no map: reading it might never end.
    if (!QFileInfo(file).isFile() || file.size() > LargestFile || !file.open(QIODevice::ReadOnly))
        return {};
    // Asked for what it holds and not for the largest map: the toolkit takes memory for what it is asked for. One byte
    // more tells a file that has grown meanwhile, which nobody has finished writing.
    const qint64 size = file.size();
    const QByteArray bytes = file.read(size + 1);
    if (bytes.size() > size || file.error() != QFileDevice::NoError)
        return {};
    return document::parseXml(bytes).document;
}

bool isShowable(const document::Node& root)
{
    std::size_t count = 0;
    std::vector<document::Node> waiting{root};
    while (!waiting.empty()) {
        if (++count > MostSites)
            return false;
        const document::Node site = std::move(waiting.back());
        waiting.pop_back();
        for (document::Node& child : site.children(element::Site))
            waiting.push_back(std::move(child));
    }
    return true;
}

} // namespace zan::display::SiteMapFile
