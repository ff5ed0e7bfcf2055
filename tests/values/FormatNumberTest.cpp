#include "values/Array.h"

#include "FormatRows.h"

#include <cmath>
#include <limits>

namespace zan::values {

TEST(FormatNumber, WithoutAFormatEveryValueHasItsGeneralForm)
{
    expectFormats({
        {5, u"", u"5"},
        {std::int16_t(-7), u"", u"-7"},
        {1234.5, u"", u"1234.5"},
        {0.1 + 0.2, u"", u"0.3"},
        {1e15, u"", u"1E+15"},
        {2.5f, u"", u"2.5"},
        {Currency{12345000}, u"", u"1234.5"},
        {u"some text", u"", u"some text"},
        {u"007", u"", u"007"},
        {true, u"", u"True"},
        {false, u"", u"False"},
        {Variant(), u"", u""},
        {Date{37987}, u"", u"1/1/2004"},
        {std::uint8_t(200), u"", u"200"},
    });
}

TEST(FormatNumber, AZeroPlaceAlwaysShowsADigit)
{
    expectFormats({
        {0, u"0", u"0"},
        {7, u"0", u"7"},
        {7, u"000", u"007"},
        {1234, u"0", u"1234"},
        {1234, u"00000", u"01234"},
        {0, u"0000", u"0000"},
        {-7, u"000", u"-007"},
        {0.5, u"0.00", u"0.50"},
        {12.0, u"0.000", u"12.000"},
        {0, u"0.00", u"0.00"},
        {8315.4, u"00000.00", u"08315.40"},
    });
}

TEST(FormatNumber, ANumberSignPlaceShowsADigitOnlyWhereThereIsOne)
{
    expectFormats({
        {0, u"#", u""},
        {5, u"#", u"5"},
        {123, u"#", u"123"},
        {5, u"###", u"5"},
        {0.5, u"#.##", u".5"},
        {0, u"#.##", u"."},
        {12.3, u"###.###", u"12.3"},
        {19.9, u"###.00", u"19.90"},
        {19.9, u"###.##", u"19.9"},
        {0, u"#.00", u".00"},
        {0.25, u"0.##", u"0.25"},
        {0.5, u"0.0#", u"0.5"},
        {0.25, u"0.0#", u"0.25"},
    });
}

TEST(FormatNumber, ThePointShowsEvenWithoutDigitsBehindIt)
{
    expectFormats({{5, u"#.##", u"5."}, {5, u"0.", u"5."}, {5, u"0.#", u"5."}, {0, u"0.#", u"0."}});
}

TEST(FormatNumber, ZerosOutsideMakeNumberSignsInsideShowZeros)
{
    expectFormats({
        {5, u"0##", u"005"},
        {5, u"#0#", u"05"},
        {0.5, u"0.##0", u"0.500"},
        {0.5, u"0.#0#", u"0.50"},
        {7, u"##00", u"07"},
    });
}

TEST(FormatNumber, DigitsWithoutAPlaceStandBeforeThePoint)
{
    expectFormats({
        {12.5, u".00", u"12.50"},
        {0.5, u".00", u".50"},
        {12345, u"0", u"12345"},
        {12345.6, u"#0.0", u"12345.6"},
        {-12.5, u".0", u"-12.5"},
        {1234567, u".0", u"1234567.0"},
    });
}

TEST(FormatNumber, HalfGoesAwayFromZeroAtTheLastPlace)
{
    expectFormats({
        {0.5, u"0", u"1"},
        {1.5, u"0", u"2"},
        {2.5, u"0", u"3"},
        {-0.5, u"0", u"-1"},
        {-2.5, u"0", u"-3"},
        {0.125, u"0.00", u"0.13"},
        {0.375, u"0.00", u"0.38"},
        {0.49, u"0", u"0"},
        {0.05, u"0.0", u"0.1"},
        {9.5, u"0", u"10"},
        {99.95, u"0.0", u"100.0"},
        {999.9, u"0", u"1000"},
        {999.9, u"#,##0", u"1,000"},
        {0.95, u"#.#", u"1."},
        {0.04, u"0.0", u"0.0"},
        {0.0049, u"0.00", u"0.00"},
    });
}

TEST(FormatNumber, ATieIsATieOfTheShortestText)
{
    // Each of these lies a little below the tie in binary.
    expectFormats({
        {1.005, u"0.00", u"1.01"},
        {2.675, u"0.00", u"2.68"},
        {1.15, u"0.0", u"1.2"},
        {0.075, u"0.00", u"0.08"},
        {8.885, u"0.00", u"8.89"},
        {2.145, u"#.00", u"2.15"},
        {301.84 - 301, u"0.00", u"0.84"},
        {0.285, u"0.00", u"0.29"},
        {1.45f, u"0.0", u"1.5"},
        {2.675f, u"0.00", u"2.68"},
    });
}

TEST(FormatNumber, ASingleShowsItsOwnDigitsAndNotThoseOfADouble)
{
    expectFormats({
        {0.1f, u"0.0000000000", u"0.1000000000"},
        {16777216.0f, u"0", u"16777216"},
        {3.4e38f, u"0", u"340000000000000000000000000000000000000"},
    });
}

TEST(FormatNumber, ACommaBetweenDigitPlacesGroupsThousands)
{
    expectFormats({
        {1234567, u"#,##0", u"1,234,567"},
        {123, u"#,##0", u"123"},
        {1000, u"#,##0", u"1,000"},
        {0, u"#,##0", u"0"},
        {1234567.891, u"#,##0.00", u"1,234,567.89"},
        {-1234567.891, u"#,##0.00", u"-1,234,567.89"},
        {12, u"0,000", u"0,012"},
        {1234567, u"0,0", u"1,234,567"},
        {5, u"000,000", u"000,005"},
        {1234567, u",0", u"1,234,567"},
        {1234567890123.0, u"#,#", u"1,234,567,890,123"},
        {999999.5, u"#,##0", u"1,000,000"},
        {1234.5, u"#,###.##", u"1,234.5"},
    });
}

TEST(FormatNumber, CommasAfterTheLastWholePlaceScaleByAThousandEach)
{
    expectFormats({
        {100000000, u"##0,,", u"100"},
        {1900000, u"0,,", u"2"},
        {1900000, u"0,,.0", u"1.9"},
        {12345, u"0,", u"12"},
        {12345, u"0,.00", u"12.35"},
        {1234567890, u"#,##0,", u"1,234,568"},
        {1234567, u"#,##0,.0", u"1,234.6"},
        {500, u"0,", u"1"},
        {499, u"0,", u"0"},
        {12345.0, u"0.0,", u"12.3"},
    });
}

TEST(FormatNumber, APercentSignMultipliesByAHundredAndShows)
{
    expectFormats({
        {0.05, u"0%", u"5%"},
        {5, u"0.00%", u"500.00%"},
        {0.125, u"0.0 %", u"12.5 %"},
        {0.285, u"0%", u"29%"},
        {-0.5, u"0%", u"-50%"},
        {0.5, u"%0", u"%50"},
        {0.5, u"0%%", u"5000%%"},
        {0.005, u"0%", u"1%"},
        {0.004, u"0%", u"0%"},
        {0.5, u"0\\%", u"1%"},
        {0.5, u"0\"%\"", u"1%"},
    });
}

TEST(FormatNumber, AnExponentTakesADigitForEveryPlace)
{
    expectFormats({
        {1000, u"0.00E+00", u"1.00E+03"},
        {0.001, u"0.00E+00", u"1.00E-03"},
        {6000000, u"0.000E+00", u"6.000E+06"},
        {6000000, u".0000E+00", u".6000E+07"},
        {1234567.89, u"###.##E-00", u"123.46E04"},
        {1234567.89, u"###.##e+#", u"123.46e+4"},
        {0.12345, u"0.00E-00", u"1.23E-01"},
        {1234567.89, u"##00.0000e-0", u"1234.5679e3"},
        {12345, u"0E+0", u"1E+4"},
        {0, u"0.00E+00", u"0.00E+00"},
        {-12345, u"0.0E-0", u"-1.2E4"},
        {9.999, u"0.00E+00", u"1.00E+01"},
        {99.96, u"00.0E+0", u"10.0E+1"},
        {1e100, u"0.0E+0", u"1.0E+100"},
        {1e-300, u"0.0E+00", u"1.0E-300"},
        {5, u"0.0E+000", u"5.0E+000"},
        {0.5, u"0.0e-00", u"5.0e-01"},
        {123456, u"#,##0.0E+0", u"1,234.6E+2"},
        {8315.4, u"0.00e+00 \"m\"", u"8.32e+03 m"},
    });
}

TEST(FormatNumber, AnyDigitAfterTheSignIsAPlaceOfTheExponent)
{
    expectFormats({
        {1234.5678, u"0.0000e-1", u"1.2346e3"},
        {1234.5678, u"0.0000e+1", u"1.2346e+3"},
        {0.0001234, u"0.0000e-1", u"1.2340e-4"},
        {0.0001234, u"0.0000e+1", u"1.2340e-4"},
        {0, u"0.0000e-1", u"0.0000e0"},
        {1e12, u"0.0e-1", u"1.0e12"},
        {5, u"0.0E+10", u"5.0E+00"},
    });
}

TEST(FormatNumber, AnEWithoutSignOrPlaceIsALiteral)
{
    expectFormats({
        {5, u"0E", u"5E"},
        {5, u"0E+", u"5E+"},
        {5, u"0E0", u"0E5"},
        {15, u"0E0", u"1E5"},
        {5, u"0e+x", u"5e+x"},
        {5, u"0.0E+0E+0", u"5.0E+0E+0"},
    });
}

TEST(FormatNumber, ThePublishedTableOfFormatsHolds)
{
    const auto expectLine = [](const char16_t* formatText, const char16_t* five, const char16_t* minusFive,
                               const char16_t* half) {
        expectFormats({{5, formatText, five}, {-5, formatText, minusFive}, {0.5, formatText, half}});
    };
    expectLine(u"", u"5", u"-5", u"0.5");
    expectLine(u"0", u"5", u"-5", u"1");
    expectLine(u"0.00", u"5.00", u"-5.00", u"0.50");
    expectLine(u"#,##0", u"5", u"-5", u"1");
    expectLine(u"#,##0.00;;;Nil", u"5.00", u"-5.00", u"0.50");
    expectLine(u"$#,##0;($#,##0)", u"$5", u"($5)", u"$1");
    expectLine(u"$#,##0.00;($#,##0.00)", u"$5.00", u"($5.00)", u"$0.50");
    expectLine(u"0%", u"500%", u"-500%", u"50%");
    expectLine(u"0.00%", u"500.00%", u"-500.00%", u"50.00%");
    expectLine(u"0.00E+00", u"5.00E+00", u"-5.00E+00", u"5.00E-01");
    expectLine(u"0.00E-00", u"5.00E00", u"-5.00E00", u"5.00E-01");
    expectFormats({
        {5459.4, u"##,##0.00", u"5,459.40"},
        {334.9, u"###0.00", u"334.90"},
        {5, u"0.00%", u"500.00%"},
        {23, u"", u"23"},
    });
}

TEST(FormatNumber, WhatRoundsToZeroHasNoSign)
{
    expectFormats({
        {-0.001, u"0.00", u"0.00"},
        {-0.4, u"0", u"0"},
        {-0.4, u"#", u""},
        {-0.0, u"0.0", u"0.0"},
        {-0.006, u"0.00", u"-0.01"},
        {-0.00001, u"0.00%", u"0.00%"},
    });
}

TEST(FormatNumber, LiteralsAmongThePlacesStayWhereTheyAre)
{
    expectFormats({
        {5551234567.0, u"(000) 000-0000", u"(555) 123-4567"},
        {1234567, u"000-0000", u"123-4567"},
        {123456789, u"000\\-00\\-0000", u"123-45-6789"},
        {1234567, u"(###) ###-####", u"() 123-4567"},
        {12345678901.0, u"(000) 000-0000", u"(1234) 567-8901"},
        {12.345, u"0.0-00", u"12.3-45"},
    });
}

TEST(FormatNumber, QuotedAndEscapedCharactersAreLiterals)
{
    expectFormats({
        {19, u"\\####\\#", u"#19#"},
        {19, u"\"##\"###\"##\"", u"##19##"},
        {5, u"0 \"mm\"", u"5 mm"},
        {5, u"0\\;0", u"0;5"},
        {5, u"0\";\"", u"5;"},
        {15, u"0\\;0", u"1;5"},
        {5, u"\"Level: \"0.0", u"Level: 5.0"},
        {5, u"0 \"open", u"5 open"},
        {5, u"0\\", u"5\\"},
        {5, u"0\"\"", u"5"},
        {5, u"\\\\0", u"\\5"},
    });
}

TEST(FormatNumber, LettersAfterADigitPlaceAreLiterals)
{
    expectFormats({
        {5, u"0.0 mm", u"5.0 mm"},
        {7.25, u"0.00 m/s", u"7.25 m/s"},
        {1234.5, u"#,##0 l/h", u"1,235 l/h"},
        {21.5, u"0.0\u00b0C", u"21.5\u00b0C"},
        {5, u"0 @ 1", u"5 @ 1"},
    });
}

TEST(FormatNumber, AFormatOfLiteralsAloneShowsThem)
{
    expectFormats({
        {5, u"\"on\"", u"on"},
        {-5, u"\"on\"", u"-on"},
        {-5, u"\"on\";\"off\"", u"off"},
        {5, u"$", u"$"},
        {5, u"()", u"()"},
    });
}

TEST(FormatNumber, ASecondPointIsALiteral)
{
    expectFormats({{1.25, u"0.0.0", u"1.2.5"}, {5, u"0..", u"5.."}});
}

TEST(FormatNumber, HugeAndTinyNumbersShowAllTheirPlaces)
{
    const QString hundred = QStringLiteral("1") + QString(100, QLatin1Char('0'));
    EXPECT_EQ(format(1e100, u"0"), hundred);
    EXPECT_EQ(format(1e308, u"0").size(), 309);
    EXPECT_EQ(format(5e-324, u"0.00"), QStringLiteral("0.00"));
    expectFormats({
        {1e-10, u"0.0000000000", u"0.0000000001"},
        {1e22, u"#,##0", u"10,000,000,000,000,000,000,000"},
        {123456789012345678.0, u"0", u"123456789012345680"},
        {std::numeric_limits<std::int32_t>::min(), u"#,##0", u"-2,147,483,648"},
        {Currency{std::numeric_limits<std::int64_t>::min()}, u"#,##0.0000", u"-922,337,203,685,477.5808"},
        {Currency{std::numeric_limits<std::int64_t>::max()}, u"0.00", u"922337203685477.58"},
    });
}

TEST(FormatNumber, InfinityAndNotANumberHaveTheirClassicTexts)
{
    const double infinity = std::numeric_limits<double>::infinity();
    const double nan = std::fabs(std::numeric_limits<double>::quiet_NaN());
    expectFormats({
        {infinity, u"0.00", u"1.#INF"},
        {-infinity, u"0.00", u"-1.#INF"},
        {-infinity, u"0.00;(0.00)", u"1.#INF"},
        {nan, u"0.00", u"1.#QNAN"},
        {nan, u"0;0;\\z", u"1.#QNAN"},
        {infinity, u"", u"1.#INF"},
    });
}

TEST(FormatNumber, NamedNumberFormats)
{
    expectFormats({
        {1234.5, u"General Number", u"1234.5"},
        {1234567, u"General Number", u"1234567"},
        {true, u"General Number", u"-1"},
        {u"12.50", u"General Number", u"12.5"},
        {u"abc", u"General Number", u"abc"},
        {1234.567, u"Currency", u"$1,234.57"},
        {-1234.567, u"Currency", u"($1,234.57)"},
        {1234.567, u"Fixed", u"1234.57"},
        {0.5, u"Fixed", u"0.50"},
        {1234.567, u"Standard", u"1,234.57"},
        {-1234.567, u"Standard", u"-1,234.57"},
        {0.1234, u"Percent", u"12.34%"},
        {1234.567, u"Scientific", u"1.23E+03"},
        {0, u"Yes/No", u"No"},
        {1, u"Yes/No", u"Yes"},
        {-1, u"Yes/No", u"Yes"},
        {true, u"Yes/No", u"Yes"},
        {0, u"True/False", u"False"},
        {-0.5, u"True/False", u"True"},
        {0, u"On/Off", u"Off"},
        {7, u"On/Off", u"On"},
    });
}

TEST(FormatNumber, NamedFormatsIgnoreCase)
{
    expectFormats({{1234.567, u"STANDARD", u"1,234.57"}, {0, u"yes/no", u"No"}, {5, u"general number", u"5"}});
}

TEST(FormatNumber, ABooleanIsMinusOneOrZeroUnderANumberFormat)
{
    expectFormats({{true, u"0", u"-1"}, {false, u"0.0", u"0.0"}, {true, u"0;\\y", u"y"}});
}

TEST(FormatNumber, ADateUnderANumberFormatIsItsSerialNumber)
{
    expectFormats(
        {{Date{36526.25}, u"0.00", u"36526.25"}, {Date{2}, u"0", u"2"}, {Date{2}, u"General Number", u"2"}});
}

TEST(FormatNumber, ATextThatIsANumberIsFormattedAsOne)
{
    expectFormats({
        {u"5", u"0.00", u"5.00"},
        {u" 12.5 ", u"0", u"13"},
        {u"1e3", u"#,##0", u"1,000"},
        {u"&hFF", u"0", u"255"},
        {u"1,234", u"0", u"1234"},
        {u"-5", u"0;(0)", u"(5)"},
    });
}

TEST(FormatNumber, ATextThatIsNoNumberStaysAsItIs)
{
    expectFormats({
        {u"abc", u"0.00", u"abc"},
        {u"5 mm", u"0.00", u"5 mm"},
        {u"", u"0.00", u""},
        {u"abc", u"Currency", u"abc"},
        {u"1e999", u"0", u"1e999"},
    });
}

TEST(FormatNumber, AnArrayIsATypeMismatchAndNothingIsNotSet)
{
    EXPECT_EQ(formatError(Variant::nothing(), u"0"), 91);
    EXPECT_EQ(formatError(Variant(Array::fromValues({1, 2})), u"0"), 13);
    EXPECT_EQ(formatError(Variant(Array::fromValues({1, 2})), u""), 13);
}

TEST(FormatNumber, AMillionPlacesAreShown)
{
    const QString places(1'000'000, QLatin1Char('0'));
    const QString made = format(7, places);
    EXPECT_EQ(made.size(), 1'000'000);
    EXPECT_TRUE(made.endsWith(QStringLiteral("07")));
    EXPECT_EQ(format(7, QString(1'000'000, QLatin1Char('%'))).size(), 1'000'000);
}

TEST(FormatNumber, AFormatTextBeyondAllMeasureIsOutOfStringSpace)
{
    EXPECT_THROW(static_cast<void>(format(1, QString(5 * 1024 * 1024, QLatin1Char('c')))), RuntimeError);
}

TEST(FormatNumber, AFormatGivesTheSameTextEveryTimeItIsUsed)
{
    for (int round = 0; round < 3; ++round) {
        for (int places = 1; places < 400; ++places)
            ASSERT_EQ(format(1, QString(places, QLatin1Char('0'))).size(), places);
    }
}

} // namespace zan::values
