#pragma once

#include "site/Channel.h"

#include <QString>

#include <cstdint>

namespace zan::halyard {

/// A raw number, or a text, as a function of time and nothing else.
struct Waveform
{
    enum class Shape {
        Constant, ///< `lowest`, or `text` for a text
        Sine,     ///< begins in the middle, rising
        Ramp,     ///< rises from lowest to highest, then begins anew
        Triangle, ///< rises, then falls
        Square,   ///< lowest for the first half of the period, then highest
        Walk,     ///< wanders between lowest and highest, about once in a period
        Words,    ///< a state text, another one from period to period
    };

    Shape shape = Shape::Constant;
    double lowest = 0;
    double highest = 0;
    double period = 60; ///< seconds, above 0
    double phase = 0;   ///< part of a period by which it is ahead, 0 to 1
    std::uint64_t seed = 0;
    QString text;

    /// Raw number after that many seconds.
    double at(double seconds) const;
    /// The same as text, for a text channel.
    QString textAt(double seconds) const;

    /// What memory of this type at this address does by itself: something that a site could well do. The same seed
    /// gives the same.
    static Waveform natural(std::uint64_t seed, std::int32_t address, site::DataType type);
    /// Reads `const:VALUE`, or `sine`, `ramp`, `triangle`, `square`, `walk` followed by `:LOWEST:HIGHEST:PERIOD` and
    /// perhaps `:PHASE`. False when it is none of these; the result is then untouched.
    static bool parse(const QString& text, std::uint64_t seed, Waveform& result);
    /// What parse() reads, in words.
    static QString syntax();
};

} // namespace zan::halyard
