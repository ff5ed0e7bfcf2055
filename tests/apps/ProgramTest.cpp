#include "ProgramFixture.h"

#include <QImage>

class ProgramTest : public ProgramFixture
{};

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
    for (const char* command : {"shot", "script", "test", "windows", "import"}) {
        const Outcome own = run({command, "--help"});
        EXPECT_EQ(own.code, 0);
        EXPECT_TRUE(own.out.startsWith(QStringLiteral("Usage: zanbench %1").arg(command))) << command;
        EXPECT_TRUE(run({"--help"}).out.contains(QStringLiteral("\n  %1 ").arg(command))) << command;
    }
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

TEST_F(ProgramTest, AnUnknownCommandIsNamedWithTheNearestOne)
{
    const std::pair<const char*, const char*> rows[] = {
        {"sript", "script"}, {"shto", "shot"}, {"Tests", "test"}, {"window", "windows"}};
    for (const auto& [word, nearest] : rows) {
        const Outcome outcome = run({word, "a.vbs"});
        EXPECT_EQ(outcome.code, 2) << word;
        EXPECT_TRUE(outcome.err.contains(QStringLiteral("no command '%1'").arg(word))) << outcome.err.toStdString();
        EXPECT_TRUE(outcome.err.contains(QStringLiteral("nearest command is '%1'").arg(nearest)))
            << outcome.err.toStdString();
    }
    // A path is a scheme that is not there, and a file of a plain name is one that is.
    EXPECT_FALSE(run({path("sript")}).err.contains("no command"));
    write("plain", read("site.scheme"));
    EXPECT_FALSE(run({"plain"}, {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}, m_folder.path())
                     .err.contains("no command"));
}

TEST_F(ProgramTest, WindowsAreListedOneInALine)
{
    const Outcome outcome = run({"windows", schemePath()});
    EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
    EXPECT_EQ(outcome.out, "First\nSecond\n") << "a store of channels is no panel";
    const Outcome missing = run({"windows", path("none.scheme")});
    EXPECT_EQ(missing.code, 1);
    EXPECT_TRUE(missing.err.contains("none.scheme"));
}

TEST_F(ProgramTest, APictureOfAnUnknownFormatIsRefusedBeforeAnythingIsOpened)
{
    const Outcome outcome = run({"shot", path("none.scheme"), "--out", path("o.tga")});
    EXPECT_EQ(outcome.code, 2);
    EXPECT_TRUE(outcome.err.contains("o.tga")) << outcome.err.toStdString();
    const Outcome jpeg = run({"shot", schemePath(), "--offline", "--out", path("o.jpg")});
    EXPECT_EQ(jpeg.code, 0) << jpeg.err.toStdString();
    EXPECT_TRUE(read("o.jpg").startsWith("\xff\xd8"));
}

TEST_F(ProgramTest, ABoxNeverStopsAShotAndIsPrinted)
{
    writeScheme("<WINDOW><KEY>Button</KEY><CONTAINER/><CONTROL><TYPE>VB.CommandButton</TYPE><WIDTH>1500</WIDTH>"
                "<HEIGHT>400</HEIGHT><ACTION><TYPE>VESPER</TYPE><FUNCTION>CONNECT</FUNCTION></ACTION></CONTROL>"
                "</WINDOW>");
    const Outcome outcome = run({"shot", schemePath(), "--window", "Button", "--logger",
                                 "sim:?connect=0&period=20&drop=0.05", "--after", "1500", "--out", path("o.png")});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_TRUE(outcome.err.contains("zanbench: box: Connection to site broken\n")) << outcome.err.toStdString();
    EXPECT_FALSE(QImage(path("o.png")).isNull());
}

TEST_F(ProgramTest, AControlOfAMillionTwipsMakesACutPicture)
{
    writeScheme("<WINDOW><KEY>Big</KEY><CONTAINER/><CONTROL><TYPE>VB.Label</TYPE><WIDTH>1000000</WIDTH>"
                "<HEIGHT>1000000</HEIGHT></CONTROL></WINDOW>");
    const Outcome outcome = run({"shot", schemePath(), "--window", "Big", "--offline", "--out", path("o.png")});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_TRUE(outcome.err.contains("cut to the upper left 5792 x 5792")) << outcome.err.toStdString();
    EXPECT_EQ(QImage(path("o.png")).size(), QSize(5792, 5792));
}

TEST_F(ProgramTest, AWindowOfExactlyTheMostControlsIsShownAndOneMoreIsAnErrorInWords)
{
    const QByteArray label = "<CONTROL><TYPE>VB.Label</TYPE></CONTROL>";
    writeScheme("<WINDOW><KEY>Most</KEY>" + label.repeated(32767) + "</WINDOW>");
    const Outcome most = run({"shot", schemePath(), "--window", "Most", "--offline", "--print"});
    EXPECT_EQ(most.code, 0) << most.err.toStdString();
    writeScheme("<WINDOW><KEY>More</KEY>" + label.repeated(32768) + "</WINDOW>");
    const Outcome more = run({"shot", schemePath(), "--window", "More", "--offline", "--print"});
    EXPECT_EQ(more.code, 1);
    EXPECT_EQ(more.err, "zanbench: Loading the window More failed: run-time error 6: Overflow\n");
}

TEST_F(ProgramTest, RelativePicturesAreFoundBesideTheSchemeByShotScriptAndTest)
{
    QImage red(40, 40, QImage::Format_RGB32);
    red.fill(Qt::red);
    ASSERT_TRUE(red.save(path("red.bmp"), "BMP"));
    writeScheme("<WINDOW><KEY>Pic</KEY><CONTAINER><PICTUREFILE>red.bmp</PICTUREFILE></CONTAINER></WINDOW>");
    makeFolder("tests");
    write("tests/pic.test.vbs", "' scheme: ../site.scheme\n' window: Pic\nHost.Shot \"test.png\"");
    write("pic.vbs", "Host.Shot \"script.png\"");
    const QString elsewhere = QDir::rootPath();
    const auto runThere = [&](const QStringList& words) {
        const Outcome outcome = run(words, {}, elsewhere);
        EXPECT_EQ(outcome.code, 0) << outcome.err.toStdString();
    };
    runThere({"shot", schemePath(), "--window", "Pic", "--offline", "--out", path("shot.png")});
    runThere({"script", path("pic.vbs"), "--scheme", schemePath(), "--window", "Pic"});
    runThere({"test", path("tests")});
    for (const char* name : {"shot.png", "script.png", "tests/test.png"})
        EXPECT_EQ(QImage(path(name)).pixelColor(20, 20), QColor(Qt::red)) << name;
}
