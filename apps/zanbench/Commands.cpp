#include "zanbench/Commands.h"

#include <cstdio>

namespace zan::host {

const std::vector<Command>& commands()
{
    static const std::vector<Command> all = {
        {QStringLiteral("shot"), &runShot},
        {QStringLiteral("script"), &runScript},
        {QStringLiteral("test"), &runTests},
    };
    return all;
}

ExitCode runProgram(const QStringList& words, ProcessArguments process)
{
    const QString first = words.value(0);
    if (first == QLatin1String("--help") || first == QLatin1String("-h")) {
        print(generalHelp());
        return Success;
    }
    if (first == QLatin1String("--version")) {
        print(versionText());
        return Success;
    }
    for (const Command& command : commands())
        if (command.name == first)
            return command.run(words.mid(1), process);
    return runOpen(words, process);
}

void complain(const QString& message)
{
    std::fprintf(stderr, "zanbench: %s\n", message.toLocal8Bit().constData());
}

void printError(const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stderr);
}

void print(const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stdout);
    std::fflush(stdout);
}

} // namespace zan::host
