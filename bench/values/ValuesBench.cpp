// Prints what a value costs: making its text under a user format, reading a number, an operator of a script. Beside
// it, in the same run, what the toolkit and the standard library need for the nearest thing they can do.

#include "values/Arithmetic.h"
#include "values/Compare.h"
#include "values/Convert.h"
#include "values/Format.h"
#include "values/NumberText.h"

#include <QString>

#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>

using namespace zan::values;

namespace {

/// Readings as a logger gives them, so that no single number decides a figure.
const std::array<double, 8> Readings{12.3456, 0.0173, 1234567.891, -4.25, 99.995, 100.0, 3.14159265358979, -0.001};

template <class Work>
void overReadings(benchmark::State& state, Work work)
{
    std::size_t place = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(work(Readings[place++ % Readings.size()]));
}

void formatUnder(benchmark::State& state, QStringView formatText)
{
    overReadings(state, [formatText](double reading) { return format(reading, formatText); });
}

void formatTwoDecimals(benchmark::State& state)
{
    formatUnder(state, u"0.00");
}
void formatThousands(benchmark::State& state)
{
    formatUnder(state, u"#,##0.0");
}
void formatSections(benchmark::State& state)
{
    formatUnder(state, u"#,##0.00;(#,##0.00);\"none\"");
}
void formatScientific(benchmark::State& state)
{
    formatUnder(state, u"0.00E+00");
}
void formatGeneral(benchmark::State& state)
{
    formatUnder(state, u"");
}
void formatDate(benchmark::State& state)
{
    overReadings(state, [](double reading) { return format(Date{40000 + reading}, u"yyyy-mm-dd hh:nn:ss"); });
}
void formatText(benchmark::State& state)
{
    const Variant text(u"5551234");
    for (auto _ : state)
        benchmark::DoNotOptimize(format(text, u"(@@@) @@@-@@@@"));
}

void toolkitTwoDecimals(benchmark::State& state)
{
    overReadings(state, [](double reading) { return QString::number(reading, 'f', 2); });
}
void standardTwoDecimals(benchmark::State& state)
{
    overReadings(state, [](double reading) {
        char text[400];
        const auto made = std::to_chars(text, text + sizeof text, reading, std::chars_format::fixed, 2);
        return QString::fromLatin1(text, made.ptr - text);
    });
}
void printfTwoDecimals(benchmark::State& state)
{
    overReadings(state, [](double reading) {
        char text[400];
        const int length = std::snprintf(text, sizeof text, "%.2f", reading);
        return QString::fromLatin1(text, length);
    });
}

void displayReading(benchmark::State& state)
{
    overReadings(state, [](double reading) { return displayText(reading); });
}
void toolkitDisplay(benchmark::State& state)
{
    overReadings(state, [](double reading) { return QString::number(reading, 'g', 15); });
}
void documentReading(benchmark::State& state)
{
    overReadings(state, [](double reading) { return documentText(reading); });
}

void valOfText(benchmark::State& state)
{
    const QString text = QStringLiteral("1234.5678");
    for (auto _ : state)
        benchmark::DoNotOptimize(val(text));
}
void numberOfText(benchmark::State& state)
{
    const QString text = QStringLiteral("1234.5678");
    for (auto _ : state)
        benchmark::DoNotOptimize(numberFromText(text));
}
void toolkitNumberOfText(benchmark::State& state)
{
    const QString text = QStringLiteral("1234.5678");
    for (auto _ : state)
        benchmark::DoNotOptimize(text.toDouble());
}

/// Operands come from an array, so that the kinds are known at run time only.
void operate(benchmark::State& state, Variant (*operation)(const Variant&, const Variant&), const Variant& left,
             const Variant& right)
{
    std::array<Variant, 2> operands{left, right};
    for (auto _ : state) {
        benchmark::DoNotOptimize(operands);
        benchmark::DoNotOptimize(operation(operands[0], operands[1]));
    }
}

void compareDoubles(benchmark::State& state)
{
    std::array<Variant, 2> operands{1.5, 2.5};
    for (auto _ : state) {
        benchmark::DoNotOptimize(operands);
        benchmark::DoNotOptimize(compare(operands[0], operands[1]));
    }
}
void compareLongWithInteger(benchmark::State& state)
{
    std::array<Variant, 2> operands{70000, std::int16_t(5)};
    for (auto _ : state) {
        benchmark::DoNotOptimize(operands);
        benchmark::DoNotOptimize(compare(operands[0], operands[1]));
    }
}

const std::int16_t small = 5;

} // namespace

BENCHMARK(formatTwoDecimals);
BENCHMARK(formatThousands);
BENCHMARK(formatSections);
BENCHMARK(formatScientific);
BENCHMARK(formatGeneral);
BENCHMARK(formatDate);
BENCHMARK(formatText);
BENCHMARK(toolkitTwoDecimals);
BENCHMARK(standardTwoDecimals);
BENCHMARK(printfTwoDecimals);
BENCHMARK(displayReading);
BENCHMARK(toolkitDisplay);
BENCHMARK(documentReading);
BENCHMARK(valOfText);
BENCHMARK(numberOfText);
BENCHMARK(toolkitNumberOfText);
BENCHMARK_CAPTURE(operate, addDoubles, add, 1.5, 2.5);
BENCHMARK_CAPTURE(operate, addIntegers, add, small, small);
BENCHMARK_CAPTURE(operate, addLongs, add, 70000, 70001);
BENCHMARK_CAPTURE(operate, addLongAndInteger, add, 70000, small);
BENCHMARK_CAPTURE(operate, addDoubleAndInteger, add, 1.5, small);
BENCHMARK_CAPTURE(operate, multiplyDoubleAndInteger, multiply, 1.5, small);
BENCHMARK_CAPTURE(operate, divideDoubles, divide, 1.5, 2.5);
BENCHMARK_CAPTURE(operate, moduloLongs, modulo, 70000, 7);
BENCHMARK_CAPTURE(operate, concatenateTextAndInteger, concatenate, u"Flow ", small);
BENCHMARK(compareDoubles);
BENCHMARK(compareLongWithInteger);

BENCHMARK_MAIN();
