#include "zanbench/ScriptRun.h"

#include "zanbench/Commands.h"
#include "zanbench/HostItem.h"
#include "zanbench/PanelLoader.h"

#include "window/BenchWindowObject.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <QTimer>

namespace zan::host {

namespace {

constexpr qint64 LargestFile = 16 * 1024 * 1024;

struct FileText
{
    QString text;
    QString error; ///< why the file could not be read; empty when it was
};

FileText readScript(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {{}, QStringLiteral("The script %1 could not be read: %2").arg(path, file.errorString())};
    if (file.size() > LargestFile)
        return {{}, QStringLiteral("The script %1 is larger than %2 bytes.").arg(path).arg(LargestFile)};
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(file.readAll());
    if (decoder.hasError())
        return {{}, QStringLiteral("The script %1 is no UTF-8 text. Save it as UTF-8.").arg(path)};
    return {text, {}};
}

} // namespace

ScriptRun::ScriptRun(ScriptOptions options)
    : m_options(std::move(options))
    , m_control(std::make_unique<script::ScriptControl>(static_cast<script::ScriptHost*>(this)))
{
    m_hostItem = values::make<HostItem>(*this);
    m_clock.start();
    m_control->setClock([this] { return std::chrono::nanoseconds(m_clock.nsecsElapsed()) - m_waited; });
    script::ScriptLimits limits;
    limits.runTime = LongestRun;
    m_control->setLimits(limits);
}

ScriptRun::~ScriptRun()
{
    m_hostItem->detach(); // a script may have left it somewhere
    m_control.reset();
    m_panel.reset();
}

bool ScriptRun::run()
{
    const FileText script = readScript(m_options.file);
    if (!script.error.isEmpty())
        return fail(script.error);
    if (!m_options.scheme.isEmpty() && !openPanel())
        return false;
    if (!addItems())
        return reportError();
    const bool succeeded = m_control->AddCode(script.text);
    if (!succeeded && !m_quitCode)
        return reportError();
    return m_failures == 0 && m_quitCode.value_or(0) == 0;
}

int ScriptRun::exitCode() const
{
    return m_quitCode.value_or(m_failures == 0 ? Success : Failure);
}

bool ScriptRun::fail(const QString& message)
{
    ++m_failures;
    complain(message);
    return false;
}

QString ScriptRun::place(int line, int column) const
{
    return QStringLiteral("%1(%2, %3)").arg(m_options.file).arg(line).arg(column);
}

bool ScriptRun::reportError()
{
    ++m_failures;
    const script::ScriptError& error = m_control->Error();
    printError(QStringLiteral("%1: error %2: %3\n")
                   .arg(place(error.Line(), error.Column()))
                   .arg(error.Number())
                   .arg(error.Description()));
    return false;
}

bool ScriptRun::openPanel()
{
    OpenedSiteResult opened = OpenedSite::open(m_options.scheme, m_options.logger);
    if (!opened.site)
        return fail(opened.error);
    m_site = std::move(opened.site);
    const QStringList keys = m_site->panelKeys();
    const auto key =
        m_options.window.isEmpty() ? std::optional(keys.value(0)) : m_site->windowKey(m_options.window);
    if (!key || key->isEmpty())
        return fail(QStringLiteral("%1 has no window '%2'; it has: %3.")
                        .arg(m_options.scheme, m_options.window, keys.join(QStringLiteral(", "))));
    if (!m_site->loggerProblem().isEmpty())
        return fail(m_site->loggerProblem());
    try {
        m_panel = loadPanel(*m_site, *key);
    } catch (const values::RuntimeError& error) {
        return fail(QStringLiteral("The window %1 could not be shown: %2").arg(*key, error.description()));
    }
    m_panel->setForms(&m_forms);
    QObject::connect(
        m_panel.get(), &surface::Surface::runtimeError, m_panel.get(), [this](int number, const QString& text) {
            fail(
                QStringLiteral("%1: run-time error %2 in the panel: %3").arg(m_options.file).arg(number).arg(text));
        });
    m_panel->resize(contentSize(*m_panel));
    m_panel->show();
    return true;
}

bool ScriptRun::addItems()
{
    const bool hasHost = m_control->AddObject(QStringLiteral("Host"), m_hostItem) &&
                         m_control->AddObject(QStringLiteral("WScript"), m_hostItem);
    if (!hasHost || !m_panel)
        return hasHost;
    return m_control->AddObject(QStringLiteral("Window"), m_panel->object()) &&
           m_control->AddObject(QStringLiteral("Logger"), m_site->logger()) &&
           m_control->AddObject(QStringLiteral("Scheme"), m_site->logger()->Scheme());
}

void ScriptRun::check(bool condition, const QString& text)
{
    if (!condition)
        fail(QStringLiteral("%1: not so: %2").arg(m_options.file, text));
}

void ScriptRun::wait(int milliseconds)
{
    QElapsedTimer waiting;
    waiting.start();
    QEventLoop loop;
    QTimer::singleShot(std::max(0, milliseconds), Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
    m_waited += std::chrono::nanoseconds(waiting.nsecsElapsed());
}

void ScriptRun::quit(int code)
{
    m_quitCode = code;
    // No script time is left: nothing that the script does can catch that.
    script::ScriptLimits limits = m_control->limits();
    limits.runTime = std::chrono::milliseconds(0);
    m_control->setLimits(limits);
}

QString ScriptRun::filePath(const QString& name) const
{
    return QFileInfo(m_options.file).absoluteDir().filePath(name);
}

int ScriptRun::messageBox(const QString& text, int buttons, const QString& title)
{
    return m_forms.messageBox(m_panel.get(), text, buttons, title);
}

std::optional<QString> ScriptRun::inputBox(const QString& prompt, const QString& title, const QString& text)
{
    return m_forms.inputBox(m_panel.get(), prompt, title, text);
}

bool ScriptRun::busy(std::chrono::milliseconds)
{
    return !m_quitCode;
}

} // namespace zan::host
