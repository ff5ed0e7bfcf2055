#include <QApplication>
#include <QFont>
#include <QStyleFactory>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    // The look is the tests' own, whatever the machine's settings are.
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    QApplication::setFont(font);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
