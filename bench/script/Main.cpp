// Runs each program of the folder `programs` in this engine, in Lua and in Python, and prints their times and ratios.
// A program exists in three files of one name; its procedure `Main` does the work and returns a value that must be
// the same in all three.

#include "script/ScriptControl.h"

#include "binding/MemberTable.h"
#include "values/Convert.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <vector>

using zan::script::ScriptControl;
using zan::values::Variant;

namespace {

constexpr int Rounds = 3;

/// An object as a host has them: one property that is read and written.
class Gauge : public zan::binding::Object
{
public:
    const zan::binding::MemberTable& members() const override
    {
        static const zan::binding::MemberTable table(
            "Gauge", nullptr, {zan::binding::property<&Gauge::level, &Gauge::setLevel>("Level")});
        return table;
    }
    double level() const { return m_level; }
    void setLevel(double level) { m_level = level; }

private:
    double m_level = 0;
};

struct Outcome
{
    double seconds = -1;
    QString result;
};

QString fileText(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

Outcome runHere(const QString& path)
{
    Outcome best;
    for (int round = 0; round < Rounds; ++round) {
        ScriptControl control;
        zan::script::ScriptLimits limits;
        limits.runTime = std::chrono::minutes(10);
        limits.memory = std::size_t(4) << 30;
        control.setLimits(limits);
        control.AddObject(QStringLiteral("Gauge"), zan::values::make<Gauge>());
        if (!control.AddCode(fileText(path))) {
            std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(control.Error().Description()));
            return {};
        }
        const std::clock_t start = std::clock(); // processor time, as the other two measure it
        const std::optional<Variant> result = control.Run(QStringLiteral("Main"));
        const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
        if (!result) {
            std::fprintf(stderr, "%s(%d): %s\n", qPrintable(path), control.Error().Line(),
                         qPrintable(control.Error().Description()));
            return {};
        }
        if (best.seconds < 0 || seconds < best.seconds)
            best = {seconds, zan::values::toText(*result)};
    }
    return best;
}

/// The program prints the seconds it took and its result.
Outcome runThere(const QString& interpreter, const QString& path)
{
    Outcome best;
    for (int round = 0; round < Rounds; ++round) {
        QProcess process;
        process.start(interpreter, {path});
        if (!process.waitForFinished(600000) || process.exitCode() != 0)
            return {};
        const QStringList words = QString::fromUtf8(process.readAllStandardOutput()).simplified().split(QChar(' '));
        if (words.size() >= 2 && (best.seconds < 0 || words[0].toDouble() < best.seconds))
            best = {words[0].toDouble(), words[1]};
    }
    return best;
}

} // namespace

int main(int argumentCount, char** arguments)
{
    const QDir folder(QStringLiteral(ZAN_PROGRAMS));
    std::printf("%-12s %10s %10s %10s %9s %9s\n", "program", "script ms", "lua ms", "python ms", "to lua",
                "to python");
    bool same = true;
    for (const QString& file : folder.entryList({QStringLiteral("*.vbs")}, QDir::Files, QDir::Name)) {
        const QString name = file.chopped(4);
        if (argumentCount > 1 && name != QString::fromLocal8Bit(arguments[1]))
            continue;
        const Outcome here = runHere(folder.filePath(file));
        const Outcome lua = runThere(QStringLiteral("lua5.4"), folder.filePath(name + QStringLiteral(".lua")));
        const Outcome python =
            runThere(QStringLiteral("/usr/bin/python3"), folder.filePath(name + QStringLiteral(".py")));
        std::printf("%-12s %10.1f %10.1f %10.1f %9.2f %9.2f\n", qPrintable(name), here.seconds * 1e3,
                    lua.seconds * 1e3, python.seconds * 1e3, here.seconds / lua.seconds,
                    here.seconds / python.seconds);
        if (here.result != lua.result || here.result != python.result) {
            std::printf("  results differ: %s, %s, %s\n", qPrintable(here.result), qPrintable(lua.result),
                        qPrintable(python.result));
            same = false;
        }
    }
    return same ? 0 : 1;
}
