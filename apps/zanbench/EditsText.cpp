#include "zanbench/EditsText.h"

#include <array>

namespace zan::host {

using trellis::FileStamp;

namespace {

constexpr qsizetype LongestHead = 64 * 1024;
const QByteArray Title = "ZanBench edits 1";

/// The lines of the head behind the title, in their order.
enum Line { Scheme, Time, Base, Content, LineCount };
constexpr std::array<const char*, LineCount> names = {"scheme ", "time ", "base ", "content "};

QByteArray stampText(const FileStamp& stamp)
{
    return QByteArray::number(qlonglong(stamp.size)) + ' ' + QByteArray::number(qulonglong(stamp.hash[0]), 16) +
           ' ' + QByteArray::number(qulonglong(stamp.hash[1]), 16);
}

std::optional<FileStamp> stampOf(const QByteArray& text)
{
    const QByteArrayList words = text.split(' ');
    std::array<bool, 3> read{};
    if (words.size() != qsizetype(read.size()))
        return std::nullopt;
    FileStamp stamp;
    stamp.size = words[0].toLongLong(&read[0]);
    stamp.hash[0] = words[1].toULongLong(&read[1], 16);
    stamp.hash[1] = words[2].toULongLong(&read[2], 16);
    return read[0] && read[1] && read[2] ? std::optional(stamp) : std::nullopt;
}

/// What stands behind the names of the lines; nothing for a head of another kind.
std::optional<std::array<QByteArray, LineCount>> valuesOf(const QByteArray& head)
{
    const QByteArrayList lines = head.split('\n');
    if (lines.size() != LineCount + 1 || lines[0] != Title)
        return std::nullopt;
    std::array<QByteArray, LineCount> values;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const QByteArray& line = lines[qsizetype(i) + 1];
        if (!line.startsWith(names[i]))
            return std::nullopt;
        values[i] = line.mid(qsizetype(qstrlen(names[i])));
    }
    return values;
}

} // namespace

QByteArray editsToText(const KeptEdits& edits)
{
    std::array<QByteArray, LineCount> values;
    values[Scheme] = edits.scheme.toUtf8().toPercentEncoding("/ ");
    values[Time] = edits.time.toUTC().toString(Qt::ISODateWithMs).toLatin1();
    values[Base] = stampText(edits.base);
    values[Content] = stampText(FileStamp::of(edits.content));
    QByteArray text = Title + '\n';
    for (std::size_t i = 0; i < values.size(); ++i)
        text += names[i] + values[i] + '\n';
    return text + '\n' + edits.content;
}

EditsRead editsFromText(const QByteArray& text)
{
    const qsizetype end = text.left(LongestHead).indexOf("\n\n");
    const auto values = end < 0 ? std::nullopt : valuesOf(text.left(end));
    if (!values)
        return {{}, QStringLiteral("it was not written by this program")};
    KeptEdits edits;
    edits.scheme = QString::fromUtf8(QByteArray::fromPercentEncoding((*values)[Scheme]));
    edits.time = QDateTime::fromString(QString::fromLatin1((*values)[Time]), Qt::ISODateWithMs);
    edits.content = text.mid(end + 2);
    const auto base = stampOf((*values)[Base]), content = stampOf((*values)[Content]);
    if (!edits.time.isValid() || !base || !content || *content != FileStamp::of(edits.content))
        return {{}, QStringLiteral("it is damaged")};
    edits.base = *base;
    return {edits, {}};
}

} // namespace zan::host
