#include "zanbench/Commands.h"

#include "zanbench/headless/TestProcess.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTextStream>

namespace zan::host {

namespace {

/// More lines than this are no head.
constexpr int LongestHead = 200;
constexpr qint64 LongestHeadLine = 10'000;

/// What the comments at the head of a test file ask for: ' scheme: FILE, ' window: KEY, ' logger: URI.
void readTestHead(ScriptOptions& options)
{
    QFile file(options.file);
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return; // the run itself says why
    static const QRegularExpression line(QStringLiteral("^'\\s*(scheme|window|logger)\\s*:\\s*(.+?)\\s*$"),
                                         QRegularExpression::CaseInsensitiveOption);
    QTextStream text(&file);
    for (int count = 0; count < LongestHead; ++count) {
        const QString head = text.readLine(LongestHeadLine);
        if (!head.startsWith(QLatin1Char('\'')))
            return;
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

/// The command line of one file's run. Values may begin with a dash.
QStringList scriptArguments(const ScriptOptions& options)
{
    QStringList words{QStringLiteral("script")};
    const auto add = [&](const QString& name, const QString& value) {
        if (!value.isEmpty())
            words.append(QStringLiteral("--%1=%2").arg(name, value));
    };
    add(QStringLiteral("scheme"), options.scheme);
    add(QStringLiteral("window"), options.window);
    add(QStringLiteral("logger"), options.logger);
    add(QStringLiteral("ecan-host"), options.ecanHost);
    return words + QStringList{QStringLiteral("--"), options.file};
}

/// Runs one file, prints what became of it; true when it passed.
bool runTest(const TestOptions& options, const QString& file, const QString& name)
{
    ScriptOptions script = options.defaults;
    script.file = file;
    readTestHead(script);
    const TestOutcome outcome = runTestProcess(QCoreApplication::applicationFilePath(), scriptArguments(script),
                                               std::chrono::seconds(options.timeout));
    const QString reason = outcome.reason.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(outcome.reason);
    print((outcome.passed ? QStringLiteral("ok   ") : QStringLiteral("FAIL ")) + printable(name) + reason +
          QLatin1Char('\n'));
    return outcome.passed;
}

} // namespace

ExitCode runTests(const QStringList& arguments, ProcessArguments process)
{
    const Parsed<TestOptions> parsed = parseTest(arguments);
    if (!parsed.options)
        return answer(parsed);
    const QCoreApplication application(process.count, process.words);
    const QDir folder(parsed.options->folder);
    if (!folder.exists()) {
        complain(QStringLiteral("There is no folder %1.").arg(parsed.options->folder));
        return Failure;
    }
    int passed = 0;
    int failed = 0;
    for (const QString& name : folder.entryList({QStringLiteral("*.test.vbs")}, QDir::Files, QDir::Name))
        ++(runTest(*parsed.options, folder.filePath(name), name) ? passed : failed);
    print(QStringLiteral("%1 passed, %2 failed\n").arg(passed).arg(failed));
    if (passed + failed == 0)
        complain(QStringLiteral("%1 holds no *.test.vbs file.").arg(parsed.options->folder));
    return failed == 0 && passed > 0 ? Success : Failure;
}

} // namespace zan::host
