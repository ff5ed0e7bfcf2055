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

/// A command named by the first word of the command line.
struct Command
{
    QString name;
    ExitCode (*run)(const QStringList& arguments, ProcessArguments process);
};
const std::vector<Command>& commands();

/// The whole program: picks the command and runs it. Words are the process's arguments without its own name.
ExitCode runProgram(const QStringList& words, ProcessArguments process);

/// Prints a line on the standard error as "zanbench: MESSAGE".
void complain(const QString& message);
void print(const QString& text);
/// Prints a text on the standard error as it stands.
void printError(const QString& text);

} // namespace zan::host
