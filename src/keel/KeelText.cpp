#include "keel/KeelText.h"

#include "keel/CodePage.h"
#include "keel/RowText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace zan::keel {

namespace {

constexpr char EndOfDosText = 0x1a; // what an editor of the time puts behind the last line
constexpr QLatin1String Signature("KEEL");
constexpr QLatin1String CodePageWord("CODEPAGE");

QString readPosition(const QString& text, QString& into)
{
    if (!isDecimal(text))
        return QStringLiteral("'%1' is no number of a line or a column.").arg(shortened(text));
    into = text;
    return {};
}

QString readText(const QString& text, QString& into)
{
    into = text;
    return {};
}

QString readAddress(const QString& text, KeelField& field)
{
    const bool isHex = text.startsWith(QLatin1String("&H"), Qt::CaseInsensitive);
    bool read = false;
    const qlonglong address = isHex ? text.mid(2).toLongLong(&read, 16) : text.toLongLong(&read, 10);
    using Limits = std::numeric_limits<std::int32_t>;
    if (!read || address < Limits::lowest() || address > Limits::max())
        return QStringLiteral("'%1' is no address: write a whole number, or &H and hexadecimal digits.")
            .arg(shortened(text));
    field.address = std::int32_t(address);
    return {};
}

QString readType(const QString& text, KeelField& field)
{
    for (std::int32_t type = 0; type < site::DataTypeCount; ++type) {
        if (text == QString::number(type) ||
            text.simplified().compare(site::dataTypeName(type), Qt::CaseInsensitive) == 0) {
            field.type = site::DataType(type);
            return {};
        }
    }
    return QStringLiteral("'%1' is no data type: write 0 to %2, or a name such as \"%3\".")
        .arg(shortened(text))
        .arg(site::DataTypeCount - 1)
        .arg(site::dataTypeName(std::int32_t(site::DataType::UnsignedWord)));
}

QString readSingle(const QString& text, float& into)
{
    const double number = isDecimal(text) ? text.toDouble() : std::numeric_limits<double>::infinity();
    if (!(std::abs(number) <= double(std::numeric_limits<float>::max())))
        return QStringLiteral("'%1' is no number of single precision.").arg(shortened(text));
    into = float(number);
    return {};
}

QString readBytes(const QString& text, KeelField& field)
{
    bool read = false;
    const short count = text.toShort(&read);
    if (!read || count < 1)
        return QStringLiteral("'%1' is no number of bytes of 1 to %2.")
            .arg(shortened(text))
            .arg(std::numeric_limits<std::int16_t>::max());
    field.bytes = count;
    return {};
}

/// What a row is made of, in the order of the file: how each text becomes part of the field, or why it does not.
using Rule = QString (*)(const QString& text, KeelField& field);
constexpr std::array<Rule, 10> Rules{
    [](const QString& text, KeelField& field) { return readPosition(text, field.line); },
    [](const QString& text, KeelField& field) { return readPosition(text, field.column); },
    [](const QString& text, KeelField& field) { return readText(text, field.label); },
    [](const QString& text, KeelField& field) { return readText(text, field.units); },
    &readAddress,
    &readType,
    [](const QString& text, KeelField& field) { return readText(text, field.format); },
    [](const QString& text, KeelField& field) { return readSingle(text, field.multiplier); },
    [](const QString& text, KeelField& field) { return readSingle(text, field.offset); },
    &readBytes,
};

/// Goes through the lines of a file.
class Reader
{
public:
    explicit Reader(const QByteArray& bytes)
        : m_bytes(bytes)
    {}
    KeelText read();

private:
    bool nextLine(QByteArrayView& line);
    void readLine(QByteArrayView bytes);
    void readWord(const QString& line);
    void readRow(const QString& line);
    void fail(qsizetype place, const QString& message);

    QByteArrayView m_bytes;
    qsizetype m_place = 0;
    int m_line = 0;
    CodePage m_page = CodePage::Dos437;
    bool m_isSigned = false; // the word that an older window begins with has been read
    KeelText m_result;
};

KeelText Reader::read()
{
    if (m_bytes.size() > LargestKeelFile) {
        fail(0, QStringLiteral("The file is larger than %1 MB: it is no window of a terminal.")
                    .arg(LargestKeelFile / (1024 * 1024)));
        return std::move(m_result);
    }
    if (m_bytes.startsWith("\xef\xbb\xbf")) {
        m_page = CodePage::Utf8;
        m_place = 3;
    }
    QByteArrayView line;
    while (!m_result.error && nextLine(line))
        readLine(line);
    if (!m_result.error && !m_isSigned)
        fail(0, QStringLiteral("The file is empty: a window begins with the word %1.").arg(Signature));
    return std::move(m_result);
}

/// Lines end with a line feed, a carriage return, or both; the file ends where the terminal's editors said so.
bool Reader::nextLine(QByteArrayView& line)
{
    if (m_place >= m_bytes.size())
        return false;
    ++m_line;
    const qsizetype start = m_place;
    while (m_place < m_bytes.size() && m_bytes[m_place] != '\n' && m_bytes[m_place] != '\r' &&
           (m_bytes[m_place] != EndOfDosText || m_page == CodePage::Utf8))
        ++m_place;
    line = m_bytes.sliced(start, m_place - start);
    if (m_place >= m_bytes.size())
        return true;
    if (m_bytes[m_place] == EndOfDosText)
        m_place = m_bytes.size();
    else
        m_place += m_bytes[m_place] == '\r' && m_place + 1 < m_bytes.size() && m_bytes[m_place + 1] == '\n' ? 2 : 1;
    return true;
}

void Reader::readLine(QByteArrayView bytes)
{
    const DecodedText decoded = decode(bytes, m_page);
    const QString& line = decoded.text;
    const qsizetype start = firstSolid(line, 0);
    if (decoded.invalidAt >= 0) {
        fail(decoded.invalidAt,
             m_page == CodePage::Utf8
                 ? QStringLiteral("This is no character of UTF-8. Name the code page of the file, as in '%1 437'.")
                       .arg(CodePageWord)
                 : QStringLiteral("There is no character with the code 0: this is no text file."));
        return;
    }
    if (start >= line.size() || line[start] == u';')
        return;
    if (!m_isSigned || line[start].isLetter())
        readWord(line);
    else
        readRow(line);
}

/// "KEEL" before everything else, with the number of the format or without; "CODEPAGE 850" before the first row.
void Reader::readWord(const QString& line)
{
    const qsizetype start = firstSolid(line, 0);
    const qsizetype end = endOfWord(line, start);
    const QString word = line.mid(start, end - start);
    const qsizetype place = firstSolid(line, end);
    const QString rest = line.mid(place).trimmed();
    if (!m_isSigned) {
        m_isSigned = word.compare(Signature, Qt::CaseInsensitive) == 0;
        if (!m_isSigned)
            fail(start, QStringLiteral("This is no older window: the first word must be %1.").arg(Signature));
        else if (!rest.isEmpty() && rest != QLatin1String("1"))
            fail(place,
                 QStringLiteral("'%1' is no format that is known here; there is only 1.").arg(shortened(rest)));
        return;
    }
    if (word.compare(CodePageWord, Qt::CaseInsensitive) != 0) {
        fail(start, QStringLiteral("'%1' is no word that is known here. A row begins with the number of its line, "
                                   "a remark with a semicolon.")
                        .arg(shortened(word)));
        return;
    }
    const std::optional<CodePage> page = codePageOfName(rest);
    if (!page)
        fail(place, QStringLiteral("'%1' is no code page: it is one of 437, 850 and UTF-8.").arg(shortened(rest)));
    else if (!m_result.fields.empty())
        fail(start, QStringLiteral("The code page must stand before the first row."));
    else
        m_page = *page;
}

void Reader::readRow(const QString& line)
{
    if (m_result.fields.size() >= MostKeelFields) {
        fail(firstSolid(line, 0), QStringLiteral("There are more than %1 rows.").arg(MostKeelFields));
        return;
    }
    KeelField field;
    RowText row(line);
    std::size_t place = 0;
    for (; row.next(); ++place) {
        if (!row.problem().isEmpty()) {
            fail(row.start(), row.problem());
            return;
        }
        if (row.text().isEmpty())
            continue; // what is left out keeps its default
        if (place >= Rules.size()) {
            fail(row.start(), QStringLiteral("A row has no more than %1 fields.").arg(Rules.size()));
            return;
        }
        if (row.text().size() > LongestKeelText) {
            fail(row.start(), QStringLiteral("The text is longer than %1 characters.").arg(LongestKeelText));
            return;
        }
        if (const QString problem = Rules[place](row.text(), field); !problem.isEmpty()) {
            fail(row.start(), problem);
            return;
        }
    }
    m_result.fields.push_back(std::move(field));
}

void Reader::fail(qsizetype place, const QString& message)
{
    if (!m_result.error)
        m_result.error = KeelError{message, std::max(1, m_line), int(place) + 1};
}

} // namespace

QString KeelError::text(const QString& file) const
{
    return QStringLiteral("%1:%2:%3: %4").arg(file).arg(line).arg(column).arg(message);
}

KeelText parseKeel(const QByteArray& bytes)
{
    return Reader(bytes).read();
}

} // namespace zan::keel
