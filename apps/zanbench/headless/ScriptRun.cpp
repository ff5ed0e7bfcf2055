#include "zanbench/headless/ScriptRun.h"

#include "zanbench/Boundary.h"
#include "zanbench/hostitem/HostItem.h"

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

/// A pipe or a terminal is refused: reading it could wait for a person, or never end.
FileText readScript(const QString& path)
{
    QFile file(path);
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile())
        return {{}, QStringLiteral("The script %1 is no ordinary file.").arg(path)};
    if (!file.open(QIODevice::ReadOnly))
        return {{}, QStringLiteral("The script %1 could not be read: %2").arg(path, file.errorString())};
    if (file.size() > LargestFile)
        return {{}, QStringLiteral("The script %1 is larger than %2 bytes.").arg(path).arg(LargestFile)};
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(file.read(LargestFile));
    if (decoder.hasError())
        return {{}, QStringLiteral("The script %1 is no UTF-8 text. Save it as UTF-8.").arg(path)};
    return {text, {}};
}

} // namespace

ScriptRun::ScriptRun(ScriptOptions options)
    : m_options(std::move(options))
    , m_folder(QFileInfo(m_options.file).absolutePath())
    , m_panel(m_report)
    , m_control(std::make_unique<script::ScriptControl>(static_cast<script::ScriptHost*>(this)))
    , m_hostItem(values::make<HostItem>(static_cast<HostRun&>(*this)))
{
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
}

bool ScriptRun::run()
{
    const QString failure = failureOf(QStringLiteral("The run of %1").arg(m_options.file), [this] {
        if (runFile())
            m_panel.close();
    });
    if (!failure.isEmpty())
        m_report.fail(failure);
    m_report.close();
    return exitCode() == Success;
}

/// False when it came to no script.
bool ScriptRun::runFile()
{
    const FileText script = readScript(m_options.file);
    if (!script.error.isEmpty()) {
        m_report.fail(script.error);
        return false;
    }
    if (!m_options.scheme.isEmpty() && !openPanel())
        return false;
    const bool succeeded = addItems() && m_control->AddCode(script.text);
    if (!succeeded && !m_quitCode)
        reportError();
    return true;
}

int ScriptRun::exitCode() const
{
    const int asked = m_quitCode.value_or(Success);
    return asked == Success && m_report.failures() > 0 ? int(Failure) : asked;
}

QString ScriptRun::place(int line, int column) const
{
    return QStringLiteral("%1(%2, %3)").arg(m_options.file).arg(line).arg(column);
}

void ScriptRun::reportError()
{
    const script::ScriptError& error = m_control->Error();
    m_report.failAt(place(error.Line(), error.Column()),
                    QStringLiteral("error %1: %2").arg(error.Number()).arg(error.Description()));
}

bool ScriptRun::openPanel()
{
    PanelRequest request;
    request.scheme = m_options.scheme;
    request.window = m_options.window;
    request.logger = m_options.logger;
    request.ecanHost = m_options.ecanHost;
    request.needsLogger = true;
    return m_panel.open(request);
}

bool ScriptRun::addItems()
{
    const bool hasHost = m_control->AddObject(QStringLiteral("Host"), m_hostItem) &&
                         m_control->AddObject(QStringLiteral("WScript"), m_hostItem);
    if (!hasHost || !m_panel.panel())
        return hasHost;
    const values::Ref<site::Logger> logger = m_panel.site()->logger();
    return m_control->AddObject(QStringLiteral("Window"), m_panel.panel()->object()) &&
           m_control->AddObject(QStringLiteral("Logger"), logger) &&
           m_control->AddObject(QStringLiteral("Scheme"), logger->Scheme());
}

void ScriptRun::call(const QString& procedure, const values::Ref<binding::Object>& argument)
{
    if (!m_control->Run(procedure, {values::Variant(argument)}) && !m_quitCode)
        reportError();
}

void ScriptRun::failHere(const QString& message)
{
    const script::ScriptPlace here = m_control->currentPlace();
    m_report.failAt(place(here.line, here.column), message);
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
    return QDir(m_folder).filePath(name);
}

int ScriptRun::messageBox(const QString& text, int buttons, const QString& title)
{
    return m_panel.forms().messageBox(m_panel.panel(), text, buttons, title);
}

std::optional<QString> ScriptRun::inputBox(const QString& prompt, const QString& title, const QString& text)
{
    return m_panel.forms().inputBox(m_panel.panel(), prompt, title, text);
}

bool ScriptRun::busy(std::chrono::milliseconds)
{
    return !m_quitCode;
}

} // namespace zan::host
