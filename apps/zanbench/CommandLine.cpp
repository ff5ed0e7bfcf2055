#include "zanbench/CommandLine.h"

#include "zanbench/OptionParser.h"
#include "zanbench/PictureFile.h"

#include "ecan/Address.h"

namespace zan::host {

namespace {

constexpr int LargestSide = 16384;
constexpr int LongestWait = 24 * 60 * 60 * 1000;
constexpr int LongestTimeout = 24 * 60 * 60;

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

/// The numbers of a shot; a message for the first that is wrong.
QString readShotNumbers(const OptionParser& parser, ShotOptions& options)
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
    if (parser.has(QStringLiteral("at"))) {
        options.at = momentFromIso(parser.text(QStringLiteral("at")));
        if (!options.at)
            return QStringLiteral("'%1' is no time like 2026-03-01T12:00:00.")
                .arg(parser.text(QStringLiteral("at")));
        for (const QString& name : {QStringLiteral("after"), QStringLiteral("logger"), QStringLiteral("offline"),
                                    QStringLiteral("print")})
            if (parser.has(name))
                return QStringLiteral("--at draws what is stored, without the logger: it does not go with --%1.")
                    .arg(name);
    }
    if (parser.has(QStringLiteral("scale"))) {
        bool read = false;
        options.scale = parser.text(QStringLiteral("scale")).toDouble(&read);
        if (!read || !(options.scale >= 0.5 && options.scale <= 8))
            return QStringLiteral("'%1' is no scale of 0.5 to 8.").arg(parser.text(QStringLiteral("scale")));
    }
    const double area = double(options.size.width()) * options.size.height() * options.scale * options.scale;
    if (options.size.isValid() && area > double(LargestPictureArea))
        return QStringLiteral("A picture of this size and scale has more than %1 pixels.").arg(LargestPictureArea);
    return {};
}

const QString EcanHost = QStringLiteral("ecan-host");
const QString NoHost = QStringLiteral("none");

void offerEcanHost(OptionParser& parser, const QString& more = {})
{
    parser.option(
        EcanHost, QStringLiteral("HOST"),
        QStringLiteral("Ask this server for irrigation restrictions: host, host:port, or http:// or https:// "
                       "before that; none asks nobody.") +
            more);
}

/// The server that is asked for, empty for none; a message for a text that names none.
QString readEcanHost(const OptionParser& parser, QString& host)
{
    const QString told = parser.text(EcanHost).trimmed();
    if (told.isEmpty() || told == NoHost)
        return {};
    if (!ecan::isHost(told))
        return QStringLiteral("'%1' is no server: write host, host:port, or http:// or https:// before that.")
            .arg(told);
    host = told;
    return {};
}

const QString OpenUsage = QStringLiteral("Usage: zanbench [SCHEME] [options]\n"
                                         "       zanbench COMMAND [arguments]\n"
                                         "Opens a scheme file and shows its windows as live panels.\n");

void offerOpening(OptionParser& parser)
{
    parser.option(QStringLiteral("window"), QStringLiteral("KEY"), QStringLiteral("Show this window first."));
    parser.option(QStringLiteral("logger"), QStringLiteral("URI"),
                  QStringLiteral("Use this logger instead of the scheme's own, such as sim:?seed=7."));
    offerEcanHost(parser, QStringLiteral(" It is kept for later starts."));
    parser.flag(QStringLiteral("unlock"), QStringLiteral("Let the panel's controls be moved from the start."));
    parser.flag(QStringLiteral("kiosk"), QStringLiteral("Fill the screen with the panel and nothing else."));
    parser.flag(QStringLiteral("offline"), QStringLiteral("Do not connect the logger at once."));
    parser.flag(QStringLiteral("version"), QStringLiteral("Show the version."));
}

} // namespace

QString openHelp()
{
    OptionParser parser(QString(), OpenUsage);
    offerOpening(parser);
    return parser.help();
}

Parsed<OpenOptions> parseOpen(const QStringList& arguments)
{
    OptionParser parser(QString(), OpenUsage);
    offerOpening(parser);
    if (!parser.read(arguments, 1))
        return parser.answer<OpenOptions>();

    OpenOptions options;
    options.scheme = parser.positional();
    options.window = parser.text(QStringLiteral("window"));
    options.logger = parser.text(QStringLiteral("logger"));
    if (parser.has(EcanHost)) {
        options.ecanHost.emplace();
        if (const QString wrong = readEcanHost(parser, *options.ecanHost); !wrong.isEmpty())
            return parser.misuse<OpenOptions>(wrong);
    }
    options.unlock = parser.has(QStringLiteral("unlock"));
    options.kiosk = parser.has(QStringLiteral("kiosk"));
    options.offline = parser.has(QStringLiteral("offline"));
    if (options.scheme.isEmpty() && (options.kiosk || !options.window.isEmpty() || !options.logger.isEmpty()))
        return parser.misuse<OpenOptions>(QStringLiteral("The scheme file is missing."));
    if (options.kiosk && options.unlock)
        return parser.misuse<OpenOptions>(QStringLiteral("A kiosk cannot be unlocked."));
    return {options, {}, Success};
}

Parsed<ShotOptions> parseShot(const QStringList& arguments)
{
    OptionParser parser(QStringLiteral("shot"),
                        QStringLiteral("Usage: zanbench shot SCHEME --out FILE [options]\n"
                                       "Draws a panel into a picture, without a display. Boxes are printed and "
                                       "answered with their first button.\n"));
    parser.option(QStringLiteral("window"), QStringLiteral("KEY"),
                  QStringLiteral("Draw this window instead of the first."));
    parser.option(QStringLiteral("out"), QStringLiteral("FILE"),
                  QStringLiteral("Write the picture here; its extension is one of %1.").arg(pictureExtensions()));
    parser.option(QStringLiteral("size"), QStringLiteral("WxH"),
                  QStringLiteral("Size of the panel in pixels instead of that of its contents."));
    parser.option(QStringLiteral("scale"), QStringLiteral("N"),
                  QStringLiteral("Draw at N times the resolution, as a display of high density does."));
    parser.option(QStringLiteral("after"), QStringLiteral("MS"),
                  QStringLiteral("Wait so many milliseconds after the logger is connected."));
    parser.option(QStringLiteral("at"), QStringLiteral("TIME"),
                  QStringLiteral("Draw the panel as it was at this time, out of the site's history, without the "
                                 "logger: 2026-03-01T12:00:00; local, or with Z in UTC."));
    parser.option(QStringLiteral("logger"), QStringLiteral("URI"),
                  QStringLiteral("Use this logger instead of the scheme's own."));
    offerEcanHost(parser);
    parser.flag(QStringLiteral("offline"), QStringLiteral("Do not connect the logger."));
    parser.flag(QStringLiteral("print"), QStringLiteral("Print the values that the panel shows."));
    if (!parser.read(arguments, 1))
        return parser.answer<ShotOptions>();

    ShotOptions options;
    options.scheme = parser.positional();
    options.window = parser.text(QStringLiteral("window"));
    options.out = parser.text(QStringLiteral("out"));
    options.logger = parser.text(QStringLiteral("logger"));
    options.print = parser.has(QStringLiteral("print"));
    options.offline = parser.has(QStringLiteral("offline"));
    if (options.scheme.isEmpty())
        return parser.misuse<ShotOptions>(QStringLiteral("The scheme file is missing."));
    if (options.out.isEmpty() && !options.print)
        return parser.misuse<ShotOptions>(QStringLiteral("Say with --out where the picture goes."));
    if (!options.out.isEmpty())
        if (const QString wrong = pictureNameProblem(options.out); !wrong.isEmpty())
            return parser.misuse<ShotOptions>(wrong);
    if (const QString wrong = readShotNumbers(parser, options); !wrong.isEmpty())
        return parser.misuse<ShotOptions>(wrong);
    if (const QString wrong = readEcanHost(parser, options.ecanHost); !wrong.isEmpty())
        return parser.misuse<ShotOptions>(wrong);
    return {options, {}, Success};
}

namespace {

void offerPanel(OptionParser& parser)
{
    parser.option(QStringLiteral("scheme"), QStringLiteral("SCHEME"),
                  QStringLiteral("Load a window of this scheme file."));
    parser.option(QStringLiteral("window"), QStringLiteral("KEY"),
                  QStringLiteral("Load this window instead of the first."));
    parser.option(QStringLiteral("logger"), QStringLiteral("URI"),
                  QStringLiteral("Use this logger instead of the scheme's own."));
    offerEcanHost(parser);
}

ScriptOptions panelOptions(const OptionParser& parser)
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
    OptionParser parser(
        QStringLiteral("script"),
        QStringLiteral("Usage: zanbench script FILE.vbs [options]\n"
                       "Runs a script without a display. With a scheme it sees the panel as Window, "
                       "Logger and Scheme.\n"));
    offerPanel(parser);
    if (!parser.read(arguments, 1))
        return parser.answer<ScriptOptions>();
    ScriptOptions options = panelOptions(parser);
    options.file = parser.positional();
    if (options.file.isEmpty())
        return parser.misuse<ScriptOptions>(QStringLiteral("The script file is missing."));
    if (options.scheme.isEmpty() && !(options.window.isEmpty() && options.logger.isEmpty()))
        return parser.misuse<ScriptOptions>(QStringLiteral("A window or a logger needs --scheme."));
    if (const QString wrong = readEcanHost(parser, options.ecanHost); !wrong.isEmpty())
        return parser.misuse<ScriptOptions>(wrong);
    return {options, {}, Success};
}

Parsed<TestOptions> parseTest(const QStringList& arguments)
{
    OptionParser parser(
        QStringLiteral("test"),
        QStringLiteral(
            "Usage: zanbench test FOLDER [options]\n"
            "Runs every *.test.vbs of a folder, each in a process of its own. The comments at the head of\n"
            "a file may name its panel: ' scheme: FILE, ' window: KEY, ' logger: URI.\n"));
    offerPanel(parser);
    const QString timeout = QStringLiteral("timeout");
    parser.option(
        timeout, QStringLiteral("SECONDS"),
        QStringLiteral("End a file that takes longer; %1 without this.").arg(TestOptions::DefaultTimeout));
    if (!parser.read(arguments, 1))
        return parser.answer<TestOptions>();
    TestOptions options{parser.positional(), panelOptions(parser)};
    if (options.folder.isEmpty())
        return parser.misuse<TestOptions>(QStringLiteral("The folder of the tests is missing."));
    if (const QString wrong = readEcanHost(parser, options.defaults.ecanHost); !wrong.isEmpty())
        return parser.misuse<TestOptions>(wrong);
    if (parser.has(timeout)) {
        bool read = false;
        options.timeout = parser.text(timeout).toInt(&read);
        if (!read || options.timeout < 1 || options.timeout > LongestTimeout)
            return parser.misuse<TestOptions>(QStringLiteral("'%1' is no time in seconds of 1 to %2.")
                                                  .arg(parser.text(timeout))
                                                  .arg(LongestTimeout));
    }
    return {options, {}, Success};
}

Parsed<WindowsOptions> parseWindows(const QStringList& arguments)
{
    OptionParser parser(QStringLiteral("windows"),
                        QStringLiteral("Usage: zanbench windows SCHEME\n"
                                       "Lists the keys of a scheme's windows, one in a line. The first is the one "
                                       "that opens by itself.\n"));
    if (!parser.read(arguments, 1))
        return parser.answer<WindowsOptions>();
    if (parser.positional().isEmpty())
        return parser.misuse<WindowsOptions>(QStringLiteral("The scheme file is missing."));
    return {WindowsOptions{parser.positional()}, {}, Success};
}

Parsed<ImportOptions> parseImport(const QStringList& arguments)
{
    OptionParser parser(
        QStringLiteral("import"),
        QStringLiteral("Usage: zanbench import FILE [--scheme SCHEME] [--out SCHEME]\n"
                       "Lays a window of an older text terminal out as the window KEEL of a scheme. "
                       "Without a scheme\nit is only read, and counted.\n"));
    const QString scheme = QStringLiteral("scheme"), out = QStringLiteral("out");
    parser.option(scheme, QStringLiteral("SCHEME"),
                  QStringLiteral("Import into this scheme file, whose window KEEL is replaced."));
    parser.option(out, QStringLiteral("SCHEME"),
                  QStringLiteral("Write the scheme to this new file, instead of over the one that it came from."));
    if (!parser.read(arguments, 1))
        return parser.answer<ImportOptions>();
    if (parser.positional().isEmpty())
        return parser.misuse<ImportOptions>(QStringLiteral("The file to import is missing."));
    return {ImportOptions{parser.positional(), parser.text(scheme), parser.text(out)}, {}, Success};
}

QString versionText()
{
    return QStringLiteral("zanbench %1\n").arg(QStringLiteral(ZANBENCH_VERSION));
}

} // namespace zan::host
