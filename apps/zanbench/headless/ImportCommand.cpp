#include "zanbench/Commands.h"

#include "zanbench/Boundary.h"
#include "zanbench/EditKeeper.h"
#include "zanbench/OpenedSite.h"
#include "zanbench/Settings.h"
#include "zanbench/headless/HeadlessApplication.h"
#include "zanbench/headless/HeadlessForms.h"
#include "zanbench/headless/RunReport.h"

#include "keel/KeelWindows.h"
#include "window/BenchWindow.h"
#include "window/KeelImport.h"

#include <QFileInfo>

#include <algorithm>

namespace zan::host {

namespace {

/// "20 rows, 14 of them with an address".
QString countedRows(const std::vector<keel::KeelField>& fields)
{
    const auto live = std::count_if(fields.begin(), fields.end(),
                                    [](const keel::KeelField& field) { return field.address >= 0; });
    return QStringLiteral("%1 rows, %2 of them with an address").arg(fields.size()).arg(live);
}

/// The scheme that is imported into: the one of the command line, or a new one that has no window yet.
OpenedSiteResult schemeOf(const ImportOptions& options)
{
    if (!options.scheme.isEmpty())
        return OpenedSite::open(options.scheme, QString());
    const QString name = QFileInfo(options.file).completeBaseName();
    return OpenedSite::serve(trellis::SchemeFile::create(options.out, name), QString());
}

void importInto(OpenedSite& site, const ImportOptions& options, RunReport& report)
{
    HeadlessForms forms(report);
    window::BenchWindow panel;
    panel.setForms(&forms);
    panel.InitProperties();
    panel.setLogger(site.logger());
    panel.ImportKeel(options.file);
    panel.UpdateDocument();
    if (options.scheme.isEmpty() || options.out.isEmpty())
        site.scheme().Save();
    else
        site.scheme().saveAs(options.out);
}

ExitCode import(const ImportOptions& options)
{
    // Never over a scheme that somebody else keeps: the one that is imported into is named as such.
    if (!options.out.isEmpty() && QFileInfo::exists(options.out)) {
        complain(QStringLiteral("%1 is there already. Name a new file, or import into it with --scheme.")
                     .arg(options.out));
        return Failure;
    }
    const std::vector<keel::KeelField> fields = keel::readKeelFile(options.file);
    if (options.scheme.isEmpty() && options.out.isEmpty()) {
        print(QStringLiteral("%1: %2.\n").arg(options.file, countedRows(fields)));
        return Success;
    }
    const OpenedSiteResult opened = schemeOf(options);
    if (!opened.site) {
        complain(opened.error);
        return Failure;
    }
    const QString note = editsNote({opened.site->scheme().path(), Settings().editsFolder()}, opened.site->scheme());
    if (!note.isEmpty())
        complain(note);
    RunReport report;
    importInto(*opened.site, options, report);
    print(QStringLiteral("%1: %2, as the window %3 of %4.\n")
              .arg(options.file, countedRows(fields), window::KeelImport::WindowKey, opened.site->scheme().path()));
    return report.failures() == 0 ? Success : Failure;
}

} // namespace

ExitCode runImport(const QStringList& arguments, ProcessArguments process)
{
    const Parsed<ImportOptions> parsed = parseImport(arguments);
    if (!parsed.options)
        return answer(parsed);
    const HeadlessApplication application(process);
    try {
        return import(*parsed.options);
    } catch (const values::RuntimeError& error) {
        // Its text says where: FILE:LINE:COLUMN for a file that is no older window.
        complain(error.description());
        return Failure;
    }
}

} // namespace zan::host
