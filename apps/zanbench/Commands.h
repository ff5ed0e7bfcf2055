#pragma once

#include "zanbench/CommandLine.h"

#include <QStringList>

#include <vector>

namespace zan::host {

/// The name that every window and box of the program carries.
inline const QString ProgramName = QStringLiteral("ZanBench");

/// What the toolkit wants of main(): it takes its own options out of these.
struct ProcessArguments
{
    int& count;
    char** words;
};

/// Opens the main window and runs until it is closed.
ExitCode runOpen(const QStringList& arguments, ProcessArguments process);
/// `zanbench shot`.
ExitCode runShot(const QStringList& arguments, ProcessArguments process);
/// `zanbench script`.
ExitCode runScript(const QStringList& arguments, ProcessArguments process);
/// `zanbench test`.
ExitCode runTests(const QStringList& arguments, ProcessArguments process);
/// `zanbench windows`.
ExitCode runWindows(const QStringList& arguments, ProcessArguments process);

/// `zanbench import`.
ExitCode runImport(const QStringList& arguments, ProcessArguments process);

/// `zanbench history`.
ExitCode runHistory(const QStringList& arguments, ProcessArguments process);

/// A command named by the first word of the command line.
struct Command
{
    QString name;
    QString summary; ///< one sentence, for the general help
    ExitCode (*run)(const QStringList& arguments, ProcessArguments process);
};
const std::vector<Command>& commands();

/// The whole program: picks the command and runs it. Words are the process's arguments without its own name. No
/// exception leaves it.
ExitCode runProgram(const QStringList& words, ProcessArguments process);

/// The text of `zanbench --help`: how to open a scheme, and every command in a line.
QString generalHelp();

/// Prints a line on the standard error as "zanbench: MESSAGE".
void complain(const QString& message);
void print(const QString& text);
/// Prints a text on the standard error as it stands, but for control characters.
void printError(const QString& text);
/// A text from outside without what steers a terminal: control characters but line feeds and tabs become "?".
QString printable(QString text);
/// The same in one line, a bar between what were lines, cut after some 1,000 characters.
QString oneLine(const QString& text);

/// Prints what a command line without options stands for, help or a complaint, and says how the program ends.
template <class Options>
ExitCode answer(const Parsed<Options>& parsed)
{
    if (parsed.code == Success)
        print(parsed.text);
    else
        complain(parsed.text);
    return parsed.code;
}

} // namespace zan::host
