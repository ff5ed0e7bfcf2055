// The time limit is a limit of time: whatever grows with its data takes time off it, asks the host whether to go on,
// and can be cancelled. The clock goes on by a step whenever somebody looks, so a test counts looks, not seconds.

#include "script/TestHost.h"

using namespace script_test;

namespace {

constexpr std::chrono::milliseconds Step{100};

/// Statements, each of them one operation over much data, in a loop or in a line: no pass of a loop of the script's
/// own is dear.
struct Row
{
    const char* name;
    const char* before;   ///< makes the data; looks at the clock little
    const char* repeated; ///< stands many times in a row: no loop looks
};

void PrintTo(const Row& row, std::ostream* out)
{
    *out << row.name;
}

constexpr Row Rows[] = {
    {"RegExpTest", "Set e = New RegExp\ne.Pattern = \"b\"\ns = String(100000, \"a\")\n", "x = e.Test(s)"},
    {"RegExpExecute", "Set e = New RegExp\ne.Global = True\ne.Pattern = \"a\"\ns = String(20000, \"a\")\n",
     "Set x = e.Execute(s)"},
    {"RegExpReplace", "Set e = New RegExp\ne.Global = True\ne.Pattern = \"a\"\ns = String(20000, \"a\")\n",
     "x = e.Replace(s, \"b\")"},
    {"InStr", "s = String(1000000, \"a\")\n", "x = InStr(s, \"b\")"},
    {"InStrIgnoringCase", "s = String(1000000, \"a\")\n", "x = InStr(1, s, \"B\", 1)"},
    {"InStrRev", "s = String(1000000, \"a\")\n", "x = InStrRev(s, \"b\")"},
    {"Replace", "s = String(100000, \"a\")\n", "x = Replace(s, \"a\", \"b\")"},
    {"Split", "s = String(100000, \"a\")\n", "x = Split(s, \"a\")"},
    {"Join", "Dim a(100000)\n", "x = Join(a)"},
    {"Filter", "Dim a(100000)\n", "x = Filter(a, \"b\")"},
    {"UCase", "s = String(1000000, \"a\")\n", "x = UCase(s)"},
    {"StrReverse", "s = String(1000000, \"a\")\n", "x = StrReverse(s)"},
    {"StrComp", "s = String(1000000, \"a\")\n", "x = StrComp(s, s & \"b\")"},
    {"Escape", "s = String(100000, \"a\")\n", "x = Escape(s)"},
    {"IsNumeric", "s = String(1000000, \"1\")\n", "x = IsNumeric(s)"},
    {"Comparison", "s = String(1000000, \"a\")\nt = String(1000000, \"a\")\n", "x = (s = t)"},
    {"Condition", "s = String(1000000, \"a\")\nt = String(1000000, \"a\")\n", "If s < t Then x = 1"},
    {"Joining", "s = String(1000000, \"a\")\n", "x = s & \"b\""},
    {"Adding", "s = String(1000000, \"a\")\n", "x = s + s"},
    {"CopyOfAnArray", "Dim a(1000000)\n", "b = a : b(0) = 1"},
    {"ReDimPreserve", "Dim a()\nReDim a(1000000)\n", "ReDim Preserve a(UBound(a) + 1)"},
    {"Execute", "s = \"\"\nFor i = 1 To 20\ns = s & Space(1000) & \"x = 1\" & vbCrLf\nNext\n",
     "n = n + 1 : Execute s & \"y = \" & n"},
    {"Eval", "s = Space(20000) & \"1 + \"\n", "n = n + 1 : x = Eval(s & n)"},
    {"DictionaryKeys", "Set d = CreateObject(\"Scripting.Dictionary\")\nFor i = 1 To 5000\nd(i) = i\nNext\n",
     "x = d.Keys()"},
    {"HostCalls", "", "x = R.Level"},
};

class TimeLimit : public testing::TestWithParam<Row>
{
protected:
    TimeLimit()
    {
        control.setClock([this] { return host.now += Step; });
        control.AddObject(QStringLiteral("R"), make<Recorder>());
    }
    bool run(const ScriptLimits& limits)
    {
        control.setLimits({.runTime = std::chrono::hours(10), .busyInterval = std::chrono::hours(1)});
        EXPECT_TRUE(control.AddCode(QString::fromLatin1(GetParam().before)))
            << qPrintable(control.Error().Description());
        constexpr int Times = 1000;
        const QString line = QString::fromLatin1(GetParam().repeated) + QLatin1Char('\n');
        EXPECT_TRUE(
            control.AddCode(QStringLiteral("Sub Main\n") + line.repeated(Times) + QStringLiteral("End Sub")))
            << qPrintable(control.Error().Description());
        control.setLimits(limits);
        return control.Run(QStringLiteral("Main")).has_value();
    }

    FakeHost host;
    ScriptControl control{&host};
};

std::string nameOf(const testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

} // namespace

TEST_P(TimeLimit, WorkOverMuchDataTakesTimeOffTheLimit)
{
    EXPECT_FALSE(run({.runTime = std::chrono::seconds(1), .busyInterval = std::chrono::hours(1)}));
    EXPECT_EQ(control.Error().Number(), 18);
}

TEST_P(TimeLimit, WorkOverMuchDataAsksTheHostAndCanBeCancelled)
{
    host.cancelAt = 2;
    EXPECT_FALSE(run({.runTime = std::chrono::hours(10), .busyInterval = 3 * Step}));
    EXPECT_EQ(control.Error().Description(), "The script was cancelled");
    EXPECT_EQ(host.busyCalls, 2);
}

INSTANTIATE_TEST_SUITE_P(Operations, TimeLimit, testing::ValuesIn(Rows), nameOf);

TEST(TimeLimitOfOneCall, APatternThatNeverEndsIsStoppedInsideOneMatch)
{
    FakeHost host;
    ScriptControl control(&host);
    control.setClock([&host] { return host.now += Step; });
    control.setLimits({.runTime = std::chrono::seconds(1), .busyInterval = std::chrono::hours(1)});
    EXPECT_FALSE(control.AddCode(QStringLiteral("Set r = New RegExp\nr.Pattern = \"a*b\"\n"
                                                "x = r.Test(String(100000, \"a\"))")));
    EXPECT_EQ(control.Error().Number(), 18);
}

TEST(TimeLimitOfOneCall, MatchesInALongTextAreThoseOfAShortOne)
{
    // Behind 5,000 characters, where a search goes step by step: empty matches, groups, ends and characters of two halves.
    const char* const patterns[] = {"x*", "(a)|(b)", "b$", "^.", "\\\\bq", "(?=b)", "[^a]", "a(?!b)"};
    for (const char* pattern : patterns) {
        ScriptControl control;
        control.setLimits({.runTime = std::chrono::hours(1)}); // what is found counts here, not when
        ASSERT_TRUE(control.AddCode(
            QStringLiteral(
                "Function Found(s, skip)\nFound = \"\"\nSet r = New RegExp\nr.Global = True\n"
                "r.Pattern = \"%1\"\nFor Each m In r.Execute(s)\nIf m.FirstIndex >= skip Then Found = Found & "
                "(m.FirstIndex - skip) & m.Value & \";\"\nNext\nEnd Function\n"
                "tail = \" ab\" & ChrW(&hD83D) & ChrW(&hDE00) & \"qbxxab\"\n"
                "short = Found(Space(50) & tail, 50)\nlong = Found(Space(5000) & tail, 5000)")
                .arg(QString::fromLatin1(pattern).replace(QLatin1String("\\\\"), QLatin1String("\\")))))
            << qPrintable(control.Error().Description());
        EXPECT_EQ(text(control.Eval(QStringLiteral("long"))), text(control.Eval(QStringLiteral("short"))))
            << pattern;
    }
}

TEST(TimeLimitOfOneCall, FindingIsLinearForTextsThatNearlyMatchEverywhere)
{
    // A search that compares at every place would need some 10^11 comparisons for each of these.
    const char* const sources[] = {
        "x = InStr(s, w)",
        "x = InStr(1, s, w, 1)",
        "x = InStrRev(s, v)",
        "x = InStrRev(s, v, -1, 1)",
        "x = Len(Replace(s, w, \"c\"))",
        "x = UBound(Split(s, w))",
        "x = UBound(Filter(Array(s), w))",
    };
    for (const char* source : sources) {
        ScriptControl control;
        control.setClock([] { return std::chrono::nanoseconds(0); });
        EXPECT_TRUE(control.AddCode(QStringLiteral("s = String(1000000, \"a\")\nw = String(500000, \"a\") & \"b\"\n"
                                                   "v = \"b\" & String(500000, \"a\")\n") +
                                    QString::fromLatin1(source)))
            << qPrintable(control.Error().Description());
    }
}
