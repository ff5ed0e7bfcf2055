#include "zanbench/Commands.h"

#include "zanbench/EditKeeper.h"
#include "zanbench/OpenedSite.h"
#include "zanbench/Settings.h"

#include <QCoreApplication>

namespace zan::host {

ExitCode runWindows(const QStringList& arguments, ProcessArguments process)
{
    const Parsed<WindowsOptions> parsed = parseWindows(arguments);
    if (!parsed.options)
        return answer(parsed);
    const QCoreApplication application(process.count, process.words);
    const OpenedSiteResult opened = OpenedSite::open(parsed.options->scheme, QString());
    if (!opened.site) {
        complain(opened.error);
        return Failure;
    }
    const trellis::SchemeFile& scheme = opened.site->scheme();
    const QString note = editsNote({scheme.path(), Settings().editsFolder()}, scheme);
    if (!note.isEmpty())
        complain(note);
    for (const QString& key : opened.site->panelKeys())
        print(oneLine(key) + QLatin1Char('\n'));
    return Success;
}

} // namespace zan::host
