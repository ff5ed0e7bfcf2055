#include "zanbench/headless/HeadlessPanel.h"

#include "zanbench/Boundary.h"
#include "zanbench/CommandLine.h"
#include "zanbench/Commands.h"
#include "zanbench/EditKeeper.h"
#include "zanbench/PanelHost.h"
#include "zanbench/PanelLoader.h"
#include "zanbench/Settings.h"
#include "zanbench/headless/RunReport.h"

#include "halyard/HalyardLogger.h"

#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace zan::host {

namespace {

constexpr int ConnectMilliseconds = 30'000;
constexpr int DisconnectMilliseconds = 5'000;

} // namespace

QSize fittedSize(QSize wanted, double scale)
{
    const double area = double(LargestPictureArea) / (scale * scale);
    const auto cut = [area](double other) { return int(std::floor(area / std::max(1.0, other))); };
    if (double(wanted.width()) * wanted.height() <= area)
        return wanted;
    const int square = int(std::floor(std::sqrt(area)));
    if (wanted.width() > square && wanted.height() > square)
        return {square, square};
    return wanted.width() > square ? QSize(cut(wanted.height()), wanted.height())
                                   : QSize(wanted.width(), cut(wanted.width()));
}

HeadlessPanel::HeadlessPanel(RunReport& report)
    : m_report(report)
    , m_forms(report)
    , m_panelHost(values::make<PanelHost>([this](const QString& key) { showForScript(key); }))
{}

HeadlessPanel::~HeadlessPanel()
{
    m_panelHost->detach(); // a script may have left it somewhere
}

/// Nobody looks: the run stays with its panel.
void HeadlessPanel::showForScript(const QString& key)
{
    const auto known = m_site->windowKey(key);
    if (!known)
        values::raise(values::ErrorNumber::SubscriptOutOfRange,
                      QStringLiteral("The scheme has no window '%1'.").arg(key));
    m_report.note(QStringLiteral("A script shows the window %1.").arg(oneLine(*known)));
}

bool HeadlessPanel::open(const PanelRequest& request)
{
    bool opened = false;
    QString doing = QStringLiteral("Opening %1").arg(request.scheme);
    QString failure = failureOf(doing, [&] { opened = openSite(request); });
    if (failure.isEmpty() && opened)
        failure = failureOf(QStringLiteral("Loading a window of %1").arg(request.scheme),
                            [&] { opened = loadWindow(request); });
    if (failure.isEmpty())
        return opened;
    m_report.fail(failure);
    return false;
}

bool HeadlessPanel::openSite(const PanelRequest& request)
{
    OpenedSiteResult opened = OpenedSite::open(request.scheme, request.logger, request.history);
    if (!opened.site) {
        m_report.fail(opened.error);
        return false;
    }
    m_site = std::move(opened.site);
    const QString note = editsNote({m_site->scheme().path(), Settings().editsFolder()}, m_site->scheme());
    if (!note.isEmpty())
        m_report.note(note);
    QDir::setCurrent(QFileInfo(m_site->scheme().path()).absolutePath());
    listenToLogger();
    if (m_site->loggerProblem().isEmpty())
        return true;
    if (request.needsLogger)
        m_report.fail(m_site->loggerProblem());
    else
        m_report.note(m_site->loggerProblem());
    return !request.needsLogger;
}

void HeadlessPanel::listenToLogger()
{
    auto* logger = qobject_cast<halyard::HalyardLogger*>(m_site->logger().get());
    if (!logger)
        return;
    QObject::connect(logger, &halyard::HalyardLogger::WriteFailed, &m_context,
                     [this](int address, const QString& message) {
                         m_report.writeRefused(m_site->writeFailureText(address, message));
                     });
    QObject::connect(
        logger, &halyard::HalyardLogger::EventFailed, &m_context, [this](int number, const QString& text) {
            m_report.fail(QStringLiteral("run-time error %1 in an event of the logger: %2").arg(number).arg(text));
        });
}

bool HeadlessPanel::loadWindow(const PanelRequest& request)
{
    const QStringList keys = m_site->panelKeys();
    const auto key = request.window.isEmpty() ? std::optional(keys.value(0)) : m_site->windowKey(request.window);
    if (!key || key->isEmpty()) {
        m_report.fail(key ? QStringLiteral("%1 has no windows.").arg(request.scheme)
                          : QStringLiteral("%1 has no window '%2'; it has: %3.")
                                .arg(request.scheme, request.window, keys.join(QStringLiteral(", "))));
        return false;
    }
    const QString failure = failureOf(QStringLiteral("Loading the window %1").arg(*key), [&] {
        m_panel = loadPanel(*m_site, *key, std::nullopt, [&](window::BenchWindow& panel) {
            listenToPanel(panel);
            panel.setECANHost(request.ecanHost);
        });
        m_panel->resize(sizeFor(request));
        m_panel->show();
    });
    if (failure.isEmpty())
        return true;
    m_panel.reset();
    m_report.fail(failure);
    return false;
}

void HeadlessPanel::listenToPanel(window::BenchWindow& panel)
{
    panel.setForms(&m_forms);
    panel.setHost(m_panelHost);
    QObject::connect(&panel, &window::BenchWindow::runtimeError, &m_context,
                     [this](int number, const QString& text) {
                         m_report.fail(QStringLiteral("run-time error %1 in the panel: %2").arg(number).arg(text));
                     });
}

/// What the request asks for, or as much of the contents as the largest picture holds.
QSize HeadlessPanel::sizeFor(const PanelRequest& request)
{
    const QSize wanted = request.size.isValid() ? request.size : contentSize(*m_panel);
    const QSize size = fittedSize(wanted, request.scale);
    if (size != wanted)
        m_report.note(QStringLiteral("The panel is cut to the upper left %1 x %2 pixels of its contents.")
                          .arg(size.width())
                          .arg(size.height()));
    return size;
}

QString HeadlessPanel::connectLink()
{
    if (m_site->linkState() == site::LinkState::Connected)
        return {};
    QEventLoop loop;
    QString failure = QStringLiteral("The logger did not answer in %1 s.").arg(ConnectMilliseconds / 1000);
    QObject::connect(m_site->logger()->Link().get(), &site::Link::StateChange, &loop, [&](int state) {
        if (state == int(site::LinkState::Connected)) {
            failure.clear();
            loop.quit();
        }
    });
    QObject::connect(m_site->logger().get(), &site::Logger::ConnectionError, &loop, [&](const QString& message) {
        failure = QStringLiteral("The logger could not be reached: %1").arg(message);
        loop.quit();
    });
    QTimer::singleShot(ConnectMilliseconds, &loop, &QEventLoop::quit);
    m_site->connectLink();
    if (m_site->linkState() != site::LinkState::Connected)
        loop.exec();
    else
        failure.clear();
    return failure;
}

void HeadlessPanel::close()
{
    if (!m_site || m_site->linkState() != site::LinkState::Connected)
        return;
    const QString failure = failureOf(QStringLiteral("Disconnecting"), [this] {
        QEventLoop loop;
        const Ref<site::Link> link = m_site->logger()->Link();
        QObject::connect(link.get(), &site::Link::StateChange, &loop, [&](int state) {
            if (state != int(site::LinkState::Disconnecting))
                loop.quit();
        });
        QTimer::singleShot(DisconnectMilliseconds, &loop, &QEventLoop::quit);
        link->Disconnect();
        if (link->State() == site::LinkState::Disconnecting)
            loop.exec();
        if (link->State() == site::LinkState::Disconnecting)
            m_report.note(QStringLiteral("The logger did not disconnect in %1 s: writes may be missing.")
                              .arg(DisconnectMilliseconds / 1000));
    });
    if (!failure.isEmpty())
        m_report.fail(failure);
}

} // namespace zan::host
