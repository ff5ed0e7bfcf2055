#include "HostFixture.h"

#include "support/ErrorOf.h"

#include "zanbench/Boundary.h"
#include "zanbench/CommandLine.h"
#include "zanbench/Commands.h"
#include "zanbench/HostApplication.h"
#include "zanbench/PanelHost.h"
#include "zanbench/PanelLoader.h"
#include "zanbench/PictureFile.h"
#include "zanbench/headless/HeadlessPanel.h"
#include "zanbench/headless/RunReport.h"

#include <QPixmap>

#include <stdexcept>

using namespace zan;
using namespace zan::host;

class HeadlessPanelTest : public HostTest
{
protected:
    PanelRequest request(const QString& window = {}) const
    {
        PanelRequest asked;
        asked.scheme = schemePath();
        asked.window = window;
        return asked;
    }
    RunReport report;
};

TEST_F(HeadlessPanelTest, WhoPreparesAPanelIsThereBeforeAnythingIsLoaded)
{
    const auto opened = OpenedSite::open(schemePath(), {});
    ASSERT_TRUE(opened.site);
    surface::RecordingForms forms;
    int calls = 0;
    const auto panel = loadPanel(*opened.site, "First", std::nullopt, [&](window::BenchWindow& fresh) {
        ++calls;
        EXPECT_FALSE(fresh.Logger());
        EXPECT_FALSE(fresh.CurrentWindow());
        fresh.setForms(&forms);
    });
    EXPECT_EQ(calls, 1);
    panel->forms().messageBox(panel.get(), QStringLiteral("?"), surface::HostForms::OkOnly, {});
    EXPECT_EQ(forms.boxes().size(), 1u);
}

TEST_F(HeadlessPanelTest, BoxesGoToItsOwnFormsAndErrorsOfThePanelAreFailures)
{
    HeadlessPanel shown(report);
    ASSERT_TRUE(shown.open(request()));
    EXPECT_EQ(shown.panel()->forms().messageBox(nullptr, "?", surface::HostForms::YesNo, {}),
              surface::HostForms::Yes);
    EXPECT_EQ(shown.forms().boxes().size(), 1u);
    EXPECT_EQ(report.failures(), 0);
    Q_EMIT shown.panel()->runtimeError(13, "Type mismatch");
    EXPECT_EQ(report.failures(), 1);
}

TEST_F(HeadlessPanelTest, AScriptThatShowsAnotherWindowIsNotedAndAnUnknownOneIsItsError)
{
    HeadlessPanel shown(report);
    ASSERT_TRUE(shown.open(request()));
    auto& program = dynamic_cast<PanelHost&>(*shown.panel()->Host());
    program.Show("second");
    EXPECT_EQ(test::errorOf([&] { program.Show("Nowhere"); }), 9);
    EXPECT_EQ(report.failures(), 0);
}

TEST_F(HeadlessPanelTest, StandsInTheFolderOfItsScheme)
{
    HeadlessPanel shown(report);
    ASSERT_TRUE(shown.open(request()));
    EXPECT_EQ(QDir::current(), QDir(m_folder.path()));
}

TEST_F(HeadlessPanelTest, AMissingWindowSchemeOrLoggerIsAFailureInWords)
{
    EXPECT_FALSE(HeadlessPanel(report).open(request("Nowhere")));
    PanelRequest missing = request();
    missing.scheme = path("none.scheme");
    EXPECT_FALSE(HeadlessPanel(report).open(missing));
    EXPECT_EQ(report.failures(), 2);
    write("bad.scheme", "<SCHEME><LOGGER>nonsense:</LOGGER><WINDOW><KEY>A</KEY></WINDOW></SCHEME>");
    PanelRequest bad = request();
    bad.scheme = path("bad.scheme");
    EXPECT_TRUE(HeadlessPanel(report).open(bad)) << "a picture can still be drawn";
    EXPECT_EQ(report.failures(), 2);
    bad.needsLogger = true;
    EXPECT_FALSE(HeadlessPanel(report).open(bad));
    EXPECT_EQ(report.failures(), 3);
}

TEST(FittedSize, KeepsWhatFitsAndCutsToTheLargestPicture)
{
    EXPECT_EQ(fittedSize({1000, 600}, 1), QSize(1000, 600));
    EXPECT_EQ(fittedSize({16384, 2048}, 1), QSize(16384, 2048)) << "exactly the largest";
    EXPECT_EQ(fittedSize({16384, 16384}, 1), QSize(5792, 5792));
    EXPECT_EQ(fittedSize({16384, 3000}, 1), QSize(11184, 3000)) << "only the long side of a strip";
    EXPECT_EQ(fittedSize({3000, 16384}, 1), QSize(3000, 11184));
    EXPECT_EQ(fittedSize({16384, 16384}, 8), QSize(724, 724)) << "a dense picture has more pixels";
    for (const double scale : {0.5, 1.0, 1.5, 8.0})
        for (const int width : {1, 320, 5793, 16384})
            for (const int height : {1, 200, 5793, 16384}) {
                const QSize size = fittedSize({width, height}, scale);
                EXPECT_GE(size.width(), 1);
                EXPECT_GE(size.height(), 1);
                EXPECT_LE(double(size.width()) * size.height() * scale * scale, double(LargestPictureArea));
            }
}

TEST(RunReport, RefusedWritesThatNobodyTookAreOneFailure)
{
    RunReport report;
    report.writeRefused("no");
    report.writeRefused("no");
    EXPECT_EQ(report.failures(), 0);
    EXPECT_EQ(report.takeRefusedWrites(), 2);
    report.close();
    EXPECT_EQ(report.failures(), 0);
    report.writeRefused("no");
    report.close();
    EXPECT_EQ(report.failures(), 1);
}

TEST(Boundary, SaysWhatFailedAndWhyWhateverWasThrown)
{
    EXPECT_EQ(failureOf("Loading", [] {}), "");
    EXPECT_EQ(failureOf("Loading", [] { values::raise(values::ErrorNumber::TypeMismatch); }),
              "Loading failed: run-time error 13: Type mismatch");
    EXPECT_EQ(failureOf("Saving", [] { throw std::runtime_error("disk gone"); }), "Saving failed: disk gone");
    EXPECT_EQ(failureOf("Saving", [] { throw std::bad_alloc(); }), "Saving failed: out of memory");
    EXPECT_EQ(failureOf("Saving", [] { throw 5; }), "Saving failed: an exception without a text");
}

TEST(PrintedTexts, CannotSteerATerminal)
{
    EXPECT_EQ(printable(QStringLiteral("a\x1b[2J\r\tb\n")), "a?[2J?\tb\n");
    EXPECT_EQ(oneLine("a\r\nb\n\nc\x07"), "a | b | c?");
    EXPECT_EQ(oneLine(QString(5000, QLatin1Char('x'))).size(), 1003);
}

TEST_F(HeadlessPanelTest, APictureHasTheFormatOfItsExtension)
{
    const std::pair<const char*, QByteArray> rows[] = {
        {"p.png", "\x89PNG"}, {"p.jpg", "\xff\xd8"}, {"p.JPEG", "\xff\xd8"}, {"p.bmp", "BM"}, {"p.ppm", "P6"}};
    for (const auto& [name, beginning] : rows) {
        EXPECT_EQ(pictureNameProblem(name), "");
        EXPECT_EQ(writePicture(QPixmap(4, 4), path(name)), "");
        EXPECT_TRUE(read(name).startsWith(beginning)) << name;
    }
    for (const char* name : {"p", "p.", "png", "p.gif", "p.png.txt", ".png/p"}) {
        EXPECT_TRUE(pictureNameProblem(name).contains("png, jpg, jpeg, bmp, ppm")) << name;
        EXPECT_NE(writePicture(QPixmap(4, 4), path(name)), "") << name;
        EXPECT_FALSE(QFile::exists(path(name))) << name;
    }
}
