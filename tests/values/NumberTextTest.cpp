#include "values/NumberText.h"
#include "values/Convert.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace zan::values {

namespace {

struct TextRow
{
    double value;
    const char* expected;
};

void expectDisplay(std::initializer_list<TextRow> rows)
{
    for (const TextRow& row : rows)
        EXPECT_EQ(displayText(row.value).toStdString(), row.expected);
}

} // namespace

TEST(DisplayText, ShowsAtMostFifteenSignificantDigits)
{
    expectDisplay({
        {0.1 + 0.2, "0.3"},
        {1.0 / 3, "0.333333333333333"},
        {2.0 / 3, "0.666666666666667"},
        {std::sqrt(2.0), "1.4142135623731"},
        {301.84 - 301, "0.839999999999975"},
        {123456789012345.0, "123456789012345"},
        {100, "100"},
        {-2.5, "-2.5"},
        {0.0, "0"},
        {-0.0, "0"},
    });
}

TEST(DisplayText, ShowsAnExponentFromTenToTheFifteenth)
{
    expectDisplay({
        {1e14, "100000000000000"},
        {999999999999999.0, "999999999999999"},
        {1e15, "1E+15"},
        {-1e15, "-1E+15"},
        {1234567890123456.0, "1.23456789012346E+15"},
        {14111111113353355.345455, "1.41111111133534E+16"},
        {1e100, "1E+100"},
        {1.7976931348623157e308, "1.79769313486232E+308"},
        {999999999999999.9, "1E+15"},
    });
}

TEST(DisplayText, StaysFixedWhileDigitsAndLeadingZerosFitFifteenPlaces)
{
    expectDisplay({
        {0.075, "0.075"},
        {75.0 / 999, "7.50750750750751E-02"},
        {1.0 / 30, "3.33333333333333E-02"},
        {0.000015, "0.000015"},
        {0.00001, "0.00001"},
        {1.0 / 30000, "3.33333333333333E-05"},
        {1e-15, "0.000000000000001"},
        {1e-16, "1E-16"},
        {1.5e-15, "1.5E-15"},
        {5e-324, "4.94065645841247E-324"},
    });
}

TEST(DisplayText, ASingleShowsAtMostSevenDigits)
{
    EXPECT_EQ(displayText(0.1f), QStringLiteral("0.1"));
    EXPECT_EQ(displayText(16777216.0f), QStringLiteral("1.677722E+07"));
    EXPECT_EQ(displayText(1234567.0f), QStringLiteral("1234567"));
    EXPECT_EQ(displayText(1.0f / 3), QStringLiteral("0.3333333"));
    EXPECT_EQ(displayText(0.1f / 3), QStringLiteral("3.333334E-02"));
    EXPECT_EQ(displayText(1.401298e-45f), QStringLiteral("1.401298E-45"));
    EXPECT_EQ(displayText(-2.5f), QStringLiteral("-2.5"));
}

TEST(DisplayText, ACurrencyShowsUpToFourDecimals)
{
    EXPECT_EQ(displayText(Currency{0}), QStringLiteral("0"));
    EXPECT_EQ(displayText(Currency{12345}), QStringLiteral("1.2345"));
    EXPECT_EQ(displayText(Currency{-50}), QStringLiteral("-0.005"));
    EXPECT_EQ(displayText(Currency{10000}), QStringLiteral("1"));
    EXPECT_EQ(displayText(Currency{std::numeric_limits<std::int64_t>::min()}),
              QStringLiteral("-922337203685477.5808"));
}

TEST(DisplayText, ADateShowsThePartsThatItHas)
{
    EXPECT_EQ(displayText(Date{0}), QStringLiteral("12:00:00 AM"));
    EXPECT_EQ(displayText(Date{-1.25}), QStringLiteral("12/29/1899 6:00:00 AM"));
    EXPECT_EQ(displayText(Date{36526}), QStringLiteral("1/1/2000"));
    EXPECT_EQ(displayText(Date{36526.5}), QStringLiteral("1/1/2000 12:00:00 PM"));
    EXPECT_EQ(displayText(Date{46053 + (14 * 60 + 5) / 1440.0}), QStringLiteral("1/31/2026 2:05:00 PM"));
    EXPECT_EQ(displayText(Date{1e300}), QStringLiteral("1E+300"));
}

TEST(DisplayText, InfinityAndNotANumberHaveTheirClassicTexts)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::fabs(std::numeric_limits<double>::quiet_NaN());
    expectDisplay({{infinity, "1.#INF"}, {-infinity, "-1.#INF"}, {nan, "1.#QNAN"}, {-nan, "-1.#IND"}});
}

TEST(DocumentText, InfinityAndNotANumberBecomeZero)
{
    EXPECT_EQ(documentText(std::numeric_limits<double>::infinity()), QStringLiteral("0"));
    EXPECT_EQ(documentText(std::numeric_limits<double>::quiet_NaN()), QStringLiteral("0"));
    EXPECT_EQ(documentText(-std::numeric_limits<float>::infinity()), QStringLiteral("0"));
    EXPECT_EQ(documentText(-0.0), QStringLiteral("0"));
}

TEST(DocumentText, IsTheShortestTextThatReadsBack)
{
    EXPECT_EQ(documentText(0.1), QStringLiteral("0.1"));
    EXPECT_EQ(documentText(0.1f), QStringLiteral("0.1"));
    EXPECT_EQ(documentText(0.1 + 0.2), QStringLiteral("0.30000000000000004"));
    EXPECT_EQ(documentText(-1234.5), QStringLiteral("-1234.5"));
    EXPECT_EQ(documentText(1e300), QStringLiteral("1E+300"));
}

TEST(DocumentText, EveryFiniteNumberReadsBackToItself)
{
    std::mt19937_64 random(20260131);
    for (int round = 0; round < 200'000; ++round) {
        const auto real = std::bit_cast<double>(random());
        if (std::isfinite(real)) {
            const QString text = documentText(real);
            ASSERT_EQ(val(text), real) << text.toStdString();
            ASSERT_EQ(numberFromText(text), real) << text.toStdString();
        }
        const auto single = std::bit_cast<float>(std::uint32_t(random()));
        if (std::isfinite(single)) {
            const QString text = documentText(single);
            ASSERT_EQ(float(val(text)), single) << text.toStdString();
        }
    }
}

TEST(DocumentText, TheEdgesOfADoubleReadBackToThemselves)
{
    for (const double value : {5e-324, 2.2250738585072009e-308, 2.2250738585072014e-308, 1.7976931348623157e308,
                               9007199254740993.0, 4503599627370495.5, 1e22, 1e23, -1e-5}) {
        EXPECT_EQ(val(documentText(value)), value);
        EXPECT_EQ(val(documentText(-value)), -value);
    }
}

TEST(DisplayText, ReadsBackToItsOwnText)
{
    std::mt19937_64 random(7);
    for (int round = 0; round < 100'000; ++round) {
        const auto real = std::bit_cast<double>(random());
        if (!std::isfinite(real) || std::fabs(real) > 1.79769313486231e308)
            continue;
        const QString text = displayText(real);
        const auto back = numberFromText(text);
        ASSERT_TRUE(back) << text.toStdString();
        ASSERT_EQ(displayText(*back), text);
        ASSERT_EQ(val(text), *back) << text.toStdString(); // CDbl and Val agree on what CStr makes
    }
}

} // namespace zan::values
