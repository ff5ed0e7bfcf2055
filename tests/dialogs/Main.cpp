#include "zandata/ZanDataControls.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    zan::zandata::provideControls();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
