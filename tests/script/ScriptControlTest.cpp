#include "script/TestHost.h"

using namespace script_test;

namespace {

const auto TwoProcedures =
    QStringLiteral("Dim n\nn = 1\nSub Main\nn = n + 1\nEnd Sub\nFunction Add(a, b)\nAdd = a + b\nEnd Function");

} // namespace

TEST(ScriptControl, RunsProceduresAndGivesTheirResults)
{
    ScriptControl control;
    ASSERT_TRUE(control.AddCode(TwoProcedures));
    EXPECT_TRUE(control.Run(QStringLiteral("Main")));
    EXPECT_EQ(text(control.Run(QStringLiteral("add"), {Variant(2), Variant(3)})), "5");
    EXPECT_EQ(text(control.Eval(QStringLiteral("n"))), "2");
}

TEST(ScriptControl, AtFirstAndAfterClearTheErrorIsEmpty)
{
    ScriptControl control;
    const auto isEmpty = [&control] {
        const auto& error = control.Error();
        return error.Number() == 0 && error.Line() == 0 && error.Column() == 0 && error.Description().isEmpty() &&
               error.Text().isEmpty() && error.Source().isEmpty();
    };
    EXPECT_TRUE(isEmpty());
    EXPECT_FALSE(control.AddCode(QStringLiteral("x = (")));
    EXPECT_FALSE(isEmpty());
    control.Error().Clear();
    EXPECT_TRUE(isEmpty());
}

TEST(ScriptControl, ARunTimeErrorHasThePositionOfItsStatementAndNoText)
{
    ScriptControl control;
    ASSERT_TRUE(control.AddCode(QStringLiteral("Sub Main\r\n  x = 1\r\n  y = x + _\r\n    1 / 0\r\nEnd Sub")));
    EXPECT_FALSE(control.Run(QStringLiteral("Main")));
    EXPECT_EQ(control.Error().Number(), 11);
    EXPECT_EQ(control.Error().Line(), 3);
    EXPECT_EQ(control.Error().Column(), 2);
    EXPECT_EQ(control.Error().Description(), "Division by zero");
    EXPECT_EQ(control.Error().Text(), "");
    EXPECT_EQ(control.Error().Source(), "Microsoft VBScript runtime error");
}

TEST(ScriptControl, ACaseThatFailsIsReportedAtItsSelect)
{
    ScriptControl control;
    EXPECT_FALSE(control.AddCode(QStringLiteral("x = 1\n  Select Case x\nCase 2\ny = 1\nCase 1 / 0\nEnd Select")));
    EXPECT_EQ(control.Error().Number(), 11);
    EXPECT_EQ(control.Error().Line(), 2);
    EXPECT_EQ(control.Error().Column(), 2);
    EXPECT_FALSE(control.AddCode(QStringLiteral("Select Case 1\nCase 1\ny = 1 / 0\nEnd Select")));
    EXPECT_EQ(control.Error().Line(), 3) << "a statement of a case at its own place";
}

TEST(ScriptControl, LineEndsAreCountedAsTheClassicEngineDoes)
{
    const std::pair<const char*, int> rows[] = {
        {"\n\nx = 1/0", 3}, {"\r\n\r\nx = 1/0", 3}, {"\r\rx = 1/0", 3}, {"\n\rx = 1/0", 3}, {"\n\r\n\rx = 1/0", 4}};
    for (const auto& [source, line] : rows) {
        ScriptControl control;
        EXPECT_FALSE(control.AddCode(QString::fromLatin1(source)));
        EXPECT_EQ(control.Error().Line(), line) << source;
    }
}

TEST(ScriptControl, AnUncaughtErrorNamesWhatItIsAbout)
{
    const std::pair<const char*, const char*> rows[] = {
        {"Option Explicit\nx = 1", "Variable is undefined: 'x'"},
        {"noSuch 1", "Type mismatch: 'noSuch'"},
        {"Const c = 1\nc = 2", "Illegal assignment: 'c'"},
        {"Set x = New Nope", "Variable is undefined: 'Nope'"},
        {"Set x = Nothing\nx.Go", "Object variable not set: 'Go'"},
        {"x = 5\nx.Go", "Object required: 'Go'"},
    };
    for (const auto& [source, description] : rows) {
        ScriptControl control;
        EXPECT_FALSE(control.AddCode(QString::fromLatin1(source)));
        EXPECT_EQ(control.Error().Description(), description) << source;
    }
}

TEST(ScriptControl, ACaughtErrorDoesNotNameIt)
{
    ScriptControl control;
    ASSERT_TRUE(control.AddCode(QStringLiteral("On Error Resume Next\nnoSuch 1\nd = Err.Description")));
    EXPECT_EQ(text(control.Eval(QStringLiteral("d"))), "Type mismatch");
}

TEST(ScriptControl, AnUnknownProcedureFailsAsAnUnknownName)
{
    ScriptControl control;
    ASSERT_TRUE(control.AddCode(TwoProcedures));
    EXPECT_FALSE(control.Run(QStringLiteral("Nope")));
    EXPECT_EQ(control.Error().Number(), 438);
    EXPECT_FALSE(control.Run(QStringLiteral("n")));
    EXPECT_FALSE(control.Run(QString()));
}

TEST(ScriptControl, AWrongNumberOfArgumentsFails)
{
    ScriptControl control;
    ASSERT_TRUE(control.AddCode(TwoProcedures));
    EXPECT_FALSE(control.Run(QStringLiteral("Add"), {Variant(1)}));
    EXPECT_EQ(control.Error().Number(), 450);
}

TEST(ScriptControl, ArgumentsFromOutsideMayBeChangedWithoutHarm)
{
    ScriptControl control;
    ASSERT_TRUE(control.AddCode(QStringLiteral("Function F(a)\na = a & \"!\"\nF = a\nEnd Function")));
    const Variant argument(u"x");
    EXPECT_EQ(text(control.Run(QStringLiteral("F"), {argument})), "x!");
    EXPECT_EQ(argument.text(), "x");
}

TEST(ScriptControl, AByteOrderMarkIsPassedOver)
{
    ScriptControl control;
    EXPECT_FALSE(control.AddCode(QChar(0xfeff) + QStringLiteral("x = 1 / 0")));
    EXPECT_EQ(control.Error().Number(), 11);
    EXPECT_EQ(control.Error().Column(), 0);
}

TEST(ScriptControl, TextsAddUp)
{
    ScriptControl control;
    ASSERT_TRUE(control.AddCode(
        QStringLiteral("Sub Main\nHelper 5\nEnd Sub\nFunction Later\nLater = Other\nEnd Function")));
    ASSERT_TRUE(control.AddCode(
        QStringLiteral("Dim got\nSub Helper(v)\ngot = v\nEnd Sub\nFunction Other\nOther = 7\nEnd Function")));
    EXPECT_TRUE(control.Run(QStringLiteral("Main"))) << control.Error().Number();
    EXPECT_EQ(text(control.Eval(QStringLiteral("got"))), "5");
    EXPECT_EQ(text(control.Run(QStringLiteral("Later"))), "7");
}

TEST(ScriptControl, ALaterTextReplacesAProcedure)
{
    ScriptControl control;
    ASSERT_TRUE(
        control.AddCode(QStringLiteral("Function F\nF = 1\nEnd Function\nFunction G\nG = F\nEnd Function")));
    ASSERT_TRUE(control.AddCode(QStringLiteral("Function F\nF = 2\nEnd Function")));
    EXPECT_EQ(text(control.Run(QStringLiteral("G"))), "2");
}

TEST(ScriptControl, ResetForgetsCodeVariablesObjectsAndTheError)
{
    ScriptControl control;
    ASSERT_TRUE(control.AddObject(QStringLiteral("R"), make<Recorder>()));
    ASSERT_TRUE(control.AddCode(TwoProcedures));
    EXPECT_FALSE(control.AddCode(QStringLiteral("x = (")));
    control.Reset();
    EXPECT_EQ(control.Error().Number(), 0);
    EXPECT_FALSE(control.Run(QStringLiteral("Main")));
    EXPECT_EQ(text(control.Eval(QStringLiteral("IsEmpty(n)"))), "True");
    EXPECT_EQ(text(control.Eval(QStringLiteral("IsEmpty(R)"))), "True");
    EXPECT_TRUE(control.AddObject(QStringLiteral("R"), make<Recorder>()));
}

TEST(ScriptControl, TheSameProgramRunsAgainFromTheCacheAfterReset)
{
    ScriptControl control;
    for (int round = 0; round < 3; ++round) {
        control.Reset();
        const auto recorder = make<Recorder>();
        ASSERT_TRUE(control.AddObject(QStringLiteral("R"), recorder));
        ASSERT_TRUE(control.AddCode(QStringLiteral(
            "Class C\nPublic V\nPublic Sub Tell\nR.Echo V\nEnd Sub\nEnd Class\n"
            "Dim total\nSub Main\nDim o\nSet o = New C\no.V = 5 + total\ntotal = total + 1\no.Tell\nEnd Sub")));
        EXPECT_TRUE(control.Run(QStringLiteral("Main")));
        EXPECT_TRUE(control.Run(QStringLiteral("Main")));
        EXPECT_EQ(recorder->lines, QStringList({QStringLiteral("5"), QStringLiteral("6")}));
    }
}

TEST(ScriptControl, ATextMeansWhatItsSurroundingsMakeOfItEvenFromTheCache)
{
    ScriptControl control;
    const QString source = QStringLiteral("r = Left(\"abc\", 1)");
    ASSERT_TRUE(control.AddCode(source));
    EXPECT_EQ(text(control.Eval(QStringLiteral("r"))), "a");
    control.Reset();
    ASSERT_TRUE(control.AddCode(QStringLiteral("Function Left(a, b)\nLeft = \"mine\"\nEnd Function")));
    ASSERT_TRUE(control.AddCode(source));
    EXPECT_EQ(text(control.Eval(QStringLiteral("r"))), "mine");
}

TEST(ScriptControl, AddObjectRefusesNoObjectAndANameThatIsThere)
{
    ScriptControl control;
    EXPECT_FALSE(control.AddObject(QStringLiteral("R"), {}));
    EXPECT_EQ(control.Error().Number(), 5);
    EXPECT_TRUE(control.AddObject(QStringLiteral("R"), make<Recorder>()));
    EXPECT_FALSE(control.AddObject(QStringLiteral("r"), make<Recorder>()));
    EXPECT_FALSE(control.AddObject(QString(), make<Recorder>()));
}

TEST(HostObjects, MembersAreReachedInAnyCase)
{
    ScriptControl control;
    const auto recorder = make<Recorder>();
    control.AddObject(QStringLiteral("R"), recorder);
    ASSERT_TRUE(control.AddCode(QStringLiteral("r.ECHO \"hi\"\nR.level = 2.5\nr.echo R.Level * 2")));
    EXPECT_EQ(recorder->lines, QStringList({QStringLiteral("hi"), QStringLiteral("5")}));
}

TEST(HostObjects, MembersAreGlobalOnlyWhenAskedFor)
{
    const auto recorder = make<Recorder>();
    ScriptControl closed;
    closed.AddObject(QStringLiteral("R"), recorder);
    EXPECT_FALSE(closed.AddCode(QStringLiteral("Echo 1")));
    ScriptControl open;
    open.AddObject(QStringLiteral("R"), recorder, true);
    ASSERT_TRUE(open.AddCode(QStringLiteral("Echo 1\nLevel = 7\nEcho Level + 1\nCell(1, 2) = 3\nEcho Cell(4, 5)\n"
                                            "Sub S\nLevel = 8\nEcho Level\nEnd Sub\nS")))
        << qPrintable(open.Error().Description());
    EXPECT_EQ(recorder->lines, QStringList({QStringLiteral("1"), QStringLiteral("8"), QStringLiteral("1,2=3"),
                                            QStringLiteral("405"), QStringLiteral("8")}));
}

TEST(HostObjects, IndexedAndDefaultProperties)
{
    ScriptControl control;
    const auto recorder = make<Recorder>();
    control.AddObject(QStringLiteral("R"), recorder);
    ASSERT_TRUE(
        control.AddCode(QStringLiteral("R.Echo R.Cell(1, 2)\nR.Echo R(3)\nR(4) = \"x\"\nR.Cell(5, 6) = \"y\"\n"
                                       "Set R.Child = R\nR.Echo R.Child.Child.Cell(7)\nR.Child.Level = 9\n"
                                       "R.Child.Cell(8) = \"z\"\nR.Echo R.Level")))
        << qPrintable(control.Error().Description());
    EXPECT_EQ(recorder->lines, QStringList({QStringLiteral("102"), QStringLiteral("300"), QStringLiteral("4,0=x"),
                                            QStringLiteral("5,6=y"), QStringLiteral("700"), QStringLiteral("8,0=z"),
                                            QStringLiteral("9")}));
    recorder->setChild({});
}

TEST(HostObjects, FailuresHaveTheirNumbers)
{
    const std::pair<const char*, int> rows[] = {
        {"R.Nope", 438},     {"x = R.Nope", 438},      {"R.Nope = 1", 438},       {"R.Fixed = 1", 383},
        {"R.Echo", 450},     {"R.Echo 1, 2", 450},     {"R.Level = \"abc\"", 13}, {"x = R.Cell()", 450},
        {"R.Echo = 5", 438}, {"Set R.Level = 5", 424}, {"R.ThrowForeign", 507},   {"x = R", 438},
        {"R = 5", 501},      {"Set R = Nothing", 501},
    };
    for (const auto& [source, number] : rows) {
        ScriptControl control;
        control.AddObject(QStringLiteral("R"), make<Recorder>());
        EXPECT_FALSE(control.AddCode(QString::fromLatin1(source))) << source;
        EXPECT_EQ(control.Error().Number(), number) << source << " " << qPrintable(control.Error().Description());
    }
}

TEST(HostObjects, ForEachWalksACollection)
{
    ScriptControl control;
    control.AddObject(QStringLiteral("R"), make<Recorder>());
    ASSERT_TRUE(control.AddCode(QStringLiteral("For Each x In R\ns = s & x\nNext")));
    EXPECT_EQ(text(control.Eval(QStringLiteral("s"))), "123");
    EXPECT_EQ(text(control.Eval(QStringLiteral("TypeName(x)"))), "Empty") << "nothing is left in the variable";
}

TEST(HostObjects, AnObjectThatDiedUnderTheScriptIsAnErrorNotACrash)
{
    ScriptControl control;
    const auto recorder = make<Recorder>();
    control.AddObject(QStringLiteral("R"), recorder);
    recorder->setChild(Variant(make<Recorder>()));
    ASSERT_TRUE(control.AddCode(QStringLiteral("Set c = R.Child\nR.Child = Empty\nc.Level = 3\nR.Echo c.Level")));
    recorder->setChild(Variant::nothing());
    EXPECT_FALSE(control.AddCode(QStringLiteral("R.Child.Level = 1")));
    EXPECT_EQ(control.Error().Number(), 91);
    recorder->setChild({});
    EXPECT_FALSE(control.AddCode(QStringLiteral("R.Child.Level = 1")));
    EXPECT_EQ(control.Error().Number(), 424);
}

TEST(HostObjects, AScriptMayBeCalledBackWhileItRuns)
{
    ScriptControl control;
    const auto recorder = make<Recorder>();
    recorder->control = &control;
    control.AddObject(QStringLiteral("R"), recorder);
    ASSERT_TRUE(control.AddCode(QStringLiteral("Function Twice(n)\nTwice = n * 2\nEnd Function\n"
                                               "Sub Main\nx = 1\nR.Echo R.CallBack(\"Twice\", 21) + x\nEnd Sub")));
    EXPECT_TRUE(control.Run(QStringLiteral("Main")));
    EXPECT_EQ(recorder->lines, QStringList(QStringLiteral("43")));
}

TEST(HostObjects, EndlessCallsBackEndWithAnError)
{
    ScriptControl control;
    const auto recorder = make<Recorder>();
    recorder->control = &control;
    control.AddObject(QStringLiteral("R"), recorder);
    ASSERT_TRUE(control.AddCode(QStringLiteral("Sub Again\nR.CallBack \"Again\"\nEnd Sub")));
    EXPECT_FALSE(control.Run(QStringLiteral("Again")));
    EXPECT_EQ(control.Error().Number(), 28);
    EXPECT_FALSE(control.isRunning());
}

TEST(HostObjects, AScriptMayResetItsOwnControl)
{
    ScriptControl control;
    const auto recorder = make<Recorder>();
    recorder->control = &control;
    control.AddObject(QStringLiteral("R"), recorder);
    ASSERT_TRUE(
        control.AddCode(QStringLiteral("Dim v\nv = \"kept\"\nSub Main\nDim o\nSet o = R\no.ResetControl\n"
                                       "o.Echo v\nHelper\nEnd Sub\nSub Helper\nR.Echo \"still here\"\nEnd Sub")));
    EXPECT_TRUE(control.Run(QStringLiteral("Main"))) << qPrintable(control.Error().Description());
    EXPECT_EQ(recorder->lines, QStringList({QStringLiteral("kept"), QStringLiteral("still here")}));
    EXPECT_FALSE(control.Run(QStringLiteral("Main"))) << "the new program has no Main";
}

TEST(HostObjects, AScriptMayMakeTheHostDeleteItsControl)
{
    const auto recorder = make<Recorder>();
    recorder->owned = std::make_unique<ScriptControl>();
    recorder->owned->AddObject(QStringLiteral("R"), recorder);
    ASSERT_TRUE(recorder->owned->AddCode(
        QStringLiteral("Sub Main\nR.DestroyControl\nR.Echo \"still here\"\nx = 1 / 0\nEnd Sub")));
    EXPECT_FALSE(recorder->owned->Run(QStringLiteral("Main")));
    EXPECT_EQ(recorder->lines, QStringList(QStringLiteral("still here")));
    EXPECT_EQ(recorder->references(), 1u);
}

TEST(HostObjects, AScriptsProcedureAndObjectCanBeKeptAndCalled)
{
    ScriptControl control;
    const auto recorder = make<Recorder>();
    control.AddObject(QStringLiteral("R"), recorder);
    ASSERT_TRUE(control.AddCode(QStringLiteral("Function F(n)\nF = n + 1\nEnd Function\nR.Keep GetRef(\"F\")")));
    EXPECT_EQ(zan::values::toText(recorder->callKept(Variant(4))), "5");
    ASSERT_TRUE(control.AddCode(
        QStringLiteral("Class C\nPublic Default Property Get P\nP = 17\nEnd Property\nEnd Class\nR.Keep New C")));
    EXPECT_EQ(zan::values::toText(recorder->callKept({})), "17");
    EXPECT_EQ(zan::values::toText(recorder->kept), "17");
    control.Reset();
    EXPECT_THROW(recorder->callKept({}), zan::values::RuntimeError) << "its program has ended";
    EXPECT_EQ(recorder->kept.object()->typeName(), "Object");
}

TEST(HostObjects, AnObjectOfAnotherProgramIsAnObjectLikeAny)
{
    ScriptControl first;
    ScriptControl second;
    const auto recorder = make<Recorder>();
    first.AddObject(QStringLiteral("R"), recorder);
    second.AddObject(QStringLiteral("R"), recorder);
    ASSERT_TRUE(first.AddCode(
        QStringLiteral("Dim g\ng = 5\nClass C\nPublic V\nPublic Function M(n)\nM = n + g\nEnd Function\nEnd Class\n"
                       "Set o = New C\no.V = 3\nSet R.Child = o")));
    ASSERT_TRUE(
        second.AddCode(QStringLiteral("Dim g\ng = 100\nR.Echo R.Child.M(1)\nR.Child.V = 8\nR.Echo R.Child.V")))
        << qPrintable(second.Error().Description());
    EXPECT_EQ(recorder->lines, QStringList({QStringLiteral("6"), QStringLiteral("8")}));
    first.Reset();
    EXPECT_FALSE(second.AddCode(QStringLiteral("R.Echo R.Child.M(1)")));
    EXPECT_EQ(second.Error().Number(), 424);
    recorder->setChild({});
}

TEST(Boxes, GoThroughTheHost)
{
    FakeHost host;
    host.typed = QStringLiteral("typed");
    ScriptControl control(&host);
    ASSERT_TRUE(control.AddCode(QStringLiteral("a = MsgBox(\"Sure?\", vbYesNo + vbQuestion, \"T\")\n"
                                               "b = InputBox(\"Name\", \"T2\", \"d\")\nMsgBox 5")));
    EXPECT_EQ(host.boxes,
              QStringList({QStringLiteral("Sure?|36|T"), QStringLiteral("Name|T2|d"), QStringLiteral("5|0|")}));
    EXPECT_EQ(text(control.Eval(QStringLiteral("a & b"))), "6typed");
}

TEST(Boxes, ACancelledInputBoxGivesEmpty)
{
    FakeHost host;
    ScriptControl control(&host);
    EXPECT_EQ(text(control.Eval(QStringLiteral("IsEmpty(InputBox(\"x\"))"))), "True");
}

TEST(CreateObject, MakesWhatTheHostRegisters)
{
    ScriptControl control;
    control.registerClass(QStringLiteral("Site.Recorder"), [] { return make<Recorder>(); });
    EXPECT_EQ(text(control.Eval(QStringLiteral("TypeName(CreateObject(\"SITE.recorder\"))"))), "Recorder");
    control.Reset();
    EXPECT_EQ(text(control.Eval(QStringLiteral("TypeName(CreateObject(\"Site.Recorder\"))"))), "Recorder");
    EXPECT_FALSE(control.Eval(QStringLiteral("CreateObject(\"Scripting.FileSystemObject\")")));
    EXPECT_EQ(control.Error().Number(), 429);
}

TEST(Endings, CyclesHearClassTerminateWhenTheProgramEnds)
{
    const auto recorder = make<Recorder>();
    {
        ScriptControl control;
        control.AddObject(QStringLiteral("R"), recorder);
        ASSERT_TRUE(control.AddCode(QStringLiteral(
            "Class Node\nPublic Other, Name\nPrivate Sub Class_Terminate\nR.Echo \"end \" & Name & "
            "TypeName(Other)\nEnd Sub\nEnd Class\n"
            "Set a = New Node\nSet b = New Node\na.Name = \"a\"\nb.Name = \"b\"\nSet a.Other = b\nSet b.Other = a\n"
            "Set a = Nothing\nSet b = Nothing\nR.Echo \"last\"")));
        EXPECT_EQ(recorder->lines, QStringList(QStringLiteral("last")));
    }
    EXPECT_EQ(recorder->lines.size(), 3);
    EXPECT_TRUE(recorder->lines.contains(QStringLiteral("end aNode")));
    EXPECT_TRUE(recorder->lines.contains(QStringLiteral("end bNode")));
    EXPECT_EQ(recorder->references(), 1u) << "nothing of the program is left";
}

TEST(Endings, CyclesThroughDictionariesAreBroken)
{
    const auto recorder = make<Recorder>();
    {
        ScriptControl control;
        control.AddObject(QStringLiteral("R"), recorder);
        ASSERT_TRUE(control.AddCode(QStringLiteral(
            "Set d = CreateObject(\"Scripting.Dictionary\")\nd.Add \"self\", d\nd.Add \"r\", R\nSet d = Nothing")));
    }
    EXPECT_EQ(recorder->references(), 1u);
}

TEST(Endings, AnErrorInTheMiddleLeavesNothingBehind)
{
    const auto recorder = make<Recorder>();
    ScriptControl control;
    control.AddObject(QStringLiteral("R"), recorder);
    ASSERT_TRUE(control.AddCode(
        QStringLiteral("Sub Main\nSet a = R\nDim b(2)\nSet b(1) = R\nR.Echo R.Cell(R, R) & (1 / 0)\nEnd Sub")));
    EXPECT_FALSE(control.Run(QStringLiteral("Main")));
    control.Reset();
    EXPECT_EQ(recorder->references(), 1u);
}

TEST(Endings, AMillionLinkedObjectsAreFreedWithoutRecursion)
{
    ScriptControl control;
    ScriptLimits limits;
    limits.runTime = std::chrono::minutes(5);
    limits.memory = std::size_t(4) << 30;
    control.setLimits(limits);
    ASSERT_TRUE(control.AddCode(QStringLiteral(
        "Class Node\nPublic L\nEnd Class\nSet h = Nothing\nFor i = 1 To 300000\nSet n = New Node\nSet n.L = h\nSet "
        "h = "
        "n\nNext\n"
        "Set n = Nothing\nSet h = Nothing\n"
        "a = Empty\nFor i = 1 To 300000\na = Array(a)\nNext\na = Empty\n"
        "Set d = Nothing\nFor i = 1 To 100000\nSet e = CreateObject(\"Scripting.Dictionary\")\ne.Add 1, d\nSet d = "
        "e\nNext\nSet e = Nothing\nSet d = Nothing")))
        << qPrintable(control.Error().Description());
}

namespace {

/// Says from which statement it was called.
class PlaceTeller : public zan::binding::Object
{
public:
    explicit PlaceTeller(ScriptControl& control)
        : m_control(control)
    {}
    QString Here() const
    {
        const zan::script::ScriptPlace place = m_control.currentPlace();
        return QStringLiteral("%1:%2").arg(place.line).arg(place.column);
    }
    const zan::binding::MemberTable& members() const override
    {
        static const zan::binding::MemberTable table("PlaceTeller", nullptr,
                                                     {zan::binding::method<&PlaceTeller::Here>("Here")});
        return table;
    }

private:
    ScriptControl& m_control;
};

} // namespace

TEST(HostObjects, AnObjectLearnsWhichStatementHasCalledIt)
{
    ScriptControl control;
    control.AddObject(QStringLiteral("P"), make<PlaceTeller>(control));
    ASSERT_TRUE(control.AddCode(QStringLiteral("Dim a, b\na = P.Here\nSub Inner\n  b = 1 : b = P.Here\nEnd Sub\n"
                                               "Inner\nDim c\nc = P.Here")));
    EXPECT_EQ(text(control.Eval(QStringLiteral("a"))), "2:0");
    EXPECT_EQ(text(control.Eval(QStringLiteral("b"))), "4:10") << "the innermost procedure counts";
    EXPECT_EQ(text(control.Eval(QStringLiteral("c"))), "8:0") << "and its caller again afterwards";
    EXPECT_EQ(control.currentPlace().line, 0) << "no script runs";
}
