#include "surface/forms/BoxText.h"
#include "surface/forms/HostForms.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
#include <QScreen>
#include <QTimer>

namespace zan::surface::tests {

TEST(DesktopFormsTest, AnInputBoxAsksInPlainTextWhateverAScriptWrites)
{
    const QString markup = QStringLiteral("<b>Gate</b> <img src='file:///etc/passwd'>");
    DesktopForms forms;
    int asked = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* box = qobject_cast<QInputDialog*>(window);
            if (!box || !box->isVisible())
                continue;
            for (const QLabel* label : box->findChildren<QLabel*>()) {
                EXPECT_EQ(label->text(), markup);
                EXPECT_EQ(label->textFormat(), Qt::PlainText);
                ++asked;
            }
            box->accept();
        }
    });
    watch.start(0);
    EXPECT_EQ(forms.inputBox(nullptr, markup, QStringLiteral("Title"), QStringLiteral("75")), QStringLiteral("75"));
    EXPECT_EQ(asked, 1);
}

class HugeBoxText : public testing::TestWithParam<QString>
{};

TEST_P(HugeBoxText, IsCutToWhatTheScreenHoldsAndSaysSo)
{
    constexpr int Megabytes = 5 * 1024 * 1024;
    QString text;
    while (text.size() < Megabytes)
        text += GetParam();
    const QSize screen = QGuiApplication::primaryScreen()->availableSize();
    DesktopForms forms;
    int seen = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* box = qobject_cast<QDialog*>(window);
            if (!box || !box->isVisible())
                continue;
            ++seen;
            EXPECT_LE(box->width(), screen.width());
            EXPECT_LE(box->height(), screen.height());
            bool isCut = false;
            for (const QLabel* label : box->findChildren<QLabel*>())
                isCut = isCut || label->text().endsWith(
                                     QStringLiteral("[The text goes on; it has %1 characters.]").arg(text.size()));
            EXPECT_TRUE(isCut);
            EXPECT_LT(box->windowTitle().size(), 250);
            box->accept();
        }
    });
    watch.start(0);
    forms.messageBox(nullptr, text, HostForms::OkOnly, text);
    forms.inputBox(nullptr, text, text, text);
    EXPECT_EQ(seen, 2);
}

INSTANTIATE_TEST_SUITE_P(Texts, HugeBoxText,
                         testing::Values(QStringLiteral("x"), QStringLiteral("line\n"),
                                         QStringLiteral("some words "), QStringLiteral("\n"),
                                         QString::fromUtf8("\xf0\x9f\x98\x80")));

TEST(DesktopFormsTest, ATextThatFitsIsShownAsItIs)
{
    const QString text = QStringLiteral("The gate did not open.\nLook at the motor.");
    EXPECT_EQ(textForBox(text, nullptr), text);
}

} // namespace zan::surface::tests
