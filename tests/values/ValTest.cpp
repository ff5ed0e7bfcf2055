#include "values/Convert.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zan::values {

namespace {

struct ValRow
{
    const char16_t* text;
    double expected;
};

void expectVal(std::initializer_list<ValRow> rows)
{
    for (const ValRow& row : rows)
        EXPECT_EQ(val(row.text), row.expected) << QString::fromUtf16(row.text).toStdString();
}

} // namespace

TEST(Val, ReadsTheLeadingNumber)
{
    expectVal({
        {u"2457", 2457},
        {u"24 and 57", 24},
        {u"12.5mm", 12.5},
        {u"-3.25", -3.25},
        {u"+7", 7},
        {u".5", 0.5},
        {u"5.", 5},
        {u"-.5x", -0.5},
        {u"007", 7},
        {u"1.2.3", 1.2},
        {u"1,234", 1},
    });
}

TEST(Val, IsZeroWhenNoNumberLeads)
{
    expectVal({
        {u"", 0},
        {u"abc", 0},
        {u"$5", 0},
        {u".", 0},
        {u"-", 0},
        {u"--5", 0},
        {u"(5)", 0},
        {u"e5", 0},
        {u"&", 0},
        {u"&H", 0},
        {u"&X5", 0},
        {u"True", 0},
    });
}

TEST(Val, SkipsBlanksTabsAndLineFeedsWhereverTheyStand)
{
    expectVal({
        {u" 2 45 7", 2457},
        {u"    1615 198th Street N.E.", 1615198},
        {u"\t1\n2", 12},
        {u"- 5", -5},
        {u"1 . 5", 1.5},
        {u"1 e 3", 1000},
        {u"& H F F", 255},
        {u"1\r2", 1},
    });
}

TEST(Val, ReadsExponentsWithEAndD)
{
    expectVal({
        {u"1e3", 1000},
        {u"1E3", 1000},
        {u"1d3", 1000},
        {u"1D3", 1000},
        {u"1e+3", 1000},
        {u"25e-1", 2.5},
        {u"1e", 1},
        {u"1e+", 1},
        {u"1ex", 1},
        {u"1e2.5", 100},
        {u"1e-400", 0},
        {u"0e999999999999", 0},
        {u"1e-999999999999", 0},
    });
    EXPECT_TRUE(std::isinf(val(u"1e309")));
    EXPECT_TRUE(std::isinf(val(u"1e999999999999")));
    EXPECT_EQ(val(u"-1e309"), -std::numeric_limits<double>::infinity());
}

TEST(Val, ReadsHexadecimalAndOctalWholeNumbers)
{
    expectVal({
        {u"&HFF", 255},
        {u"&hff", 255},
        {u"&HFFFF", -1},
        {u"&HFFFF&", 65535},
        {u"&H8000", -32768},
        {u"&H7FFF", 32767},
        {u"&H10000", 65536},
        {u"&HFFFFFFFF", -1},
        {u"&H80000000", -2147483648.0},
        {u"&H100000000", 4294967296.0},
        {u"&O17", 15},
        {u"&o178", 15},
        {u"&HG", 0},
        {u"-&H10", 0},
        {u"&H1.5", 1},
    });
}

TEST(Val, ReadsHundredsOfThousandsOfDigits)
{
    EXPECT_EQ(val(QString(300'000, QLatin1Char('0')) + QStringLiteral("5")), 5);
    EXPECT_EQ(val(QStringLiteral("0.") + QString(300'000, QLatin1Char('0')) + QStringLiteral("1e300001")), 1);
    EXPECT_TRUE(std::isinf(val(QString(300'000, QLatin1Char('9')))));
    EXPECT_EQ(val(QString(300'000, QLatin1Char('9')) + QStringLiteral("e-999999")), 0);
    EXPECT_TRUE(std::isinf(val(QStringLiteral("&H") + QString(300'000, QLatin1Char('F')))));
    EXPECT_EQ(val(QString(300'000, QLatin1Char(' '))), 0);
}

TEST(Val, RoundsToTheNearestDouble)
{
    expectVal({
        {u"0.1", 0.1},
        {u"9007199254740993", 9007199254740992.0},
        {u"9007199254740993.0000000000000000000000000000000000000001", 9007199254740994.0},
        {u"2.2250738585072011e-308", 2.2250738585072011e-308},
        {u"1.7976931348623157e308", 1.7976931348623157e308},
    });
}

TEST(Val, ANegativeZeroKeepsItsSign)
{
    EXPECT_TRUE(std::signbit(val(u"-0")));
    EXPECT_FALSE(std::signbit(val(u"0")));
    EXPECT_TRUE(std::signbit(val(u" - 0 . 0")));
}

} // namespace zan::values
