#include "values/Arithmetic.h"
#include "values/Array.h"

#include "Describe.h"

#include <gtest/gtest.h>

namespace zan::values {

namespace {

using LogicOperator = Variant (*)(const Variant&, const Variant&);

std::string made(LogicOperator operation, const Variant& left, const Variant& right)
{
    return outcome([&] { return operation(left, right); });
}

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

TEST(Logic, TheWordForABooleanIsOne)
{
    EXPECT_EQ(describe(logicalNot(u"#FALSE#")), "Boolean True");
    EXPECT_EQ(describe(logicalNot(u"True")), "Boolean False");
    EXPECT_EQ(made(logicalAnd, u"#TRUE#", true), "Boolean True");
    EXPECT_EQ(made(logicalAnd, u"true", whole(3)), "Integer 3");
    EXPECT_EQ(made(logicalOr, u"#NULL#", true), "error 13");
}

TEST(Logic, EmptyIsALongZero)
{
    EXPECT_EQ(describe(logicalNot(Variant())), "Long -1");
    EXPECT_EQ(made(logicalOr, Variant(), whole(5)), "Long 5");
    EXPECT_EQ(made(logicalAnd, Variant(), Variant()), "Long 0");
}

TEST(Logic, AndIsZeroBesideNullWhereZeroDecides)
{
    EXPECT_EQ(made(logicalAnd, false, Variant::null()), "Boolean False");
    EXPECT_EQ(made(logicalAnd, Variant::null(), false), "Boolean False");
    EXPECT_EQ(made(logicalAnd, whole(0), Variant::null()), "Integer 0");
    EXPECT_EQ(made(logicalAnd, true, Variant::null()), "Null");
    EXPECT_EQ(made(logicalAnd, whole(5), Variant::null()), "Null");
    EXPECT_EQ(made(logicalAnd, Variant::null(), Variant::null()), "Null");
}

TEST(Logic, OrIsTheOtherSideBesideNullUnlessThatIsZero)
{
    EXPECT_EQ(made(logicalOr, true, Variant::null()), "Boolean True");
    EXPECT_EQ(made(logicalOr, Variant::null(), true), "Boolean True");
    EXPECT_EQ(made(logicalOr, false, Variant::null()), "Null");
    EXPECT_EQ(made(logicalOr, whole(5), Variant::null()), "Integer 5");
    EXPECT_EQ(made(logicalOr, Variant::null(), Variant::null()), "Null");
}

TEST(Logic, FalseImpliesAnythingAndAnythingImpliesTrue)
{
    EXPECT_EQ(made(logicalImp, false, Variant::null()), "Boolean True");
    EXPECT_EQ(made(logicalImp, Variant::null(), true), "Boolean True");
    EXPECT_EQ(made(logicalImp, true, Variant::null()), "Null");
    EXPECT_EQ(made(logicalImp, Variant::null(), false), "Null");
    EXPECT_EQ(made(logicalImp, Variant::null(), Variant::null()), "Null");
    EXPECT_EQ(made(logicalImp, whole(0), Variant::null()), "Integer -1");
}

TEST(Logic, XorEqvAndNotOfNullAreNull)
{
    EXPECT_EQ(made(logicalXor, true, Variant::null()), "Null");
    EXPECT_EQ(made(logicalEqv, Variant::null(), false), "Null");
    EXPECT_TRUE(logicalNot(Variant::null()).isNull());
}

TEST(Logic, ArraysAndNothingFail)
{
    const Variant array(Array::fromValues({1}));
    for (const LogicOperator operation : {logicalAnd, logicalOr, logicalXor, logicalEqv, logicalImp}) {
        EXPECT_EQ(made(operation, array, true), "error 13");
        EXPECT_EQ(made(operation, Variant::null(), array), "error 13");
        EXPECT_EQ(made(operation, Variant::nothing(), true), "error 91");
    }
    EXPECT_EQ(outcome([&] { return logicalNot(array); }), "error 13");
}

} // namespace zan::values
