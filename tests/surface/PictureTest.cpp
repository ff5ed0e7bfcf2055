#include "surface/host/Picture.h"
#include "support/ErrorOf.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace zan::surface::tests {

using test::errorOf;

namespace {

class Pictures : public testing::Test
{
protected:
    QString path(const QString& name) const { return folder.filePath(name); }
    QString write(const QString& name, const QByteArray& content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return path(name);
    }
    QString save(const QString& name, const char* format) const
    {
        QImage image(12, 7, QImage::Format_RGB32);
        image.fill(Qt::red);
        EXPECT_TRUE(image.save(path(name), format));
        return path(name);
    }
    QTemporaryDir folder;
};

/// A one-pixel gif, written out by hand because the toolkit writes none.
const QByteArray TinyGif =
    QByteArray::fromHex("47494638396101000100800000ff0000ffffff2c00000000010001000002024401003b");

QByteArray bitmapHeader(qint32 width, qint32 height)
{
    QByteArray header(54, '\0');
    header[0] = 'B';
    header[1] = 'M';
    qToLittleEndian<quint32>(54, header.data() + 10);
    qToLittleEndian<quint32>(40, header.data() + 14);
    qToLittleEndian<qint32>(width, header.data() + 18);
    qToLittleEndian<qint32>(height, header.data() + 22);
    qToLittleEndian<quint16>(1, header.data() + 26);
    qToLittleEndian<quint16>(24, header.data() + 28);
    return header;
}

/// The jpg with another size in its head.
QByteArray enlarged(QByteArray jpg, quint16 width, quint16 height)
{
    const qsizetype frame = jpg.indexOf(QByteArray("\xff\xc0", 2));
    qToBigEndian<quint16>(height, jpg.data() + frame + 5);
    qToBigEndian<quint16>(width, jpg.data() + frame + 7);
    return jpg;
}

} // namespace

TEST_F(Pictures, HugeOnesAreRefusedByTheirHeadBeforeTheyAreInMemory)
{
    QFile small(save(QStringLiteral("small.jpg"), "JPG"));
    ASSERT_TRUE(small.open(QIODevice::ReadOnly));
    const QByteArray jpg = small.readAll();
    QByteArray gif = TinyGif;
    for (const qsizetype place : {6, 8})
        qToLittleEndian<quint16>(20000, gif.data() + place);
    rusage before = {}, after = {};
    ASSERT_EQ(::getrusage(RUSAGE_SELF, &before), 0);
    for (const QByteArray& content : {bitmapHeader(20000, 20000), enlarged(jpg, 20000, 20000), gif,
                                      bitmapHeader(8000, 8000), enlarged(jpg, 8000, 8000)})
        EXPECT_EQ(errorOf([&] { loadPicture(write(QStringLiteral("huge"), content)); }), 481);
    ASSERT_EQ(::getrusage(RUSAGE_SELF, &after), 0);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, 64 * 1024) << "kilobytes; the smallest of them takes 256,000";
    EXPECT_EQ(errorOf([&] { loadPicture(write(QStringLiteral("fits"), enlarged(jpg, 4000, 3000))); }), 0)
        << "the size is what they are refused for";
}

TEST_F(Pictures, BitmapsJpegsAndGifsLoad)
{
    for (const auto& [name, format] : {std::pair{"a.bmp", "BMP"}, std::pair{"a.jpg", "JPG"}}) {
        const auto picture = loadPicture(save(QString::fromLatin1(name), format));
        ASSERT_TRUE(picture) << name;
        EXPECT_EQ(picture->image().size(), QSize(12, 7)) << name;
        EXPECT_EQ(picture->width(), 318) << "hundredths of a millimetre";
        EXPECT_NE(picture->handle(), 0);
    }
    EXPECT_EQ(loadPicture(write(QStringLiteral("a.gif"), TinyGif))->image().size(), QSize(1, 1));
}

TEST_F(Pictures, TheContentCountsNotTheName)
{
    EXPECT_TRUE(QFile::copy(save(QStringLiteral("a.bmp"), "BMP"), path(QStringLiteral("b.jpg"))));
    EXPECT_TRUE(loadPicture(path(QStringLiteral("b.jpg"))));
}

TEST_F(Pictures, NoNameGivesNoPicture)
{
    EXPECT_FALSE(loadPicture({}));
}

TEST_F(Pictures, MissingFilesAndFoldersHaveErrorsOfTheirOwn)
{
    EXPECT_EQ(errorOf([&] { loadPicture(path(QStringLiteral("none.bmp"))); }), 53);
    EXPECT_EQ(errorOf([&] { loadPicture(folder.path()); }), 75);
    EXPECT_EQ(errorOf([&] { loadPicture(QStringLiteral("/dev/zero")); }), 75) << "a device would never end";
}

TEST_F(Pictures, WhatIsNoPictureIsInvalid)
{
    const QByteArray png = QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");
    const std::pair<const char*, QByteArray> rows[]{
        {"empty", {}},
        {"text", "hello, this is no picture"},
        {"other format", png},
        {"only a head", "BM"},
        {"cut gif", TinyGif.left(9)},
        {"cut jpeg", QByteArray::fromHex("ffd8ffe000104a464946")},
        {"huge bitmap", bitmapHeader(2'000'000'000, 2'000'000'000)},
        {"wide bitmap", bitmapHeader(100'000, 1)},
        {"large bitmap", bitmapHeader(16'000, 16'000)},
        {"bitmap without size", bitmapHeader(0, 0)},
        {"negative width", bitmapHeader(-5, 5)},
    };
    for (const auto& [what, content] : rows)
        EXPECT_EQ(errorOf([&] { loadPicture(write(QStringLiteral("x"), content)); }), 481) << what;
}

TEST_F(Pictures, RandomBytesBehindAGoodHeadNeverCrash)
{
    quint32 state = 1;
    for (int round = 0; round < 300; ++round) {
        QByteArray content = round % 2 == 0 ? bitmapHeader(round % 90 + 1, 9) : TinyGif;
        for (qsizetype place = round % 2 == 0 ? 28 : 6; place < content.size(); ++place) {
            state = state * 1664525 + 1013904223;
            if (state >> 29 == 0)
                content[place] = char(state >> 16);
        }
        const int error = errorOf([&] { loadPicture(write(QStringLiteral("x"), content)); });
        EXPECT_TRUE(error == 0 || error == 481) << error;
    }
}

} // namespace zan::surface::tests
