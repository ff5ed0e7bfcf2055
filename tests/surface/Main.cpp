#include "surface/SurfaceFixture.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_ACCESSIBILITY", "1");
    QApplication application(argc, argv);
    zan::surface::tests::fixAppearance();
    return RUN_ALL_TESTS();
}
