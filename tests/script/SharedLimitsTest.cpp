// One run has one set of limits: the scripts that it sets off and the last words of its objects get none of their own.

#include "script/TestHost.h"

using namespace script_test;

namespace {

constexpr std::chrono::milliseconds Step{100};
constexpr std::chrono::seconds Limit{5};

/// Runs code of another control when a script asks for it, and says what came of it.
class Other : public zan::binding::Object
{
public:
    const zan::binding::MemberTable& members() const override
    {
        static const zan::binding::MemberTable table("Other", nullptr, {zan::binding::method<&Other::run>("Run")});
        return table;
    }
    void run() { succeeded.push_back(control->AddCode(code)); }

    ScriptControl* control = nullptr;
    QString code;
    std::vector<bool> succeeded;
};

/// A control with a clock that goes on by a step whenever somebody looks, and one beside it.
class SharedLimits : public testing::Test
{
protected:
    SharedLimits()
    {
        control.setClock([this] { return host.now += Step; });
        ScriptLimits limits;
        limits.runTime = Limit;
        limits.busyInterval = std::chrono::hours(1);
        control.setLimits(limits);
        other->control = inner.get();
        control.AddObject(QStringLiteral("Other"), other);
        recorder->control = &control;
        control.AddObject(QStringLiteral("R"), recorder);
    }
    /// Whether no more time has gone than one limit and a few looks.
    bool tookOneLimit() const { return host.now < Limit + 20 * Step; }

    FakeHost host;
    ScriptControl control{&host};
    std::unique_ptr<ScriptControl> inner = control.beside();
    Ref<Other> other = make<Other>();
    Ref<Recorder> recorder = make<Recorder>();
};

const QString LastWordsForEver =
    QStringLiteral("Class C\nPrivate Sub Class_Terminate\nOn Error Resume Next\nDo\nLoop\n"
                   "End Sub\nEnd Class\n");

} // namespace

TEST_F(SharedLimits, ScriptsSetOffByAScriptShareItsTimeAndEndWithIt)
{
    other->code = QStringLiteral("On Error Resume Next\nDo\nLoop");
    EXPECT_FALSE(control.AddCode(QStringLiteral("On Error Resume Next\nOther.Run\nOther.Run\nR.Echo \"went on\"")));
    EXPECT_EQ(control.Error().Number(), 18);
    EXPECT_EQ(inner->Error().Number(), 18);
    EXPECT_EQ(other->succeeded, std::vector<bool>{false}) << "the second call was not made";
    EXPECT_TRUE(recorder->lines.empty());
    EXPECT_TRUE(tookOneLimit());
    EXPECT_FALSE(control.isStopped());
    EXPECT_TRUE(control.AddCode(QStringLiteral("x = 1"))) << "the next call has its own limits";
    EXPECT_TRUE(inner->AddCode(QStringLiteral("x = 1")));
}

TEST_F(SharedLimits, ManyShortScriptsSetOffByOneAddUp)
{
    other->code = QStringLiteral("x = 1");
    EXPECT_FALSE(control.AddCode(QStringLiteral("On Error Resume Next\nDo\nOther.Run\nLoop")));
    EXPECT_EQ(control.Error().Number(), 18);
    EXPECT_TRUE(tookOneLimit());
}

TEST_F(SharedLimits, AScriptSetOffFromABoxCountsThoughTheBoxDoesNot)
{
    host.boxTime = std::chrono::hours(1);
    struct Pressing : FakeHost
    {
        int messageBox(const QString&, int, const QString&) override
        {
            now += std::chrono::hours(1);
            pressed = inner->AddCode(QStringLiteral("Do\nLoop"));
            now += std::chrono::hours(1);
            return 1;
        }
        ScriptControl* inner = nullptr;
        bool pressed = true;
    } pressing;
    pressing.inner = inner.get();
    control.setHost(&pressing);
    control.setClock([&pressing] { return pressing.now += Step; });
    EXPECT_FALSE(control.AddCode(QStringLiteral("MsgBox 1\nR.Echo \"went on\"")));
    EXPECT_FALSE(pressing.pressed);
    EXPECT_EQ(control.Error().Number(), 18);
    EXPECT_TRUE(recorder->lines.empty());
    EXPECT_LT(pressing.now, std::chrono::hours(2) + Limit + 20 * Step);
    control.setClock([this] { return host.now; });
    control.setHost(&host);
}

TEST_F(SharedLimits, CallsOfOneSessionShareOneTime)
{
    control.setLimits({.runTime = 30 * Step, .busyInterval = std::chrono::hours(1)});
    ASSERT_TRUE(control.AddCode(QStringLiteral("Sub Main\nFor i = 1 To 400000\nNext\nEnd Sub"))); // some 20 looks
    EXPECT_TRUE(control.Run(QStringLiteral("Main")));
    EXPECT_TRUE(control.Run(QStringLiteral("Main")));
    const ScriptControl::Session session(control);
    EXPECT_TRUE(control.Run(QStringLiteral("Main")));
    EXPECT_FALSE(control.Run(QStringLiteral("Main")));
    EXPECT_EQ(control.Error().Number(), 18);
}

TEST_F(SharedLimits, TheMemoryOfAllOfThemIsOne)
{
    control.setLimits({.memory = 1000000});
    std::size_t used = 5000000;
    control.setMemoryMeter([&used] { return used; });
    // The heap grows by less than the limit in each of the two, by more in both.
    struct Grow : zan::binding::Object
    {
        const zan::binding::MemberTable& members() const override
        {
            static const zan::binding::MemberTable table("Grow", nullptr,
                                                         {zan::binding::method<&Grow::grow>("Grow")});
            return table;
        }
        void grow() { *used += 600000; }
        std::size_t* used = nullptr;
    };
    const auto growing = make<Grow>();
    growing->used = &used;
    control.AddObject(QStringLiteral("G"), growing);
    inner->AddObject(QStringLiteral("G"), growing);
    other->code = QStringLiteral("For i = 1 To 50000\nNext\nG.Grow\nFor i = 1 To 50000\nNext");
    EXPECT_TRUE(control.AddCode(QStringLiteral("For i = 1 To 50000\nNext\nG.Grow\nFor i = 1 To 50000\nNext")));
    EXPECT_TRUE(inner->AddCode(other->code));
    EXPECT_FALSE(control.AddCode(QStringLiteral("For i = 1 To 50000\nNext\nG.Grow\nOther.Run")));
    EXPECT_EQ(control.Error().Number(), 7);
}

TEST_F(SharedLimits, LastWordsAtResetShareOneLimit)
{
    ASSERT_TRUE(
        control.AddCode(LastWordsForEver + QStringLiteral("Dim a(5)\nFor i = 0 To 5\nSet a(i) = New C\nNext")));
    host.now = {};
    control.Reset();
    EXPECT_TRUE(tookOneLimit());
    EXPECT_GT(host.now, Limit) << "they did run";
    EXPECT_TRUE(control.AddCode(QStringLiteral("x = 1")));
}

TEST_F(SharedLimits, LastWordsOfCyclesAtTheEndShareOneLimit)
{
    auto own = std::make_unique<ScriptControl>(&host);
    own->setClock([this] { return host.now += Step; });
    own->setLimits({.runTime = Limit, .busyInterval = std::chrono::hours(1)});
    ASSERT_TRUE(own->AddCode(QStringLiteral("Class C\nPublic Self\nPrivate Sub Class_Terminate\nDo\nLoop\nEnd Sub\n"
                                            "End Class\nFor i = 0 To 5\nSet o = New C\nSet o.Self = o\nNext")));
    host.now = {};
    own.reset();
    EXPECT_TRUE(tookOneLimit());
}

TEST_F(SharedLimits, ALimitHitInLastWordsEndsTheRun)
{
    EXPECT_FALSE(control.AddCode(LastWordsForEver +
                                 QStringLiteral("On Error Resume Next\nSet o = New C\nSet o = Nothing\nR.Echo 1\n"
                                                "R.Echo 2")));
    EXPECT_EQ(control.Error().Number(), 18);
    EXPECT_LE(recorder->lines.size(), 1) << "the run ends with the next thing that it asks for";
    EXPECT_TRUE(tookOneLimit());
    EXPECT_FALSE(control.AddCode(QStringLiteral("Sub S\nDim last\nSet last = New C\nEnd Sub\nS")))
        << "nor does a run succeed that had no more to do";
    EXPECT_EQ(control.Error().Number(), 18);
}

TEST_F(SharedLimits, ObjectsOfARunThatWasStoppedStillHearTheirEnd)
{
    EXPECT_FALSE(control.AddCode(QStringLiteral("Class C\nPrivate Sub Class_Terminate\nR.Echo \"end\"\nEnd Sub\n"
                                                "End Class\nSub S\nSet o = New C\nDo\nLoop\nEnd Sub\nS")));
    EXPECT_EQ(recorder->lines, QStringList(QStringLiteral("end")));
}

TEST(LastWords, AreHeardHoweverDeepTheObjectsNest)
{
    // Each object lets go of the next one inside its own Class_Terminate.
    constexpr int Objects = 5000;
    ScriptControl control;
    ASSERT_TRUE(control.AddCode(QStringLiteral(
        "Dim ended\nClass C\nPublic Inner\nPrivate Sub Class_Terminate\nended = ended + 1\n"
        "Set Inner = Nothing\nEnd Sub\nEnd Class\nSub Main(n)\nSet o = Nothing\nFor i = 1 To n\n"
        "Set p = New C\nSet p.Inner = o\nSet o = p\nNext\nSet p = Nothing\nSet o = Nothing\nEnd Sub")));
    ASSERT_TRUE(control.Run(QStringLiteral("Main"), {Variant(Objects)}));
    EXPECT_EQ(text(control.Eval(QStringLiteral("ended"))), QString::number(Objects));
}

TEST(LastWords, AreHeardWhereNoProcedureMayBeCalledAnyMore)
{
    ScriptControl control;
    ASSERT_TRUE(control.AddCode(QStringLiteral("Dim made, ended\nClass C\nPrivate Sub Class_Terminate\nNote\nEnd "
                                               "Sub\nEnd Class\nSub Note\nended = ended + 1\nEnd Sub\n"
                                               "Sub Down\nDim o\nSet o = New C\nmade = made + 1\nDown\nEnd Sub")));
    EXPECT_FALSE(control.Run(QStringLiteral("Down")));
    EXPECT_EQ(control.Error().Number(), 28);
    EXPECT_EQ(text(control.Eval(QStringLiteral("made - ended"))), "0");
    EXPECT_EQ(text(control.Eval(QStringLiteral("made > 1000"))), "True");
}

TEST(LastWords, AreHeardInTheInnermostOfTheCallsBack)
{
    ScriptControl control;
    const auto recorder = make<Recorder>();
    recorder->control = &control;
    control.AddObject(QStringLiteral("R"), recorder);
    ASSERT_TRUE(control.AddCode(QStringLiteral(
        "Class C\nPrivate Sub Class_Terminate\nended = ended + 1\nEnd Sub\nEnd Class\nDim made, ended\n"
        "Sub Again\nSet o = New C\nmade = made + 1\nR.CallBack \"Again\"\nEnd Sub")));
    EXPECT_FALSE(control.Run(QStringLiteral("Again")));
    EXPECT_EQ(control.Error().Number(), 28);
    EXPECT_EQ(text(control.Eval(QStringLiteral("made > 50 And made = ended"))), "True");
}
