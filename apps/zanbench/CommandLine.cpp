#include "zanbench/CommandLine.h"

#include <QCommandLineParser>

namespace zan::host {

namespace {

constexpr int LargestSide = 16384;
constexpr int LongestWait = 24 * 60 * 60 * 1000;

/// A parser with what every command has. Qt reads single-dash words as clusters of short options; here they are
/// long options mistyped and refused by name.
class Parser
{
public:
    Parser()
    {
        m_parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
        m_parser.setSingleDashWordOptionMode(QCommandLineParser::ParseAsLongOptions);
        flag(QStringLiteral("help"), QStringLiteral("Show this help."));
    }

    void flag(const QString& name, const QString& description) { m_parser.addOption({name, description}); }
    void option(const QString& name, const QString& valueName, const QString& description)
    {
        m_parser.addOption({name, description, valueName});
    }
    /// False when the words cannot be read; error() says why.
    bool read(const QStringList& arguments, int mostPositional)
    {
        if (!m_parser.parse(QStringList{QStringLiteral("zanbench")} + arguments)) {
            m_error = m_parser.errorText();
            return false;
        }
        if (m_parser.positionalArguments().size() > mostPositional) {
            m_error = QStringLiteral("'%1' is one argument too many.")
                          .arg(m_parser.positionalArguments().at(mostPositional));
            return false;
        }
        return true;
    }
    bool has(const QString& name) const { return m_parser.isSet(name); }
    QString text(const QString& name) const { return m_parser.value(name); }
    QString positional() const { return m_parser.positionalArguments().value(0); }
    const QString& error() const { return m_error; }
    /// The options as lines of a help text.
    QString optionLines() const
    {
        const QString help = m_parser.helpText();
        return help.mid(help.indexOf(QStringLiteral("Options:")));
    }

private:
    QCommandLineParser m_parser;
    QString m_error;
};

template <class Options>
Parsed<Options> misuse(const QString& message, const QString& command)
{
    const QString hint = QStringLiteral("Try 'zanbench%1 --help'.").arg(command);
    return {std::nullopt, QStringLiteral("%1 %2").arg(message, hint), Misuse};
}

std::optional<QSize> sizeFromText(const QString& text)
{
    const QStringList sides = text.split(QLatin1Char('x'), Qt::KeepEmptyParts, Qt::CaseInsensitive);
    if (sides.size() != 2)
        return std::nullopt;
    bool widthRead = false, heightRead = false;
    const QSize size(sides[0].toInt(&widthRead), sides[1].toInt(&heightRead));
    const bool inRange =
        size.width() >= 1 && size.height() >= 1 && size.width() <= LargestSide && size.height() <= LargestSide;
    return widthRead && heightRead && inRange ? std::optional(size) : std::nullopt;
}

const QString OpenUsage = QStringLiteral("Usage: zanbench [SCHEME] [options]\n"
                                         "Opens a scheme file and shows its windows as live panels.\n\n");
const QString ShotUsage = QStringLiteral("Usage: zanbench shot SCHEME --out FILE.png [options]\n"
                                         "Draws a panel into a picture, without a display.\n\n");

/// The numbers of a shot; a message for the first that is wrong.
QString readShotNumbers(const Parser& parser, ShotOptions& options)
{
    if (parser.has(QStringLiteral("size"))) {
        const auto size = sizeFromText(parser.text(QStringLiteral("size")));
        if (!size)
            return QStringLiteral("The size '%1' is not WIDTHxHEIGHT with sides of 1 to %2.")
                .arg(parser.text(QStringLiteral("size")))
                .arg(LargestSide);
        options.size = *size;
    }
    if (parser.has(QStringLiteral("after"))) {
        bool read = false;
        options.after = parser.text(QStringLiteral("after")).toInt(&read);
        if (!read || options.after < 0 || options.after > LongestWait)
            return QStringLiteral("'%1' is no time in milliseconds of 0 to %2.")
                .arg(parser.text(QStringLiteral("after")))
                .arg(LongestWait);
    }
    if (parser.has(QStringLiteral("scale"))) {
        bool read = false;
        options.scale = parser.text(QStringLiteral("scale")).toDouble(&read);
        if (!read || !(options.scale >= 0.5 && options.scale <= 8))
            return QStringLiteral("'%1' is no scale of 0.5 to 8.").arg(parser.text(QStringLiteral("scale")));
    }
    return {};
}

} // namespace

Parsed<OpenOptions> parseOpen(const QStringList& arguments)
{
    Parser parser;
    parser.option(QStringLiteral("window"), QStringLiteral("KEY"), QStringLiteral("Show this window first."));
    parser.option(QStringLiteral("logger"), QStringLiteral("URI"),
                  QStringLiteral("Use this logger instead of the scheme's own, such as sim:?seed=7."));
    parser.flag(QStringLiteral("unlock"), QStringLiteral("Let the panel's controls be moved from the start."));
    parser.flag(QStringLiteral("kiosk"), QStringLiteral("Fill the screen with the panel and nothing else."));
    parser.flag(QStringLiteral("offline"), QStringLiteral("Do not connect the logger at once."));
    if (!parser.read(arguments, 1))
        return misuse<OpenOptions>(parser.error(), QString());
    if (parser.has(QStringLiteral("help")))
        return {std::nullopt, generalHelp(), Success};

    OpenOptions options;
    options.scheme = parser.positional();
    options.window = parser.text(QStringLiteral("window"));
    options.logger = parser.text(QStringLiteral("logger"));
    options.unlock = parser.has(QStringLiteral("unlock"));
    options.kiosk = parser.has(QStringLiteral("kiosk"));
    options.offline = parser.has(QStringLiteral("offline"));
    if (options.scheme.isEmpty() && (options.kiosk || !options.window.isEmpty() || !options.logger.isEmpty()))
        return misuse<OpenOptions>(QStringLiteral("The scheme file is missing."), QString());
    if (options.kiosk && options.unlock)
        return misuse<OpenOptions>(QStringLiteral("A kiosk cannot be unlocked."), QString());
    return {options, {}, Success};
}

Parsed<ShotOptions> parseShot(const QStringList& arguments)
{
    const QString command = QStringLiteral(" shot");
    Parser parser;
    parser.option(QStringLiteral("window"), QStringLiteral("KEY"),
                  QStringLiteral("Draw this window instead of the first."));
    parser.option(QStringLiteral("out"), QStringLiteral("FILE.png"), QStringLiteral("Write the picture here."));
    parser.option(QStringLiteral("size"), QStringLiteral("WxH"),
                  QStringLiteral("Size of the panel in pixels instead of that of its contents."));
    parser.option(QStringLiteral("scale"), QStringLiteral("N"),
                  QStringLiteral("Draw at N times the resolution, as a display of high density does."));
    parser.option(QStringLiteral("after"), QStringLiteral("MS"),
                  QStringLiteral("Wait so many milliseconds after the logger is connected."));
    parser.option(QStringLiteral("logger"), QStringLiteral("URI"),
                  QStringLiteral("Use this logger instead of the scheme's own."));
    parser.flag(QStringLiteral("offline"), QStringLiteral("Do not connect the logger."));
    parser.flag(QStringLiteral("print"), QStringLiteral("Print the values that the panel shows."));
    if (!parser.read(arguments, 1))
        return misuse<ShotOptions>(parser.error(), command);
    if (parser.has(QStringLiteral("help")))
        return {std::nullopt, ShotUsage + parser.optionLines(), Success};

    ShotOptions options;
    options.scheme = parser.positional();
    options.window = parser.text(QStringLiteral("window"));
    options.out = parser.text(QStringLiteral("out"));
    options.logger = parser.text(QStringLiteral("logger"));
    options.print = parser.has(QStringLiteral("print"));
    options.offline = parser.has(QStringLiteral("offline"));
    if (options.scheme.isEmpty())
        return misuse<ShotOptions>(QStringLiteral("The scheme file is missing."), command);
    if (options.out.isEmpty() && !options.print)
        return misuse<ShotOptions>(QStringLiteral("Say with --out where the picture goes."), command);
    if (const QString wrong = readShotNumbers(parser, options); !wrong.isEmpty())
        return misuse<ShotOptions>(wrong, command);
    return {options, {}, Success};
}

namespace {

const QString ScriptUsage = QStringLiteral(
    "Usage: zanbench script FILE.vbs [options]\n"
    "Runs a script without a display. With a scheme it sees the panel as Window, Logger and Scheme.\n\n");
const QString TestUsage =
    QStringLiteral("Usage: zanbench test FOLDER [options]\n"
                   "Runs every *.test.vbs of a folder. The comments at the head of a file may name its panel:\n"
                   "' scheme: FILE, ' window: KEY, ' logger: URI.\n\n");

void offerPanel(Parser& parser)
{
    parser.option(QStringLiteral("scheme"), QStringLiteral("SCHEME"),
                  QStringLiteral("Load a window of this scheme file."));
    parser.option(QStringLiteral("window"), QStringLiteral("KEY"),
                  QStringLiteral("Load this window instead of the first."));
    parser.option(QStringLiteral("logger"), QStringLiteral("URI"),
                  QStringLiteral("Use this logger instead of the scheme's own."));
}

ScriptOptions panelOptions(const Parser& parser)
{
    ScriptOptions options;
    options.scheme = parser.text(QStringLiteral("scheme"));
    options.window = parser.text(QStringLiteral("window"));
    options.logger = parser.text(QStringLiteral("logger"));
    return options;
}

} // namespace

Parsed<ScriptOptions> parseScript(const QStringList& arguments)
{
    const QString command = QStringLiteral(" script");
    Parser parser;
    offerPanel(parser);
    if (!parser.read(arguments, 1))
        return misuse<ScriptOptions>(parser.error(), command);
    if (parser.has(QStringLiteral("help")))
        return {std::nullopt, ScriptUsage + parser.optionLines(), Success};
    ScriptOptions options = panelOptions(parser);
    options.file = parser.positional();
    if (options.file.isEmpty())
        return misuse<ScriptOptions>(QStringLiteral("The script file is missing."), command);
    if (options.scheme.isEmpty() && !(options.window.isEmpty() && options.logger.isEmpty()))
        return misuse<ScriptOptions>(QStringLiteral("A window or a logger needs --scheme."), command);
    return {options, {}, Success};
}

Parsed<TestOptions> parseTest(const QStringList& arguments)
{
    const QString command = QStringLiteral(" test");
    Parser parser;
    offerPanel(parser);
    if (!parser.read(arguments, 1))
        return misuse<TestOptions>(parser.error(), command);
    if (parser.has(QStringLiteral("help")))
        return {std::nullopt, TestUsage + parser.optionLines(), Success};
    TestOptions options{parser.positional(), panelOptions(parser)};
    if (options.folder.isEmpty())
        return misuse<TestOptions>(QStringLiteral("The folder of the tests is missing."), command);
    return {options, {}, Success};
}

QString generalHelp()
{
    return OpenUsage +
           QStringLiteral("Options:\n"
                          "  --window KEY   Show this window first.\n"
                          "  --logger URI   Use this logger instead of the scheme's own, such as sim:?seed=7.\n"
                          "  --offline      Do not connect the logger at once.\n"
                          "  --unlock       Let the panel's controls be moved from the start.\n"
                          "  --kiosk        Fill the screen with the panel and nothing else.\n"
                          "  --help         Show this help.\n"
                          "  --version      Show the version.\n\n"
                          "Commands (zanbench COMMAND --help says more):\n"
                          "  shot           Draw a panel into a picture, without a display.\n"
                          "  script         Run a script file, on a panel or without one.\n"
                          "  test           Run the script tests of a folder.\n\n"
                          "Exit codes: 0 done, 1 could not be done, 2 wrong command line.\n");
}

QString versionText()
{
    return QStringLiteral("zanbench %1\n").arg(QStringLiteral(ZANBENCH_VERSION));
}

} // namespace zan::host
