#include "zanbench/Commands.h"

#include "zanbench/Boundary.h"
#include "zanbench/LiveValues.h"
#include "zanbench/PictureFile.h"
#include "zanbench/headless/HeadlessApplication.h"
#include "zanbench/headless/HeadlessPanel.h"
#include "zanbench/headless/RunReport.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QPixmap>
#include <QTimer>

namespace zan::host {

namespace {

void runFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

PanelRequest requestOf(const ShotOptions& options)
{
    PanelRequest request;
    request.scheme = options.scheme;
    request.window = options.window;
    request.logger = options.logger;
    request.ecanHost = options.ecanHost;
    request.size = options.size;
    request.scale = options.scale;
    if (options.at)
        request.history = HistoryUse::Looked;
    return request;
}

/// Draws the panel as it is after the wait; why that failed, or nothing.
QString draw(HeadlessPanel& shown, const ShotOptions& options, const QString& out)
{
    window::BenchWindow& panel = *shown.panel();
    if (options.at) {
        panel.showMoment(*options.at);
        if (const QString problem = shown.site()->historyProblem(); !problem.isEmpty())
            return problem;
    } else {
        if (!options.offline && shown.site()->canConnect())
            if (const QString failure = shown.connectLink(); !failure.isEmpty())
                return failure;
        runFor(options.after);
    }
    // Nobody types here: a caret in the first text box would only be in the way.
    if (QWidget* focused = panel.focusWidget())
        focused->clearFocus();
    if (!out.isEmpty())
        if (const QString failure = writePicture(panel.grab(), out); !failure.isEmpty())
            return failure;
    if (options.print)
        print(liveValues(panel));
    return {};
}

/// A box or a run-time error of the panel is printed and spoils no picture.
ExitCode shoot(HeadlessApplication& application, const ShotOptions& options)
{
    // The panel takes the process into its scheme's folder.
    const QString out = options.out.isEmpty() ? QString() : QFileInfo(options.out).absoluteFilePath();
    RunReport report;
    application.setReport([&report](const QString& message) { report.fail(message); });
    HeadlessPanel shown(report);
    if (!shown.open(requestOf(options)))
        return Failure;
    QString failure;
    const QString thrown =
        failureOf(QStringLiteral("Drawing the panel"), [&] { failure = draw(shown, options, out); });
    if (failure.isEmpty() && thrown.isEmpty())
        return Success;
    report.fail(thrown.isEmpty() ? failure : thrown);
    return Failure;
}

} // namespace

ExitCode runShot(const QStringList& arguments, ProcessArguments process)
{
    const Parsed<ShotOptions> parsed = parseShot(arguments);
    if (!parsed.options)
        return answer(parsed);
    HeadlessApplication application(process, parsed.options->scale);
    return shoot(application, *parsed.options);
}

} // namespace zan::host
