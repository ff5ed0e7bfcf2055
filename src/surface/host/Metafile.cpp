#include "surface/host/Metafile.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>
#include <QtEndian>

#include <array>
#include <dlfcn.h>

namespace zan::surface::Metafile {

namespace {

constexpr QByteArrayView PlaceableKey("\xd7\xcd\xc6\x9a");
constexpr qsizetype PlaceableSize = 22;
constexpr qsizetype HeaderSize = 18;
constexpr quint16 HeaderWords = 9;
constexpr quint32 SmallestRecord = 3; // words: its size and what it does

const QString ProgramName = QStringLiteral("zanbench-metafile");

/// What the program writes before the pixels, which follow from the top left corner, 32 bits each.
constexpr QByteArrayView Answer("ZWMF");
constexpr qsizetype AnswerHead = 12;

quint16 wordAt(QByteArrayView bytes, qsizetype place)
{
    return qFromLittleEndian<quint16>(bytes.data() + place);
}

quint32 longAt(QByteArrayView bytes, qsizetype place)
{
    return qFromLittleEndian<quint32>(bytes.data() + place);
}

/// The head that says where the picture lies and how large it is on paper.
bool isPlaceable(QByteArrayView bytes)
{
    return bytes.startsWith(PlaceableKey);
}

bool hasSize(QByteArrayView bytes)
{
    enum : qsizetype { Left = 6, Top = 8, Right = 10, Bottom = 12, UnitsPerInch = 14 };
    return wordAt(bytes, Left) != wordAt(bytes, Right) && wordAt(bytes, Top) != wordAt(bytes, Bottom) &&
           wordAt(bytes, UnitsPerInch) != 0;
}

bool isHeader(QByteArrayView bytes)
{
    const quint16 kind = wordAt(bytes, 0), version = wordAt(bytes, 4);
    return (kind == 1 || kind == 2) && wordAt(bytes, 2) == HeaderWords && (version == 0x100 || version == 0x300);
}

QString& chosenProgram()
{
    static QString file;
    return file;
}

/// The folder of the library that this code lies in.
QString libraryFolder()
{
    static const char ours = 0;
    Dl_info info = {};
    return ::dladdr(&ours, &info) != 0 && info.dli_fname
               ? QFileInfo(QFile::decodeName(info.dli_fname)).absolutePath()
               : QString();
}

/// Runs the program over the bytes. Empty when it fails, writes too much or takes too long; it is gone by then.
QByteArray answerOf(const QString& file, const QByteArray& bytes, std::chrono::milliseconds longestWait)
{
    constexpr qsizetype LargestAnswer = AnswerHead + qsizetype(LargestArea) * 4;
    const QDeadlineTimer deadline(longestWait);
    QProcess process;
    process.setProcessEnvironment(QProcessEnvironment()); // nothing of ours is its business
    process.setWorkingDirectory(QStringLiteral("/"));
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(file, QStringList());
    process.write(bytes);
    process.closeWriteChannel();
    QByteArray answer;
    while (process.state() != QProcess::NotRunning && answer.size() <= LargestAnswer && !deadline.hasExpired()) {
        process.waitForReadyRead(int(deadline.remainingTime()));
        answer += process.readAllStandardOutput();
    }
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    answer += process.readAllStandardOutput();
    const bool succeeded = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return succeeded && answer.size() <= LargestAnswer ? answer : QByteArray();
}

QImage pictureOf(const QByteArray& answer)
{
    if (answer.size() < AnswerHead || !answer.startsWith(Answer))
        return {};
    const quint32 width = longAt(answer, 4), height = longAt(answer, 8);
    if (width == 0 || height == 0 || width > LargestSide || height > LargestSide ||
        quint64(width) * height > LargestArea ||
        quint64(answer.size()) != quint64(AnswerHead) + quint64(width) * height * 4)
        return {};
    const QImage lent(reinterpret_cast<const uchar*>(answer.constData()) + AnswerHead, int(width), int(height),
                      qsizetype(width) * 4, QImage::Format_RGB32);
    return lent.copy();
}

} // namespace

bool isMetafile(QByteArrayView head)
{
    return isPlaceable(head) || (head.size() >= 6 && isHeader(head));
}

bool isWellFormed(QByteArrayView bytes)
{
    if (bytes.size() > LargestFile)
        return false;
    const bool placeable = isPlaceable(bytes);
    const qsizetype head = placeable ? PlaceableSize : 0;
    if (bytes.size() < head + HeaderSize || (placeable && !hasSize(bytes)) || !isHeader(bytes.sliced(head)))
        return false;
    qsizetype place = head + HeaderSize;
    for (int record = 0; record < MostRecords && bytes.size() - place >= qsizetype(SmallestRecord) * 2; ++record) {
        const quint32 words = longAt(bytes, place);
        if (words < SmallestRecord || qint64(words) * 2 > qint64(bytes.size() - place))
            return false;
        if (wordAt(bytes, place + 4) == 0)
            return true; // the one that ends them
        place += qsizetype(words) * 2;
    }
    return false;
}

QImage draw(const QByteArray& bytes, std::chrono::milliseconds longestWait)
{
    const QString file = isWellFormed(bytes) ? program() : QString();
    return file.isEmpty() ? QImage() : pictureOf(answerOf(file, bytes, longestWait));
}

void setProgram(const QString& file)
{
    chosenProgram() = file;
}

QString program()
{
    const auto found = [](const QString& file) { return QFileInfo(file).isExecutable() ? file : QString(); };
    if (!chosenProgram().isEmpty())
        return found(chosenProgram());
    const QString library = libraryFolder();
    const std::array folders{QCoreApplication::applicationDirPath(), library + QStringLiteral("/../bin"),
                             library + QStringLiteral("/" ZAN_PROGRAMS_FROM_LIBRARY)};
    for (const QString& folder : folders) {
        if (const QString file = found(folder + u'/' + ProgramName); !file.isEmpty())
            return file;
    }
    return {};
}

} // namespace zan::surface::Metafile
