#include "values/Arithmetic.h"
#include "values/Array.h"

#include "Describe.h"

#include <gtest/gtest.h>

namespace zan::values {

namespace {

using Operator = Variant (*)(const Variant&, const Variant&);

std::string made(Operator operation, const Variant& left, const Variant& right)
{
    return outcome([&] { return operation(left, right); });
}

Variant whole(int value)
{
    return std::int16_t(value);
}

const Variant empty{};
const Variant null = Variant::null();

} // namespace

TEST(Logic, TwoBooleansMakeABoolean)
{
    EXPECT_EQ(made(logicalAnd, true, false), "Boolean False");
    EXPECT_EQ(made(logicalAnd, true, true), "Boolean True");
    EXPECT_EQ(made(logicalOr, true, false), "Boolean True");
    EXPECT_EQ(made(logicalXor, true, true), "Boolean False");
    EXPECT_EQ(made(logicalEqv, false, false), "Boolean True");
    EXPECT_EQ(made(logicalImp, true, false), "Boolean False");
    EXPECT_EQ(describe(logicalNot(true)), "Boolean False");
}

TEST(Logic, NumbersAreCombinedBitByBit)
{
    EXPECT_EQ(made(logicalAnd, whole(12), whole(10)), "Integer 8");
    EXPECT_EQ(made(logicalOr, whole(12), whole(10)), "Integer 14");
    EXPECT_EQ(made(logicalXor, whole(12), whole(10)), "Integer 6");
    EXPECT_EQ(made(logicalEqv, whole(12), whole(10)), "Integer -7");
    EXPECT_EQ(made(logicalImp, whole(12), whole(10)), "Integer -5");
    EXPECT_EQ(describe(logicalNot(whole(5))), "Integer -6");
    EXPECT_EQ(describe(logicalNot(70000)), "Long -70001");
    EXPECT_EQ(describe(logicalNot(std::uint8_t(1))), "Byte 254");
    EXPECT_EQ(made(logicalAnd, std::uint8_t(6), std::uint8_t(3)), "Byte 2");
    EXPECT_EQ(made(logicalAnd, std::uint8_t(6), true), "Integer 6");
    EXPECT_EQ(made(logicalAnd, true, whole(5)), "Integer 5");
    EXPECT_EQ(made(logicalOr, whole(1), 70000), "Long 70001");
}

TEST(Logic, RealNumbersAndTextAreRoundedToALong)
{
    EXPECT_EQ(made(logicalAnd, 6.5, 3.0), "Long 2");
    EXPECT_EQ(made(logicalAnd, u"5", u"3"), "Long 1");
    EXPECT_EQ(made(logicalAnd, u"abc", u"2"), "error 13");
    EXPECT_EQ(made(logicalOr, 1e10, whole(1)), "error 6");
    EXPECT_EQ(describe(logicalNot(0.0)), "Long -1");
}

TEST(Logic, EmptyIsALongZero)
{
    EXPECT_EQ(describe(logicalNot(empty)), "Long -1");
    EXPECT_EQ(made(logicalOr, empty, whole(5)), "Long 5");
    EXPECT_EQ(made(logicalAnd, empty, empty), "Long 0");
}

TEST(Logic, AndIsZeroBesideNullWhereZeroDecides)
{
    EXPECT_EQ(made(logicalAnd, false, null), "Boolean False");
    EXPECT_EQ(made(logicalAnd, null, false), "Boolean False");
    EXPECT_EQ(made(logicalAnd, whole(0), null), "Integer 0");
    EXPECT_EQ(made(logicalAnd, true, null), "Null");
    EXPECT_EQ(made(logicalAnd, whole(5), null), "Null");
    EXPECT_EQ(made(logicalAnd, null, null), "Null");
}

TEST(Logic, OrIsTheOtherSideBesideNullUnlessThatIsZero)
{
    EXPECT_EQ(made(logicalOr, true, null), "Boolean True");
    EXPECT_EQ(made(logicalOr, null, true), "Boolean True");
    EXPECT_EQ(made(logicalOr, false, null), "Null");
    EXPECT_EQ(made(logicalOr, whole(5), null), "Integer 5");
    EXPECT_EQ(made(logicalOr, null, null), "Null");
}

TEST(Logic, FalseImpliesAnythingAndAnythingImpliesTrue)
{
    EXPECT_EQ(made(logicalImp, false, null), "Boolean True");
    EXPECT_EQ(made(logicalImp, null, true), "Boolean True");
    EXPECT_EQ(made(logicalImp, true, null), "Null");
    EXPECT_EQ(made(logicalImp, null, false), "Null");
    EXPECT_EQ(made(logicalImp, null, null), "Null");
    EXPECT_EQ(made(logicalImp, whole(0), null), "Integer -1");
}

TEST(Logic, XorEqvAndNotOfNullAreNull)
{
    EXPECT_EQ(made(logicalXor, true, null), "Null");
    EXPECT_EQ(made(logicalEqv, null, false), "Null");
    EXPECT_TRUE(logicalNot(null).isNull());
}

TEST(Logic, ArraysAndNothingFail)
{
    const Variant array(Array::fromValues({1}));
    for (const Operator operation : {logicalAnd, logicalOr, logicalXor, logicalEqv, logicalImp}) {
        EXPECT_EQ(made(operation, array, true), "error 13");
        EXPECT_EQ(made(operation, null, array), "error 13");
        EXPECT_EQ(made(operation, Variant::nothing(), true), "error 91");
    }
    EXPECT_EQ(outcome([&] { return logicalNot(array); }), "error 13");
}

} // namespace zan::values
