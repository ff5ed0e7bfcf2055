// Any bytes as an older window: refused with a place in the file, or rows that can be written down and read again.

#include "fuzz/support/Require.h"
#include "keel/KeelText.h"

#include <QStringList>

#include <cmath>
#include <cstdint>

using namespace zan;
using fuzz::require;
using keel::KeelField;
using keel::KeelText;

namespace {

QString quoted(QString text)
{
    return u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QString row(const KeelField& field)
{
    constexpr int EveryDigit = 9;
    QStringList parts{field.line,
                      field.column,
                      quoted(field.label),
                      quoted(field.units),
                      QString::number(field.address),
                      QString::number(int(field.type)),
                      quoted(field.format),
                      QString::number(double(field.multiplier), 'g', EveryDigit),
                      QString::number(double(field.offset), 'g', EveryDigit)};
    if (field.bytes)
        parts << QString::number(*field.bytes);
    return parts.join(u',') + u'\n';
}

/// What one row says, in a form that can be compared.
bool same(const KeelField& a, const KeelField& b)
{
    return row(a) == row(b) && a.bytes == b.bytes;
}

void checkField(const KeelField& field)
{
    require(field.label.size() <= keel::LongestKeelText && field.format.size() <= keel::LongestKeelText,
            "a text has its limit");
    require(std::isfinite(field.multiplier) && std::isfinite(field.offset), "a number is one");
    require(int(field.type) >= 0 && int(field.type) < site::DataTypeCount, "a type is one of nine");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const KeelText read = keel::parseKeel(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    require(read.fields.size() <= keel::MostKeelFields, "there are as many rows as may be");
    if (read.error) {
        require(read.error->line >= 1 && read.error->column >= 1, "an error has its place");
        require(std::size_t(read.error->line) <= size + 1 && std::size_t(read.error->column) <= size + 1,
                "the place lies in the file");
        require(!read.error->message.isEmpty(), "an error says something");
        return 0;
    }
    QString again = QStringLiteral("KEEL 1\nCODEPAGE UTF-8\n");
    for (const KeelField& field : read.fields) {
        checkField(field);
        again += row(field);
    }
    const QByteArray bytes = again.toUtf8();
    if (bytes.size() > keel::LargestKeelFile)
        return 0;
    const KeelText second = keel::parseKeel(bytes);
    require(!second.error, "what was read can be written down");
    require(second.fields.size() == read.fields.size(), "as many rows come back");
    for (std::size_t place = 0; place < read.fields.size(); ++place)
        require(same(read.fields[place], second.fields[place]), "each row comes back as it was");
    return 0;
}
