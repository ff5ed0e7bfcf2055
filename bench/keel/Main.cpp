// What comes from outside: an older window of 2,000 rows, and pictures behind a panel. Each line is measured in a child
// process: its time, and by how much its peak of memory rose.

#include "halyard/LoggerFactory.h"
#include "surface/host/Metafile.h"
#include "surface/host/Picture.h"
#include "trellis/SchemeFile.h"
#include "window/BenchWindow.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QtEndian>

#include <cstdio>
#include <functional>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace zan;
using values::Ref;

namespace {

constexpr int Rows = 2000;

double peakMegabytes()
{
    rusage used = {};
    getrusage(RUSAGE_SELF, &used);
    return double(used.ru_maxrss) / 1024;
}

/// Runs a step in a child and prints what it took.
void measure(const char* what, const std::function<void()>& step)
{
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child == 0) {
        static char name[] = "bench";
        static char* arguments[] = {name, nullptr};
        int count = 1;
        const QApplication application(count, arguments);
        const double before = peakMegabytes();
        QElapsedTimer timer;
        timer.start();
        step();
        const double milliseconds = double(timer.nsecsElapsed()) / 1e6;
        std::printf("%-52s %9.2f ms %8.1f MB\n", what, milliseconds, peakMegabytes() - before);
        std::fflush(stdout);
        ::_exit(0);
    }
    ::waitpid(child, nullptr, 0);
}

QByteArray olderWindow()
{
    QByteArray text = "KEEL 1\n";
    for (int row = 0; row < Rows; ++row)
        text += QStringLiteral("%1, %2, \"VALUE %3 ... \", \"m\", %4, \"Unsigned Word\", \"0.00\", 0.01\n")
                    .arg(row / 4)
                    .arg(row % 4 * 20)
                    .arg(row)
                    .arg(row % 2 == 0 ? row * 2 : -1)
                    .toLatin1();
    return text;
}

QString written(const QTemporaryDir& folder, const char* name, const QByteArray& content)
{
    const QString path = folder.filePath(QString::fromLatin1(name));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        std::abort();
    return path;
}

/// A bitmap whose head says that it is this large.
QByteArray bitmapHead(qint32 width, qint32 height)
{
    QByteArray head(54, '\0');
    head[0] = 'B';
    head[1] = 'M';
    qToLittleEndian<quint32>(54, head.data() + 10);
    qToLittleEndian<quint32>(40, head.data() + 14);
    qToLittleEndian<qint32>(width, head.data() + 18);
    qToLittleEndian<qint32>(height, head.data() + 22);
    qToLittleEndian<quint16>(1, head.data() + 26);
    qToLittleEndian<quint16>(24, head.data() + 28);
    return head;
}

/// The jpg with another size in its head.
QByteArray enlarged(QByteArray jpg, quint16 width, quint16 height)
{
    const qsizetype frame = jpg.indexOf(QByteArray("\xff\xc0", 2));
    qToBigEndian<quint16>(height, jpg.data() + frame + 5);
    qToBigEndian<quint16>(width, jpg.data() + frame + 7);
    return jpg;
}

void import(const QString& file)
{
    const Ref<trellis::SchemeFile> scheme = trellis::SchemeFile::create(file + QStringLiteral(".scheme"));
    window::BenchWindow panel;
    panel.InitProperties();
    panel.setLogger(halyard::createLogger(QStringLiteral("sim:"), scheme).logger);
    panel.ImportKeel(file);
}

void refused(const QString& file)
{
    try {
        surface::loadPicture(file);
        std::printf("not refused: %s\n", qPrintable(file));
    } catch (const values::RuntimeError&) {
        // as it should
    }
}

void stretched(const QString& file)
{
    window::BenchWindow panel;
    panel.InitProperties();
    panel.resize(1000, 640);
    panel.show();
    panel.setStretch(true);
    panel.setPictureFile(file);
    panel.grab();
}

} // namespace

int main()
{
    const QTemporaryDir folder;
    const QString older = written(folder, "old.kel", olderWindow());
    QImage large(4000, 3000, QImage::Format_RGB32);
    for (int y = 0; y < large.height(); ++y)
        for (int x = 0; x < large.width(); ++x)
            large.setPixel(x, y, qRgb(x * 255 / 4000, y * 255 / 3000, (x ^ y) & 255));
    const QString jpg = folder.filePath(QStringLiteral("large.jpg"));
    large.save(jpg, "JPG", 85);
    large = {};
    QFile file(jpg);
    if (!file.open(QIODevice::ReadOnly))
        return 1;
    const QString hugeJpg = written(folder, "huge.jpg", enlarged(file.readAll(), 20000, 20000));
    const QString hugeBmp = written(folder, "huge.bmp", bitmapHead(20000, 20000));

    measure("an older window of 2,000 rows, read and laid out", [&] { import(older); });
    measure("a jpg of 4,000 x 3,000, read", [&] { surface::loadPicture(jpg); });
    measure("the same behind a panel, stretched and painted", [&] { stretched(jpg); });
    measure("a jpg of 20,000 x 20,000, refused", [&] { refused(hugeJpg); });
    measure("a bmp of 20,000 x 20,000, refused", [&] { refused(hugeBmp); });
    if (surface::Metafile::program().isEmpty())
        std::printf("metafiles: zanbench-metafile was not built\n");
    else
        measure("a small wmf, drawn by its program", [] {
            const QByteArray small = QByteArray::fromHex(
                "d7cdc69a000000000000a005d002a0050000000000000100090000030c0000000000030000000000"
                "030000000000");
            surface::Metafile::draw(small);
        });
    return 0;
}
