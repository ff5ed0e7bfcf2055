#include "values/Calendar.h"

#include "FormatRows.h"

#include <cmath>
#include <limits>

namespace zan::values {

namespace {

Date moment(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return dateOf(dayNumber(year, month, day), (hour * 60 + minute) * 60 + second);
}

/// Tuesday 2 January 2001, 5:04:03 in the afternoon.
const Variant afternoon = moment(2001, 1, 2, 17, 4, 3);
/// Sunday 31 December 2000, 9:07:00 in the morning.
const Variant morning = moment(2000, 12, 31, 9, 7, 0);

} // namespace

TEST(FormatDate, DayTokens)
{
    expectFormats({
        {afternoon, u"d", u"2"},
        {afternoon, u"dd", u"02"},
        {afternoon, u"ddd", u"Tue"},
        {afternoon, u"dddd", u"Tuesday"},
        {afternoon, u"ddddd", u"1/2/2001"},
        {afternoon, u"dddddd", u"Tuesday, January 2, 2001"},
        {morning, u"d", u"31"},
        {morning, u"ddd", u"Sun"},
    });
}

TEST(FormatDate, MonthTokens)
{
    expectFormats({
        {afternoon, u"m", u"1"},
        {afternoon, u"mm", u"01"},
        {afternoon, u"mmm", u"Jan"},
        {afternoon, u"mmmm", u"January"},
        {morning, u"m", u"12"},
        {morning, u"mmm", u"Dec"},
    });
}

TEST(FormatDate, YearTokens)
{
    expectFormats({
        {afternoon, u"y", u"2"},
        {afternoon, u"yy", u"01"},
        {afternoon, u"yyyy", u"2001"},
        {morning, u"y", u"366"},
        {morning, u"yy", u"00"},
        {moment(2003, 12, 31), u"y", u"365"},
        {moment(476, 9, 4), u"yyyy", u"0476"},
    });
}

TEST(FormatDate, QuarterToken)
{
    expectFormats({
        {moment(2001, 3, 31), u"q", u"1"},
        {moment(2001, 4, 1), u"q", u"2"},
        {moment(2001, 9, 30), u"q", u"3"},
        {morning, u"q", u"4"},
    });
}

TEST(FormatDate, TimeTokens)
{
    expectFormats({
        {afternoon, u"h", u"17"},
        {afternoon, u"hh", u"17"},
        {afternoon, u"n", u"4"},
        {afternoon, u"nn", u"04"},
        {afternoon, u"s", u"3"},
        {afternoon, u"ss", u"03"},
        {afternoon, u"ttttt", u"5:04:03 PM"},
        {morning, u"h", u"9"},
        {morning, u"hh", u"09"},
        {morning, u"h:n:s", u"9:7:0"},
        {morning, u"hh:nn:ss", u"09:07:00"},
    });
}

TEST(FormatDate, MIsMinutesOnlyRightAfterAnHour)
{
    expectFormats({
        {afternoon, u"h:m", u"17:4"},
        {afternoon, u"hh:mm", u"17:04"},
        {afternoon, u"h:mm:ss", u"17:04:03"},
        {afternoon, u"mm:ss", u"01:03"},
        {afternoon, u"mm/dd hh:mm", u"01/02 17:04"},
        {afternoon, u"h d m", u"17 2 1"},
        {afternoon, u"hh:mmm", u"17:Jan"},
        {afternoon, u"hh:mm mm", u"17:04 01"},
        {afternoon, u"h\" hours \"m", u"17 hours 4"},
        {afternoon, u"ss:mm", u"03:01"},
    });
}

TEST(FormatDate, AMarkForTheHalfOfTheDayCountsHoursToTwelve)
{
    expectFormats({
        {afternoon, u"h:mm AM/PM", u"5:04 PM"},
        {afternoon, u"h:mm am/pm", u"5:04 pm"},
        {afternoon, u"hh:mm A/P", u"05:04 P"},
        {afternoon, u"hh:mm a/p", u"05:04 p"},
        {afternoon, u"hh:mm AMPM", u"05:04 PM"},
        {morning, u"hh:mm AM/PM", u"09:07 AM"},
        {afternoon, u"AM/PM h", u"PM 5"},
        {Date{0}, u"h AM/PM", u"12 AM"},
        {Date{0.5}, u"h AM/PM", u"12 PM"},
        {Date{0.5}, u"h", u"12"},
        {Date{0}, u"h", u"0"},
    });
}

TEST(FormatDate, CShowsThePartsThatThereAre)
{
    expectFormats({
        {afternoon, u"c", u"1/2/2001 5:04:03 PM"},
        {moment(2001, 1, 2), u"c", u"1/2/2001"},
        {Date{0.75}, u"c", u"6:00:00 PM"},
        {Date{0}, u"c", u"12:00:00 AM"},
    });
}

TEST(FormatDate, NamedDateFormats)
{
    expectFormats({
        {afternoon, u"General Date", u"1/2/2001 5:04:03 PM"},
        {afternoon, u"Long Date", u"Tuesday, January 2, 2001"},
        {moment(2002, 1, 2), u"Medium Date", u"02-Jan-02"},
        {afternoon, u"Short Date", u"1/2/2001"},
        {afternoon, u"Long Time", u"5:04:03 PM"},
        {afternoon, u"Medium Time", u"05:04 PM"},
        {afternoon, u"Short Time", u"17:04"},
        {afternoon, u"short time", u"17:04"},
    });
}

TEST(FormatDate, TokensIgnoreCase)
{
    expectFormats({
        {afternoon, u"DD/MM/YYYY", u"02/01/2001"},
        {afternoon, u"HH:MM:SS", u"17:04:03"},
        {afternoon, u"Mmm D, yyyy", u"Jan 2, 2001"},
        {afternoon, u"C", u"1/2/2001 5:04:03 PM"},
    });
}

TEST(FormatDate, WholeForms)
{
    expectFormats({
        {afternoon, u"yyyy-mm-dd hh:nn:ss", u"2001-01-02 17:04:03"},
        {afternoon, u"dddd, mmm d yyyy", u"Tuesday, Jan 2 2001"},
        {afternoon, u"d-mmm", u"2-Jan"},
        {afternoon, u"d-mmmm-yy", u"2-January-01"},
        {afternoon, u"mmmm yy", u"January 01"},
        {afternoon, u"hh:mm:ss AM/PM", u"05:04:03 PM"},
        {afternoon, u"m/d/yy h:mm", u"1/2/01 17:04"},
        {afternoon, u"yyyymmddhhnnss", u"20010102170403"},
    });
}

TEST(FormatDate, ThePublishedExamplesHold)
{
    const Variant evening = moment(1958, 12, 7, 20, 50, 35);
    expectFormats({
        {evening, u"m/d/yy", u"12/7/58"},
        {evening, u"d-mmm", u"7-Dec"},
        {evening, u"d-mmmm-yy", u"7-December-58"},
        {evening, u"d mmmm", u"7 December"},
        {evening, u"mmmm yy", u"December 58"},
        {evening, u"hh:mm AM/PM", u"08:50 PM"},
        {evening, u"h:mm:ss a/p", u"8:50:35 p"},
        {evening, u"h:mm", u"20:50"},
        {evening, u"h:mm:ss", u"20:50:35"},
        {evening, u"m/d/yy h:mm", u"12/7/58 20:50"},
        {moment(1993, 1, 27), u"dddd, mmm d yyyy", u"Wednesday, Jan 27 1993"},
        {moment(1899, 12, 30, 17, 4, 23), u"h:m:s", u"17:4:23"},
        {moment(1899, 12, 30, 17, 4, 23), u"hh:mm:ss AMPM", u"05:04:23 PM"},
    });
}

TEST(FormatDate, LettersThatAreNoTokensAndMarkedOnesAreLiterals)
{
    expectFormats({
        {afternoon, u"\\d\\a\\y d", u"day 2"},
        {afternoon, u"\"day \"d", u"day 2"},
        {afternoon, u"d.m.yyyy", u"2.1.2001"},
        {afternoon, u"tttt d", u"tttt 2"},
        {afternoon, u"d 0", u"2 0"},
        {afternoon, u"d @ #", u"2 @ #"},
        {afternoon, u"a d", u"a 2"},
    });
}

TEST(FormatDate, RunsOfLettersAreCutIntoTheLongestTokens)
{
    expectFormats({
        {afternoon, u"yyy", u"012"},
        {afternoon, u"yyyyyy", u"200101"},
        {afternoon, u"hhh", u"1717"},
        {afternoon, u"mmmmm", u"January1"},
        {afternoon, u"sss", u"033"},
        {afternoon, u"ddddddd", u"Tuesday, January 2, 20012"},
        {afternoon, u"qq", u"11"},
    });
}

TEST(FormatDate, WeekdayNumbersFollowTheFirstDayOfTheWeek)
{
    EXPECT_EQ(format(afternoon, u"w"), QStringLiteral("3"));
    EXPECT_EQ(format(afternoon, u"w", FirstDayOfWeek::Monday), QStringLiteral("2"));
    EXPECT_EQ(format(afternoon, u"w", FirstDayOfWeek::Wednesday), QStringLiteral("7"));
    EXPECT_EQ(format(morning, u"w"), QStringLiteral("1"));
    EXPECT_EQ(format(morning, u"w", FirstDayOfWeek::Saturday), QStringLiteral("2"));
}

TEST(FormatDate, TheNameOfADayDoesNotFollowTheFirstDayOfTheWeek)
{
    EXPECT_EQ(format(afternoon, u"ddd", FirstDayOfWeek::Thursday), QStringLiteral("Tue"));
}

TEST(FormatDate, WeekOneHoldsTheFirstOfJanuaryByDefault)
{
    expectFormats({
        {moment(2001, 1, 1), u"ww", u"1"},
        {moment(2001, 1, 6), u"ww", u"1"},
        {moment(2001, 1, 7), u"ww", u"2"},
        {moment(2000, 1, 1), u"ww", u"1"},
        {moment(2000, 1, 2), u"ww", u"2"},
        {moment(2000, 12, 31), u"ww", u"54"},
        {moment(2001, 12, 31), u"ww", u"53"},
    });
}

TEST(FormatDate, WeekOneMayBeTheFirstOfFourDaysOrTheFirstFullOne)
{
    const auto week = [](const Date& date, FirstDayOfWeek day, FirstWeekOfYear first) {
        return format(date, u"ww", day, first).toInt();
    };
    // 2005 started on a Saturday: by the calendar of most countries it was still week 53.
    EXPECT_EQ(week(moment(2005, 1, 1), FirstDayOfWeek::Monday, FirstWeekOfYear::FirstFourDays), 53);
    EXPECT_EQ(week(moment(2005, 1, 3), FirstDayOfWeek::Monday, FirstWeekOfYear::FirstFourDays), 1);
    EXPECT_EQ(week(moment(2008, 12, 29), FirstDayOfWeek::Monday, FirstWeekOfYear::FirstFourDays), 1);
    EXPECT_EQ(week(moment(2009, 12, 31), FirstDayOfWeek::Monday, FirstWeekOfYear::FirstFourDays), 53);
    EXPECT_EQ(week(moment(2010, 1, 3), FirstDayOfWeek::Monday, FirstWeekOfYear::FirstFourDays), 53);
    EXPECT_EQ(week(moment(2010, 1, 4), FirstDayOfWeek::Monday, FirstWeekOfYear::FirstFourDays), 1);
    EXPECT_EQ(week(moment(2005, 1, 2), FirstDayOfWeek::Sunday, FirstWeekOfYear::FirstFullWeek), 1);
    EXPECT_EQ(week(moment(2005, 1, 1), FirstDayOfWeek::Sunday, FirstWeekOfYear::FirstFullWeek), 52);
    EXPECT_EQ(week(moment(2006, 1, 1), FirstDayOfWeek::Sunday, FirstWeekOfYear::FirstFullWeek), 1);
}

TEST(FormatDate, TheMondayBeforeALeapYearThatOpensItsWeekOneIsWeekFiftyThree)
{
    const auto week = [](const Date& date, FirstDayOfWeek day, FirstWeekOfYear first) {
        return format(date, u"ww", day, first).toInt();
    };
    using enum FirstWeekOfYear;
    for (const Date& monday : {moment(2003, 12, 29), moment(2007, 12, 31), moment(2019, 12, 30)})
        EXPECT_EQ(week(monday, FirstDayOfWeek::Monday, FirstFourDays), 53);
    EXPECT_EQ(week(moment(2003, 12, 30), FirstDayOfWeek::Monday, FirstFourDays), 1) << "the Tuesday after it";
    EXPECT_EQ(week(moment(2014, 12, 29), FirstDayOfWeek::Monday, FirstFourDays), 1) << "2015 is no leap year";
    EXPECT_EQ(week(moment(2003, 12, 28), FirstDayOfWeek::Sunday, FirstFourDays), 53) << "by the rule itself";
    EXPECT_EQ(week(moment(2019, 12, 30), FirstDayOfWeek::Tuesday, FirstFourDays), 52);
}

TEST(FormatDate, ANumberUnderADateFormatIsASerialNumber)
{
    expectFormats({
        {36526, u"yyyy-mm-dd", u"2000-01-01"},
        {36526.5, u"hh:nn", u"12:00"},
        {0, u"yyyy-mm-dd", u"1899-12-30"},
        {1, u"Short Date", u"12/31/1899"},
        {-1, u"Short Date", u"12/29/1899"},
        {2958465, u"yyyy-mm-dd", u"9999-12-31"},
        {-657434, u"yyyy-mm-dd", u"0100-01-01"},
        {true, u"d", u"29"},
        {Currency{365260000}, u"yyyy", u"2000"},
    });
}

TEST(FormatDate, BeforeDayZeroTheTimeStillCountsForward)
{
    expectFormats({
        {Date{-1.25}, u"m/d/yyyy h:nn AM/PM", u"12/29/1899 6:00 AM"},
        {Date{-0.25}, u"h:nn", u"6:00"},
        {Date{-1.75}, u"c", u"12/29/1899 6:00:00 PM"},
    });
}

TEST(FormatDate, TimesAreRoundedToTheSecondAndCarryIntoTheNextDay)
{
    expectFormats({
        {36526.999999, u"yyyy-mm-dd hh:nn:ss", u"2000-01-02 00:00:00"},
        {Date{0.1 / 86400}, u"hh:nn:ss", u"00:00:00"},
        {Date{59.6 / 86400}, u"h:n:s", u"0:1:0"},
        {2958465.999999, u"yyyy-mm-dd hh:nn:ss", u"9999-12-31 23:59:59"},
    });
}

TEST(FormatDate, ADateOutsideTheCalendarIsAnOverflow)
{
    EXPECT_EQ(formatError(2958466, u"yyyy"), 6);
    EXPECT_EQ(formatError(-657435, u"yyyy"), 6);
    EXPECT_EQ(formatError(1e300, u"Long Date"), 6);
    EXPECT_EQ(formatError(std::numeric_limits<double>::infinity(), u"c"), 6);
    EXPECT_EQ(formatError(std::numeric_limits<double>::quiet_NaN(), u"c"), 6);
}

TEST(FormatDate, ATextThatIsADateIsFormattedAsOne)
{
    expectFormats({
        {u"1/31/2026", u"yyyy-mm-dd", u"2026-01-31"},
        {u"31 January 2026", u"d/m/yy", u"31/1/26"},
        {u"2026-01-31 14:05", u"h:nn AM/PM", u"2:05 PM"},
        {u"14:05:10", u"ttttt", u"2:05:10 PM"},
        {u"36526", u"yyyy", u"2000"},
        {u"no date", u"yyyy", u"no date"},
        {u"", u"yyyy", u""},
        {u"13/32/2026", u"yyyy", u"13/32/2026"},
    });
}

TEST(FormatDate, ALeapDayIsWhereItShouldBe)
{
    expectFormats({
        {moment(2000, 2, 28), u"y", u"59"},
        {dateOf(dayNumber(2000, 2, 28) + 1, 0), u"m/d", u"2/29"},
        {dateOf(dayNumber(1900, 2, 28) + 1, 0), u"m/d", u"3/1"},
        {moment(2004, 12, 31), u"y", u"366"},
    });
}

TEST(Calendar, EveryDayOfTheCalendarComesBackFromItsParts)
{
    CivilTime before = *civilTime(Date{double(FirstDay)});
    EXPECT_EQ(before.year, 100);
    for (std::int32_t day = FirstDay + 1; day <= LastDay; ++day) {
        const CivilTime time = *civilTime(Date{double(day)});
        ASSERT_EQ(dayNumber(time.year, time.month, time.day), day);
        const bool nextDay = time.year == before.year && time.month == before.month && time.day == before.day + 1;
        const bool newMonth = time.day == 1 && before.day == daysInMonth(before.year, before.month);
        ASSERT_TRUE(nextDay || newMonth) << day;
        before = time;
    }
    EXPECT_EQ(before.year, 9999);
}

} // namespace zan::values
