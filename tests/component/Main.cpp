#include "component/ZanBenchComponent.h"

#include <gtest/gtest.h>

#include <QLoggingCategory>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (zanStart(ZAN_OFFSCREEN))
        return 1;
    const int result = RUN_ALL_TESTS();
    return zanEnd() ? 1 : result;
}
