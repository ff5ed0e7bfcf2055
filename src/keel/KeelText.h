#pragma once

#include "site/Channel.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace zan::keel {

/// One row of an older window: a text at a place of the character grid, and the value that follows it when the row has
/// an address. `docs/keel.md` tells the format.
struct KeelField
{
    static constexpr std::int32_t NoAddress = -1;

    QString line;   ///< from the top, as the file writes the number; empty where it was left out
    QString column; ///< from the left, likewise
    QString label;
    QString units;
    std::int32_t address = NoAddress; ///< below 0: fixed text
    site::DataType type = site::DataType::UnsignedByte;
    QString format;
    float multiplier = 1;
    float offset = 0;
    std::optional<std::int16_t> bytes; ///< nothing: those of the data type
};

/// Where an older window cannot be understood, and why.
struct KeelError
{
    QString message; ///< what is wrong and what to do, without the place
    int line = 0;    ///< from 1
    int column = 0;  ///< from 1, in characters

    /// "FILE:LINE:COLUMN: message", as editors understand it.
    QString text(const QString& file) const;
};

struct KeelText
{
    std::vector<KeelField> fields; ///< in the order of the file
    std::optional<KeelError> error;
};

/// Largest file that is read, most rows and longest text of a row: more than any terminal ever showed.
constexpr qint64 LargestKeelFile = 4 * 1024 * 1024;
constexpr std::size_t MostKeelFields = 10'000;
constexpr qsizetype LongestKeelText = 1000;

/// Reads an older window from end to end. The first thing that cannot be understood ends it.
KeelText parseKeel(const QByteArray& bytes);

} // namespace zan::keel
