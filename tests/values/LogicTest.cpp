#include "values/Arithmetic.h"

#include <gtest/gtest.h>

namespace zan::values {

TEST(Logic, FalseDecidesAndBesideNull)
{
    const Variant result = logicalAnd(false, Variant::null());
    ASSERT_EQ(result.kind(), Kind::Boolean);
    EXPECT_FALSE(result.boolean());
}

} // namespace zan::values
