#include "zanbench/DemoSite.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>

/// A static library's resources are only there when they are asked for, outside of every namespace.
static void loadDemo()
{
    Q_INIT_RESOURCE(demo);
}

namespace zan::host {

namespace {

/// Copies a file out of the program unless there is one already; why it could not be written, or nothing.
QString provide(const QString& name, const QDir& folder)
{
    const QString path = folder.filePath(name);
    if (QFile::exists(path))
        return {};
    QFile source(QStringLiteral(":/demo/") + name);
    QSaveFile target(path);
    if (!source.open(QIODevice::ReadOnly))
        return QStringLiteral("The program was built without %1.").arg(name);
    if (!target.open(QIODevice::WriteOnly) || target.write(source.readAll()) != source.size() || !target.commit())
        return QStringLiteral("The demo could not be put into %1: %2").arg(folder.path(), target.errorString());
    return {};
}

} // namespace

DemoResult demoIn(const QString& folder)
{
    loadDemo();
    const QDir place(folder);
    if (!place.mkpath(QStringLiteral(".")))
        return {{}, QStringLiteral("The folder %1 for the demo could not be made.").arg(folder)};
    const QString scheme = QStringLiteral("weir.scheme");
    for (const QString& name : {QStringLiteral("weir.gif"), QStringLiteral("region.map"),
                                QStringLiteral("region.scheme"), QStringLiteral("tarn.scheme"), scheme})
        if (const QString error = provide(name, place); !error.isEmpty())
            return {{}, error};
    return {place.filePath(scheme), {}};
}

QString demoFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/demo");
}

} // namespace zan::host
