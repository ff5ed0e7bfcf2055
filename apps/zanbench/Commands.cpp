#include "zanbench/Commands.h"

#include "zanbench/Boundary.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>
#include <numeric>

namespace zan::host {

namespace {

constexpr qsizetype LongestLine = 1000;

/// How many letters have to be changed, added, left out or swapped with their neighbour to make one word the other.
int distance(const QString& left, const QString& right)
{
    std::vector<std::vector<int>> cost(std::size_t(left.size()) + 1,
                                       std::vector<int>(std::size_t(right.size()) + 1));
    std::iota(cost[0].begin(), cost[0].end(), 0);
    for (std::size_t i = 1; i < cost.size(); ++i) {
        cost[i][0] = int(i);
        for (std::size_t j = 1; j < cost[i].size(); ++j) {
            const auto same = [&](std::size_t a, std::size_t b) {
                return left[qsizetype(a) - 1].toLower() == right[qsizetype(b) - 1].toLower();
            };
            cost[i][j] =
                std::min({cost[i - 1][j] + 1, cost[i][j - 1] + 1, cost[i - 1][j - 1] + (same(i, j) ? 0 : 1)});
            if (i > 1 && j > 1 && same(i, j - 1) && same(i - 1, j))
                cost[i][j] = std::min(cost[i][j], cost[i - 2][j - 2] + 1);
        }
    }
    return cost.back().back();
}

/// A first word that can only be meant as a command: no option, no path, no file that is there.
bool isCommandWord(const QString& word)
{
    static const QRegularExpression letters(QStringLiteral("^[A-Za-z][A-Za-z-]{0,29}$"));
    return letters.match(word).hasMatch() && !QFileInfo::exists(word);
}

ExitCode refuseCommand(const QString& word)
{
    const auto nearest =
        std::min_element(commands().begin(), commands().end(), [&](const Command& left, const Command& right) {
            return distance(word, left.name) < distance(word, right.name);
        });
    complain(
        QStringLiteral("There is no command '%1', and no scheme file of that name; the nearest command is '%2'. "
                       "Try 'zanbench --help'.")
            .arg(word, nearest->name));
    return Misuse;
}

/// Runs a command up to the program's outermost boundary.
ExitCode runGuarded(const QString& title, ExitCode (*run)(const QStringList&, ProcessArguments),
                    const QStringList& arguments, ProcessArguments process)
{
    ExitCode code = Failure;
    const QString failure = failureOf(title, [&] { code = run(arguments, process); });
    if (failure.isEmpty())
        return code;
    complain(failure);
    return Failure;
}

} // namespace

const std::vector<Command>& commands()
{
    static const std::vector<Command> all = {
        {QStringLiteral("shot"), QStringLiteral("Draw a panel into a picture, without a display."), &runShot},
        {QStringLiteral("script"), QStringLiteral("Run a script file, on a panel or without one."), &runScript},
        {QStringLiteral("test"), QStringLiteral("Run the script tests of a folder."), &runTests},
        {QStringLiteral("windows"), QStringLiteral("List the windows of a scheme."), &runWindows},
        {QStringLiteral("import"), QStringLiteral("Lay out a window of an older text terminal."), &runImport},
        {QStringLiteral("history"), QStringLiteral("Export, look at, check or tidy what a site has recorded."),
         &runHistory},
    };
    return all;
}

QString generalHelp()
{
    QString lines;
    for (const Command& command : commands())
        lines += QStringLiteral("  %1  %2\n").arg(command.name.leftJustified(12), command.summary);
    return openHelp() + QStringLiteral("\nCommands (zanbench COMMAND --help says more):\n") + lines +
           QStringLiteral("\nExit codes: 0 done, 1 could not be done, 2 wrong command line.\n");
}

ExitCode runProgram(const QStringList& words, ProcessArguments process)
{
    const QString first = words.value(0);
    for (const Command& command : commands())
        if (command.name == first)
            return runGuarded(QStringLiteral("'zanbench %1'").arg(first), command.run, words.mid(1), process);
    if (words.contains(QStringLiteral("--help")) || words.contains(QStringLiteral("-h"))) {
        print(generalHelp());
        return Success;
    }
    if (first == QLatin1String("--version")) {
        print(versionText());
        return Success;
    }
    if (isCommandWord(first))
        return refuseCommand(first);
    return runGuarded(QStringLiteral("'zanbench'"), &runOpen, words, process);
}

QString printable(QString text)
{
    for (QChar& character : text)
        if (character.category() == QChar::Other_Control && character != QLatin1Char('\n') &&
            character != QLatin1Char('\t'))
            character = QLatin1Char('?');
    return text;
}

QString oneLine(const QString& text)
{
    static const QRegularExpression lineEnds(QStringLiteral("(\r\n|\r|\n)+"));
    QString line = text.left(LongestLine);
    line.replace(lineEnds, QStringLiteral(" | "));
    if (text.size() > LongestLine)
        line += QStringLiteral("...");
    return printable(line);
}

void complain(const QString& message)
{
    printError(QStringLiteral("zanbench: %1\n").arg(message));
}

void printError(const QString& text)
{
    std::fputs(printable(text).toLocal8Bit().constData(), stderr);
}

void print(const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stdout);
    std::fflush(stdout);
}

} // namespace zan::host
