#include "zanbench/Commands.h"

#include "zanbench/ScriptRun.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTextStream>

namespace zan::host {

namespace {

/// An application without a display; scripts look the same everywhere.
class HeadlessApplication
{
public:
    explicit HeadlessApplication(ProcessArguments process)
        : m_application((prepare(), process.count), process.words)
    {
        QApplication::setApplicationName(QStringLiteral("zanbench"));
    }

private:
    static void prepare()
    {
        if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication m_application;
};

template <class Options>
ExitCode answer(const Parsed<Options>& parsed)
{
    if (parsed.code == Success)
        print(parsed.text);
    else
        complain(parsed.text);
    return parsed.code;
}

/// What the comments at the head of a test file ask for: ' scheme: FILE, ' window: KEY, ' logger: URI.
void readTestHead(ScriptOptions& options)
{
    QFile file(options.file);
    if (!file.open(QIODevice::ReadOnly))
        return; // the run itself says why
    static const QRegularExpression line(QStringLiteral("^'\\s*(scheme|window|logger)\\s*:\\s*(.+?)\\s*$"),
                                         QRegularExpression::CaseInsensitiveOption);
    QTextStream text(&file);
    for (QString head = text.readLine(); head.startsWith(QLatin1Char('\'')); head = text.readLine()) {
        const QRegularExpressionMatch match = line.match(head);
        const QString name = match.captured(1).toLower();
        if (name == QLatin1String("scheme"))
            options.scheme = QFileInfo(options.file).absoluteDir().filePath(match.captured(2));
        else if (name == QLatin1String("window"))
            options.window = match.captured(2);
        else if (name == QLatin1String("logger"))
            options.logger = match.captured(2);
    }
}

} // namespace

ExitCode runScript(const QStringList& arguments, ProcessArguments process)
{
    const Parsed<ScriptOptions> parsed = parseScript(arguments);
    if (!parsed.options)
        return answer(parsed);
    const HeadlessApplication application(process);
    ScriptRun run(*parsed.options);
    run.run();
    return ExitCode(run.exitCode());
}

ExitCode runTests(const QStringList& arguments, ProcessArguments process)
{
    const Parsed<TestOptions> parsed = parseTest(arguments);
    if (!parsed.options)
        return answer(parsed);
    const QDir folder(parsed.options->folder);
    if (!folder.exists()) {
        complain(QStringLiteral("There is no folder %1.").arg(parsed.options->folder));
        return Failure;
    }
    const HeadlessApplication application(process);
    int passed = 0;
    int failed = 0;
    for (const QString& name : folder.entryList({QStringLiteral("*.test.vbs")}, QDir::Files, QDir::Name)) {
        ScriptOptions options = parsed.options->defaults;
        options.file = folder.filePath(name);
        readTestHead(options);
        ScriptRun run(options);
        const bool succeeded = run.run();
        ++(succeeded ? passed : failed);
        print(QStringLiteral("%1 %2\n").arg(succeeded ? QStringLiteral("ok  ") : QStringLiteral("FAIL"), name));
    }
    print(QStringLiteral("%1 passed, %2 failed\n").arg(passed).arg(failed));
    if (passed + failed == 0)
        complain(QStringLiteral("%1 holds no *.test.vbs file.").arg(parsed.options->folder));
    return failed == 0 && passed > 0 ? Success : Failure;
}

} // namespace zan::host
