#include "zanbench/Settings.h"

#include "zanbench/BagText.h"

#include "ecan/Address.h"

#include <QCryptographicHash>
#include <QFileInfo>

namespace zan::host {

namespace {

const QString Geometry = QStringLiteral("window/geometry");
const QString State = QStringLiteral("window/state");
const QString ConnectsOnOpening = QStringLiteral("connectsOnOpening");
const QString ShowsGuides = QStringLiteral("editing/guides");
const QString EditsByKeyboard = QStringLiteral("editing/keyboard");
const QString EcanHost = QStringLiteral("ecan/host");
const QString Zoom = QStringLiteral("zoom");
const QString RecentFiles = QStringLiteral("recentFiles");

/// The same file is the same scheme, whatever road leads to it.
QString absolutePath(const QString& file)
{
    const QString canonical = QFileInfo(file).canonicalFilePath();
    return canonical.isEmpty() ? QFileInfo(file).absoluteFilePath() : canonical;
}

/// A settings group of a scheme: paths hold characters that settings keys may not.
QString groupOf(const QString& scheme)
{
    const QByteArray digest = QCryptographicHash::hash(absolutePath(scheme).toUtf8(), QCryptographicHash::Sha1);
    return QStringLiteral("schemes/") + QString::fromLatin1(digest.toHex());
}

QString bagKey(const QString& scheme, const QString& window)
{
    const QByteArray key = window.toCaseFolded().toUtf8().toHex();
    return groupOf(scheme) + QStringLiteral("/bag-") + QString::fromLatin1(key);
}

} // namespace

Settings::Settings()
    : m_settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("ZanBench"), QStringLiteral("zanbench"))
{}

Settings::Settings(const QString& file)
    : m_settings(file, QSettings::IniFormat)
{}

QString Settings::editsFolder() const
{
    return QFileInfo(m_settings.fileName()).absolutePath() + QStringLiteral("/unsaved");
}

QByteArray Settings::geometry() const
{
    return m_settings.value(Geometry).toByteArray();
}

QByteArray Settings::windowState() const
{
    return m_settings.value(State).toByteArray();
}

void Settings::setWindow(const QByteArray& geometry, const QByteArray& state)
{
    m_settings.setValue(Geometry, geometry);
    m_settings.setValue(State, state);
}

bool Settings::connectsOnOpening() const
{
    return m_settings.value(ConnectsOnOpening, true).toBool();
}

void Settings::setConnectsOnOpening(bool connects)
{
    m_settings.setValue(ConnectsOnOpening, connects);
}

bool Settings::showsGuides() const
{
    return m_settings.value(ShowsGuides, false).toBool();
}

void Settings::setShowsGuides(bool show)
{
    m_settings.setValue(ShowsGuides, show);
}

bool Settings::editsByKeyboard() const
{
    return m_settings.value(EditsByKeyboard, false).toBool();
}

void Settings::setEditsByKeyboard(bool edit)
{
    m_settings.setValue(EditsByKeyboard, edit);
}

QString Settings::ecanHost() const
{
    const QString host = m_settings.value(EcanHost).toString();
    return ecan::isHost(host) ? host : QString();
}

void Settings::setEcanHost(const QString& host)
{
    m_settings.setValue(EcanHost, host);
}

int Settings::zoom() const
{
    bool read = false;
    const int percent = m_settings.value(Zoom, 100).toInt(&read);
    return read && (percent == 0 || (percent >= 50 && percent <= 400)) ? percent : 100;
}

void Settings::setZoom(int percent)
{
    m_settings.setValue(Zoom, percent);
}

QStringList Settings::recentFiles() const
{
    return m_settings.value(RecentFiles).toStringList().mid(0, MostRecentFiles);
}

void Settings::addRecentFile(const QString& file)
{
    QStringList files = recentFiles();
    const QString path = absolutePath(file);
    files.removeAll(path);
    files.prepend(path);
    m_settings.setValue(RecentFiles, QStringList(files.mid(0, MostRecentFiles)));
}

void Settings::removeRecentFile(const QString& file)
{
    QStringList files = recentFiles();
    files.removeAll(file);
    files.removeAll(absolutePath(file));
    m_settings.setValue(RecentFiles, files);
}

QString Settings::lastWindow(const QString& scheme) const
{
    return m_settings.value(groupOf(scheme) + QStringLiteral("/window")).toString();
}

void Settings::setLastWindow(const QString& scheme, const QString& key)
{
    m_settings.setValue(groupOf(scheme) + QStringLiteral("/window"), key);
}

std::optional<binding::PropertyBag> Settings::bag(const QString& scheme, const QString& window) const
{
    const QString key = bagKey(scheme, window);
    if (!m_settings.contains(key))
        return std::nullopt;
    return bagFromText(m_settings.value(key).toStringList());
}

void Settings::setBag(const QString& scheme, const QString& window, const binding::PropertyBag& bag)
{
    m_settings.setValue(bagKey(scheme, window), bagToText(bag));
}

} // namespace zan::host
