#pragma once

#include "binding/Object.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace zan::site {

using values::Variant;

/// Milliseconds since 1970-01-01 00:00 UTC: the time of a stored record. What a person reads is local time.
using HistoryTime = std::int64_t;

/// What is stored of one channel over time.
struct HistorySeries
{
    std::int64_t id = 0;     ///< names the series for as long as the store exists; above 0
    QString window;          ///< key of the channel's window
    QString key;             ///< of the channel in its window
    QString label;           ///< as a person knows the channel
    QString units;           ///< may be empty
    QString format;          ///< of the channel, for its values as text
    std::int64_t period = 0; ///< milliseconds from record to record as they usually come; 0 while unknown
};

/// A stretch of time that holds a record at least, and the records of one series in it as one figure.
struct HistoryPoint
{
    HistoryTime first = 0; ///< time of its first record
    HistoryTime last = 0;  ///< time of its last record; equal to `first` for a single one
    double minimum = 0;
    double maximum = 0;
    double mean = 0;        ///< of its records, each counted once
    std::int64_t count = 0; ///< records that are numbers; above 0
};

/// The values of some series at one moment.
struct HistoryRow
{
    HistoryTime time = 0;
    std::vector<Variant> cells; ///< in the order asked for; Empty where nothing was stored
};

/// From the first record to the last.
struct HistorySpan
{
    HistoryTime first = 0;
    HistoryTime last = 0;
    bool isEmpty = true;
};

/// What a site has stored of its channels: every record once, in order of time, however it came. All calls are made on
/// the user-interface thread and answer from what is stored at that moment, records handed over a second ago included.
///
/// Failures of a store are no exceptions of these calls: they answer with less, and `State` says why.
class History : public binding::Object
{
public:
    /// What a person has to know: empty while everything that comes is stored, else what is wrong and what to do.
    virtual QString State() const = 0;
    /// All series, in the order in which they were first stored.
    virtual std::vector<HistorySeries> series() const = 0;
    virtual HistorySpan span() const = 0;

    /// The records of a series from `from` up to and without `until`, put together to at most `most` points (1 to
    /// 10,000) over equal stretches of time, in order; a stretch without a record has no point. Empty for an unknown
    /// series and for times the wrong way round.
    virtual std::vector<HistoryPoint> points(std::int64_t series, HistoryTime from, HistoryTime until,
                                             std::int32_t most) const = 0;
    /// The latest value of each series at a moment or before it, and when it was stored (0 and Empty for none).
    struct Past
    {
        HistoryTime time = 0;
        Variant value;
    };
    virtual std::vector<Past> valuesAt(HistoryTime moment) const = 0; ///< in the order of `series`

    /// Number of moments at which a record of any series was stored.
    virtual std::int64_t rowCount() const = 0;
    /// The rows from a place (0 the oldest) on, at most `most` of them (1 to 10,000), with the cells of these series.
    virtual std::vector<HistoryRow> rows(std::int64_t place, std::int32_t most,
                                         const std::vector<std::int64_t>& series) const = 0;
    /// Place of the first row at a moment or after it; the number of rows when there is none.
    virtual std::int64_t placeOf(HistoryTime moment) const = 0;

    const binding::MemberTable& members() const override;
};

} // namespace zan::site
