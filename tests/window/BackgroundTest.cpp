#include "WindowFixture.h"

#include "surface/host/Metafile.h"
#include "surface/host/Picture.h"
#include "surface/host/Surface.h"
#include "window/BackgroundOps.h"
#include "window/TemporaryPicture.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScrollArea>
#include <QScrollBar>
#include <QTemporaryDir>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace zan;
using namespace zan::window;
using surface::Picture;
using values::Ref;

namespace {

class BackgroundFile : public WindowTest
{
protected:
    void SetUp() override { qputenv(Variable, QFile::encodeName(cache.path())); }
    void TearDown() override
    {
        panel.reset();
        if (former.isNull())
            qunsetenv(Variable);
        else
            qputenv(Variable, former);
    }
    static QImage image(Qt::GlobalColor colour, QSize size = {4, 3})
    {
        QImage filled(size, QImage::Format_RGB32);
        filled.fill(colour);
        return filled;
    }
    static Ref<Picture> picture(Qt::GlobalColor colour) { return values::make<Picture>(image(colour)); }
    QString named() const { return QStringLiteral("~%1.BMP").arg(panel->hWnd()); }
    /// The folders of pictures, one for each.
    QStringList left() const
    {
        return QDir(TemporaryPicture::userFolder())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    static mode_t modeOf(const QString& path)
    {
        struct stat status = {};
        EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &status), 0) << path.toStdString();
        return status.st_mode & 07777;
    }
    /// A picture file of the test's own.
    QString saved(const QImage& picture, const QString& name = QStringLiteral("own.bmp")) const
    {
        const QString file = cache.filePath(name);
        EXPECT_TRUE(picture.save(file));
        return file;
    }
    QColor shownAt(int x, int y) { return panel->surface().picture()->image().pixelColor(x, y); }
    int errorOfPicture()
    {
        return errorOf([this] { panel->setPicture(picture(Qt::red)); });
    }

    static constexpr const char* Variable = "XDG_CACHE_HOME";
    QTemporaryDir cache;
    QByteArray former = qgetenv(Variable);
};

using BackgroundPicture = BackgroundFile;

} // namespace

// The temporary file -------------------------------------------------------------------------------------------

TEST_F(BackgroundFile, LiesInAFolderThatOnlyTheUserMayEnter)
{
    panel->setPicture(picture(Qt::red));
    const QFileInfo file(panel->PictureFile());
    EXPECT_EQ(file.fileName(), named());
    EXPECT_TRUE(file.filePath().startsWith(TemporaryPicture::userFolder() + u'/'));
    EXPECT_EQ(modeOf(TemporaryPicture::userFolder()), 0700U);
    EXPECT_EQ(modeOf(file.path()), 0700U);
    EXPECT_EQ(modeOf(file.filePath()), 0600U);
    EXPECT_EQ(left().size(), 1);
}

TEST_F(BackgroundFile, IsNotWrittenThroughALinkThatSomebodyPlanted)
{
    panel->setPicture(picture(Qt::red));
    const QString first = panel->PictureFile();
    const QString victim = cache.filePath(QStringLiteral("victim"));
    QFile file(victim);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("precious");
    file.close();
    ASSERT_TRUE(QFile::remove(first));
    ASSERT_TRUE(QFile::link(victim, first));
    panel->setPicture(picture(Qt::blue));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().toStdString(), "precious");
    EXPECT_EQ(panel->Picture()->image().pixelColor(0, 0), QColor(Qt::blue));
}

TEST_F(BackgroundFile, IsErrorSeventyFiveWhereTheFolderIsNotTheUsersAlone)
{
    const QString folder = TemporaryPicture::userFolder();
    ASSERT_TRUE(QDir().mkpath(QFileInfo(folder).path()));
    const auto refused = [&](const char* why) {
        EXPECT_EQ(errorOfPicture(), 75) << why;
        EXPECT_EQ(panel->PictureFile(), folder + u'/' + named()) << why;
        EXPECT_FALSE(panel->Picture()) << why;
        EXPECT_FALSE(panel->surface().picture()) << why;
    };
    const QString elsewhere = cache.filePath(QStringLiteral("elsewhere"));
    ASSERT_EQ(::mkdir(QFile::encodeName(elsewhere).constData(), 0700), 0);
    ASSERT_TRUE(QFile::link(elsewhere, folder));
    refused("a link");
    EXPECT_TRUE(QDir(elsewhere).isEmpty());
    ASSERT_TRUE(QFile::remove(folder));
    ASSERT_EQ(::mkdir(QFile::encodeName(folder).constData(), 0700), 0);
    ASSERT_EQ(::chmod(QFile::encodeName(folder).constData(), 0770), 0);
    refused("others may enter");
    ASSERT_TRUE(QDir().rmdir(folder));
    QFile file(folder);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    refused("a file");
    ASSERT_TRUE(file.remove());
    if (::geteuid() == 0) {
        ASSERT_EQ(::mkdir(QFile::encodeName(folder).constData(), 0700), 0);
        ASSERT_EQ(::chown(QFile::encodeName(folder).constData(), 12345, 12345), 0);
        refused("somebody else's");
        ASSERT_TRUE(QDir().rmdir(folder));
    }
    EXPECT_EQ(errorOfPicture(), 0) << "there is nothing in the way any more";
}

TEST_F(BackgroundFile, ErrorOfTheFolderSaysWhatToDo)
{
    QFile file(QFileInfo(TemporaryPicture::userFolder()).path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    try {
        panel->setPicture(picture(Qt::red));
        FAIL();
    } catch (const values::RuntimeError& error) {
        EXPECT_EQ(error.number(), 75);
        EXPECT_TRUE(error.description().contains(TemporaryPicture::userFolder()));
    }
}

TEST_F(BackgroundFile, GoesWithItsFolderWhenAnotherPictureComesAndWhenTheWindowEnds)
{
    panel->setPicture(picture(Qt::red));
    panel->setPicture(picture(Qt::blue));
    EXPECT_EQ(left().size(), 1);
    panel->setPicture({});
    EXPECT_EQ(left().size(), 0);
    EXPECT_EQ(panel->PictureFile(), QString());
    EXPECT_FALSE(panel->surface().picture());
    panel->setPicture(picture(Qt::green));
    panel.reset();
    EXPECT_EQ(left().size(), 0);
}

TEST_F(BackgroundFile, IsLeftBehindWhenAnotherFileIsNamed)
{
    panel->setPicture(picture(Qt::red));
    const QString file = panel->PictureFile();
    panel->setPictureFile(file); // from now on it is the document's
    panel->setPicture(picture(Qt::blue));
    panel.reset();
    EXPECT_TRUE(QFileInfo::exists(file));
    TemporaryPicture::clearAbandoned();
    EXPECT_TRUE(QFileInfo::exists(file)) << "no crash has left it";
}

TEST_F(BackgroundFile, OfAProgramThatCrashedIsClearedAndThatOfALivingOneStays)
{
    panel->setPicture(picture(Qt::red));
    const QString living = panel->PictureFile();
    const pid_t child = ::fork();
    if (child == 0) {
        auto crashed = TemporaryPicture::write(image(Qt::blue), QStringLiteral("~7.BMP"));
        ::_exit(crashed ? 0 : 1); // nothing of it is taken down
    }
    int status = -1;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    EXPECT_EQ(left().size(), 2);
    TemporaryPicture::clearAbandoned();
    EXPECT_EQ(left().size(), 1);
    EXPECT_TRUE(QFileInfo::exists(living));
}

TEST_F(BackgroundFile, ClearingTakesNothingThatIsNotOurs)
{
    panel->setPicture(picture(Qt::red));
    panel.reset(); // the user's folder is there
    const QString base = TemporaryPicture::userFolder();
    const auto folder = [&](const char* name, mode_t mode) {
        const QString path = base + u'/' + QString::fromLatin1(name);
        EXPECT_EQ(::mkdir(QFile::encodeName(path).constData(), 0700), 0);
        for (const char* file : {"lock", "~1.BMP", "notes.txt"}) {
            QFile written(path + u'/' + QString::fromLatin1(file));
            EXPECT_TRUE(written.open(QIODevice::WriteOnly));
        }
        EXPECT_EQ(::chmod(QFile::encodeName(path).constData(), mode), 0);
        return path;
    };
    const QString abandoned = folder("zanbench-a", 0700);
    const QString open = folder("zanbench-b", 0755);
    const QString outside = cache.filePath(QStringLiteral("outside"));
    ASSERT_TRUE(QDir().rename(folder("zanbench-c", 0700), outside));
    ASSERT_TRUE(QFile::link(outside, base + QStringLiteral("/zanbench-d")));
    TemporaryPicture::clearAbandoned();
    EXPECT_EQ(QDir(abandoned).entryList(QDir::Files), QStringList{QStringLiteral("notes.txt")});
    EXPECT_EQ(QDir(open).entryList(QDir::Files).size(), 3) << "others may enter it";
    EXPECT_EQ(QDir(outside).entryList(QDir::Files).size(), 3) << "a link leads there";
}

// What is shown ------------------------------------------------------------------------------------------------

TEST_F(BackgroundPicture, FileIsShownAtItsOwnSize)
{
    panel->setPictureFile(saved(image(Qt::red)));
    EXPECT_EQ(panel->surface().picture()->image().size(), QSize(4, 3));
    EXPECT_EQ(shownAt(0, 0), QColor(Qt::red));
}

TEST_F(BackgroundPicture, FileOfEachKindIsShown)
{
    QFile gif(cache.filePath(QStringLiteral("a.gif"))), wmf(cache.filePath(QStringLiteral("a.wmf")));
    ASSERT_TRUE(gif.open(QIODevice::WriteOnly) && wmf.open(QIODevice::WriteOnly));
    gif.write(QByteArray::fromHex("47494638396101000100800000ff0000ffffff2c00000000010001000002024401003b"));
    // An inch by half an inch, and nothing on it.
    wmf.write(QByteArray::fromHex("d7cdc69a000000000000a005d002a005000000000000" // where it lies
                                  "010009000003150000000000050000000000"         // what it is
                                  "050000000b0200000000"                         // origin
                                  "050000000c02d002a005"                         // extent
                                  "030000000000"));                              // end
    gif.close();
    wmf.close();
    const std::pair<QString, QSize> rows[] = {
        {saved(image(Qt::red)), {4, 3}},
        {saved(image(Qt::red, {8, 8}), QStringLiteral("a.jpg")), {8, 8}},
        {gif.fileName(), {1, 1}},
        {wmf.fileName(), {96, 48}},
    };
    for (const auto& [file, size] : rows) {
        if (file.endsWith(QLatin1String("wmf")) && surface::Metafile::program().isEmpty())
            continue; // the program that draws them was not built
        panel->setPictureFile(QString());
        panel->setPictureFile(file);
        ASSERT_TRUE(panel->surface().picture()) << file.toStdString();
        EXPECT_EQ(panel->surface().picture()->image().size(), size) << file.toStdString();
    }
}

TEST_F(BackgroundPicture, EmptyFileNameClearsIt)
{
    panel->setPictureFile(saved(image(Qt::red)));
    panel->setPictureFile(QString());
    EXPECT_FALSE(panel->surface().picture());
    EXPECT_FALSE(panel->Picture());
}

TEST_F(BackgroundPicture, StretchWithoutAFileClearsItAgainAndDoesNoHarm)
{
    panel->setStretch(true);
    EXPECT_FALSE(panel->surface().picture());
    panel->setStretch(false);
    EXPECT_FALSE(panel->surface().picture());
}

TEST_F(BackgroundPicture, MissingOrBrokenFileLeavesWhatIsShown)
{
    panel->setPictureFile(saved(image(Qt::red)));
    const Ref<Picture> shown = panel->surface().picture();
    panel->setPictureFile(cache.filePath(QStringLiteral("none.bmp")));
    EXPECT_EQ(panel->surface().picture().get(), shown.get());
    EXPECT_FALSE(panel->Picture()) << "a file that is not there holds none";
    QFile broken(cache.filePath(QStringLiteral("broken.bmp")));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly) && broken.write("BM and nothing else") > 0);
    broken.close();
    panel->setPictureFile(broken.fileName());
    EXPECT_EQ(panel->surface().picture().get(), shown.get());
    EXPECT_TRUE(forms.boxes().empty());
    EXPECT_TRUE(errors.empty());
}

TEST_F(BackgroundPicture, StretchCoversTheClientAreaExactlyAndFollowsAResize)
{
    panel->resize(120, 80);
    panel->show();
    panel->setPictureFile(saved(image(Qt::red)));
    panel->setStretch(true);
    EXPECT_EQ(panel->surface().picture()->image().size(), QSize(120, 80));
    EXPECT_EQ(shownAt(119, 79), QColor(Qt::red));
    panel->resize(60, 200);
    EXPECT_EQ(panel->surface().picture()->image().size(), QSize(60, 200));
    EXPECT_EQ(panel->Picture()->image().size(), QSize(4, 3)) << "the file's is never stretched";
    panel->setStretch(false);
    EXPECT_EQ(panel->surface().picture()->image().size(), QSize(4, 3));
}

TEST_F(BackgroundPicture, ResizeReadsTheFileAgainWhenItHoldsAnotherPicture)
{
    panel->resize(120, 80);
    panel->show();
    panel->setPictureFile(saved(image(Qt::red)));
    panel->setStretch(true);
    saved(image(Qt::blue, {9, 9}));
    panel->resize(121, 80);
    EXPECT_EQ(shownAt(0, 0), QColor(Qt::blue));
    ASSERT_TRUE(QFile::remove(panel->PictureFile()));
    panel->resize(122, 80);
    EXPECT_EQ(panel->surface().picture()->image().size(), QSize(121, 80)) << "no file: as it was";
}

TEST_F(BackgroundPicture, PictureThatIsHandedOverIsNotRecordedInTheDocument)
{
    panel->LoadWindow(QStringLiteral("A"));
    panel->setPictureFile(saved(image(Qt::red)));
    const auto recorded = [this] {
        return nodeOf("A").child(values::Name("CONTAINER")).child(values::Name("PICTUREFILE")).text();
    };
    const QString file = recorded();
    EXPECT_EQ(file, panel->PictureFile());
    panel->setPicture(picture(Qt::blue));
    EXPECT_EQ(recorded(), file);
    panel->setPicture({});
    EXPECT_EQ(panel->PictureFile(), QString());
    EXPECT_EQ(recorded(), file);
}

// The operations -----------------------------------------------------------------------------------------------

TEST_F(BackgroundPicture, StretchAddsTheRoomOfScrollBarsThatAreShown)
{
    QScrollArea area;
    area.setFrameShape(QFrame::NoFrame);
    area.resize(200, 100);
    area.show();
    EXPECT_EQ(BackgroundOps::coveredSize(area), QSize(200, 100)) << "no scroll bars: the client size";
    area.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    area.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    QCoreApplication::processEvents();
    EXPECT_LT(area.viewport()->width(), 200);
    EXPECT_EQ(BackgroundOps::coveredSize(area), QSize(200, 100)) << "what the bars take is covered too";
    const Ref<Picture> stretched = BackgroundOps::StretchToBackground(area, image(Qt::red), forms);
    EXPECT_EQ(stretched->image().size(), QSize(200, 100));
    EXPECT_EQ(stretched->image().pixelColor(199, 99), QColor(Qt::red));
}

TEST_F(BackgroundPicture, BitmapThatHoldsNothingIsToldAndNothingIsStretched)
{
    QWidget widget;
    widget.resize(20, 10);
    const Ref<Picture> stretched = BackgroundOps::StretchToBackground(widget, QImage(), forms);
    ASSERT_EQ(forms.boxes().size(), 1U);
    EXPECT_EQ(forms.boxes()[0].text, u"Unable to retrieve bitmap info in \"StretchToBackground\".");
    EXPECT_EQ(forms.boxes()[0].title, QString());
    EXPECT_EQ(stretched->image().size(), QSize(20, 10));
    EXPECT_EQ(stretched->image().pixelColor(10, 5), QColor(Qt::black));
}

TEST_F(BackgroundPicture, NoPictureOfTheOperationsHasAPalette)
{
    QImage indexed(4, 3, QImage::Format_Indexed8);
    indexed.setColorTable({qRgb(255, 0, 0), qRgb(0, 0, 255)});
    indexed.fill(1);
    QWidget widget;
    widget.resize(20, 10);
    const Ref<Picture> stretched = BackgroundOps::StretchToBackground(widget, indexed, forms);
    EXPECT_EQ(stretched->image().colorCount(), 0);
    EXPECT_EQ(stretched->image().pixelColor(19, 9), QColor(Qt::blue));
    const Ref<Picture> copied = BackgroundOps::CopyDCToPicture(indexed, indexed.rect());
    EXPECT_EQ(copied->image().colorCount(), 0);
    EXPECT_EQ(copied->image().pixelColor(3, 2), QColor(Qt::blue));
}

TEST_F(BackgroundPicture, CopyTakesThePartThatIsAskedForAndNothingFromOutside)
{
    QImage context = image(Qt::green, {10, 10});
    context.setPixelColor(3, 4, Qt::red);
    const QImage copied = BackgroundOps::CopyDCToPicture(context, {3, 4, 20, 2})->image();
    EXPECT_EQ(copied.size(), QSize(20, 2));
    EXPECT_EQ(copied.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(copied.pixelColor(6, 1), QColor(Qt::green));
    EXPECT_EQ(copied.pixelColor(7, 1), QColor(Qt::black));
}

TEST_F(BackgroundPicture, BitmapBelongsToItsPicture)
{
    QImage bitmap = image(Qt::red);
    const uchar* const pixels = bitmap.constBits();
    const Ref<Picture> wrapped = BackgroundOps::BitmapToPicture(std::move(bitmap));
    EXPECT_EQ(wrapped->image().constBits(), pixels) << "no copy is left behind";
    EXPECT_EQ(wrapped->type(), 1);
}
