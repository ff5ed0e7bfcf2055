#include "zanbench/CommandLine.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <string>

using namespace zan::host;

namespace {

QStringList words(const char* line)
{
    return QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

struct Row
{
    const char* line;
    const char* message; ///< part of what is said
};

void PrintTo(const Row& row, std::ostream* stream)
{
    *stream << '"' << row.line << '"';
}

class OpenMisuse : public testing::TestWithParam<Row>
{};
class ShotMisuse : public testing::TestWithParam<Row>
{};

} // namespace

TEST(CommandLine, OpenTakesASchemeAndItsOptionsInAnyOrder)
{
    const auto parsed = parseOpen(words("--window Pumps a.scheme --unlock --logger sim:?seed=3"));
    ASSERT_TRUE(parsed.options);
    EXPECT_EQ(parsed.options->scheme, "a.scheme");
    EXPECT_EQ(parsed.options->window, "Pumps");
    EXPECT_EQ(parsed.options->logger, "sim:?seed=3");
    EXPECT_TRUE(parsed.options->unlock);
    EXPECT_FALSE(parsed.options->kiosk);
    EXPECT_FALSE(parsed.options->offline);
}

TEST(CommandLine, OpenWithoutWordsStartsWithoutAScheme)
{
    const auto parsed = parseOpen({});
    ASSERT_TRUE(parsed.options);
    EXPECT_TRUE(parsed.options->scheme.isEmpty());
}

TEST(CommandLine, ShotTakesSizeScaleAndWait)
{
    const auto parsed =
        parseShot(words("s.scheme --window W --out o.png --size 800x600 --after 250 --scale 2 --print"));
    ASSERT_TRUE(parsed.options);
    EXPECT_EQ(parsed.options->size, QSize(800, 600));
    EXPECT_EQ(parsed.options->after, 250);
    EXPECT_EQ(parsed.options->scale, 2);
    EXPECT_TRUE(parsed.options->print);
    EXPECT_EQ(parsed.options->out, "o.png");
}

TEST(CommandLine, ShotThatOnlyPrintsNeedsNoPicture)
{
    EXPECT_TRUE(parseShot(words("s.scheme --print")).options);
}

TEST(CommandLine, HelpIsATextAndNoError)
{
    for (const auto& parsed : {parseShot(words("--help")), parseShot(words("s.scheme --help"))}) {
        EXPECT_FALSE(parsed.options);
        EXPECT_EQ(parsed.code, Success);
        EXPECT_TRUE(parsed.text.contains("--after"));
        EXPECT_TRUE(parsed.text.startsWith("Usage: zanbench shot"));
    }
}

TEST(CommandLine, EachCommandHasAHelpOfItsOwn)
{
    const std::pair<const char*, QString> rows[] = {
        {"Usage: zanbench [SCHEME]", parseOpen(words("-h")).text},
        {"Usage: zanbench shot SCHEME", parseShot(words("-h")).text},
        {"Usage: zanbench script FILE.vbs", parseScript(words("--scheme --help -h")).text},
        {"Usage: zanbench test FOLDER", parseTest(words("--help")).text},
        {"Usage: zanbench windows SCHEME", parseWindows(words("--help")).text},
        {"Usage: zanbench import FILE", parseImport(words("--help")).text},
        {"Usage: zanbench history SCHEME", parseHistory(words("--help")).text},
    };
    for (const auto& [beginning, text] : rows)
        EXPECT_TRUE(text.startsWith(beginning)) << beginning << " but " << text.toStdString();
    // Its options are its own.
    EXPECT_TRUE(parseTest(words("--help")).text.contains("--timeout"));
    EXPECT_FALSE(parseScript(words("--help")).text.contains("--timeout"));
    EXPECT_FALSE(parseWindows(words("--help")).text.contains("--scheme"));
}

TEST_P(OpenMisuse, IsToldInPlainWordsWithCodeTwo)
{
    const auto parsed = parseOpen(words(GetParam().line));
    EXPECT_FALSE(parsed.options);
    EXPECT_EQ(parsed.code, Misuse);
    EXPECT_TRUE(parsed.text.contains(GetParam().message)) << parsed.text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Rows, OpenMisuse,
                         testing::Values(Row{"a.scheme b.scheme", "'b.scheme' is one argument too many"},
                                         Row{"a.scheme --wndow X", "wndow"}, Row{"a.scheme --window", "window"},
                                         Row{"--window X", "scheme file is missing"},
                                         Row{"--kiosk", "scheme file is missing"},
                                         Row{"a.scheme --kiosk --unlock", "cannot be unlocked"},
                                         Row{"a.scheme --unlock=3", "unlock"},
                                         Row{"a.scheme --logger=", "value of --logger is empty"},
                                         Row{"a.scheme --window=", "value of --window is empty"}));

TEST_P(ShotMisuse, IsToldInPlainWordsWithCodeTwo)
{
    const auto parsed = parseShot(words(GetParam().line));
    EXPECT_FALSE(parsed.options);
    EXPECT_EQ(parsed.code, Misuse);
    EXPECT_TRUE(parsed.text.contains(GetParam().message)) << parsed.text.toStdString();
    EXPECT_TRUE(parsed.text.contains("zanbench shot --help"));
}

INSTANTIATE_TEST_SUITE_P(Rows, ShotMisuse,
                         testing::Values(Row{"--out o.png", "scheme file is missing"}, Row{"s.scheme", "--out"},
                                         Row{"s.scheme --out o.png --size 800", "'800' is not WIDTHxHEIGHT"},
                                         Row{"s.scheme --out o.png --size 0x600", "'0x600'"},
                                         Row{"s.scheme --out o.png --size 800x-1", "'800x-1'"},
                                         Row{"s.scheme --out o.png --size 99999x99999", "1 to 16384"},
                                         Row{"s.scheme --out o.png --size 8x8x8", "'8x8x8'"},
                                         Row{"s.scheme --out o.png --after soon", "'soon' is no time"},
                                         Row{"s.scheme --out o.png --after -1", "no time"},
                                         Row{"s.scheme --out o.png --after 99999999999", "no time"},
                                         Row{"s.scheme --out o.png --scale nan", "'nan' is no scale"},
                                         Row{"s.scheme --out o.png --scale 100", "'100' is no scale"},
                                         Row{"s.scheme --out o.png --kiosk", "kiosk"},
                                         Row{"s.scheme --out o.gif", "'o.gif' tells no picture format"},
                                         Row{"s.scheme --out png", "one of png, jpg, jpeg, bmp, ppm"},
                                         Row{"s.scheme --out= --print", "value of --out is empty"},
                                         Row{"s.scheme --print --logger=", "value of --logger is empty"},
                                         Row{"s.scheme --out o.png --size 16384x2049", "more than 33554432 pixels"},
                                         Row{"s.scheme --out o.png --size 4096x4096 --scale 2", "more than"},
                                         Row{"s.scheme extra --out o.png", "'extra'"}));

TEST(CommandLine, TheLargestPictureIsAllowed)
{
    EXPECT_TRUE(parseShot(words("s.scheme --out o.JPG --size 16384x2048")).options);
    EXPECT_TRUE(parseShot(words("s.scheme --out o.png --size 2896x2896 --scale 2")).options);
}

TEST(CommandLine, TimesOfAHistoryAreLocalUnlessTheySayOtherwise)
{
    const auto parsed = parseHistory(words(
        "a.scheme export --from 2026-03-01T12:00:00Z --until 2026-03-02 --channel Pump|LEVEL --utc --out a.csv"));
    ASSERT_TRUE(parsed.options) << parsed.text.toStdString();
    EXPECT_EQ(parsed.options->action, HistoryOptions::Action::Export);
    EXPECT_EQ(parsed.options->from, QDateTime(QDate(2026, 3, 1), QTime(12, 0), Qt::UTC).toMSecsSinceEpoch());
    EXPECT_EQ(parsed.options->until, QDateTime(QDate(2026, 3, 2), QTime(0, 0)).toMSecsSinceEpoch());
    EXPECT_EQ(parsed.options->channel, QStringLiteral("Pump|LEVEL"));
    EXPECT_EQ(parsed.options->out, QStringLiteral("a.csv"));
    EXPECT_TRUE(parsed.options->isUtc);
}

TEST(CommandLine, HistoryIsToldWhatIsMissingOrWrong)
{
    const std::pair<const char*, const char*> rows[] = {
        {"", "scheme file is missing"},
        {"a.scheme", "export, info, check or vacuum"},
        {"a.scheme destroy", "'destroy' is none of export, info, check or vacuum"},
        {"a.scheme export --from yesterday", "'yesterday' is no time"},
        {"a.scheme info --out a.csv", "--out belongs to export"},
        {"a.scheme info b", "'b' is one argument too many"},
    };
    for (const auto& [line, problem] : rows) {
        const auto parsed = parseHistory(words(line));
        EXPECT_FALSE(parsed.options) << line;
        EXPECT_EQ(parsed.code, Misuse) << line;
        EXPECT_TRUE(parsed.text.contains(QLatin1String(problem))) << parsed.text.toStdString();
    }
}

TEST(CommandLine, ScriptTestAndWindowsAreToldWhatIsMissingOrWrong)
{
    const std::pair<QString, const char*> rows[] = {
        {parseScript(words("--scheme s")).text, "script file is missing"},
        {parseScript(words("a.vbs --window W")).text, "needs --scheme"},
        {parseScript(words("a.vbs --scheme s --logger=")).text, "value of --logger is empty"},
        {parseTest({}).text, "folder of the tests is missing"},
        {parseTest(words("t --timeout 0")).text, "'0' is no time in seconds of 1 to 86400"},
        {parseTest(words("t --timeout soon")).text, "'soon'"},
        {parseTest(words("t --scheme=")).text, "value of --scheme is empty"},
        {parseWindows({}).text, "scheme file is missing"},
        {parseWindows(words("a b")).text, "'b' is one argument too many"},
    };
    for (const auto& [text, message] : rows)
        EXPECT_TRUE(text.contains(message)) << message << " but " << text.toStdString();
    EXPECT_EQ(parseTest(words("t --timeout 7")).options->timeout, 7);
    EXPECT_EQ(parseTest(words("t")).options->timeout, 120);
}

TEST(CommandLine, TheVersionIsOneLine)
{
    EXPECT_TRUE(versionText().startsWith("zanbench "));
    EXPECT_EQ(versionText().count('\n'), 1);
}

TEST(CommandLine, EveryCommandWithAPanelTakesAServerForRestrictions)
{
    const char* const host = "--ecan-host=https://ecan.example:444";
    const auto with = [&](const char* line) { return words(line) << QString::fromLatin1(host); };
    EXPECT_EQ(parseOpen(with("a.scheme")).options->ecanHost, QStringLiteral("https://ecan.example:444"));
    EXPECT_EQ(parseShot(with("a.scheme --print")).options->ecanHost, "https://ecan.example:444");
    EXPECT_EQ(parseScript(with("a.vbs --scheme s")).options->ecanHost, "https://ecan.example:444");
    EXPECT_EQ(parseTest(with("folder")).options->defaults.ecanHost, "https://ecan.example:444");
}

TEST(CommandLine, WithoutAServerNobodyIsAskedAndTheWordNoneSaysSo)
{
    EXPECT_EQ(parseShot(words("a.scheme --print")).options->ecanHost, "");
    EXPECT_EQ(parseShot(words("a.scheme --print --ecan-host none")).options->ecanHost, "");
    EXPECT_FALSE(parseOpen(words("a.scheme")).options->ecanHost.has_value()) << "what was kept stands";
    EXPECT_EQ(parseOpen(words("a.scheme --ecan-host none")).options->ecanHost, QString());
}

TEST(CommandLine, AServerThatIsNoneIsMisuse)
{
    for (const char* bad : {"ftp://ecan.example", "ecan.example/path", "me@ecan.example", "http://"}) {
        const QStringList host{QStringLiteral("--ecan-host"), QString::fromLatin1(bad)};
        EXPECT_EQ(parseOpen(words("a.scheme") + host).code, Misuse) << bad;
        EXPECT_EQ(parseShot(words("a.scheme --print") + host).code, Misuse) << bad;
        EXPECT_EQ(parseScript(words("a.vbs --scheme s") + host).code, Misuse) << bad;
        const auto test = parseTest(words("folder") + host);
        EXPECT_EQ(test.code, Misuse) << bad;
        EXPECT_TRUE(test.text.contains(QStringLiteral("'%1' is no server").arg(QString::fromLatin1(bad)))) << bad;
    }
}
