#include "values/Arithmetic.h"
#include "values/Array.h"

#include "Describe.h"

#include <gtest/gtest.h>

#include <limits>

namespace zan::values {

namespace {

using Operator = Variant (*)(const Variant&, const Variant&);

struct OperatorRow
{
    Variant left;
    Variant right;
    const char* expected;
};

void expectResults(Operator operation, std::initializer_list<OperatorRow> rows)
{
    int number = 0;
    for (const OperatorRow& row : rows) {
        ++number;
        EXPECT_EQ(outcome([&] { return operation(row.left, row.right); }), row.expected) << "row " << number;
    }
}

Variant byte(int value)
{
    return std::uint8_t(value);
}

/// An object that counts as the number 5.
class Five : public AutomationObject
{
public:
    QString typeName() const override { return QStringLiteral("Five"); }
    Variant defaultValue() override { return 5; }
};

} // namespace

TEST(Arithmetic, WholeNumbersArePromotedWhenTheyOutgrowTheirKind)
{
    expectResults(add, {
                           {whole(1), whole(2), "Integer 3"},
                           {whole(32767), whole(1), "Long 32768"},
                           {whole(-32768), whole(-1), "Long -32769"},
                           {2147483647, whole(1), "Double 2147483648"},
                           {1, 2, "Long 3"},
                           {byte(200), byte(50), "Byte 250"},
                           {byte(200), byte(100), "Integer 300"},
                           {true, true, "Integer -2"},
                           {byte(1), true, "Integer 0"},
                           {whole(1), 2, "Long 3"},
                       });
    expectResults(subtract, {
                                {byte(1), byte(2), "Integer -1"},
                                {byte(2), byte(1), "Byte 1"},
                                {whole(-32768), whole(1), "Long -32769"},
                                {std::numeric_limits<std::int32_t>::min(), 1, "Double -2147483649"},
                                {false, true, "Integer 1"},
                            });
    expectResults(multiply, {
                                {whole(200), whole(200), "Long 40000"},
                                {whole(100), whole(100), "Integer 10000"},
                                {100000, 100000, "Double 10000000000"},
                                {byte(16), byte(16), "Integer 256"},
                                {byte(15), byte(17), "Byte 255"},
                                {true, whole(5), "Integer -5"},
                            });
}

TEST(Arithmetic, ADoubleSwallowsWholeNumbersAndASingleGivesWayToALong)
{
    expectResults(add, {
                           {1.5, whole(1), "Double 2.5"},
                           {whole(1), 1.5, "Double 2.5"},
                           {1.5f, whole(1), "Single 2.5"},
                           {1.5f, 1, "Double 2.5"},
                           {1.5f, 1.5f, "Single 3"},
                           {1.5f, 1.5, "Double 3"},
                           {true, 0.5, "Double -0.5"},
                       });
    expectResults(multiply, {{3e38f, 10.0f, "Double 3.00000000549776E+39"}, {2.0f, whole(3), "Single 6"}});
}

TEST(Arithmetic, ARealResultBeyondADoubleOverflows)
{
    expectResults(multiply,
                  {{1e308, whole(10), "error 6"}, {-1e308, 10.0, "error 6"}, {1e-308, 1e-308, "Double 0"}});
    expectResults(add, {{1.7e308, 1.7e308, "error 6"}});
    expectResults(subtract, {{-1.7e308, 1.7e308, "error 6"}});
}

TEST(Arithmetic, TwoTextsAreJoinedAndATextBesideANumberIsRead)
{
    expectResults(add, {
                           {u"3", u"4", "String 34"},
                           {u"3", whole(4), "Double 7"},
                           {whole(4), u"3", "Double 7"},
                           {u"a", Variant(), "String a"},
                           {Variant(), u"a", "String a"},
                           {u"abc", whole(1), "error 13"},
                           {u"", whole(1), "error 13"},
                           {u"&h10", whole(1), "Double 17"},
                       });
    expectResults(subtract, {{u"3", u"4", "Double -1"}, {u"a", u"b", "error 13"}});
    expectResults(multiply, {{u"3", u"4", "Double 12"}});
}

TEST(Arithmetic, EmptyIsAnIntegerZero)
{
    expectResults(
        add,
        {{Variant(), Variant(), "Integer 0"}, {Variant(), whole(5), "Integer 5"}, {1.5, Variant(), "Double 1.5"}});
    expectResults(subtract, {{Variant(), whole(5), "Integer -5"}});
    expectResults(multiply, {{Variant(), 5.5, "Double 0"}});
    expectResults(
        divide,
        {{Variant(), whole(5), "Double 0"}, {whole(5), Variant(), "error 11"}, {Variant(), Variant(), "error 6"}});
    expectResults(power, {{Variant(), Variant(), "Double 1"}});
}

TEST(Arithmetic, NullMakesEveryResultNull)
{
    for (const Operator operation : {add, subtract, multiply, divide, integerDivide, modulo, power}) {
        EXPECT_TRUE(operation(Variant::null(), whole(1)).isNull());
        EXPECT_TRUE(operation(whole(1), Variant::null()).isNull());
        EXPECT_TRUE(operation(Variant::null(), Variant::null()).isNull());
        EXPECT_TRUE(operation(u"abc", Variant::null()).isNull());
        EXPECT_TRUE(operation(Variant::null(), whole(0)).isNull());
    }
    EXPECT_TRUE(negate(Variant::null()).isNull());
    EXPECT_TRUE(plus(Variant::null()).isNull());
}

TEST(Arithmetic, CurrencyStaysExact)
{
    expectResults(add, {
                           {Currency{1}, Currency{2}, "Currency 0.0003"},
                           {Currency{10000}, whole(1), "Currency 2"},
                           {Currency{10000}, 0.5, "Currency 1.5"},
                           {Currency{std::numeric_limits<std::int64_t>::max()}, Currency{1}, "error 6"},
                           {Currency{9007199254740993}, Currency{0}, "Currency 900719925474.0993"},
                       });
    expectResults(multiply, {
                                {Currency{15000}, whole(2), "Currency 3"},
                                {Currency{15000}, 2.0, "Double 3"},
                                {Currency{15000}, Currency{15000}, "Currency 2.25"},
                                {Currency{400000000000}, Currency{400000000000}, "error 6"},
                                {Currency{9007199254740993}, whole(1), "Currency 900719925474.0993"},
                                {Currency{5}, Currency{1000}, "Currency 0"},
                                {Currency{15}, Currency{1000}, "Currency 0.0002"},
                            });
    expectResults(divide, {{Currency{10000}, whole(4), "Double 0.25"}});
}

TEST(Arithmetic, ADateAndANumberMakeADateAndTwoDatesATimeBetween)
{
    expectResults(add, {
                           {Date{36526}, whole(1), "Date 1/2/2000"},
                           {whole(1), Date{36526}, "Date 1/2/2000"},
                           {Date{36526}, 0.5, "Date 1/1/2000 12:00:00 PM"},
                           {Date{36526}, u"1", "Date 1/2/2000"},
                           {Date{2958465}, whole(1), "Double 2958466"},
                       });
    expectResults(subtract, {
                                {Date{36527}, Date{36526}, "Double 1"},
                                {Date{36527}, whole(1), "Date 1/1/2000"},
                                {Date{-657434}, 2, "Double -657436"},
                            });
    expectResults(multiply, {{Date{2}, whole(3), "Double 6"}});
    expectResults(divide, {{Date{3}, whole(2), "Double 1.5"}});
    EXPECT_EQ(describe(negate(Date{-1})), "Date 12/31/1899");
}

TEST(Arithmetic, DivisionIsRealAndFailsOnZero)
{
    expectResults(divide, {
                              {whole(1), whole(2), "Double 0.5"},
                              {whole(6), whole(2), "Double 3"},
                              {1.0f, whole(4), "Single 0.25"},
                              {1.0f, 4, "Double 0.25"},
                              {byte(6), byte(2), "Double 3"},
                              {whole(1), whole(0), "error 11"},
                              {-1.5, 0.0, "error 11"},
                              {whole(0), whole(0), "error 6"},
                              {u"6", u"2", "Double 3"},
                              {1e308, 1e-10, "error 6"},
                          });
}

TEST(Arithmetic, IntegerDivisionRoundsBothSidesHalfToEvenFirst)
{
    expectResults(integerDivide, {
                                     {4.6, 1.49, "Long 5"},
                                     {whole(-7), whole(2), "Integer -3"},
                                     {whole(7), whole(2), "Integer 3"},
                                     {whole(5), whole(2), "Integer 2"},
                                     {2.5, 1.0, "Long 2"},
                                     {3.5, 1.0, "Long 4"},
                                     {byte(7), byte(2), "Byte 3"},
                                     {7, whole(2), "Long 3"},
                                     {true, true, "Integer 1"},
                                     {u"7", u"2", "Long 3"},
                                     {whole(5), 0.4, "error 11"},
                                     {2147483648.0, whole(1), "error 6"},
                                     {std::numeric_limits<std::int32_t>::min(), whole(-1), "error 6"},
                                     {whole(-32768), whole(-1), "Long 32768"},
                                     {Variant(), whole(1), "Integer 0"},
                                     {Currency{75000}, whole(2), "Long 4"},
                                 });
}

TEST(Arithmetic, ModHasTheSignOfItsLeftSide)
{
    expectResults(modulo, {
                              {11.6, 5.5, "Long 0"},
                              {whole(-7), whole(3), "Integer -1"},
                              {whole(7), whole(-3), "Integer 1"},
                              {whole(10), whole(3), "Integer 1"},
                              {byte(10), byte(3), "Byte 1"},
                              {10, 3, "Long 1"},
                              {3000000000.0, whole(7), "error 6"},
                              {whole(5), whole(0), "error 11"},
                              {std::numeric_limits<std::int32_t>::min(), whole(-1), "Long 0"},
                              {u"12", whole(5), "Long 2"},
                          });
}

TEST(Arithmetic, PowersAreDoubles)
{
    expectResults(power, {
                             {whole(2), whole(10), "Double 1024"},
                             {whole(2), whole(-1), "Double 0.5"},
                             {whole(-2), whole(3), "Double -8"},
                             {whole(-8), 1.0 / 3, "error 5"},
                             {whole(0), whole(-1), "error 5"},
                             {whole(0), whole(0), "Double 1"},
                             {whole(10), whole(400), "error 6"},
                             {whole(4), 0.5, "Double 2"},
                             {u"2", u"3", "Double 8"},
                             {whole(10), whole(-400), "Double 0"},
                         });
}

TEST(Arithmetic, NegationPromotesLikeSubtraction)
{
    EXPECT_EQ(describe(negate(whole(5))), "Integer -5");
    EXPECT_EQ(describe(negate(whole(-32768))), "Long 32768");
    EXPECT_EQ(describe(negate(std::numeric_limits<std::int32_t>::min())), "Double 2147483648");
    EXPECT_EQ(describe(negate(byte(5))), "Integer -5");
    EXPECT_EQ(describe(negate(true)), "Integer 1");
    EXPECT_EQ(describe(negate(Variant())), "Integer 0");
    EXPECT_EQ(describe(negate(u"5")), "Double -5");
    EXPECT_EQ(describe(negate(1.5f)), "Single -1.5");
    EXPECT_EQ(describe(negate(Currency{15000})), "Currency -1.5");
    EXPECT_EQ(outcome([] { return negate(Currency{std::numeric_limits<std::int64_t>::min()}); }), "error 6");
    EXPECT_EQ(outcome([] { return negate(u"abc"); }), "error 13");
}

TEST(Arithmetic, UnaryPlusLeavesTextAndEmptyAsTheyAre)
{
    EXPECT_EQ(describe(plus(u"abc")), "String abc");
    EXPECT_EQ(describe(plus(Variant())), "Empty");
    EXPECT_EQ(describe(plus(true)), "Boolean True");
    EXPECT_EQ(describe(plus(whole(5))), "Integer 5");
    EXPECT_TRUE(plus(Variant::nothing()).isObject()) << "an object is not asked for its value";
}

TEST(Arithmetic, ConcatenationTakesNullForNoTextUnlessBothAreNull)
{
    expectResults(concatenate, {
                                   {u"ab ", Variant::null(), "String ab "},
                                   {Variant::null(), u"x", "String x"},
                                   {Variant::null(), Variant::null(), "Null"},
                                   {whole(1), whole(2), "String 12"},
                                   {u"x", Variant(), "String x"},
                                   {Variant(), Variant(), "String "},
                                   {true, 0.1, "String True0.1"},
                                   {Date{36526}, u"!", "String 1/1/2000!"},
                               });
}

TEST(Arithmetic, ArraysAndObjectsWithoutValueFail)
{
    const Variant array(Array::fromValues({1}));
    for (const Operator operation : {add, subtract, multiply, divide, integerDivide, modulo, power, concatenate}) {
        EXPECT_EQ(outcome([&] { return operation(array, whole(1)); }), "error 13");
        EXPECT_EQ(outcome([&] { return operation(whole(1), array); }), "error 13");
        EXPECT_EQ(outcome([&] { return operation(array, Variant::null()); }), "error 13");
        EXPECT_EQ(outcome([&] { return operation(Variant::nothing(), whole(1)); }), "error 91");
    }
    EXPECT_EQ(outcome([&] { return negate(array); }), "error 13");
    EXPECT_EQ(outcome([&] { return plus(array); }), "error 13");
    EXPECT_EQ(outcome([] { return add(ErrorValue{5}, std::int16_t(1)); }), "error 13");
}

TEST(Arithmetic, AnObjectCountsAsItsDefaultValue)
{
    const Variant five = make<Five>();
    EXPECT_EQ(describe(add(five, five)), "Long 10");
    EXPECT_EQ(describe(multiply(five, 2.0)), "Double 10");
    EXPECT_EQ(describe(concatenate(five, u"!")), "String 5!");
    EXPECT_EQ(describe(negate(five)), "Long -5");
}

TEST(Arithmetic, AdditionAndMultiplicationCommute)
{
    const std::initializer_list<Variant> values{
        whole(5), 70000,           2.5, 2.5f,          byte(200), true,       Variant(),
        u"3",     Variant::null(), 0.0, Currency{-15}, -1e300,    Date{36526}};
    for (const Variant& a : values) {
        for (const Variant& b : values) {
            if (!(a.isText() && b.isText())) {
                EXPECT_EQ(outcome([&] { return add(a, b); }), outcome([&] { return add(b, a); }));
            }
            EXPECT_EQ(outcome([&] { return multiply(a, b); }), outcome([&] { return multiply(b, a); }));
        }
    }
}

} // namespace zan::values
