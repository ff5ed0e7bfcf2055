#include "zanbench/SchemeTrail.h"

#include <QDir>
#include <QFileInfo>

namespace zan::host {

void SchemeTrail::push(const SchemePlace& place)
{
    if (m_places.size() == Longest)
        m_places.erase(m_places.begin());
    m_places.push_back(place);
}

std::optional<SchemePlace> SchemeTrail::last() const
{
    return m_places.empty() ? std::nullopt : std::optional(m_places.back());
}

void SchemeTrail::pop()
{
    if (!m_places.empty())
        m_places.pop_back();
}

QString SchemeTrail::fileOf(const QString& scheme, const QString& mapFile)
{
    const auto native = [](QString path) { return path.replace(u'\\', u'/'); };
    const QString name = scheme.trimmed();
    if (name.isEmpty())
        return {};
    const QDir folder = QFileInfo(QFileInfo::exists(mapFile) ? mapFile : native(mapFile)).absoluteDir();
    const QString asWritten = folder.absoluteFilePath(name);
    return QDir::cleanPath(QFileInfo::exists(asWritten) ? asWritten : folder.absoluteFilePath(native(name)));
}

} // namespace zan::host
