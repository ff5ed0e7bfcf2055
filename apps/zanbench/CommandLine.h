#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <optional>

namespace zan::host {

/// How the program ends, as a shell sees it.
enum ExitCode : int {
    Success = 0,
    Failure = 1, ///< it was understood and could not be done
    Misuse = 2,  ///< the command line makes no sense
};

/// `zanbench [SCHEME]`: what the window opens with.
struct OpenOptions
{
    QString scheme; ///< empty: start without one
    QString window; ///< key; empty: the first window
    QString logger; ///< URI; empty: the scheme's own
    bool unlock = false;
    bool kiosk = false;
    bool offline = false; ///< do not connect at once
};

/// `zanbench shot`: what is drawn, and where to.
struct ShotOptions
{
    QString scheme;
    QString window; ///< key; empty: the first window
    QString out;    ///< empty: no picture, values only
    QString logger; ///< URI; empty: the scheme's own
    QSize size;     ///< logical pixels; empty: as large as the panel's contents
    int after = 0;  ///< milliseconds between being connected and drawing
    double scale = 1;
    bool print = false;
    bool offline = false;
};

/// `zanbench script`: what a script file runs with.
struct ScriptOptions
{
    QString file;
    QString scheme; ///< empty: no panel, only the item Host
    QString window; ///< key; empty: the first window
    QString logger; ///< URI; empty: the scheme's own
};

/// `zanbench test`: where the test files are, and the panel of those that name none.
struct TestOptions
{
    QString folder;
    ScriptOptions defaults;
};

/// What became of a command line: options, or a text to print and the code to end with (help asked for, or an
/// error).
template <class Options>
struct Parsed
{
    std::optional<Options> options;
    QString text;
    ExitCode code = Success;
};

/// Arguments without the program's and the command's name.
Parsed<OpenOptions> parseOpen(const QStringList& arguments);
Parsed<ShotOptions> parseShot(const QStringList& arguments);
Parsed<ScriptOptions> parseScript(const QStringList& arguments);
Parsed<TestOptions> parseTest(const QStringList& arguments);

/// The text of `zanbench --help`: every command in a line.
QString generalHelp();
QString versionText();

} // namespace zan::host
