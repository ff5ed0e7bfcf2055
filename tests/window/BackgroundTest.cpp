#include "WindowFixture.h"

#include "surface/host/Picture.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <sys/stat.h>

using namespace zan;
using namespace zan::window;
using surface::Picture;
using values::Ref;

namespace {

class BackgroundFile : public WindowTest
{
protected:
    void SetUp() override { qputenv("TMPDIR", QFile::encodeName(temporary.path())); }
    void TearDown() override
    {
        panel.reset();
        if (former.isNull())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", former);
    }
    static Ref<Picture> picture(Qt::GlobalColor colour)
    {
        QImage image(4, 3, QImage::Format_RGB32);
        image.fill(colour);
        return values::make<Picture>(image);
    }
    QString named() const { return QStringLiteral("~%1.BMP").arg(panel->hWnd()); }
    QStringList left() const
    {
        return QDir(temporary.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QTemporaryDir temporary;
    QByteArray former = qgetenv("TMPDIR");
};

} // namespace

TEST_F(BackgroundFile, LiesInAFolderThatOnlyTheUserMayEnter)
{
    panel->setPicture(picture(Qt::red));
    const QFileInfo file(panel->PictureFile());
    EXPECT_EQ(file.fileName(), named());
    struct stat status = {};
    ASSERT_EQ(::stat(QFile::encodeName(file.path()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0700U);
    ASSERT_EQ(::stat(QFile::encodeName(file.filePath()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    EXPECT_EQ(file.dir().dirName().left(9), u"zanbench-");
    EXPECT_EQ(left().size(), 1);
}

TEST_F(BackgroundFile, IsNotWrittenThroughALinkThatSomebodyPlanted)
{
    panel->setPicture(picture(Qt::red));
    const QString first = panel->PictureFile();
    const QString victim = temporary.filePath(QStringLiteral("victim"));
    QFile file(victim);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("precious");
    file.close();
    ASSERT_TRUE(QFile::remove(first));
    ASSERT_TRUE(QFile::link(victim, first));
    ASSERT_TRUE(QFile::link(victim, temporary.filePath(named())));
    panel->setPicture(picture(Qt::blue));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll().toStdString(), "precious");
    EXPECT_EQ(panel->Picture()->image().pixelColor(0, 0), QColor(Qt::blue));
}

TEST_F(BackgroundFile, GoesWithItsFolderWhenAnotherPictureComesAndWhenTheWindowEnds)
{
    panel->setPicture(picture(Qt::red));
    panel->setPicture(picture(Qt::blue));
    EXPECT_EQ(left().size(), 1);
    panel->setPicture({});
    EXPECT_EQ(left().size(), 0);
    EXPECT_EQ(panel->PictureFile(), QString());
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
}
