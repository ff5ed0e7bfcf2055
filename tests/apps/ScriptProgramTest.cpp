#include "ProgramFixture.h"

#include <QImage>

class ScriptProgram : public ProgramFixture
{};

TEST_F(ScriptProgram, EchoPrintsItsArgumentsInALineUnderEitherName)
{
    const Outcome outcome = script("Host.Echo 1, \"two\", 2.5\nWScript.Echo \"done\"");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, "1 two 2.5\ndone\n");
    EXPECT_EQ(outcome.err, "");
}

TEST_F(ScriptProgram, RunTimeErrorEndsWithOneAndSaysFileLineColumnNumberAndText)
{
    const Outcome outcome = script("Host.Echo \"before\"\n  x = 1 / 0\nHost.Echo \"after\"");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "before\n");
    EXPECT_EQ(outcome.err, path("s.vbs") + "(2, 2): error 11: Division by zero\n");
}

TEST_F(ScriptProgram, CompileErrorEndsWithOneAndItsPlace)
{
    const Outcome outcome = script("Dim a\nDim 5");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.startsWith(path("s.vbs") + "(2, 4): error 1010: ")) << qPrintable(outcome.err);
}

TEST_F(ScriptProgram, QuitEndsAtOnceWithItsCodeWhateverTheScriptResumes)
{
    const Outcome outcome = script("On Error Resume Next\nHost.Quit 7\nDo\nLoop");
    EXPECT_EQ(outcome.code, 7);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(ScriptProgram, FailedAssertionsAreSaidAndCountedAndTheScriptGoesOn)
{
    const Outcome outcome =
        script("Host.Assert True, \"fine\"\nHost.Assert 1 = 2, \"one is two\"\nHost.Echo \"on\"");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "on\n");
    EXPECT_EQ(outcome.err, path("s.vbs") + "(2, 0): not so: one is two\n");
}

TEST_F(ScriptProgram, BoxesAreAnsweredFromTheQueueAndRemembered)
{
    const Outcome outcome = script("Host.Answer \"No\"\n"
                                   "Host.Echo MsgBox(\"sure?\", vbYesNo + vbQuestion)\n"
                                   "Host.Answer \"seven\"\nHost.Echo InputBox(\"how many?\")\n"
                                   "Host.Echo Host.Boxes.Count, Host.Boxes.Item(1).Text, "
                                   "Host.Boxes.Item(1).Buttons, Host.Boxes.Item(1).Icon");
    EXPECT_EQ(outcome.out, "7\nseven\n2 sure? 4 32\n") << qPrintable(outcome.err);
    EXPECT_EQ(outcome.err, "zanbench: box: sure?\nzanbench: input box: how many?\n");
}

TEST_F(ScriptProgram, WithoutAPanelItsItemsDoNotExistAndHostSaysWhatIsMissing)
{
    const Outcome outcome = script("Host.Click 1");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains("error 91: This run has no panel")) << qPrintable(outcome.err);
}

TEST_F(ScriptProgram, PanelIsLoadedAndReached)
{
    const Outcome outcome =
        script("Host.Echo Scheme.Name, Window.Controls.Count > 100, Logger.Link.State\nHost.Shot \"shot.png\"",
               {"--scheme", DEMO_SCHEME, "--window", "pumps"});
    EXPECT_EQ(outcome.code, 0) << qPrintable(outcome.err);
    EXPECT_EQ(outcome.out, "Mill Creek weir True 0\n");
    EXPECT_FALSE(QImage(path("shot.png")).isNull());
}

TEST_F(ScriptProgram, MissingFilesAndWindowsAreFailuresAndWrongWordsAreMisuse)
{
    EXPECT_EQ(run({"script", path("none.vbs")}).code, 1);
    EXPECT_EQ(script("x = 1", {"--scheme", DEMO_SCHEME, "--window", "Nowhere"}).code, 1);
    EXPECT_EQ(run({"script"}).code, 2);
    EXPECT_EQ(script("x = 1", {"--window", "A"}).code, 2);
    EXPECT_EQ(run({"test"}).code, 2);
    EXPECT_EQ(run({"test", path("nowhere")}).code, 1);
}

TEST_F(ScriptProgram, TestRunsEveryTestFileAndCounts)
{
    makeFolder("t");
    write("t/good.test.vbs", "Host.Assert True, \"so\"");
    write("t/bad.test.vbs", "Host.Assert False, \"so\"");
    write("t/broken.test.vbs", "x = ");
    write("t/other.vbs", "Host.Quit 9");
    const Outcome outcome = run({"test", path("t")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "FAIL bad.test.vbs\nFAIL broken.test.vbs\nok   good.test.vbs\n1 passed, 2 failed\n");
    makeFolder("empty");
    EXPECT_EQ(run({"test", path("empty")}).code, 1) << "a folder without tests proves nothing";
}

TEST_F(ScriptProgram, AnAssertionIsPlacedInTheProcedureThatMakesIt)
{
    const Outcome outcome = script("Sub Check(condition)\n    Host.Assert condition, \"checked\"\nEnd Sub\n\n"
                                   "Check 1 = 1 : Check 1 = 2");
    EXPECT_EQ(outcome.err, path("s.vbs") + "(2, 4): not so: checked\n");
}

TEST_F(ScriptProgram, ARunWithFailuresNeverEndsWithZero)
{
    EXPECT_EQ(script("Host.Assert False, \"x\"\nHost.Quit 0").code, 1);
    EXPECT_EQ(script("Host.Assert False, \"x\"\nHost.Quit 7").code, 7);
    EXPECT_EQ(script("Host.Quit 0").code, 0);
}

TEST_F(ScriptProgram, WhatWouldHitNothingIsAnErrorThatSaysWhy)
{
    writeScheme("<WINDOW><KEY>Two</KEY><CONTAINER/>"
                "<CONTROL><TYPE>VB.CommandButton</TYPE><LEFT>30</LEFT><TOP>30</TOP><WIDTH>1500</WIDTH><HEIGHT>600</"
                "HEIGHT></CONTROL>"
                "<CONTROL><TYPE>VB.CommandButton</TYPE><LEFT>3000</LEFT><TOP>30</TOP><WIDTH>1500</"
                "WIDTH><HEIGHT>600</HEIGHT>"
                "</CONTROL></WINDOW>");
    const std::pair<const char*, const char*> rows[] = {
        {"Window.Controls(1).Control.Visible = False : Host.Click 1", "control 1 (CommandButton) is hidden"},
        {"Window.Controls(1).Control.Enabled = False : Host.DoubleClick 1",
         "control 1 (CommandButton) is disabled"},
        {"Window.Controls(1).Move 1000000, 0, 1500, 600 : Host.Click Window.Controls(1)", "lies outside the panel"},
        {"Window.Controls(2).Move 30, 30, 1500, 600 : Host.Click 1",
         "control 1 (CommandButton) lies under control 2 (CommandButton)"},
        {"Window.Enabled = False : Host.Click 1", "the panel is disabled"},
        {"Host.Press -15, 100", "lies outside the panel"},
        {"Host.Press 100, 1E+30", "lies outside the panel"},
        {"Host.Press 100, 100, 3", "3 is no mouse button"},
        {"Host.Drag 1E+6, 1, 2, 2", "lies outside the panel"},
        {"Dim gone : Set gone = Window.Controls(1).Control : Window.Controls.Remove 1 : Host.Click gone",
         "error 91"},
        {"Host.Click 3", ""},
    };
    for (const auto& [text, why] : rows) {
        const Outcome outcome = script(text, {"--scheme", schemePath(), "--window", "Two"});
        EXPECT_EQ(outcome.code, 1) << text;
        EXPECT_TRUE(outcome.err.contains("error ")) << text << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.contains(why)) << text << outcome.err.toStdString();
    }
    EXPECT_EQ(script("Host.Click 1 : Host.Click Window.Controls(2).Control : Host.Press 4700, 2000",
                     {"--scheme", schemePath(), "--window", "Two"})
                  .err,
              "");
}

TEST_F(ScriptProgram, APressFindsWhatWasAddedOrLoadedAMomentAgo)
{
    const Outcome outcome = script(
        "Dim added\n"
        "Set added = Window.Controls.Add(\"VB.CheckBox\", \"\")\n"
        "added.Move 3000, 2000, 1500, 300\n"
        "Host.Press 3100, 2150\n"
        "Host.Assert added.Control.Value = 1, \"the added box is pressed\"\n"
        "Window.LoadWindow \"Loaded\"\n"
        "Host.Press 130, 180\n"
        "Host.Assert Window.Controls(1).Control.Value = 1, \"the loaded box is pressed\"\n",
        {"--scheme",
         [this] {
             writeScheme("<WINDOW><KEY>Loaded</KEY><CONTROL><TYPE>VB.CheckBox</TYPE><LEFT>30</LEFT><TOP>30</TOP>"
                         "<WIDTH>1500</WIDTH><HEIGHT>300</HEIGHT></CONTROL></WINDOW>");
             return schemePath();
         }(),
         "--window", "Second"});
    EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
}

TEST_F(ScriptProgram, AnErrorOfThePanelFailsTheRun)
{
    writeScheme(
        "<WINDOW><KEY>Put</KEY><CONTROL><TYPE>VB.CommandButton</TYPE><WIDTH>1500</WIDTH><HEIGHT>600</HEIGHT>"
        "<ACTION><TYPE>PUT</TYPE><PUTADDRESS>16</PUTADDRESS><PUTVALUE>abc</PUTVALUE></ACTION></CONTROL>"
        "</WINDOW>");
    const Outcome outcome = script("Logger.AddAction 8 : Logger.Link.Connect\n"
                                   "Do Until Logger.Link.State = 2 : Host.Wait 10 : Loop\nHost.Click 1",
                                   {"--scheme", schemePath(), "--window", "Put"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains("run-time error 13 in the panel")) << outcome.err.toStdString();
}

TEST_F(ScriptProgram, ARefusedWriteIsPrintedAndFailsTheRunUnlessTheScriptTakesIt)
{
    const QByteArray write = "Logger.AddAction 8 : Logger.Link.Connect\n"
                             "Do Until Logger.Link.State = 2 : Host.Wait 10 : Loop\n"
                             "Logger.Live.WriteChannel Scheme.Windows(\"First\").Item(\"A\"), 7\n";
    const QStringList options = {"--scheme", schemePath(), "--logger", "sim:?connect=0&period=20&writeerror=1"};
    const Outcome refused = script(write, options);
    EXPECT_EQ(refused.code, 1) << "the end of the run waits for what is still to be written";
    EXPECT_TRUE(refused.err.contains("Level (First|A): \"7\" was not written")) << refused.err.toStdString();
    EXPECT_TRUE(refused.err.contains("1 write was refused.")) << refused.err.toStdString();
    const Outcome taken = script(
        write + "Dim n\nDo While n = 0 : Host.Wait 10 : n = Host.TakeRefusedWrites() : Loop\nHost.Echo n", options);
    EXPECT_EQ(taken.code, 0) << taken.err.toStdString();
    EXPECT_EQ(taken.out, "1\n");
    EXPECT_EQ(script(write, {"--scheme", schemePath()}).code, 0) << "a logger that takes it";
}

TEST_F(ScriptProgram, ATestThatDoesNotEndCostsOneTestAndTheCountIsPrinted)
{
    makeFolder("t");
    write("t/hang.test.vbs", "Do\nLoop");
    const Outcome outcome = run({"test", path("t"), "--timeout", "1"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "FAIL hang.test.vbs (no end after 1 s)\n0 passed, 1 failed\n");
}

TEST_F(ScriptProgram, ATestsOwnFolderFilesAndCodesDoNotTouchTheNextTest)
{
    makeFolder("t");
    write("t/a.test.vbs", "' scheme: ../site.scheme\n' window: First\nx = 1\nHost.Quit 3");
    write("t/b.test.vbs", "Host.Assert IsEmpty(x), \"a program of its own\"\n"
                          "Host.Assert Host.Boxes.Count = 0, \"boxes of its own\"");
    const Outcome outcome = run({"test", "t"}, {}, m_folder.path());
    EXPECT_EQ(outcome.out, "FAIL a.test.vbs (code 3)\nok   b.test.vbs\n1 passed, 1 failed\n");
}

TEST_F(ScriptProgram, APipeIsNoScriptBecauseReadingItCouldWaitForAPerson)
{
    const Outcome outcome = run({"script", "/dev/null"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains("no ordinary file")) << outcome.err.toStdString();
}
