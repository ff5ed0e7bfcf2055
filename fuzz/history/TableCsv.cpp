// Any labels, units and values as a table for other programs: a plain reader of comma-separated values gets the same
// cells back, and no cell begins as a formula of a spreadsheet.

#include "fuzz/support/Pieces.h"
#include "fuzz/support/Require.h"
#include "history/CsvExport.h"
#include "values/Failure.h"

#include <QBuffer>
#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

using namespace zan;
using fuzz::Pieces;
using fuzz::require;
using values::Variant;

namespace {

constexpr site::HistoryTime Begin = 1'782'900'000'000;
constexpr std::size_t MostColumns = 6;
constexpr std::size_t MostRows = 20;

/// A text given as UTF-8 or as the units of UTF-16, which need not be whole characters.
QString textOf(Pieces& pieces)
{
    const std::uint8_t head = pieces.byte();
    const QByteArrayView bytes = pieces.bytes(head & 0x3F);
    if (head & 0x40)
        return QString::fromUtf8(bytes);
    QString text(bytes.size() / 2, Qt::Uninitialized);
    if (!text.isEmpty())
        std::memcpy(text.data(), bytes.data(), std::size_t(text.size()) * 2);
    return text;
}

double numberOf(Pieces& pieces)
{
    const std::uint64_t bits = pieces.number(8);
    double result = 0;
    std::memcpy(&result, &bits, sizeof result);
    return result;
}

class Table final : public site::History
{
public:
    std::vector<site::HistorySeries> columns;
    std::vector<site::HistoryRow> cells;

    QString State() const override { return {}; }
    std::vector<site::HistorySeries> series() const override { return columns; }
    site::HistorySpan span() const override { return {}; }
    std::vector<site::HistoryPoint> points(std::int64_t, site::HistoryTime, site::HistoryTime,
                                           std::int32_t) const override
    {
        return {};
    }
    std::vector<Past> valuesAt(site::HistoryTime) const override { return {}; }
    std::int64_t rowCount() const override { return std::int64_t(cells.size()); }
    std::vector<site::HistoryRow> rows(std::int64_t place, std::int32_t most,
                                       const std::vector<std::int64_t>&) const override
    {
        std::vector<site::HistoryRow> result;
        for (std::int64_t at = place; at < std::min(place + most, rowCount()); ++at)
            result.push_back(cells[std::size_t(at)]);
        return result;
    }
    std::int64_t placeOf(site::HistoryTime moment) const override
    {
        return std::clamp<std::int64_t>((moment - Begin + 999) / 1000, 0, rowCount());
    }
};

/// A reader as simple as the format: quotes around a field, doubled inside, lines that end in CR LF.
std::vector<QStringList> parsed(const QString& text, QChar separator)
{
    std::vector<QStringList> rows;
    QStringList row;
    QString field;
    bool isQuoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar one = text[i];
        if (isQuoted) {
            const bool isDoubled = one == u'"' && i + 1 < text.size() && text[i + 1] == u'"';
            if (one != u'"' || isDoubled)
                field += one;
            i += isDoubled;
            isQuoted = one != u'"' || isDoubled;
        } else if (one == u'"') {
            require(field.isEmpty(), "quotes stand around a whole field");
            isQuoted = true;
        } else if (one == separator) {
            row << std::exchange(field, {});
        } else if (one == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
            ++i;
            row << std::exchange(field, {});
            rows.push_back(std::exchange(row, {}));
        } else {
            require(one != u'\r' && one != u'\n', "a line end inside a field is quoted");
            field += one;
        }
    }
    require(!isQuoted && field.isEmpty() && row.isEmpty(), "the file ends with a line");
    return rows;
}

bool isNumber(const QString& text)
{
    bool isOne = false;
    return std::isfinite(text.trimmed().toDouble(&isOne)) && isOne;
}

void requireHarmless(const QString& cell)
{
    QString rest = cell;
    while (!rest.isEmpty() && (rest[0] == u' ' || rest[0] == u'\0'))
        rest.remove(0, 1);
    if (!rest.isEmpty() && QStringLiteral("=+-@\t\r\n|%").contains(rest[0]))
        require(isNumber(cell), "no cell begins as a formula");
    require(!cell.contains(QChar(u'\0')), "no cell ends early for programs that stop at a zero");
}

/// The text as it is in the file: without zeros, and whole characters only.
QString inFile(QString text)
{
    text.remove(QChar(u'\0'));
    // Behind another character, for a byte order mark is none of the text at the beginning of a file alone.
    return QString::fromUtf8((u'x' + text).toUtf8()).mid(1);
}

void requireSame(const QString& cell, const QString& written)
{
    requireHarmless(cell);
    require(cell == written || cell == u'\'' + written, "what is written is read back");
}

Variant valueOf(Pieces& pieces)
{
    switch (pieces.byte() % 7) {
    case 0:
        return {};
    case 1:
        return Variant(numberOf(pieces));
    case 2:
        return Variant(float(pieces.byte()) / 3);
    case 3:
        return Variant(pieces.byte() > 99);
    case 4:
        return Variant(std::int16_t(pieces.byte() - 128));
    default:
        return Variant(textOf(pieces));
    }
}

void fill(Table& table, Pieces& pieces)
{
    const std::size_t columns = 1 + pieces.byte() % MostColumns;
    for (std::size_t i = 0; i < columns; ++i)
        table.columns.push_back({std::int64_t(i) + 1, {}, textOf(pieces), textOf(pieces), textOf(pieces), {}, 0});
    while (!pieces.isAtEnd() && table.cells.size() < MostRows) {
        site::HistoryRow row{Begin + std::int64_t(table.cells.size()) * 1000, {}};
        for (std::size_t i = 0; i < columns; ++i)
            row.cells.push_back(valueOf(pieces));
        table.cells.push_back(std::move(row));
    }
}

void compare(const Table& table, const std::vector<QStringList>& rows)
{
    require(!rows.empty(), "there is a head");
    for (const QStringList& row : rows) {
        require(row.size() == qsizetype(table.columns.size()) + 1, "every line has a field for every column");
        for (const QString& cell : row)
            requireHarmless(cell);
    }
    std::size_t line = 1;
    for (const site::HistoryRow& row : table.cells) {
        const bool isBlank =
            std::all_of(row.cells.begin(), row.cells.end(), [](const Variant& cell) { return cell.isEmpty(); });
        if (isBlank)
            continue;
        require(line < rows.size(), "there is a line for every moment");
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            const QString& cell = rows[line][qsizetype(i) + 1];
            if (row.cells[i].isText())
                requireSame(cell, inFile(row.cells[i].text()));
            else if (row.cells[i].kind() == values::Kind::Double && std::isfinite(row.cells[i].real()))
                require(cell.toDouble() == row.cells[i].real(), "a number keeps all its digits");
        }
        ++line;
    }
    require(line == rows.size(), "there is no other line");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Pieces pieces(data, size);
    const values::Ref<Table> table = values::make<Table>();
    history::CsvOptions options;
    constexpr char16_t separators[] = {u',', u';', u'\t'};
    options.separator = separators[pieces.byte() % 3];
    options.isUtc = true;
    options.from = Begin;
    options.until = Begin + 1'000'000;
    fill(*table, pieces);
    QBuffer out;
    require(out.open(QIODevice::WriteOnly), "memory can be written to");
    const QString problem = history::exportCsv(*table, table->columns, options, out, {});
    require(problem.isEmpty(), "what is in memory can be exported");
    compare(*table, parsed(QString::fromUtf8(out.data()), options.separator));
    return 0;
}
