#pragma once

#include "history/StoredValue.h"
#include "site/History.h"

#include <array>
#include <vector>

namespace zan::history {

using site::HistoryTime;

/// Times that a store takes: about the years 1 to 9999.
constexpr HistoryTime EarliestTime = -62'000'000'000'000;
constexpr HistoryTime LatestTime = 253'000'000'000'000;
constexpr bool isStorable(HistoryTime time)
{
    return time >= EarliestTime && time <= LatestTime;
}

/// One record of one series. The bytes of its value belong to somebody else.
struct StoredRecord
{
    HistoryTime time = 0;
    QByteArrayView value;
};

// A block holds up to MostInBlock records of one series in order of time: for each the distance from the one before
// (0 for the first) and the value.
constexpr std::size_t MostInBlock = 1024;

/// Appends records to a block whose last one is of the time `last` (for an empty one that of the first record).
void putRecords(QByteArray& block, HistoryTime last, const StoredRecord* begin, const StoredRecord* end);
/// The records of a block that begins at `first`; false when its bytes are none. The values lie in `block`.
[[nodiscard]] bool takeRecords(const QByteArray& block, HistoryTime first, std::vector<StoredRecord>& records);

/// Lengths of the stretches for which figures are kept, and how many stretches lie in one row of the store.
struct Level
{
    HistoryTime length;
    int perRow;
    HistoryTime rowLength() const noexcept { return length * perRow; }
};
constexpr std::array<Level, 3> Levels = {{{60'000, 60}, {3'600'000, 48}, {86'400'000, 64}}};

/// The greatest multiple of a length that is not after a time.
constexpr HistoryTime floorTo(HistoryTime time, HistoryTime length)
{
    const HistoryTime rest = time % length;
    return time - rest - (rest < 0 ? length : 0);
}

/// The numbers among the records of one stretch as figures.
struct Figures
{
    HistoryTime start = 0; ///< of the stretch
    HistoryTime first = 0; ///< time of the first record
    HistoryTime last = 0;
    std::int64_t count = 0; ///< above 0
    double minimum = 0;
    double maximum = 0;
    double sum = 0;

    static Figures of(HistoryTime start, HistoryTime time, double number)
    {
        return {start, time, time, 1, number, number, number};
    }
    /// Takes in the records of other figures, whatever their time.
    void add(const Figures& other);
};

/// Figures of one row in order of their stretches, as bytes, and back; `start` is the row's.
QByteArray putFigures(const std::vector<Figures>& figures, HistoryTime start, const Level& level);
[[nodiscard]] bool takeFigures(const QByteArray& bytes, HistoryTime start, const Level& level,
                               std::vector<Figures>& figures);
/// Adds figures to those in order of their stretches.
void addFigures(std::vector<Figures>& figures, const Figures& other);

} // namespace zan::history
