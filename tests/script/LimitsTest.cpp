#include "script/TestHost.h"

using namespace script_test;

namespace {

constexpr std::chrono::milliseconds Step{100};

/// A clock that goes on by a step whenever somebody looks.
void useSteppingClock(ScriptControl& control, FakeHost& host)
{
    control.setClock([&host] { return host.now += Step; });
}

ScriptLimits quickLimits()
{
    ScriptLimits limits;
    limits.runTime = std::chrono::seconds(5);
    return limits;
}

QString repeated(const char* piece, int count)
{
    return QString::fromLatin1(piece).repeated(count);
}

} // namespace

TEST(Limits, ARunThatTakesTooLongEndsWithError18)
{
    FakeHost host;
    ScriptControl control(&host);
    useSteppingClock(control, host);
    control.setLimits(quickLimits());
    ASSERT_TRUE(control.AddCode(QStringLiteral("Sub Main\nDo\nLoop\nEnd Sub")));
    EXPECT_FALSE(control.Run(QStringLiteral("Main")));
    EXPECT_EQ(control.Error().Number(), 18);
    EXPECT_EQ(control.Error().Description(), "The script was stopped: it ran longer than 5 seconds");
    EXPECT_EQ(control.Error().Line(), 3);
}

TEST(Limits, NoOnErrorCatchesTheEndOfTime)
{
    const char* const sources[] = {
        "On Error Resume Next\nDo\nx = 1 / 0\nLoop",
        "On Error Resume Next\nWhile True\nWend",
        "On Error Resume Next\nSub F\nOn Error Resume Next\nF\nF\nEnd Sub\nDo\nF\nLoop",
        "For i = 1 To 2 Step 0\nNext",
        "Function F(n)\nIf n < 2 Then F = 1 Else F = F(n - 1) + F(n - 2)\nEnd Function\nx = F(60)",
        "Set r = GetRef(\"G\")\nSub G\nOn Error Resume Next\nDo\nExecute \"y = 1\"\nLoop\nEnd Sub\nr",
        "Class C\nPrivate Sub Class_Terminate\nDo\nLoop\nEnd Sub\nEnd Class\nDo\nSet o = New C\nSet o = "
        "Nothing\nLoop",
    };
    for (const char* source : sources) {
        FakeHost host;
        ScriptControl control(&host);
        useSteppingClock(control, host);
        ScriptLimits limits = quickLimits();
        limits.runTime = 3 * Step;
        control.setLimits(limits);
        EXPECT_FALSE(control.AddCode(QString::fromLatin1(source))) << source;
        EXPECT_EQ(control.Error().Number(), 18) << source;
        EXPECT_TRUE(control.AddCode(QStringLiteral("x = 1"))) << "the control goes on";
    }
}

TEST(Limits, EachCallHasItsOwnTime)
{
    FakeHost host;
    ScriptControl control(&host);
    useSteppingClock(control, host);
    control.setLimits(quickLimits());
    ASSERT_TRUE(control.AddCode(QStringLiteral("Sub Main\nFor i = 1 To 500000\nNext\nEnd Sub")));
    for (int round = 0; round < 10; ++round)
        EXPECT_TRUE(control.Run(QStringLiteral("Main"))) << round;
}

TEST(Limits, TimeInBoxesDoesNotCount)
{
    FakeHost host;
    host.boxTime = std::chrono::hours(1);
    ScriptControl control(&host);
    useSteppingClock(control, host);
    control.setLimits(quickLimits());
    EXPECT_TRUE(control.AddCode(
        QStringLiteral("For i = 1 To 100000\nIf i Mod 50000 = 0 Then MsgBox i : x = InputBox(i)\nNext")))
        << qPrintable(control.Error().Description());
    EXPECT_EQ(host.boxes.size(), 4);
}

TEST(Limits, ALongRunTellsTheHostThatItIsBusy)
{
    FakeHost host;
    ScriptControl control(&host);
    useSteppingClock(control, host);
    ASSERT_TRUE(control.AddCode(QStringLiteral("For i = 1 To 1000000\nNext")));
    EXPECT_GT(host.busyCalls, 3);
    EXPECT_GT(host.lastElapsed.count(), 250);
}

TEST(Limits, TheHostMayCancel)
{
    FakeHost host;
    host.cancelAt = 3;
    ScriptControl control(&host);
    useSteppingClock(control, host);
    EXPECT_FALSE(control.AddCode(QStringLiteral("On Error Resume Next\nDo\nLoop")));
    EXPECT_EQ(control.Error().Number(), 18);
    EXPECT_EQ(control.Error().Description(), "The script was cancelled");
    EXPECT_EQ(host.busyCalls, 3);
}

TEST(Limits, CallDepthEndsWithError28WhichCanBeCaught)
{
    ScriptControl control;
    ScriptLimits limits;
    limits.callDepth = 50;
    control.setLimits(limits);
    ASSERT_TRUE(control.AddCode(
        QStringLiteral("Dim depth\nSub Down\ndepth = depth + 1\nDown\nEnd Sub\n"
                       "Sub Main\nOn Error Resume Next\nDown\nn = Err.Number\nR = n\nEnd Sub\nDim R\nMain")));
    EXPECT_EQ(text(control.Eval(QStringLiteral("R"))), "28");
    EXPECT_EQ(text(control.Eval(QStringLiteral("depth"))), "48");
}

TEST(Limits, MemoryEndsWithError7)
{
    ScriptControl control;
    ScriptLimits limits;
    limits.memory = 1000000;
    control.setLimits(limits);
    std::size_t used = 5000000;
    control.setMemoryMeter([&used] { return used += 100000; });
    EXPECT_FALSE(control.AddCode(QStringLiteral("On Error Resume Next\nDo\nn = n + 1\nLoop")));
    EXPECT_EQ(control.Error().Number(), 7);
}

TEST(Limits, TheRealHeapIsMeasured)
{
    const char* const sources[] = {
        "Set d = CreateObject(\"Scripting.Dictionary\")\nDo\nn = n + 1\nd(n) = String(1000, \"x\")\nLoop",
        "Dim a()\nReDim a(100000)\nFor i = 0 To 100000\na(i) = Space(1000000)\nNext",
        "a = Array(1)\nDo\na = Array(a, a, String(100000, \"x\"))\nLoop",
        "Class C\nPublic a(100000), b\nEnd Class\nSet o = Nothing\nDo\nSet c1 = New C\nc1.a(0) = 1\nSet c1.b = "
        "o\nSet o = c1\nLoop",
    };
    for (const char* source : sources) {
        ScriptControl control;
        ScriptLimits limits;
        limits.memory = 64 * 1024 * 1024;
        limits.runTime = std::chrono::minutes(2);
        control.setLimits(limits);
        EXPECT_FALSE(control.AddCode(QString::fromLatin1(source))) << source;
        EXPECT_EQ(control.Error().Number(), 7) << source;
    }
}

TEST(Limits, ALongTextIsError14WhichCanBeCaught)
{
    ScriptControl control;
    ScriptLimits limits;
    limits.stringLength = 1000;
    control.setLimits(limits);
    const char* const sources[] = {
        "s = \"x\"\nDo\ns = s & s\nLoop",
        "s = \"x\"\nDo\ns = s & \"0123456789\" & 1\nLoop",
        "s = \"x\"\nDo\ns = \"y\" & s\nLoop",
        "s = Space(1001)",
        "s = String(1001, \"x\")",
        "s = Replace(Space(500), \" \", \"xyz\")",
        "s = Join(Array(Space(600), Space(600)))",
        "s = Escape(Space(600))",
        "s = Space(600) & Space(200) & Space(600)",
        "s = Space(600) + Space(600)",
    };
    for (const char* source : sources) {
        EXPECT_FALSE(control.AddCode(QString::fromLatin1(source))) << source;
        EXPECT_EQ(control.Error().Number(), 14) << source;
    }
    EXPECT_TRUE(control.AddCode(QStringLiteral("On Error Resume Next\ns = Space(2000)\nn = Err.Number")));
    EXPECT_EQ(text(control.Eval(QStringLiteral("n"))), "14");
}

TEST(Limits, ATextTooLongDoesNotCompile)
{
    ScriptControl control;
    ScriptLimits limits;
    limits.codeLength = 100;
    control.setLimits(limits);
    EXPECT_FALSE(control.AddCode(repeated("x = 1\n", 100)));
    EXPECT_EQ(control.Error().Number(), 1001);
}

TEST(Limits, HostileNestingIsAnOrdinaryCompileError)
{
    constexpr int Many = 200000;
    const QString sources[] = {
        QStringLiteral("x = ") + repeated("(", Many),
        QStringLiteral("x = ") + repeated("(", Many) + QLatin1Char('1') + repeated(")", Many),
        QStringLiteral("x = ") + repeated("-", Many) + QLatin1Char('1'),
        QStringLiteral("x = ") + repeated("Not ", Many) + QLatin1Char('1'),
        QStringLiteral("x = ") + repeated("f(", Many),
        QStringLiteral("x = ") + repeated("1 ^ (", Many),
        QStringLiteral("x = a") + repeated(".b", Many),
        QStringLiteral("x = a") + repeated("(1)", Many),
        QStringLiteral("a") + repeated("(1)", Many) + QStringLiteral(" = 1"),
        QStringLiteral("a") + repeated(".b", Many),
        repeated("If 1 Then\n", Many),
        repeated("If 1 Then ", Many) + QStringLiteral("x = 1"),
        repeated("Do\n", Many),
        repeated("For i = 1 To 2\n", Many),
        repeated("For Each i In a\n", Many),
        repeated("With a\n", Many),
        repeated("Select Case 1\nCase 1\n", Many),
        repeated("While 1\n", Many),
        repeated("S (", Many),
        QStringLiteral("Const c = ") + repeated("(", Many),
    };
    for (const QString& source : sources) {
        ScriptControl control;
        EXPECT_FALSE(control.AddCode(source));
        EXPECT_EQ(control.Error().Number(), 1001) << qPrintable(source.left(20));
    }
}

TEST(Limits, LongButFlatTextsAreFine)
{
    constexpr int Many = 20000;
    const QString sources[] = {
        QStringLiteral("x = 1") + repeated(" + 1", Many),
        QStringLiteral("x = \"a\"") + repeated(" & \"a\"", Many),
        QStringLiteral("x = 1") + repeated(" And 1", Many),
        QStringLiteral("If 0 Then\n") + repeated("ElseIf 0 Then\nx = 1\n", Many) + QStringLiteral("End If"),
        repeated("x = 1 : ", Many),
        QStringLiteral("Dim a0") + repeated("x, b", 1).left(0),
        repeated("' comment\n", Many),
        repeated("\n", Many),
    };
    for (const QString& source : sources) {
        ScriptControl control;
        EXPECT_TRUE(control.AddCode(source)) << qPrintable(source.left(20)) << control.Error().Number();
    }
}

TEST(Limits, ManyArgumentsAndVariablesAreFineOrRefused)
{
    QString call = QStringLiteral("x = Array(1");
    call += repeated(", 1", 200) + QLatin1Char(')');
    ScriptControl control;
    EXPECT_TRUE(control.AddCode(call));
    QString tooMany = QStringLiteral("x = f(1");
    tooMany += repeated(", 1", 100000) + QLatin1Char(')');
    EXPECT_FALSE(control.AddCode(tooMany));
    EXPECT_EQ(control.Error().Number(), 1001);
}
