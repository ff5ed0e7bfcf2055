#include "FormatRows.h"

namespace zan::values {

TEST(FormatSections, OneSectionServesAllNumbersAndPutsTheMinusFirst)
{
    expectFormats({
        {5, u"$#,##0.00", u"$5.00"},
        {-5, u"$#,##0.00", u"-$5.00"},
        {0, u"$#,##0.00", u"$0.00"},
        {-5, u"(0)", u"-(5)"},
        {-5, u"0 \"m\"", u"-5 m"},
    });
}

TEST(FormatSections, TheSecondSectionShowsNegativeNumbersWithoutTheirSign)
{
    expectFormats({
        {5, u"0;(0)", u"5"},
        {-5, u"0;(0)", u"(5)"},
        {0, u"0;(0)", u"0"},
        {-5, u"0.0;-0.00", u"-5.00"},
        {-1234, u"$#,##0;($#,##0)", u"($1,234)"},
        {-5, u"0;\"low\"", u"low"},
        {-0.001, u"0.0;(0.0)", u"(0.0)"},
    });
}

TEST(FormatSections, TheThirdSectionShowsZero)
{
    expectFormats({
        {0, u"0;(0);\"none\"", u"none"},
        {5, u"0;(0);\"none\"", u"5"},
        {-5, u"0;(0);\"none\"", u"(5)"},
        {0.0, u"0.0;-0.0;0", u"0"},
        {-0.0, u"0.0;-0.0;\\z", u"z"},
        {0.001, u"0.0;-0.0;\\z", u"0.0"},
        {false, u"0;0;\\n", u"n"},
    });
}

TEST(FormatSections, AnEmptySectionIsPrintedLikeThePositiveOne)
{
    expectFormats({
        {5, u"$#,##0;;\\Z\\e\\r\\o", u"$5"},
        {-5, u"$#,##0;;\\Z\\e\\r\\o", u"-$5"},
        {0, u"$#,##0;;\\Z\\e\\r\\o", u"Zero"},
        {0, u"0.0;(0.0);", u"0.0"},
        {-5, u"0.0;", u"-5.0"},
        {5, u"0.0;", u"5.0"},
        {5, u";0", u""},
        {5, u";;;", u""},
    });
}

TEST(FormatSections, TheFourthSectionShowsNullAndEmpty)
{
    expectFormats({
        {Variant::null(), u"0;0;0;\"no data\"", u"no data"},
        {Variant(), u"0;0;0;\"no data\"", u"no data"},
        {5, u"0;0;0;\"no data\"", u"5"},
    });
    EXPECT_EQ(formatError(Variant::null(), u"0.00"), 94);
    EXPECT_EQ(formatError(Variant::null(), u""), 94);
    EXPECT_EQ(formatError(Variant::null(), u"0;0;0;"), 94);
    EXPECT_EQ(formatError(Variant::null(), u"yyyy"), 94);
    EXPECT_EQ(formatError(Variant::null(), u"General Number"), 94);
}

TEST(FormatSections, EmptyIsAnEmptyTextUnderANumberFormat)
{
    expectFormats({{Variant(), u"0.00", u""}, {Variant(), u"Fixed", u""}, {Variant(), u"yyyy", u""}});
}

TEST(FormatSections, WordsInALaterSectionNeedNoQuotes)
{
    expectFormats({
        {-5, u"0.0;minus", u"minus"},
        {0, u"0.0;-0.0;dry", u"dry"},
        {0, u"0.0;-0.0;<dry>", u"<dry>"},
        {Variant::null(), u"#,##0.00;;;Nil", u"Nil"},
        {-5, u"0.0;0.0 below", u"5.0 below"},
    });
}

TEST(FormatSections, AMoreThanFourthSectionIsIgnored)
{
    expectFormats({{5, u"0;0;0;0;9", u"5"}, {0, u"0;0;\\z;0;9;8", u"z"}});
}

} // namespace zan::values
