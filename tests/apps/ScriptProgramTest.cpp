#include "HostFixture.h"

#include <QImage>
#include <QProcess>

namespace {

struct ScriptOutcome
{
    int code = -1;
    QString out;
    QString err;
};

class ScriptProgram : public HostTest
{
protected:
    QString write(const QString& name, const QByteArray& text) const
    {
        const QString file = path(name);
        QFile script(file);
        EXPECT_TRUE(script.open(QIODevice::WriteOnly));
        script.write(text);
        return file;
    }
    ScriptOutcome runWords(const QStringList& words) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_RUNTIME_DIR"),
                           path("")); // the toolkit complains where there is none
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(ZANBENCH_PROGRAM), words);
        ScriptOutcome outcome;
        if (!process.waitForFinished(60'000)) {
            process.kill();
            process.waitForFinished();
            return outcome;
        }
        outcome.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
        outcome.out = QString::fromUtf8(process.readAllStandardOutput());
        outcome.err = QString::fromUtf8(process.readAllStandardError());
        return outcome;
    }
    ScriptOutcome script(const QByteArray& text, const QStringList& options = {}) const
    {
        return runWords(QStringList{"script", write("s.vbs", text)} + options);
    }
};

} // namespace

TEST_F(ScriptProgram, EchoPrintsItsArgumentsInALineUnderEitherName)
{
    const ScriptOutcome outcome = script("Host.Echo 1, \"two\", 2.5\nWScript.Echo \"done\"");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, "1 two 2.5\ndone\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(ScriptProgram, RunTimeErrorEndsWithOneAndSaysFileLineColumnNumberAndText)
{
    const ScriptOutcome outcome = script("Host.Echo \"before\"\n  x = 1 / 0\nHost.Echo \"after\"");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "before\n");
    EXPECT_EQ(outcome.err, path("s.vbs") + "(2, 2): error 11: Division by zero\n");
}

TEST_F(ScriptProgram, CompileErrorEndsWithOneAndItsPlace)
{
    const ScriptOutcome outcome = script("Dim a\nDim 5");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.startsWith(path("s.vbs") + "(2, 4): error 1010: ")) << qPrintable(outcome.err);
}

TEST_F(ScriptProgram, QuitEndsAtOnceWithItsCodeWhateverTheScriptResumes)
{
    const ScriptOutcome outcome = script("On Error Resume Next\nHost.Quit 7\nDo\nLoop");
    EXPECT_EQ(outcome.code, 7);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(ScriptProgram, FailedAssertionsAreSaidAndCountedAndTheScriptGoesOn)
{
    const ScriptOutcome outcome =
        script("Host.Assert True, \"fine\"\nHost.Assert 1 = 2, \"one is two\"\nHost.Echo \"on\"");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "on\n");
    EXPECT_TRUE(outcome.err.contains("not so: one is two"));
}

TEST_F(ScriptProgram, BoxesAreAnsweredFromTheQueueAndRemembered)
{
    const ScriptOutcome outcome = script("Host.Answer \"No\"\n"
                                         "Host.Echo MsgBox(\"sure?\", vbYesNo + vbQuestion)\n"
                                         "Host.Answer \"seven\"\nHost.Echo InputBox(\"how many?\")\n"
                                         "Host.Echo Host.Boxes.Count, Host.Boxes.Item(1).Text, "
                                         "Host.Boxes.Item(1).Buttons, Host.Boxes.Item(1).Icon");
    EXPECT_EQ(outcome.out, "7\nseven\n2 sure? 4 32\n") << qPrintable(outcome.err);
}

TEST_F(ScriptProgram, WithoutAPanelItsItemsDoNotExistAndHostSaysWhatIsMissing)
{
    const ScriptOutcome outcome = script("Host.Click 1");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains("error 91: This run has no panel")) << qPrintable(outcome.err);
}

TEST_F(ScriptProgram, PanelIsLoadedAndReached)
{
    const ScriptOutcome outcome =
        script("Host.Echo Scheme.Name, Window.Controls.Count > 100, Logger.Link.State\nHost.Shot \"shot.png\"",
               {"--scheme", DEMO_SCHEME, "--window", "pumps"});
    EXPECT_EQ(outcome.code, 0) << qPrintable(outcome.err);
    EXPECT_EQ(outcome.out, "Mill Creek weir True 0\n");
    EXPECT_FALSE(QImage(path("shot.png")).isNull());
}

TEST_F(ScriptProgram, MissingFilesAndWindowsAreFailuresAndWrongWordsAreMisuse)
{
    EXPECT_EQ(runWords({"script", path("none.vbs")}).code, 1);
    EXPECT_EQ(script("x = 1", {"--scheme", DEMO_SCHEME, "--window", "Nowhere"}).code, 1);
    EXPECT_EQ(runWords({"script"}).code, 2);
    EXPECT_EQ(script("x = 1", {"--window", "A"}).code, 2);
    EXPECT_EQ(runWords({"test"}).code, 2);
    EXPECT_EQ(runWords({"test", path("nowhere")}).code, 1);
}

TEST_F(ScriptProgram, TestRunsEveryTestFileAndCounts)
{
    QDir(path("")).mkdir("t");
    write("t/good.test.vbs", "Host.Assert True, \"so\"");
    write("t/bad.test.vbs", "Host.Assert False, \"so\"");
    write("t/broken.test.vbs", "x = ");
    write("t/other.vbs", "Host.Quit 9");
    const ScriptOutcome outcome = runWords({"test", path("t")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "FAIL bad.test.vbs\nFAIL broken.test.vbs\nok   good.test.vbs\n1 passed, 2 failed\n");
    QDir(path("")).mkdir("empty");
    EXPECT_EQ(runWords({"test", path("empty")}).code, 1) << "a folder without tests proves nothing";
}
