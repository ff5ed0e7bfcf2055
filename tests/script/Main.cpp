#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argumentCount, char** arguments)
{
    const QCoreApplication application(argumentCount, arguments);
    testing::InitGoogleTest(&argumentCount, arguments);
    return RUN_ALL_TESTS();
}
