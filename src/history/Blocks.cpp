#include "history/Blocks.h"

#include <algorithm>
#include <cmath>

namespace zan::history {

void putRecords(QByteArray& block, HistoryTime last, const StoredRecord* begin, const StoredRecord* end)
{
    for (const StoredRecord* record = begin; record != end; ++record) {
        putNumber(block, std::uint64_t(record->time - last));
        block.append(record->value);
        last = record->time;
    }
}

bool takeRecords(const QByteArray& block, HistoryTime first, std::vector<StoredRecord>& records)
{
    records.clear();
    if (!isStorable(first))
        return false;
    ByteReader reader(block);
    HistoryTime time = first;
    while (!reader.isAtEnd()) {
        const std::uint64_t distance = reader.number();
        const QByteArrayView value = takeValue(reader);
        const bool isOrdered = records.empty() ? distance == 0 : distance > 0;
        if (reader.hasFailed() || !isOrdered || distance > std::uint64_t(LatestTime - time) ||
            records.size() == MostInBlock)
            return false;
        time += HistoryTime(distance);
        records.push_back({time, value});
    }
    return !reader.hasFailed() && !records.empty();
}

void Figures::add(const Figures& other)
{
    first = std::min(first, other.first);
    last = std::max(last, other.last);
    count += other.count;
    minimum = std::min(minimum, other.minimum);
    maximum = std::max(maximum, other.maximum);
    sum += other.sum;
}

QByteArray putFigures(const std::vector<Figures>& figures, HistoryTime start, const Level& level)
{
    QByteArray bytes;
    bytes.reserve(qsizetype(figures.size()) * 36);
    for (const Figures& one : figures) {
        putNumber(bytes, std::uint64_t((one.start - start) / level.length));
        putNumber(bytes, std::uint64_t(one.first - one.start));
        putNumber(bytes, std::uint64_t(one.last - one.first));
        putNumber(bytes, std::uint64_t(one.count));
        putReal(bytes, one.minimum);
        if (one.count == 1) // all three are that one number
            continue;
        putReal(bytes, one.maximum);
        putReal(bytes, one.sum);
    }
    return bytes;
}

bool takeFigures(const QByteArray& bytes, HistoryTime start, const Level& level, std::vector<Figures>& figures)
{
    figures.clear();
    ByteReader reader(bytes);
    while (!reader.isAtEnd()) {
        Figures one;
        const std::uint64_t place = reader.number();
        const std::uint64_t first = reader.number();
        const std::uint64_t length = reader.number();
        const std::uint64_t count = reader.number();
        const auto inside = std::uint64_t(level.length);
        if (place >= std::uint64_t(level.perRow) || first >= inside || length >= inside - first || count < 1 ||
            count > inside)
            return false;
        one.start = start + HistoryTime(place) * level.length;
        one.first = one.start + HistoryTime(first);
        one.last = one.first + HistoryTime(length);
        one.count = std::int64_t(count);
        one.minimum = one.maximum = one.sum = reader.real();
        if (count > 1) {
            one.maximum = reader.real();
            one.sum = reader.real();
        }
        const bool isInOrder =
            std::isfinite(one.minimum) && std::isfinite(one.maximum) && one.minimum <= one.maximum;
        if (reader.hasFailed() || !isInOrder || (!figures.empty() && figures.back().start >= one.start))
            return false;
        figures.push_back(one);
    }
    return !reader.hasFailed();
}

void addFigures(std::vector<Figures>& figures, const Figures& other)
{
    if (figures.empty() || figures.back().start < other.start) {
        figures.push_back(other);
        return;
    }
    const auto at = std::lower_bound(figures.begin(), figures.end(), other.start,
                                     [](const Figures& one, HistoryTime start) { return one.start < start; });
    if (at->start == other.start)
        at->add(other);
    else
        figures.insert(at, other);
}

} // namespace zan::history
