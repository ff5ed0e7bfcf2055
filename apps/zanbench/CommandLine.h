#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

#include <cstdint>
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
    QString scheme;                  ///< empty: start without one
    QString window;                  ///< key; empty: the first window
    QString logger;                  ///< URI; empty: the scheme's own
    std::optional<QString> ecanHost; ///< kept for later starts; empty: ask nobody; nothing: as it was kept
    bool unlock = false;
    bool kiosk = false;
    bool offline = false; ///< do not connect at once
};

/// `zanbench shot`: what is drawn, and where to.
struct ShotOptions
{
    QString scheme;
    QString window;   ///< key; empty: the first window
    QString out;      ///< empty: no picture, values only
    QString logger;   ///< URI; empty: the scheme's own
    QString ecanHost; ///< empty: none
    QSize size;       ///< logical pixels; empty: as large as the panel's contents, within the largest picture
    int after = 0;    ///< milliseconds between being connected and drawing
    double scale = 1;
    std::optional<std::int64_t> at =
        {}; ///< a moment of the history, in UTC milliseconds since 1970; the present for none
    bool print = false;
    bool offline = false;
};

/// `zanbench script`: what a script file runs with.
struct ScriptOptions
{
    QString file;
    QString scheme;   ///< empty: no panel, only the item Host
    QString window;   ///< key; empty: the first window
    QString logger;   ///< URI; empty: the scheme's own
    QString ecanHost; ///< empty: none
};

/// `zanbench test`: where the test files are, and the panel of those that name none.
struct TestOptions
{
    static constexpr int DefaultTimeout = 120;

    QString folder;
    ScriptOptions defaults;
    int timeout = DefaultTimeout; ///< seconds that a file may take before it is ended and counts as failed
};

/// `zanbench windows`.
struct WindowsOptions
{
    QString scheme;
};

/// `zanbench import`.
struct ImportOptions
{
    QString file;   ///< the older window
    QString scheme; ///< what it is imported into; empty: a scheme of its own
    QString out;    ///< where the scheme is written; empty: where it came from, or nowhere
};

/// `zanbench history`: what is done with the history of a scheme.
struct HistoryOptions
{
    enum class Action { Export, Info, Check, Vacuum };

    QString scheme;
    Action action = Action::Info;
    QString out;                       ///< of an export; empty: the standard output
    QString channel;                   ///< WINDOW|KEY; empty: all
    std::optional<std::int64_t> from;  ///< milliseconds since 1970, UTC
    std::optional<std::int64_t> until; ///< without this moment itself
    bool isUtc = false;
};

/// Pixels of the largest picture that is drawn, and of the largest panel of a run without a screen: 128 MB.
constexpr qint64 LargestPictureArea = 32 * 1024 * 1024;

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
Parsed<WindowsOptions> parseWindows(const QStringList& arguments);
Parsed<ImportOptions> parseImport(const QStringList& arguments);
Parsed<HistoryOptions> parseHistory(const QStringList& arguments);

/// How to open a scheme: the first half of the general help.
QString openHelp();
QString versionText();

} // namespace zan::host
