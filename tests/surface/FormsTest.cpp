#include "surface/forms/HostForms.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QInputDialog>
#include <QLabel>
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

} // namespace zan::surface::tests
