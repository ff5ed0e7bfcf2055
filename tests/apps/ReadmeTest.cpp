// What the README says of the command line.
#include "zanbench/CommandLine.h"

#include <QFile>
#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace zan::host;

namespace {

/// The rows of the README that begin with the program's name.
QStringList usageRows()
{
    QFile readme(QStringLiteral(README));
    EXPECT_TRUE(readme.open(QIODevice::ReadOnly));
    QStringList rows;
    for (const QString& line : QString::fromUtf8(readme.readAll()).split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("    zanbench ")))
            rows.append(line.trimmed());
    }
    return rows;
}

QStringList optionsIn(const QString& text)
{
    static const QRegularExpression option(QStringLiteral("--[a-z][a-z-]*"));
    QStringList names;
    for (auto found = option.globalMatch(text); found.hasNext();)
        names.append(found.next().captured());
    names.removeDuplicates();
    names.removeAll(QStringLiteral("--help"));
    names.sort();
    return names;
}

/// The options that a command's help lists, each at the head of a line of its own.
QStringList optionsOf(const QString& help)
{
    static const QRegularExpression entry(QStringLiteral("^  (--[a-z][a-z-]*)"),
                                          QRegularExpression::MultilineOption);
    QStringList heads;
    for (auto found = entry.globalMatch(help); found.hasNext();)
        heads.append(found.next().captured(1));
    return optionsIn(heads.join(QLatin1Char(' ')));
}

struct Command
{
    const char* begins; ///< the row in the README
    QString help;
};

} // namespace

TEST(Readme, NamesEveryOptionThatACommandKnowsAndNoOther)
{
    const QStringList asked{QStringLiteral("--help")};
    const Command commands[] = {
        {"zanbench [", openHelp()},
        {"zanbench shot ", parseShot(asked).text},
        {"zanbench script ", parseScript(asked).text},
        {"zanbench test ", parseTest(asked).text},
        {"zanbench windows ", parseWindows(asked).text},
        {"zanbench import ", parseImport(asked).text},
        {"zanbench history ", parseHistory(asked).text},
    };
    const QStringList rows = usageRows();
    EXPECT_EQ(std::size_t(rows.size()), std::size(commands));
    for (const Command& command : commands) {
        const QStringList own = rows.filter(
            QRegularExpression(QLatin1Char('^') + QRegularExpression::escape(QLatin1String(command.begins))));
        ASSERT_EQ(own.size(), 1) << command.begins;
        EXPECT_EQ(optionsIn(own.first()), optionsOf(command.help)) << command.begins;
    }
    EXPECT_TRUE(optionsOf(parseShot(asked).text).contains(QStringLiteral("--scale"))) << "the help was not read";
}
