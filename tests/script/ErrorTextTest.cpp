// Each row of error-texts.tsv: a number that the language knows, and its text.

#include "script/ScriptControl.h"
#include "script/syntax/CompileError.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QStringList>

using zan::script::ScriptControl;

namespace {

constexpr int FirstCompileError = 1001;
constexpr int LastCompileError = 1099;

std::vector<std::pair<int, QString>> rows()
{
    QFile file(QStringLiteral("tests/script/error-texts.tsv"));
    std::vector<std::pair<int, QString>> result;
    if (!file.open(QIODevice::ReadOnly))
        return result;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'))) {
        const QStringList fields = line.split(QLatin1Char('\t'));
        if (!line.startsWith(QLatin1Char('#')) && fields.size() >= 2 && fields[0].toInt() != 0)
            result.emplace_back(fields[0].toInt(), fields[1]);
    }
    return result;
}

} // namespace

TEST(ErrorTexts, EveryRunTimeErrorCanBeRaisedAndHasItsText)
{
    int count = 0;
    for (const auto& [number, description] : rows()) {
        if (number >= FirstCompileError && number <= LastCompileError)
            continue;
        ++count;
        ScriptControl control;
        EXPECT_FALSE(control.AddCode(QStringLiteral("Err.Raise %1").arg(number)));
        EXPECT_EQ(control.Error().Number(), number);
        EXPECT_EQ(control.Error().Description(), description) << number;
    }
    EXPECT_GE(count, 60);
}

TEST(ErrorTexts, EveryCompileErrorHasItsText)
{
    int count = 0;
    for (const auto& [number, description] : rows()) {
        if (number < FirstCompileError || number > LastCompileError)
            continue;
        ++count;
        EXPECT_EQ(zan::script::compileErrorText(number), description) << number;
    }
    EXPECT_GE(count, 50);
    EXPECT_EQ(zan::script::compileErrorText(1), "Unknown compilation error");
}

TEST(ErrorTexts, EveryCompileErrorThatATextCanMakeIsMade)
{
    // Those of the table of places are left out here.
    const std::pair<const char*, int> texts[] = {
        {"If 1 Then\nEnd Sub", 1012},
        {"For i = 1\nNext", 1013},
        {"If 1 Then\nx = 1", 1014},
        {"Function F\nEnd Sub", 1015},
        {"Sub S\nEnd Function", 1016},
        {"If 1\nEnd If", 1017},
        {"Do\nx = 1", 1019},
        {"For i = 1 To 2\nx = 1", 1020},
        {"Select 1\nEnd Select", 1021},
        {"Select Case 1\nCase\nEnd Select", 1023},
        {"Dim a(n)", 1026},
        {"Do\nLoop x", 1027},
        {"x = 1e400", 1031},
        {"x = [abc", 1007},
        {"x = ?", 1032},
        {"Class C\nSub S\nEnd Sub\nx = 1\nEnd Class", 1024},
        {"Class C\nProperty P\nEnd Property\nEnd Class", 1049},
        {"Class C\nPublic Default Function A\nEnd Function\nPublic Default Function B\nEnd Function\nEnd Class",
         1052},
        {"Class C\nProperty Let P\nEnd Property\nEnd Class", 1054},
        {"Next", 1055},
        {"Class C\nPublic Default x\nEnd Class", 1056},
        {"S(1, 2)", 1044},
        {"Sub S(a", 1006},
        {"On Error GoTo 1", 1002},
        {"Option Base", 1002},
        {"Sub S\nExit Function\nEnd Sub", 1039},
        {"Exit For", 1039},
        {"Me = 1", 1037},
    };
    for (const auto& [source, number] : texts) {
        ScriptControl control;
        EXPECT_FALSE(control.AddCode(QString::fromLatin1(source))) << source;
        EXPECT_EQ(control.Error().Number(), number) << source;
    }
}
