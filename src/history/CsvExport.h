#pragma once

#include "site/History.h"

#include <QIODevice>
#include <QString>

#include <functional>
#include <vector>

namespace zan::history {

/// What is written of a history.
struct CsvOptions
{
    site::HistoryTime from = std::numeric_limits<site::HistoryTime>::min();
    site::HistoryTime until = std::numeric_limits<site::HistoryTime>::max(); ///< without this moment itself
    bool isUtc = false; ///< times in UTC, else in local time with its distance from UTC
    QChar separator = u',';
};

/// Writes rows of a history as CSV: UTF-8, lines that end with CR and LF, a head that names the channels with their
/// units and says which times stand below. Numbers have a decimal point and all their digits; a text is quoted where
/// it has to be, and what a spreadsheet would run as a formula gets an apostrophe. Returns what went wrong, empty when nothing did. `goOn` is asked between pieces and told how many of
/// how many rows are done; false ends the export.
[[nodiscard]] QString exportCsv(const site::History& history, const std::vector<site::HistorySeries>& series,
                                const CsvOptions& options, QIODevice& out,
                                const std::function<bool(std::int64_t done, std::int64_t all)>& goOn = {});

} // namespace zan::history
