#include "halyard/Formula.h"

#include <cmath>

namespace zan::halyard {

namespace {

// A square has two roots; values of an instrument lie on the positive one.
double square(double x)
{
    return x * x;
}
double root(double x)
{
    return std::sqrt(x);
}
double rootBack(double y)
{
    return y < 0 ? std::nan("") : y * y;
}
double same(double x)
{
    return x;
}
double absolute(double x)
{
    return std::fabs(x);
}
double absoluteBack(double y)
{
    return y < 0 ? std::nan("") : y;
}
double reciprocal(double x)
{
    return 1 / x;
}
double naturalLogarithm(double x)
{
    return std::log(x);
}
double exponential(double x)
{
    return std::exp(x);
}
double logarithm(double x)
{
    return std::log10(x);
}
double antilogarithm(double x)
{
    return std::pow(10.0, x);
}
double toFahrenheit(double x)
{
    return x * 9 / 5 + 32;
}
double toCelsius(double y)
{
    return (y - 32) * 5 / 9;
}

constexpr Formula Table[] = {
    {"Absolute", absolute, absoluteBack},   {"Antilog", antilogarithm, logarithm},
    {"C to F", toFahrenheit, toCelsius},    {"Exp", exponential, naturalLogarithm},
    {"F to C", toCelsius, toFahrenheit},    {"Ln", naturalLogarithm, exponential},
    {"Log", logarithm, antilogarithm},      {"None", same, same},
    {"Reciprocal", reciprocal, reciprocal}, {"Square", square, root},
    {"Square Root", root, rootBack},
};

bool isSameName(const char* name, const QString& wanted)
{
    qsizetype at = 0;
    const auto skipBlanks = [&] {
        while (at < wanted.size() && wanted[at].isSpace())
            ++at;
    };
    for (; *name; ++name) {
        if (*name == ' ')
            continue;
        skipBlanks();
        if (at == wanted.size() || wanted[at++].toLower() != QChar(QLatin1Char(*name)).toLower())
            return false;
    }
    skipBlanks();
    return at == wanted.size();
}

} // namespace

std::span<const Formula> formulas()
{
    return Table;
}

const Formula* findFormula(const QString& name)
{
    if (name.isEmpty())
        return nullptr;
    for (const Formula& formula : Table) {
        if (isSameName(formula.name, name))
            return formula.forward == same ? nullptr : &formula;
    }
    return nullptr;
}

} // namespace zan::halyard
