#include "history/SeriesBlocks.h"

#include <algorithm>

namespace zan::history {

namespace {

/// Series of which the times of one block are remembered.
constexpr std::size_t MostRemembered = 2048;

[[noreturn]] void failDamaged()
{
    throw StoreFailure{StoreFailure::Reason::Damaged, QStringLiteral("a block of records in it makes no sense")};
}

} // namespace

HistoryTime SeriesBlocks::last(std::int64_t series)
{
    HistoryTime time = EarliestTime - 1;
    m_database.each("SELECT last FROM block WHERE series = ? ORDER BY first DESC LIMIT 1", {qint64(series)},
                    [&](const QSqlQuery& row) { time = row.value(0).toLongLong(); });
    if (time != EarliestTime - 1 && !isStorable(time))
        failDamaged();
    return time;
}

bool SeriesBlocks::contains(std::int64_t series, HistoryTime time)
{
    const auto isWithin = [&](const Times& known) { return known.from <= time && time < known.until; };
    auto found = m_times.find(series);
    if (found == m_times.end() || !isWithin(found->second)) {
        if (m_times.size() >= MostRemembered)
            m_times.clear();
        Times known{EarliestTime, nextFirst(series, time), {}};
        const Block block = blockFor(series, time);
        if (block.count > 0 && block.first <= time) {
            known.from = block.first;
            for (const StoredRecord& record : recordsOf(block))
                known.times.push_back(record.time);
        }
        found = m_times.insert_or_assign(series, std::move(known)).first;
    }
    return std::binary_search(found->second.times.begin(), found->second.times.end(), time);
}

SeriesBlocks::Block SeriesBlocks::read(const char* sql, std::int64_t series, HistoryTime time)
{
    Block block;
    bool isThere = false;
    m_database.each(sql, {qint64(series), qint64(time)}, [&](const QSqlQuery& row) {
        block = {row.value(0).toLongLong(), row.value(1).toLongLong(), row.value(2).toLongLong(),
                 row.value(3).toByteArray()};
        isThere = true;
    });
    // A damaged store may say anything; what is appended to a block relies on its head.
    const bool isSoundHead = block.count > 0 && block.count <= std::int64_t(MostInBlock) &&
                             isStorable(block.first) && isStorable(block.last) && block.first <= block.last;
    if (isThere && !isSoundHead)
        failDamaged();
    return block;
}

SeriesBlocks::Block SeriesBlocks::blockFor(std::int64_t series, HistoryTime time)
{
    const Block block = read("SELECT first, last, count, data FROM block WHERE series = ? AND first <= ? "
                             "ORDER BY first DESC LIMIT 1",
                             series, time);
    if (block.count > 0)
        return block;
    return read("SELECT first, last, count, data FROM block WHERE series = ? AND first > ? ORDER BY first LIMIT 1",
                series, time);
}

HistoryTime SeriesBlocks::nextFirst(std::int64_t series, HistoryTime after)
{
    HistoryTime time = LatestTime + 1;
    m_database.each("SELECT first FROM block WHERE series = ? AND first > ? ORDER BY first LIMIT 1",
                    {qint64(series), qint64(after)},
                    [&](const QSqlQuery& row) { time = row.value(0).toLongLong(); });
    return time;
}

std::vector<StoredRecord> SeriesBlocks::recordsOf(const Block& block)
{
    std::vector<StoredRecord> records;
    if (!takeRecords(block.data, block.first, records) || std::int64_t(records.size()) != block.count ||
        records.back().time != block.last)
        failDamaged();
    return records;
}

void SeriesBlocks::write(std::int64_t series, const Block& block)
{
    m_database.run("INSERT INTO block (series, first, last, count, data) VALUES (?, ?, ?, ?, ?) "
                   "ON CONFLICT (series, first) DO UPDATE SET last = excluded.last, count = excluded.count, "
                   "data = excluded.data",
                   {qint64(series), qint64(block.first), qint64(block.last), qint64(block.count), block.data});
}

void SeriesBlocks::remove(std::int64_t series, HistoryTime first)
{
    m_database.run("DELETE FROM block WHERE series = ? AND first = ?", {qint64(series), qint64(first)});
}

void SeriesBlocks::writeNew(std::int64_t series, const StoredRecord* begin, const StoredRecord* end)
{
    const auto total = std::size_t(end - begin);
    const std::size_t blocks = (total + MostInBlock - 1) / MostInBlock;
    for (std::size_t i = 0; i < blocks; ++i) {
        const StoredRecord* const from = begin + total * i / blocks;
        const StoredRecord* const until = begin + total * (i + 1) / blocks;
        Block block{from->time, (until - 1)->time, until - from, {}};
        putRecords(block.data, block.first, from, until);
        write(series, block);
    }
}

void SeriesBlocks::mergeInto(std::int64_t series, Block block, const StoredRecord* begin, const StoredRecord* end)
{
    if (block.count > 0 && block.last < begin->time) { // what comes in order is appended without a look at the rest
        const auto room = std::max<std::ptrdiff_t>(std::ptrdiff_t(MostInBlock) - block.count, 0);
        const StoredRecord* const middle = begin + std::min(room, end - begin);
        if (middle != begin) {
            putRecords(block.data, block.last, begin, middle);
            block.last = (middle - 1)->time;
            block.count += middle - begin;
            write(series, block);
        }
        for (const StoredRecord* from = middle; from != end;) {
            const StoredRecord* const until = from + std::min<std::ptrdiff_t>(MostInBlock, end - from);
            writeNew(series, from, until);
            from = until;
        }
        return;
    }
    std::vector<StoredRecord> all;
    if (block.count > 0) {
        const std::vector<StoredRecord> old = recordsOf(block);
        all.resize(old.size() + std::size_t(end - begin));
        std::merge(old.begin(), old.end(), begin, end, all.begin(),
                   [](const StoredRecord& left, const StoredRecord& right) { return left.time < right.time; });
        remove(series, block.first);
        begin = all.data();
        end = begin + all.size();
    }
    writeNew(series, begin, end);
}

void SeriesBlocks::merge(std::int64_t series, const std::vector<StoredRecord>& records, bool withFigures)
{
    m_times.erase(series);
    const StoredRecord* const end = records.data() + records.size();
    for (const StoredRecord* from = records.data(); from != end;) {
        const Block block = blockFor(series, from->time);
        const HistoryTime next =
            block.count > 0 ? nextFirst(series, std::max(block.first, from->time)) : LatestTime + 1;
        const StoredRecord* const until =
            std::find_if(from, end, [&](const auto& one) { return one.time >= next; });
        if (until == from) // a block that says two things of its beginning would be looked for without end
            failDamaged();
        mergeInto(series, block, from, until);
        from = until;
    }
    if (withFigures)
        addToFigures(series, records);
}

std::vector<Figures> SeriesBlocks::figuresOf(std::int64_t series, std::size_t level, HistoryTime start)
{
    QByteArray data;
    m_database.each("SELECT data FROM figure WHERE series = ? AND level = ? AND start = ?",
                    {qint64(series), int(level), qint64(start)},
                    [&](const QSqlQuery& row) { data = row.value(0).toByteArray(); });
    std::vector<Figures> figures;
    if (!takeFigures(data, start, Levels[level], figures))
        failDamaged();
    return figures;
}

void SeriesBlocks::writeFigures(std::int64_t series, std::size_t level, HistoryTime start,
                                const std::vector<Figures>& figures)
{
    if (figures.empty())
        m_database.run("DELETE FROM figure WHERE series = ? AND level = ? AND start = ?",
                       {qint64(series), int(level), qint64(start)});
    else
        m_database.run("INSERT INTO figure (series, level, start, data) VALUES (?, ?, ?, ?) "
                       "ON CONFLICT (series, level, start) DO UPDATE SET data = excluded.data",
                       {qint64(series), int(level), qint64(start), putFigures(figures, start, Levels[level])});
}

void SeriesBlocks::addToFigures(std::int64_t series, const std::vector<StoredRecord>& records)
{
    for (std::size_t level = 0; level < Levels.size(); ++level) {
        const Level& steps = Levels[level];
        std::vector<Figures> figures;
        HistoryTime start = LatestTime + 1; // of the row in hand
        for (const StoredRecord& record : records) {
            double number = 0;
            if (!numberOf(record.value, number))
                continue;
            const HistoryTime row = floorTo(record.time, steps.rowLength());
            if (row != start) {
                if (start <= LatestTime)
                    writeFigures(series, level, start, figures);
                figures = figuresOf(series, level, row);
                start = row;
            }
            addFigures(figures, Figures::of(floorTo(record.time, steps.length), record.time, number));
        }
        if (start <= LatestTime)
            writeFigures(series, level, start, figures);
    }
}

void SeriesBlocks::trim(std::int64_t series, HistoryTime cutoff)
{
    m_times.erase(series);
    m_database.run("DELETE FROM block WHERE series = ? AND first < ? AND last < ?",
                   {qint64(series), qint64(cutoff), qint64(cutoff)});
    const Block block = blockFor(series, cutoff);
    if (block.count > 0 && block.first < cutoff) {
        std::vector<StoredRecord> records = recordsOf(block);
        std::erase_if(records, [&](const StoredRecord& record) { return record.time < cutoff; });
        remove(series, block.first);
        writeNew(series, records.data(), records.data() + records.size());
    }
    trimFigures(series, cutoff);
}

void SeriesBlocks::trimFigures(std::int64_t series, HistoryTime cutoff)
{
    for (std::size_t level = 0; level < Levels.size(); ++level) {
        const Level& steps = Levels[level];
        const HistoryTime row = floorTo(cutoff, steps.rowLength());
        m_database.run("DELETE FROM figure WHERE series = ? AND level = ? AND start < ?",
                       {qint64(series), int(level), qint64(row)});
        std::vector<Figures> figures = figuresOf(series, level, row);
        if (std::erase_if(figures, [&](const Figures& one) { return one.start < cutoff; }) == 0)
            continue;
        // The stretch that the cut goes through is made anew of the finer ones behind the cut.
        const HistoryTime cut = floorTo(cutoff, steps.length);
        const std::size_t finer = level - (level > 0);
        for (HistoryTime at = cutoff; cut < cutoff && at < cut + steps.length; at += Levels[finer].rowLength()) {
            const HistoryTime from = floorTo(at, Levels[finer].rowLength());
            for (const Figures& one : figuresOf(series, finer, from)) {
                if (one.start < cutoff || one.start >= cut + steps.length)
                    continue;
                Figures part = one;
                part.start = cut;
                addFigures(figures, part);
            }
        }
        writeFigures(series, level, row, figures);
    }
}

} // namespace zan::history
