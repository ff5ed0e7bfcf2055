#include "values/DateText.h"

#include "values/Format.h"

#include <gtest/gtest.h>

namespace zan::values {

namespace {

/// The date as one fixed form, or "none".
std::string read(const char16_t* text)
{
    const auto date = dateFromText(text, 2026);
    return date ? format(*date, u"yyyy-mm-dd hh:nn:ss").toStdString() : std::string("none");
}

} // namespace

TEST(DateText, TheMonthComesFirstWhereBothReadingsArePossible)
{
    EXPECT_EQ(read(u"1/2/2003"), "2003-01-02 00:00:00");
    EXPECT_EQ(read(u"13/2/2003"), "2003-02-13 00:00:00");
    EXPECT_EQ(read(u"2/13/2003"), "2003-02-13 00:00:00");
    EXPECT_EQ(read(u"1-2-2003"), "2003-01-02 00:00:00");
    EXPECT_EQ(read(u"2003/1/2"), "2003-01-02 00:00:00");
    EXPECT_EQ(read(u"2026-01-31"), "2026-01-31 00:00:00");
}

TEST(DateText, AYearOfTwoDigitsLiesBetween1930And2029)
{
    EXPECT_EQ(read(u"1/2/29"), "2029-01-02 00:00:00");
    EXPECT_EQ(read(u"1/2/30"), "1930-01-02 00:00:00");
    EXPECT_EQ(read(u"1/2/00"), "2000-01-02 00:00:00");
    EXPECT_EQ(read(u"31-Jan-99"), "1999-01-31 00:00:00");
}

TEST(DateText, MonthsMayBeNames)
{
    EXPECT_EQ(read(u"January 31, 2026"), "2026-01-31 00:00:00");
    EXPECT_EQ(read(u"31 January 2026"), "2026-01-31 00:00:00");
    EXPECT_EQ(read(u"31-Jan-2026"), "2026-01-31 00:00:00");
    EXPECT_EQ(read(u"jan 31 2026"), "2026-01-31 00:00:00");
    EXPECT_EQ(read(u"Saturday, January 31, 2026"), "2026-01-31 00:00:00");
    EXPECT_EQ(read(u"February 2024"), "2024-02-01 00:00:00");
    EXPECT_EQ(read(u"2026 Jan 31"), "2026-01-31 00:00:00");
}

TEST(DateText, ADateWithoutAYearIsInTheCurrentOne)
{
    EXPECT_EQ(read(u"3/4"), "2026-03-04 00:00:00");
    EXPECT_EQ(read(u"14 March"), "2026-03-14 00:00:00");
    EXPECT_EQ(read(u"3/2024"), "2024-03-01 00:00:00");
}

TEST(DateText, TimesStandAloneOrBesideADate)
{
    EXPECT_EQ(read(u"14:05"), "1899-12-30 14:05:00");
    EXPECT_EQ(read(u"2:05:10 PM"), "1899-12-30 14:05:10");
    EXPECT_EQ(read(u"2 pm"), "1899-12-30 14:00:00");
    EXPECT_EQ(read(u"12:00 AM"), "1899-12-30 00:00:00");
    EXPECT_EQ(read(u"12:30 PM"), "1899-12-30 12:30:00");
    EXPECT_EQ(read(u"1/31/2026 2:05 PM"), "2026-01-31 14:05:00");
    EXPECT_EQ(read(u"14:05 1/31/2026"), "2026-01-31 14:05:00");
    EXPECT_EQ(read(u"31 January 2026 2:05 pm"), "2026-01-31 14:05:00");
}

TEST(DateText, WhatIsNoDateIsNone)
{
    for (const char16_t* text : {u"",           u" ",
                                 u"abc",        u"12",
                                 u"1.5",        u"1/",
                                 u"13/13/2026", u"2/30/2026",
                                 u"2/29/2025",  u"25:00",
                                 u"1:60",       u"13 PM",
                                 u"1/2/3/4",    u"Janu 5",
                                 u"1/2/2003x",  u"0/1/2000",
                                 u"1/0/2000",   u"1/1/99999",
                                 u"1:2:3:4",    u"14:05 14:06",
                                 u"Jan Feb 3",  u"5 mm",
                                 u"1//2/2003",  u"-1/2/2003",
                                 u"17 AM",      u"1/1/50 3 PM 4 PM"})
        EXPECT_EQ(read(text), "none") << QString::fromUtf16(text).toStdString();
    EXPECT_EQ(dateFromText(QString(100'000, QLatin1Char(' '))), std::nullopt);
}

TEST(DateText, WhatCStrMakesOfADateReadsBack)
{
    for (const double serial : {0.0, 0.25, 1.0, 36526.0, 36526.75, -1.25, -400000.5, 2958465.5, 46053.123}) {
        const QString text = format(Date{serial}, u"");
        const auto back = dateFromText(text);
        ASSERT_TRUE(back) << text.toStdString();
        EXPECT_EQ(format(*back, u""), text);
    }
}

} // namespace zan::values
