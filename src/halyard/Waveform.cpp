#include "halyard/Waveform.h"

#include "values/NumberText.h"

#include <QStringList>

#include <array>
#include <cmath>
#include <numbers>

namespace zan::halyard {

namespace {

using site::DataType;

/// A well mixed number of a number: neighbours have nothing in common.
std::uint64_t mixed(std::uint64_t x)
{
    x += 0x9e3779b97f4a7c15U;
    x = (x ^ (x >> 30)) * 0xbf58476d1ce4e5b9U;
    x = (x ^ (x >> 27)) * 0x94d049bb133111ebU;
    return x ^ (x >> 31);
}

/// From 0 to below 1.
double fraction(std::uint64_t bits)
{
    return double(bits >> 11) * 0x1p-53;
}

double cycle(double x)
{
    return x - std::floor(x);
}

/// Smooth noise from 0 to 1: hashed heights at whole positions, joined by curves.
double smoothNoise(std::uint64_t seed, double position)
{
    const double whole = std::floor(position);
    const double t = position - whole;
    const auto step = std::uint64_t(std::int64_t(whole));
    const double from = fraction(mixed(seed ^ mixed(step)));
    const double to = fraction(mixed(seed ^ mixed(step + 1)));
    return from + (to - from) * t * t * (3 - 2 * t);
}

double walk(std::uint64_t seed, double position)
{
    return 0.65 * smoothNoise(seed, position) + 0.25 * smoothNoise(seed + 1, position * 4) +
           0.1 * smoothNoise(seed + 2, position * 16);
}

/// Part of the way from lowest to highest.
double heightOf(const Waveform& wave, double seconds)
{
    const double position = seconds / wave.period + wave.phase;
    switch (wave.shape) {
    case Waveform::Shape::Sine:
        return 0.5 + 0.5 * std::sin(2 * std::numbers::pi * cycle(position));
    case Waveform::Shape::Ramp:
        return cycle(position);
    case Waveform::Shape::Triangle:
        return 1 - std::fabs(2 * cycle(position) - 1);
    case Waveform::Shape::Square:
        return cycle(position) < 0.5 ? 0 : 1;
    case Waveform::Shape::Walk:
        return walk(wave.seed, position);
    default:
        return 0;
    }
}

struct Habit
{
    Waveform::Shape shape;
    double lowest;
    double highest;
    double spread; ///< by how much the lowest may be higher, as a part of the distance
    double shortest;
    double longest; ///< period in seconds
};

using Shape = Waveform::Shape;
constexpr std::size_t HabitCount = 4;

/// What memory of a type does: one of four by chance.
const std::array<Habit, HabitCount>& habitsOf(DataType type)
{
    static const std::array<Habit, HabitCount> bytes{{{Shape::Square, 0, 1, 0, 15, 90},
                                                      {Shape::Square, 0, 1, 0, 60, 240},
                                                      {Shape::Triangle, 0, 100, 0, 60, 300},
                                                      {Shape::Sine, 40, 90, 0.5, 60, 300}}};
    static const std::array<Habit, HabitCount> signedBytes{{{Shape::Sine, -10, 35, 0.2, 60, 300},
                                                            {Shape::Walk, -20, 40, 0, 20, 90},
                                                            {Shape::Triangle, -100, 100, 0, 60, 300},
                                                            {Shape::Square, 0, 1, 0, 15, 90}}};
    static const std::array<Habit, HabitCount> words{{{Shape::Sine, 200, 1200, 2, 60, 300},
                                                      {Shape::Walk, 100, 900, 1, 20, 120},
                                                      {Shape::Sine, 1180, 1390, 0, 120, 600},
                                                      {Shape::Ramp, 0, 1000, 0, 60, 600}}};
    static const std::array<Habit, HabitCount> longs{{{Shape::Ramp, 0, 100000, 0, 600, 3600},
                                                      {Shape::Walk, 10000, 60000, 1, 20, 120},
                                                      {Shape::Sine, 5000, 90000, 0.5, 60, 600},
                                                      {Shape::Ramp, 0, 86400, 0, 86400, 86400}}};
    static const std::array<Habit, HabitCount> reals{{{Shape::Sine, 0.4, 2.6, 1, 60, 300},
                                                      {Shape::Walk, 5, 25, 0.5, 20, 120},
                                                      {Shape::Sine, 11.8, 13.9, 0, 120, 600},
                                                      {Shape::Walk, 0, 100, 0, 20, 120}}};
    switch (type) {
    case DataType::UnsignedByte:
        return bytes;
    case DataType::SignedByte:
        return signedBytes;
    case DataType::UnsignedWord:
    case DataType::SignedWord:
        return words;
    case DataType::UnsignedLong:
    case DataType::SignedLong:
        return longs;
    default:
        return reals;
    }
}

bool readNumber(const QString& text, double& number)
{
    bool isNumber = false;
    number = text.trimmed().toDouble(&isNumber);
    return isNumber && std::isfinite(number);
}

bool readShape(const QString& name, Shape& shape)
{
    static const std::pair<const char*, Shape> table[] = {{"sine", Shape::Sine},
                                                          {"ramp", Shape::Ramp},
                                                          {"triangle", Shape::Triangle},
                                                          {"square", Shape::Square},
                                                          {"walk", Shape::Walk}};
    for (const auto& entry : table) {
        if (name.compare(QLatin1String(entry.first), Qt::CaseInsensitive) == 0) {
            shape = entry.second;
            return true;
        }
    }
    return false;
}

} // namespace

double Waveform::at(double seconds) const
{
    // Weighted from both ends: the distance between two great numbers may be greater than any number.
    const double height = heightOf(*this, seconds);
    return lowest * (1 - height) + highest * height;
}

QString Waveform::textAt(double seconds) const
{
    static const char* const words[] = {"NORMAL", "RUNNING", "STANDBY", "NORMAL", "AUTO", "MANUAL"};
    if (shape == Shape::Words) {
        const auto turn = std::uint64_t(std::int64_t(std::floor(seconds / period)));
        return QLatin1String(words[mixed(seed ^ mixed(turn)) % std::size(words)]);
    }
    return shape == Shape::Constant ? text : values::displayText(at(seconds));
}

Waveform Waveform::natural(std::uint64_t seed, std::int32_t address, DataType type)
{
    Waveform wave;
    wave.seed = mixed(mixed(seed) ^ std::uint64_t(address));
    if (type == DataType::String) {
        wave.shape = Shape::Words;
        wave.period = 30;
        return wave;
    }
    const Habit& habit = habitsOf(type)[mixed(wave.seed + 1) % HabitCount];
    const double distance = habit.highest - habit.lowest;
    wave.shape = habit.shape;
    wave.lowest = habit.lowest + fraction(mixed(wave.seed + 2)) * habit.spread * distance;
    wave.highest = habit.spread > 0 && habit.spread < 1 ? habit.highest : wave.lowest + distance;
    wave.period = habit.shortest + fraction(mixed(wave.seed + 3)) * (habit.longest - habit.shortest);
    wave.phase = fraction(mixed(wave.seed + 4));
    return wave;
}

bool Waveform::parse(const QString& text, std::uint64_t seed, Waveform& result)
{
    Waveform wave;
    wave.seed = mixed(seed);
    const qsizetype colon = text.indexOf(u':');
    if (colon < 0)
        return false;
    const QString name = text.left(colon).trimmed();
    if (name.compare(QStringLiteral("const"), Qt::CaseInsensitive) == 0) {
        wave.text = text.mid(colon + 1); // may hold colons
        if (!readNumber(wave.text, wave.lowest))
            wave.lowest = 0;
        wave.highest = wave.lowest;
        result = wave;
        return true;
    }
    const QStringList arguments = text.mid(colon + 1).split(u':');
    if (!readShape(name, wave.shape) || arguments.size() < 3 || arguments.size() > 4)
        return false;
    if (!readNumber(arguments[0], wave.lowest) || !readNumber(arguments[1], wave.highest))
        return false;
    if (!readNumber(arguments[2], wave.period) || wave.period < 0.001 || wave.period > 1e9)
        return false;
    if (arguments.size() == 4 && (!readNumber(arguments[3], wave.phase) || wave.phase < 0 || wave.phase > 1))
        return false;
    result = wave;
    return true;
}

QString Waveform::syntax()
{
    return QStringLiteral(
        "\"const:VALUE\", or \"sine\", \"ramp\", \"triangle\", \"square\" or \"walk\" followed by "
        "\":LOWEST:HIGHEST:SECONDS\"");
}

} // namespace zan::halyard
