#include "FormatRows.h"

namespace zan::values {

TEST(FormatText, AnAtSignIsAPlaceThatShowsABlankWhenEmpty)
{
    expectFormats({
        {u"abc", u"@@@", u"abc"},
        {u"abc", u"@@@@@", u"  abc"},
        {u"", u"@@@", u"   "},
        {u"abc", u"(@@@)", u"(abc)"},
        {u"5551234", u"@@@-@@@@", u"555-1234"},
        {u"8888888", u"(@@@)&&&-&&&&", u"(   )888-8888"},
    });
}

TEST(FormatText, AnAmpersandIsAPlaceThatShowsNothingWhenEmpty)
{
    expectFormats({
        {u"abc", u"&&&&&", u"abc"},
        {u"", u"&&", u""},
        {u"8888888", u"(&&&)&&&-&&&&", u"()888-8888"},
        {u"ab", u"&-&-&", u"-a-b"},
    });
}

TEST(FormatText, AnExclamationMarkFillsFromTheLeft)
{
    expectFormats({
        {u"abc", u"!@@@@@", u"abc  "},
        {u"abc", u"@@@@@!", u"abc  "},
        {u"ab", u"!&-&-&", u"a-b-"},
        {u"abc", u"!(@@@) @@@@", u"(abc)     "},
    });
}

TEST(FormatText, TextLongerThanItsPlacesSpillsAtTheLastPlace)
{
    expectFormats({
        {u"abcdef", u"@@", u"abcdef"},
        {u"abcd", u"@-@", u"a-bcd"},
        {u"abcd", u"@-@.", u"a-bcd."},
        {u"abcd", u"!@-@", u"a-bcd"},
        {u"abcd", u"[&]", u"[abcd]"},
    });
}

TEST(FormatText, LessAndGreaterForceTheCase)
{
    expectFormats({
        {u"Hello", u"<", u"hello"},
        {u"Hello", u">", u"HELLO"},
        {u"Hello", u">@@@@@@@", u"  HELLO"},
        {u"HeLLo", u"<&&&", u"hello"},
        {u"Hello", u"@@@@@", u"Hello"},
        {u"hello", u"&&&&&", u"hello"},
    });
}

TEST(FormatText, OfSeveralMarksEachForcesTheCaseFromItsPlaceOn)
{
    expectFormats({
        {u"aB", u"<&>&", u"aB"},
        {u"Ab", u"<&>&", u"aB"},
        {u"Ab", u">&<&", u"Ab"},
        {u"abCD", u"<&>&", u"aBCD"},
        {u"aBcD", u"&>&<&&", u"ABcd"},
        {u"Hello", u"@@@@@>", u"HELLO"},
        {u"Hello", u"@@>@@@>", u"HELLO"},
    });
}

TEST(FormatText, ABackslashTakesTheNextCharacterAsItStands)
{
    expectFormats({
        {u"aB", u"@\\x", u"aBx"},
        {u"", u"@\\x", u" x"},
        {u"aB", u">@@\\x", u"ABx"},
        {u"aB", u"@\\@@", u"a@B"},
        {u"aB", u"&\\>&", u"a>B"},
        {u"aB", u"@@\\\\", u"aB\\"},
        {5, u"@\\x", u"5x"},
    });
}

TEST(FormatText, ThePublishedExamplesHold)
{
    expectFormats({{u"HELLO", u"<", u"hello"}, {u"This is it", u">", u"THIS IS IT"}});
}

TEST(FormatText, TheSecondSectionShowsEmptyTextAndNull)
{
    expectFormats({
        {u"6666666", u"(@@@)&&&-&&&&;No Phone", u"(   )666-6666"},
        {u"", u"(@@@)&&&-&&&&;No Phone", u"No Phone"},
        {Variant::null(), u"@;\"none\"", u"none"},
        {Variant(), u"@;\"none\"", u"none"},
        {u"x", u"@;\"none\"", u"x"},
        {u"", u"@;", u""},
    });
    EXPECT_EQ(formatError(Variant::null(), u"@"), 94);
}

TEST(FormatText, OtherValuesAreFormattedAsTheirText)
{
    expectFormats({
        {5, u"@@@@", u"   5"},
        {-1.5, u"&&", u"-1.5"},
        {true, u"@@@@@@", u"  True"},
        {true, u">", u"TRUE"},
        {Date{36526}, u"@@", u"1/1/2000"},
        {Variant(), u"@@", u"  "},
    });
}

TEST(FormatText, LettersAndDigitsAreLiteralsInATextFormat)
{
    expectFormats({
        {u"ab", u"@ 0 d @", u"a 0 d b"},
        {u"ab", u"@\\@@", u"a@b"},
        {u"ab", u"@\" & \"@", u"a & b"},
    });
}

} // namespace zan::values
