#include "HostFixture.h"

#include <QImage>
#include <QProcess>

namespace {

struct Outcome
{
    int code = -1;
    QString out;
    QString err;
};

/// Runs the program as a shell does, with settings and a home of its own.
Outcome runProgram(const QString& home, const QStringList& arguments, const QStringList& unset = {})
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home);
    environment.insert("XDG_CONFIG_HOME", home);
    for (const QString& name : unset)
        environment.remove(name);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(ZANBENCH_PROGRAM), arguments);
    Outcome outcome;
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

} // namespace

class ProgramTest : public HostTest
{
protected:
    Outcome run(const QStringList& arguments, const QStringList& unset = {}) const
    {
        return runProgram(m_folder.path(), arguments, unset);
    }
};

TEST_F(ProgramTest, HelpAndVersionAreAnswersAndNoErrors)
{
    for (const char* word : {"--help", "-h"}) {
        const Outcome outcome = run({word});
        EXPECT_EQ(outcome.code, 0);
        EXPECT_TRUE(outcome.out.startsWith("Usage: zanbench"));
        EXPECT_EQ(outcome.err, "");
    }
    EXPECT_TRUE(run({"--version"}).out.startsWith("zanbench "));
    EXPECT_TRUE(run({"shot", "--help"}).out.contains("--scale"));
}

TEST_F(ProgramTest, AWrongCommandLineEndsWithTwoAndAHint)
{
    const Outcome outcome = run({"shot", schemePath(), "--sice", "1x1"});
    EXPECT_EQ(outcome.code, 2);
    EXPECT_TRUE(outcome.err.startsWith("zanbench: "));
    EXPECT_TRUE(outcome.err.contains("sice"));
    EXPECT_TRUE(outcome.err.contains("--help"));
    EXPECT_EQ(outcome.out, "");
}

TEST_F(ProgramTest, AMissingOrBrokenSchemeEndsWithOneAndItsPlace)
{
    const Outcome missing = run({"shot", path("none.scheme"), "--out", path("o.png")});
    EXPECT_EQ(missing.code, 1);
    EXPECT_TRUE(missing.err.contains("none.scheme"));
    write("broken.scheme", "<SCHEME>\n  <WINDOW>\n</SCHEME>");
    const Outcome broken = run({"shot", path("broken.scheme"), "--out", path("o.png")});
    EXPECT_EQ(broken.code, 1);
    EXPECT_TRUE(broken.err.contains("broken.scheme:3:")) << broken.err.toStdString();
    EXPECT_FALSE(QFile::exists(path("o.png")));
}

TEST_F(ProgramTest, AnUnknownWindowIsRefusedWithTheOnesThereAre)
{
    const Outcome outcome = run({"shot", schemePath(), "--window", "Third", "--out", path("o.png")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains("'Third'"));
    EXPECT_TRUE(outcome.err.contains("First, Second"));
}

TEST_F(ProgramTest, AShotHasTheSizeAskedForTimesTheScale)
{
    const Outcome plain = run({"shot", schemePath(), "--size", "300x200", "--out", path("a.png")});
    EXPECT_EQ(plain.code, 0) << plain.err.toStdString();
    EXPECT_EQ(QImage(path("a.png")).size(), QSize(300, 200));
    const Outcome dense = run({"shot", schemePath(), "--size", "300x200", "--scale", "2", "--out", path("b.png")});
    EXPECT_EQ(dense.code, 0) << dense.err.toStdString();
    EXPECT_EQ(QImage(path("b.png")).size(), QSize(600, 400));
}

TEST_F(ProgramTest, WithoutASizeAShotIsAsLargeAsThePanelsContents)
{
    const Outcome outcome = run({"shot", schemePath(), "--window", "first", "--out", path("a.png")});
    EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
    EXPECT_EQ(QImage(path("a.png")).size(), QSize(426, 336));
}

TEST_F(ProgramTest, AShotShowsTheConnectedLoggersValues)
{
    const Outcome outcome = run({"shot", schemePath(), "--print", "--after", "300"});
    EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.out, "First|A  Level  42 m\n");
}

TEST_F(ProgramTest, AnOfflineShotShowsNoValues)
{
    const Outcome outcome = run({"shot", schemePath(), "--print", "--offline"});
    EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.out, "First|A  Level   m\n");
}

TEST_F(ProgramTest, AShotOfALoggerThatRefusesFailsAndWritesNothing)
{
    const Outcome outcome =
        run({"shot", schemePath(), "--logger", "sim:?connect=0&refuse=1", "--out", path("o.png")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains("could not be reached")) << outcome.err.toStdString();
    EXPECT_FALSE(QFile::exists(path("o.png")));
}

TEST_F(ProgramTest, ABadLoggerUriNamesTheOption)
{
    const Outcome outcome = run({"shot", schemePath(), "--logger", "sim:?sede=1", "--print"});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains("sede")) << outcome.err.toStdString();
}

TEST_F(ProgramTest, APictureThatCannotBeWrittenIsToldAndTheOldOneStays)
{
    write("folder-is-a-file", "x");
    const Outcome outcome = run({"shot", schemePath(), "--offline", "--out", path("folder-is-a-file/o.png")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.err.contains("could not be written")) << outcome.err.toStdString();
    EXPECT_EQ(read("folder-is-a-file"), "x");
}

TEST_F(ProgramTest, AShotChangesNoFileOfTheScheme)
{
    const QByteArray before = read("site.scheme");
    EXPECT_EQ(run({"shot", schemePath(), "--print"}).code, 0);
    EXPECT_EQ(read("site.scheme"), before);
    EXPECT_FALSE(QFile::exists(path("site.scheme.bak")));
}

TEST_F(ProgramTest, WithoutADisplayTheWindowIsRefusedInWords)
{
    const QStringList displays = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    const Outcome none = run({schemePath()}, displays);
    EXPECT_EQ(none.code, 1);
    EXPECT_TRUE(none.err.contains("zanbench shot")) << none.err.toStdString();
    // A shot does not need one.
    EXPECT_EQ(run({"shot", schemePath(), "--offline", "--out", path("o.png")}, displays).code, 0);
}
