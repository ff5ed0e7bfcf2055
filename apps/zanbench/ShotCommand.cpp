#include "zanbench/Commands.h"

#include "zanbench/LiveValues.h"
#include "zanbench/PanelLoader.h"

#include <QApplication>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QPixmap>
#include <QSaveFile>
#include <QTimer>

namespace zan::host {

namespace {

constexpr int ConnectMilliseconds = 30'000;

/// Runs the event loop until the link is connected; why it was not, or nothing.
QString waitForConnection(OpenedSite& site)
{
    if (site.linkState() == site::LinkState::Connected)
        return {};
    QEventLoop loop;
    QString failure = QStringLiteral("The logger did not answer in %1 s.").arg(ConnectMilliseconds / 1000);
    QObject::connect(site.logger()->Link().get(), &site::Link::StateChange, &loop, [&](int state) {
        if (state == int(site::LinkState::Connected)) {
            failure.clear();
            loop.quit();
        }
    });
    QObject::connect(site.logger().get(), &site::Logger::ConnectionError, &loop, [&](const QString& message) {
        failure = QStringLiteral("The logger could not be reached: %1").arg(message);
        loop.quit();
    });
    QTimer::singleShot(ConnectMilliseconds, &loop, &QEventLoop::quit);
    site.connectLink();
    if (site.linkState() != site::LinkState::Connected)
        loop.exec();
    else
        failure.clear();
    return failure;
}

void runFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Writes the picture whole or not at all; why it could not be written, or nothing.
QString writePicture(const QPixmap& picture, const QString& path)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !picture.save(&file, "PNG") || !file.commit())
        return QStringLiteral("The picture %1 could not be written: %2").arg(path, file.errorString());
    return {};
}

ExitCode fail(const QString& message)
{
    complain(message);
    return Failure;
}

ExitCode shoot(const ShotOptions& options)
{
    const QString out = options.out.isEmpty() ? QString() : QFileInfo(options.out).absoluteFilePath();
    OpenedSiteResult opened = OpenedSite::open(options.scheme, options.logger);
    if (!opened.site)
        return fail(opened.error);
    OpenedSite& site = *opened.site;
    const QStringList keys = site.panelKeys();
    const auto key = options.window.isEmpty() ? std::optional(keys.value(0)) : site.windowKey(options.window);
    if (!key || key->isEmpty())
        return fail(key ? QStringLiteral("%1 has no windows.").arg(options.scheme)
                        : QStringLiteral("%1 has no window '%2'; it has: %3.")
                              .arg(options.scheme, options.window, keys.join(QStringLiteral(", "))));
    if (!site.loggerProblem().isEmpty())
        complain(site.loggerProblem());
    // Panels name their pictures relative to the scheme that they belong to.
    QDir::setCurrent(QFileInfo(site.scheme().path()).path());

    std::unique_ptr<window::BenchWindow> panel;
    try {
        panel = loadPanel(site, *key);
    } catch (const values::RuntimeError& error) {
        return fail(QStringLiteral("The window %1 could not be shown: %2").arg(*key, error.description()));
    }
    QObject::connect(panel.get(), &surface::Surface::runtimeError, panel.get(),
                     [](int number, const QString& text) {
                         complain(QStringLiteral("run-time error %1: %2").arg(number).arg(text));
                     });
    panel->resize(options.size.isValid() ? options.size : contentSize(*panel));
    panel->show();
    if (!options.offline && site.canConnect())
        if (const QString failure = waitForConnection(site); !failure.isEmpty())
            return fail(failure);
    runFor(options.after);
    // Nobody types here: a caret in the first text box would only be in the way.
    if (QWidget* focused = panel->focusWidget())
        focused->clearFocus();
    if (!out.isEmpty())
        if (const QString failure = writePicture(panel->grab(), out); !failure.isEmpty())
            return fail(failure);
    if (options.print)
        print(liveValues(*panel));
    return Success;
}

} // namespace

ExitCode runShot(const QStringList& arguments, ProcessArguments process)
{
    const Parsed<ShotOptions> parsed = parseShot(arguments);
    if (!parsed.options) {
        if (parsed.code == Success)
            print(parsed.text);
        else
            complain(parsed.text);
        return parsed.code;
    }
    // The same picture everywhere: no display is asked for even where there is one.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", QByteArray::number(parsed.options->scale));
    QApplication application(process.count, process.words);
    QApplication::setApplicationName(QStringLiteral("zanbench"));
    return shoot(*parsed.options);
}

} // namespace zan::host
