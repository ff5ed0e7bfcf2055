#include "zanbench/Commands.h"

#include "zanbench/ErrorBar.h"
#include "zanbench/HostApplication.h"
#include "zanbench/MainWindow.h"
#include "zanbench/MessageDialogs.h"

namespace zan::host {

namespace {

const QByteArray Platform = QByteArrayLiteral("QT_QPA_PLATFORM");

/// Has the toolkit fall back to drawing nowhere, which we can tell from a display and report, where it would end the
/// process by itself. A platform that the user has chosen stays.
bool askForDisplay()
{
    if (qEnvironmentVariableIsSet(Platform))
        return true;
    const bool wayland = qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    const bool x11 = qEnvironmentVariableIsSet("DISPLAY");
    if (!wayland && !x11)
        return false;
    qputenv(Platform, wayland ? "wayland;xcb;offscreen" : "xcb;offscreen");
    return true;
}

/// What a handler has let through ends neither the program nor in silence.
void reportEverywhere(const QString& text)
{
    complain(text);
    for (QWidget* window : QApplication::topLevelWidgets())
        for (ErrorBar* bar : window->findChildren<ErrorBar*>())
            bar->showError(text);
}

} // namespace

ExitCode runOpen(const QStringList& arguments, ProcessArguments process)
{
    const Parsed<OpenOptions> parsed = parseOpen(arguments);
    if (!parsed.options)
        return answer(parsed);
    const OpenOptions& options = *parsed.options;
    const QString noDisplay =
        QStringLiteral("There is no display to open a window on. 'zanbench shot' draws a panel without one.");
    const bool chosen = qEnvironmentVariableIsSet(Platform);
    if (!askForDisplay()) {
        complain(noDisplay);
        return Failure;
    }
    HostApplication application(process);
    application.setReport(&reportEverywhere);
    QApplication::setApplicationName(ProgramName); // the caption of boxes that have none of their own
    QApplication::setApplicationDisplayName(QString());
    if (!chosen && QGuiApplication::platformName() == QLatin1String("offscreen")) {
        complain(noDisplay);
        return Failure;
    }

    Settings settings;
    if (options.ecanHost)
        settings.setEcanHost(*options.ecanHost);
    MessageDialogs dialogs;
    MainWindow window(settings, dialogs);
    dialogs.setParent(&window);
    if (options.scheme.isEmpty()) {
        window.show();
        return static_cast<ExitCode>(QApplication::exec());
    }
    // A scheme named on the command line that cannot be opened is told there, before there is a window.
    const OpenedSiteResult probe = OpenedSite::open(options.scheme, options.logger);
    if (!probe.site) {
        complain(probe.error);
        return Failure;
    }
    if (!options.window.isEmpty() && !probe.site->windowKey(options.window)) {
        complain(QStringLiteral("%1 has no window '%2'; it has: %3.")
                     .arg(options.scheme, options.window, probe.site->panelKeys().join(QStringLiteral(", "))));
        return Failure;
    }
    if (options.kiosk)
        window.enterKiosk();
    // Opened before it is shown: it comes up at its size, with its panel in it.
    if (!window.openScheme(options))
        return Failure;
    window.show();
    return static_cast<ExitCode>(QApplication::exec());
}

} // namespace zan::host
