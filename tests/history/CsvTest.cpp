#include "StoreFixture.h"

#include "history/CsvExport.h"
#include "values/TableText.h"

#include <QBuffer>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <random>

namespace zan::history {

namespace {

fake::FakeHistory& filled(fake::FakeHistory& history)
{
    history.list = *columns(2);
    history.list[0].id = 1;
    history.list[1].id = 2;
    history.list[0].label = QStringLiteral("Stage, left");
    history.list[1].label = QString();
    history.list[1].units = QString();
    history.put(1, Noon, Variant(0.1));
    history.put(2, Noon, Variant(QStringLiteral("He said \"on\"\r\n")));
    history.put(1, Noon + 1500, Variant(1.5F));
    return history;
}

std::string exported(const site::History& history, const std::vector<HistorySeries>& series,
                     CsvOptions options = {})
{
    options.isUtc = true;
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    EXPECT_EQ(exportCsv(history, series, options, out), QString());
    return out.data().toStdString();
}

/// Reads CSV as its users do.
std::vector<QStringList> parsed(const QString& text)
{
    std::vector<QStringList> lines(1);
    QString field;
    bool isQuoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar letter = text[i];
        if (isQuoted && letter == u'"' && i + 1 < text.size() && text[i + 1] == u'"')
            field += text[++i];
        else if (letter == u'"')
            isQuoted = !isQuoted;
        else if (!isQuoted && letter == u',')
            lines.back().append(std::exchange(field, {}));
        else if (!isQuoted && letter == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
            lines.back().append(std::exchange(field, {}));
            lines.emplace_back();
            ++i;
        } else
            field += letter;
    }
    lines.pop_back();
    return lines;
}

} // namespace

TEST(CsvExport, AWholeTableWithItsHead)
{
    fake::FakeHistory history;
    filled(history);
    const QString day = QDateTime::fromMSecsSinceEpoch(Noon, Qt::UTC).toString(QStringLiteral("yyyy-MM-dd"));
    EXPECT_EQ(exported(history, history.list), "Time (UTC),\"Stage, left [m]\",C1\r\n" + day.toStdString() +
                                                   " 12:00:00.000,0.1,\"He said \"\"on\"\"\r\n\"\r\n" +
                                                   day.toStdString() + " 12:00:01.500,1.5,\r\n");
}

TEST(CsvExport, OnlyTheMomentsAskedForAndThoseOfTheChannelsAskedFor)
{
    fake::FakeHistory history;
    filled(history);
    CsvOptions options;
    options.from = Noon + 1;
    EXPECT_EQ(parsed(QString::fromStdString(exported(history, history.list, options))).size(), 2U);
    options = {};
    options.until = Noon;
    EXPECT_EQ(parsed(QString::fromStdString(exported(history, history.list, options))).size(), 1U);
    EXPECT_EQ(parsed(QString::fromStdString(exported(history, {history.list[1]}))).size(), 2U);
}

TEST(CsvExport, LocalTimesSayHowFarTheyAreFromUtc)
{
    fake::FakeHistory history;
    filled(history);
    const QByteArray before = qgetenv("TZ");
    qputenv("TZ", "XYZ-03:30");
    ::tzset();
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    EXPECT_EQ(exportCsv(history, history.list, {}, out), QString());
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
    ::tzset();
    const auto lines = parsed(QString::fromUtf8(out.data()));
    EXPECT_EQ(lines[0][0], QStringLiteral("Time (local)"));
    EXPECT_TRUE(lines[1][0].endsWith(QStringLiteral(" 15:30:00.000+03:30"))) << lines[1][0].toStdString();
}

TEST(CsvExport, WhateverTextsThereAreTheyComeBackAndNoneIsAFormula)
{
    std::mt19937 random(9);
    fake::FakeHistory history;
    history.list = *columns(2);
    std::vector<QStringList> expected;
    const QString letters = QStringLiteral("ab,;\"\r\n\t =+-ü€");
    const auto anyText = [&] {
        QString text;
        for (int i = int(random() % 12); i > 0; --i)
            text += letters[qsizetype(random() % std::uint32_t(letters.size()))];
        return text;
    };
    for (std::size_t i = 0; i < 2; ++i) {
        history.list[i].id = std::int64_t(i) + 1;
        history.list[i].label = u'x' + anyText();
        history.list[i].units = QString();
    }
    expected.push_back({history.list[0].label, history.list[1].label});
    for (int i = 0; i < 3000; ++i) {
        expected.push_back({u'y' + anyText(), anyText()});
        history.put(1, Noon + i, Variant(expected.back()[0]));
        history.put(2, Noon + i, Variant(expected.back()[1]));
    }
    const auto lines = parsed(QString::fromStdString(exported(history, history.list)));
    ASSERT_EQ(lines.size(), expected.size());
    for (std::size_t i = 0; i < lines.size(); ++i)
        for (qsizetype column = 0; column < 2; ++column)
            ASSERT_EQ(lines[i][column + 1], values::harmlessCell(expected[i][column])) << i;
}

TEST(CsvExport, WhatALoggerSendsIsNoFormulaOfASpreadsheet)
{
    fake::FakeHistory history;
    history.list = *columns(1);
    history.list[0].id = 1;
    history.list[0].label = QStringLiteral("=1+1");
    history.list[0].units = QString();
    history.put(1, Noon, Variant(QStringLiteral("@SUM(A1)")));
    history.put(1, Noon + 1, Variant(-2.5));
    const auto lines = parsed(QString::fromStdString(exported(history, history.list)));
    EXPECT_EQ(lines[0][1], u"'=1+1");
    EXPECT_EQ(lines[1][1], u"'@SUM(A1)");
    EXPECT_EQ(lines[2][1], u"-2.5");
}

TEST(CsvExport, NumbersComeBackToTheLastBit)
{
    std::mt19937_64 random(4);
    fake::FakeHistory history;
    history.list = *columns(1);
    history.list[0].id = 1;
    std::vector<double> numbers;
    for (int i = 0; i < 2000; ++i) {
        const double number = std::bit_cast<double>(std::uint64_t(random()));
        numbers.push_back(std::isfinite(number) ? number : 1.0 / 3);
        history.put(1, Noon + i, Variant(numbers.back()));
    }
    const auto lines = parsed(QString::fromStdString(exported(history, history.list)));
    ASSERT_EQ(lines.size(), numbers.size() + 1);
    for (std::size_t i = 0; i < numbers.size(); ++i)
        ASSERT_EQ(std::strtod(lines[i + 1][1].toLatin1().constData(), nullptr), numbers[i]);
}

TEST(CsvExport, AFullDiskAndACancellationAreSaid)
{
    fake::FakeHistory history;
    filled(history);
    QFile full(QStringLiteral("/dev/full"));
    ASSERT_TRUE(full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    EXPECT_TRUE(exportCsv(history, history.list, {}, full).contains(QStringLiteral("could not be written")));
    QBuffer out;
    out.open(QIODevice::WriteOnly);
    const auto cancel = [](std::int64_t, std::int64_t) { return false; };
    EXPECT_EQ(exportCsv(history, history.list, {}, out, cancel), QStringLiteral("The export was cancelled."));
}

} // namespace zan::history
