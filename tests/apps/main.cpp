#include "zandata/ZanDataControls.h"

#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    zan::zandata::provideControls();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
