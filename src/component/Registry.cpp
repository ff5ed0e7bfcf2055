#include "component/Registry.h"

#include "component/Boundary.h"
#include "component/Classes.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>

#include <dlfcn.h>

#include <optional>

namespace zan::component::Registry {

namespace {

constexpr qint64 LargestFile = 1 << 20;
constexpr int PatienceWithOthers = 5'000; // milliseconds
const QLatin1String ClassesKey("classes");
const QLatin1String LibraryKey("library");

[[noreturn]] void refuse(const QString& path, const QString& why)
{
    throw values::RuntimeError(int(ZAN_E_REGISTRY), QStringLiteral("%1: %2").arg(path, why));
}

/// The file that this code was loaded from.
QString libraryPath()
{
    Dl_info info{};
    if (!dladdr(reinterpret_cast<const void*>(&DllRegisterServer), &info) || !info.dli_fname)
        return {};
    return QFileInfo(QFile::decodeName(info.dli_fname)).canonicalFilePath();
}

QString typeLibraryPath()
{
    const QDir libraries = QFileInfo(libraryPath()).dir();
    return QDir::cleanPath(libraries.filePath(QStringLiteral("../share/zanbench/ZanBenchWindow.typelib.json")));
}

/// What the file holds: an empty registry for a file that is not there, nothing for one that is no registry.
std::optional<QJsonObject> read(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists() && !info.isSymLink())
        return QJsonObject();
    if (!info.isFile()) // nothing that could keep its reader waiting is opened
        refuse(path, QStringLiteral("This is no file."));
    if (info.size() > LargestFile)
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        refuse(path, file.errorString());
    const QJsonDocument document = QJsonDocument::fromJson(file.read(LargestFile));
    if (!document.isObject())
        return std::nullopt;
    const QJsonValue classes = document.object().value(ClassesKey);
    return classes.isUndefined() || classes.isObject() ? std::optional(document.object()) : std::nullopt;
}

void write(const QString& path, const QJsonObject& registry)
{
    QSaveFile target(path);
    const QByteArray text = QJsonDocument(registry).toJson();
    if (!target.open(QIODevice::WriteOnly) || target.write(text) != text.size() || !target.commit())
        refuse(path, target.errorString());
}

/// The registry with no one else writing to it.
class Locked
{
public:
    Locked()
        : m_path(file())
        , m_lock(m_path + QStringLiteral(".lock"))
    {
        if (!QDir().mkpath(QFileInfo(m_path).path()))
            refuse(m_path, QStringLiteral("The folder cannot be made."));
        if (!m_lock.tryLock(PatienceWithOthers))
            refuse(m_path, QStringLiteral("Another program is writing it."));
    }
    const QString& path() const { return m_path; }

private:
    QString m_path;
    QLockFile m_lock;
};

} // namespace

QString file()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/zanbench/components.json");
}

void enter()
{
    const Locked locked;
    std::optional<QJsonObject> registry = read(locked.path());
    if (!registry) {
        const QString aside = locked.path() + QStringLiteral(".unreadable");
        QFile::remove(aside);
        if (!QFile::rename(locked.path(), aside))
            refuse(locked.path(), QStringLiteral("This is no registry, and cannot be put aside."));
        registry.emplace();
    }
    QJsonObject classes = registry->value(ClassesKey).toObject();
    for (const ClassRow& row : component::classes()) {
        QJsonObject entry;
        entry.insert(QStringLiteral("name"), QString::fromLatin1(row.name));
        entry.insert(LibraryKey, libraryPath());
        entry.insert(QStringLiteral("typeLibrary"), typeLibraryPath());
        entry.insert(QStringLiteral("interfaceVersion"), ZAN_INTERFACE_VERSION);
        classes.insert(textOf(row.id), entry);
    }
    registry->insert(ClassesKey, classes);
    write(locked.path(), *registry);
}

void remove()
{
    if (!QFileInfo::exists(file()))
        return;
    const Locked locked;
    std::optional<QJsonObject> registry = read(locked.path());
    if (!registry)
        return; // nothing of ours is in it
    QJsonObject classes = registry->value(ClassesKey).toObject();
    for (const ClassRow& row : component::classes()) {
        const QString id = textOf(row.id);
        if (classes.value(id).toObject().value(LibraryKey).toString() == libraryPath())
            classes.remove(id);
    }
    registry->insert(ClassesKey, classes);
    if (classes.isEmpty() && registry->size() == 1)
        QFile::remove(locked.path());
    else
        write(locked.path(), *registry);
}

} // namespace zan::component::Registry
