#pragma once

#include <QString>
#include <QStringList>

#include <chrono>

namespace zan::host {

/// What became of a test's process.
struct TestOutcome
{
    bool passed = false;
    QString reason; ///< why it failed, when its own output cannot have said so: a crash, the time limit, a code
};

/// Runs a program to its end, or to the end of its time: it is killed then, and when our own process goes. What it
/// prints goes where we print; it reads nothing.
TestOutcome runTestProcess(const QString& program, const QStringList& arguments, std::chrono::seconds timeout);

} // namespace zan::host
