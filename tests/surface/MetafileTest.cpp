#include "surface/host/Metafile.h"

#include "support/ErrorOf.h"
#include "surface/host/Picture.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

#include <initializer_list>

namespace zan::surface::tests {

using test::errorOf;

namespace {

template <class Number>
QByteArray bytesOf(Number number)
{
    QByteArray bytes(sizeof(Number), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

QByteArray words(std::initializer_list<int> numbers)
{
    QByteArray bytes;
    for (const int number : numbers)
        bytes += bytesOf(quint16(number));
    return bytes;
}

/// One command with its parameters.
QByteArray record(int function, std::initializer_list<int> parameters = {})
{
    return bytesOf(quint32(3 + parameters.size())) + words({function}) + words(parameters);
}

const QByteArray End = record(0);

enum Function : int {
    SetWindowOrigin = 0x20b,
    SetWindowExtent = 0x20c,
    CreateBrush = 0x2fc,
    SelectObject = 0x12d,
    Rectangle = 0x41b,
};

QByteArray header()
{
    return words({1, 9, 0x300, 100, 0, 4, 10, 0, 0});
}

/// The head of a picture of so many units, 1440 to the inch.
QByteArray placeable(int width, int height, int unitsPerInch = 1440)
{
    return QByteArray("\xd7\xcd\xc6\x9a", 4) + words({0, 0, 0, width, height, unitsPerInch, 0, 0, 0});
}

/// An inch wide and half an inch high, its left half red.
QByteArray halfRed()
{
    return placeable(1440, 720) + header() + record(SetWindowOrigin, {0, 0}) +
           record(SetWindowExtent, {720, 1440}) + record(CreateBrush, {0, 0x00ff, 0, 0}) +
           record(SelectObject, {0}) + record(Rectangle, {720, 720, 0, 0}) + End;
}

class Metafiles : public testing::Test
{
protected:
    ~Metafiles() override { Metafile::setProgram({}); }
    /// Has this shell script draw.
    void drawBy(const QByteArray& script)
    {
        QFile file(folder.filePath(QStringLiteral("draw")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script);
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        Metafile::setProgram(file.fileName());
    }
    int errorOfFile(const QByteArray& content)
    {
        QFile file(folder.filePath(QStringLiteral("picture.wmf")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        return errorOf([&] { loadPicture(file.fileName()); });
    }
    QTemporaryDir folder;
};

} // namespace

TEST_F(Metafiles, AreKnownByTheirFirstBytes)
{
    EXPECT_TRUE(Metafile::isMetafile(halfRed().left(6)));
    EXPECT_TRUE(Metafile::isMetafile(header().left(6)));
    EXPECT_FALSE(Metafile::isMetafile("BM1234"));
    EXPECT_FALSE(Metafile::isMetafile("\x01\x00"));
    EXPECT_FALSE(Metafile::isMetafile(""));
}

TEST_F(Metafiles, OnesThatAreNotWholeAreRefusedBeforeAnythingInterpretsThem)
{
    const QByteArray whole = halfRed();
    EXPECT_TRUE(Metafile::isWellFormed(whole));
    EXPECT_TRUE(Metafile::isWellFormed(whole + "what follows the end"));
    EXPECT_TRUE(Metafile::isWellFormed(header() + End)) << "without a size on paper";
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(Metafile::isWellFormed(whole.left(size))) << size;
    const std::pair<const char*, QByteArray> rows[] = {
        {"no width", placeable(0, 720) + header() + End},
        {"no height", placeable(1440, 0) + header() + End},
        {"no units", placeable(1440, 720, 0) + header() + End},
        {"another head", placeable(1440, 720) + QByteArray(18, 'x') + End},
        {"a command of no size", header() + bytesOf(quint32(0)) + words({5}) + End},
        {"a command that ends in itself", header() + bytesOf(quint32(2)) + words({5}) + End},
        {"a command beyond the file", header() + bytesOf(quint32(0x40000000)) + words({5}) + End},
        {"a size that wraps", header() + bytesOf(quint32(0x80000003)) + words({5}) + End},
        {"too many commands", header() + record(SelectObject).repeated(Metafile::MostRecords) + End},
        {"too many bytes", header() + End + QByteArray(Metafile::LargestFile, '\0')},
    };
    for (const auto& [what, bytes] : rows)
        EXPECT_FALSE(Metafile::isWellFormed(bytes)) << what;
}

TEST_F(Metafiles, AreDrawnAtNinetySixPixelsToTheInch)
{
    if (Metafile::program().isEmpty())
        GTEST_SKIP() << "zanbench-metafile was not built";
    const QImage picture = Metafile::draw(halfRed());
    ASSERT_EQ(picture.size(), QSize(96, 48));
    EXPECT_EQ(picture.pixelColor(20, 20), QColor(Qt::red));
    EXPECT_EQ(picture.pixelColor(70, 20), QColor(Qt::white));
    EXPECT_EQ(errorOfFile(halfRed()), 0);
}

TEST_F(Metafiles, HugeOnesAreDrawnSmaller)
{
    if (Metafile::program().isEmpty())
        GTEST_SKIP() << "zanbench-metafile was not built";
    const QImage picture = Metafile::draw(placeable(30000, 15000, 1) + header() + record(SetWindowOrigin, {0, 0}) +
                                          record(SetWindowExtent, {15000, 30000}) + End);
    ASSERT_FALSE(picture.isNull());
    EXPECT_LE(picture.width(), int(Metafile::LargestSide));
    EXPECT_LE(quint64(picture.width()) * quint64(picture.height()), Metafile::LargestArea);
    EXPECT_NEAR(double(picture.width()) / picture.height(), 2.0, 0.01);
}

TEST_F(Metafiles, ProgramThatDrawsGivesUpOnWhatItCannotRead)
{
    if (Metafile::program().isEmpty())
        GTEST_SKIP() << "zanbench-metafile was not built";
    // Well formed for us, nonsense for who interprets it: parameters that are missing, objects that were never made.
    for (int function = 1; function < 0x1000; function += 173)
        Metafile::draw(placeable(1440, 720) + header() + record(function) + record(function, {-1, -1, 0x7fff}) +
                       End);
    EXPECT_EQ(Metafile::draw(halfRed()).size(), QSize(96, 48)) << "nothing of it stays";
}

TEST_F(Metafiles, WithoutTheProgramTheyAreRefused)
{
    Metafile::setProgram(folder.filePath(QStringLiteral("none")));
    EXPECT_TRUE(Metafile::draw(halfRed()).isNull());
    EXPECT_EQ(errorOfFile(halfRed()), 481);
}

TEST_F(Metafiles, AnswerThatIsNoPictureIsNone)
{
    for (const char* script : {
             "exit 0\n",
             "cat >/dev/null; exit 1\n",
             "cat >/dev/null; kill -SEGV $$\n",
             "cat >/dev/null; printf 'ZWMF\\001\\000\\000\\000\\001\\000\\000\\000abcd'; exit 3\n",
             "cat >/dev/null; printf 'ZWMF\\001\\000\\000\\000\\001\\000\\000\\000abc'\n",
             "cat >/dev/null; printf 'ZWMF\\001\\000\\000\\000\\001\\000\\000\\000abcde'\n",
             "cat >/dev/null; printf 'ZWMF\\000\\000\\000\\000\\001\\000\\000\\000'\n",
             "cat >/dev/null; printf 'ZWMF\\377\\377\\377\\377\\377\\377\\377\\377abcd'\n",
             "cat >/dev/null; printf 'ABCD\\001\\000\\000\\000\\001\\000\\000\\000abcd'\n",
         }) {
        drawBy(script);
        EXPECT_TRUE(Metafile::draw(halfRed()).isNull()) << script;
        EXPECT_EQ(errorOfFile(halfRed()), 481) << script;
    }
    drawBy("cat >/dev/null; printf 'ZWMF\\001\\000\\000\\000\\001\\000\\000\\000\\001\\002\\003\\000'\n");
    EXPECT_EQ(Metafile::draw(halfRed()).pixelColor(0, 0), QColor(3, 2, 1))
        << "a good one, so that the others say something";
}

TEST_F(Metafiles, ProgramThatNeverEndsOrNeverStopsWritingIsEnded)
{
    drawBy("echo $$ > " + QFile::encodeName(folder.filePath(QStringLiteral("number"))) + "; exec sleep 1000\n");
    EXPECT_TRUE(Metafile::draw(halfRed(), std::chrono::milliseconds(300)).isNull());
    QFile number(folder.filePath(QStringLiteral("number")));
    ASSERT_TRUE(number.open(QIODevice::ReadOnly));
    EXPECT_FALSE(QFile::exists(QStringLiteral("/proc/") + QString::fromLatin1(number.readAll().trimmed())));
    drawBy("exec yes\n");
    EXPECT_TRUE(Metafile::draw(halfRed(), std::chrono::seconds(60)).isNull())
        << "by what it writes, not by its time";
}

} // namespace zan::surface::tests
