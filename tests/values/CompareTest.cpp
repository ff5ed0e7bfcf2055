#include "values/Compare.h"
#include "values/Array.h"
#include "values/RuntimeError.h"

#include "Describe.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zan::values {

namespace {

constexpr auto PlainValue = Operand::Value;
constexpr auto TextLiteral = Operand::TextLiteral;
constexpr auto NumberLiteral = Operand::NumberLiteral;

/// "<", "=", ">", "unordered", "Null" or "error N".
std::string ordered(const Variant& a, const Variant& b, Operand left = PlainValue, Operand right = PlainValue)
{
    try {
        switch (compare(a, b, left, right)) {
        case Ordering::Less:
            return "<";
        case Ordering::Equal:
            return "=";
        case Ordering::Greater:
            return ">";
        case Ordering::Unordered:
            return "unordered";
        case Ordering::Null:
            return "Null";
        }
        return "?";
    } catch (const RuntimeError& error) {
        return "error " + std::to_string(error.number());
    }
}

const double notANumber = std::numeric_limits<double>::quiet_NaN();

} // namespace

TEST(Compare, NumbersOfAnyKindsCompareAsNumbers)
{
    EXPECT_EQ(ordered(whole(5), 5.0), "=");
    EXPECT_EQ(ordered(whole(5), 6), "<");
    EXPECT_EQ(ordered(2147483647, 2147483647.5), "<");
    EXPECT_EQ(ordered(std::uint8_t(255), whole(-1)), ">");
    EXPECT_EQ(ordered(true, whole(-1)), "=");
    EXPECT_EQ(ordered(true, false), "<");
    EXPECT_EQ(ordered(Date{2}, whole(2)), "=");
    EXPECT_EQ(ordered(Date{36526}, Date{36526.5}), "<");
    EXPECT_EQ(ordered(-0.0, 0.0), "=");
}

TEST(Compare, BesideASingleADoubleHasThePrecisionOfASingle)
{
    EXPECT_EQ(ordered(0.1f, 0.1), "=");
    EXPECT_EQ(ordered(0.1, 0.1f), "=");
    EXPECT_EQ(ordered(0.1f, 0.2), "<");
    EXPECT_EQ(ordered(0.1f, 1e300), "<");
    EXPECT_EQ(ordered(16777216.0f, 16777217), "<");
}

TEST(Compare, CurrencyComparesExactlyAndFloatsBesideItToFourDecimals)
{
    EXPECT_EQ(ordered(Currency{9007199254740993}, Currency{9007199254740992}), ">");
    EXPECT_EQ(ordered(Currency{10000}, 1.00001), "=");
    EXPECT_EQ(ordered(Currency{10000}, 1.0001), "<");
    EXPECT_EQ(ordered(Currency{50000}, whole(5)), "=");
    EXPECT_EQ(ordered(Currency{50000}, 1e300), "<");
}

TEST(Compare, TextComparesByCode)
{
    EXPECT_EQ(ordered(u"A", u"a"), "<");
    EXPECT_EQ(ordered(u"abc", u"abd"), "<");
    EXPECT_EQ(ordered(u"abc", u"abc"), "=");
    EXPECT_EQ(ordered(u"", u"a"), "<");
    EXPECT_EQ(ordered(u"10", u"9"), "<");
    EXPECT_EQ(ordered(u"Z", u"a"), "<");
}

TEST(Compare, EmptyIsZeroOrNoTextAfterTheOtherSide)
{
    EXPECT_EQ(ordered(Variant(), Variant()), "=");
    EXPECT_EQ(ordered(Variant(), whole(0)), "=");
    EXPECT_EQ(ordered(Variant(), u""), "=");
    EXPECT_EQ(ordered(Variant(), u"a"), "<");
    EXPECT_EQ(ordered(Variant(), whole(-1)), ">");
    EXPECT_EQ(ordered(u"0", Variant()), ">");
    EXPECT_EQ(ordered(Variant(), false), "=");
    EXPECT_EQ(ordered(Variant(), u"", PlainValue, TextLiteral), "=");
}

TEST(Compare, TextIsGreaterThanAnyNumberWhenNeitherIsALiteral)
{
    EXPECT_EQ(ordered(u"5", whole(5)), ">");
    EXPECT_EQ(ordered(whole(5), u"5"), "<");
    EXPECT_EQ(ordered(u"", 1e300), ">");
    EXPECT_EQ(ordered(u"a", true), ">");
}

TEST(Compare, ANumberLiteralMakesTextANumber)
{
    EXPECT_EQ(ordered(u"1e2", whole(100), PlainValue, NumberLiteral), "=");
    EXPECT_EQ(ordered(u"&hff", whole(255), TextLiteral, NumberLiteral), "=");
    EXPECT_EQ(ordered(whole(100), u"1e2", NumberLiteral, PlainValue), "=");
    EXPECT_EQ(ordered(whole(5), u"10", NumberLiteral, PlainValue), "<");
    EXPECT_EQ(ordered(u"abc", whole(5), PlainValue, NumberLiteral), "error 13");
    EXPECT_EQ(ordered(u"", whole(5), TextLiteral, NumberLiteral), "error 13");
}

TEST(Compare, ATextLiteralMakesANumberText)
{
    EXPECT_EQ(ordered(u"010", whole(10), TextLiteral, PlainValue), "<");
    EXPECT_EQ(ordered(u"10", whole(10), TextLiteral, PlainValue), "=");
    EXPECT_EQ(ordered(whole(10), u"10", PlainValue, TextLiteral), "=");
    EXPECT_EQ(ordered(whole(9), u"10", PlainValue, TextLiteral), ">");
    EXPECT_EQ(ordered(u"abc", whole(5), TextLiteral, PlainValue), ">");
}

TEST(Compare, TextBesideADateIsReadAsOneAndMustBeOne)
{
    EXPECT_EQ(ordered(u"1/1/2000", Date{36526}), "=");
    EXPECT_EQ(ordered(Date{36526}, u"1/2/2000"), "<");
    EXPECT_EQ(ordered(u"36527", Date{36526}), ">");
    EXPECT_EQ(ordered(u"1/1/2000", Date{36526}, TextLiteral, PlainValue), "=");
    EXPECT_EQ(ordered(u"abc", Date{36526}), "error 13");
    EXPECT_EQ(ordered(Date{36526}, u"", PlainValue, TextLiteral), "error 13");
}

TEST(Compare, ABooleanBesideATextLiteralIsItsEnglishWord)
{
    EXPECT_EQ(ordered(u"True", true, TextLiteral, PlainValue), "=");
    EXPECT_NE(ordered(u"true", true, TextLiteral, PlainValue), "=");
    EXPECT_NE(ordered(u"-1", true, TextLiteral, PlainValue), "=");
}

TEST(Compare, NullMakesTheOutcomeNull)
{
    EXPECT_EQ(ordered(Variant::null(), whole(1)), "Null");
    EXPECT_EQ(ordered(u"a", Variant::null()), "Null");
    EXPECT_EQ(ordered(Variant::null(), Variant::null()), "Null");
    EXPECT_EQ(ordered(Variant::null(), Variant()), "Null");
}

TEST(Compare, AnArrayMismatchesEvenAgainstNull)
{
    const Variant array(Array::fromValues({1}));
    EXPECT_EQ(ordered(array, whole(1)), "error 13");
    EXPECT_EQ(ordered(Variant::null(), array), "error 13");
    EXPECT_EQ(ordered(array, array), "error 13");
    EXPECT_EQ(ordered(u"a", array), "error 13");
}

TEST(Compare, AnObjectWithoutValueFails)
{
    EXPECT_EQ(ordered(Variant::nothing(), whole(1)), "error 91");
    EXPECT_EQ(ordered(ErrorValue{5}, whole(5)), "error 13");
    EXPECT_EQ(ordered(u"a", ErrorValue{5}), "error 13");
}

TEST(Compare, NotANumberIsUnordered)
{
    EXPECT_EQ(ordered(notANumber, notANumber), "unordered");
    EXPECT_EQ(ordered(notANumber, whole(1)), "unordered");
    EXPECT_EQ(ordered(1.0f, notANumber), "unordered");
}

TEST(Compare, TurnsRoundWhenItsSidesChange)
{
    const std::initializer_list<Variant> values{
        whole(-3), 70000,           2.5,        0.1f,        std::uint8_t(9), true, false, Variant(), u"", u"12",
        u"abc",    Currency{25000}, notANumber, Date{36526}, 1e300,           u"A"};
    for (const Variant& a : values) {
        for (const Variant& b : values) {
            std::string turned = ordered(b, a);
            if (turned == "<" || turned == ">")
                turned = turned == "<" ? ">" : "<";
            EXPECT_EQ(ordered(a, b), turned);
        }
        EXPECT_EQ(ordered(a, a), a.is(Kind::Double) && std::isnan(a.real()) ? "unordered" : "=");
    }
}

TEST(CompareWithNumber, EmptyCountsAsZeroAndTextIsReadAsANumber)
{
    EXPECT_EQ(compareWithNumber(Variant(), 0), Ordering::Equal);
    EXPECT_EQ(compareWithNumber(u"12.5", 12.5), Ordering::Equal);
    EXPECT_EQ(compareWithNumber(u" 3 ", 5), Ordering::Less);
    EXPECT_EQ(compareWithNumber(true, -1), Ordering::Equal);
    EXPECT_EQ(compareWithNumber(whole(7), 5), Ordering::Greater);
    EXPECT_EQ(compareWithNumber(notANumber, 5), Ordering::Unordered);
    EXPECT_EQ(compareWithNumber(5, notANumber), Ordering::Unordered);
}

TEST(CompareWithNumber, EqualityIsExact)
{
    EXPECT_EQ(compareWithNumber(0.1f, 0.1), Ordering::Greater);
    EXPECT_EQ(compareWithNumber(0.1 + 0.2, 0.3), Ordering::Greater);
}

TEST(CompareWithNumber, TextThatIsNoNumberAndNullFail)
{
    const auto error = [](const Variant& value) {
        try {
            static_cast<void>(compareWithNumber(value, 1));
            return 0;
        } catch (const RuntimeError& raised) {
            return raised.number();
        }
    };
    EXPECT_EQ(error(u"abc"), 13);
    EXPECT_EQ(error(u""), 13);
    EXPECT_EQ(error(Variant::null()), 94);
    EXPECT_EQ(error(Variant::nothing()), 91);
}

} // namespace zan::values
