// Each row of compile-errors.tsv: a text that does not compile, and where and why.

#include "script/ScriptControl.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QStringList>

using zan::script::ScriptControl;

namespace {

struct Row
{
    QString source;
    QString line;
    QString column;
    int number;
};

std::vector<Row> rows()
{
    QFile file(QStringLiteral("tests/script/compile-errors.tsv"));
    std::vector<Row> result;
    if (!file.open(QIODevice::ReadOnly))
        return result;
    for (const QString& text : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        const QStringList fields = text.split(QLatin1Char('\t'));
        if (text.startsWith(QLatin1Char('#')) || fields.size() < 4)
            continue;
        Row row{fields[0], fields[1], fields[2], fields[3].toInt()};
        row.source.replace(QStringLiteral("\\n"), QStringLiteral("\n"));
        result.push_back(row);
    }
    return result;
}

} // namespace

TEST(CompileErrors, EachTextFailsWithItsNumberAtItsPlace)
{
    const std::vector<Row> all = rows();
    ASSERT_GE(all.size(), 60u);
    for (const Row& row : all) {
        ScriptControl control;
        EXPECT_FALSE(control.AddCode(row.source)) << qPrintable(row.source);
        EXPECT_EQ(control.Error().Number(), row.number) << qPrintable(row.source);
        if (!row.line.isEmpty()) {
            EXPECT_EQ(control.Error().Line(), row.line.toInt()) << qPrintable(row.source);
        }
        if (!row.column.isEmpty()) {
            EXPECT_EQ(control.Error().Column(), row.column.toInt()) << qPrintable(row.source);
        }
        EXPECT_FALSE(control.Error().Description().isEmpty());
    }
}

TEST(CompileErrors, TheTextOfTheErrorIsTheOffendingLine)
{
    ScriptControl control;
    EXPECT_FALSE(control.AddCode(QStringLiteral("x = 1\r\ny = (2\r\nz = 3")));
    EXPECT_EQ(control.Error().Text(), QStringLiteral("y = (2"));
    EXPECT_EQ(control.Error().Line(), 2);
}

TEST(CompileErrors, ATextThatFailsChangesNothing)
{
    ScriptControl control;
    EXPECT_FALSE(control.AddCode(QStringLiteral("Sub Main\nEnd Sub\nx = (")));
    EXPECT_FALSE(control.Run(QStringLiteral("Main")));
}
