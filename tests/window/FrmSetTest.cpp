#include "window/frmSet.h"

#include "values/Twips.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace zan;
using window::frmSet;

namespace {

void press(QWidget& target, Qt::Key key)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QApplication::sendEvent(&target, &event);
}

} // namespace

TEST(SetForm, ClientAreaIsTheSameWhateverTheLengthOfTheLabel)
{
    const QSize client(values::twipsToPixels(3720), values::twipsToPixels(945));
    frmSet form(nullptr);
    for (const int length : {0, 5, 50, 5000}) {
        form.setChannelLabel(QString(length, QLatin1Char('w')));
        form.show();
        form.adjustSize();
        QApplication::processEvents();
        EXPECT_EQ(form.size(), client) << length;
        EXPECT_TRUE(form.rect().contains(form.findChild<QPushButton*>(QStringLiteral("cmdOK"))->geometry()));
        EXPECT_TRUE(form.rect().contains(form.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->geometry()));
        form.hide();
    }
}

TEST(SetForm, EnterConfirmsAndEscCancelsWhereverTheKeyboardIs)
{
    for (const char* name : {"txtValue", "cmdOK", "cmdCancel", ""}) {
        for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
            frmSet form(nullptr);
            form.show();
            QWidget* field = *name ? form.findChild<QWidget*>(QLatin1String(name)) : &form;
            ASSERT_TRUE(field) << name;
            field->setFocus();
            press(*field, key);
            EXPECT_FALSE(form.isVisible()) << name << ' ' << key;
            EXPECT_EQ(form.cancelled(), key == Qt::Key_Escape) << name << ' ' << key;
        }
    }
}

TEST(SetForm, CloseBoxCancelsAndKeepsTheFields)
{
    frmSet form(nullptr);
    form.setValueText(QStringLiteral("7"));
    form.show();
    form.close();
    EXPECT_TRUE(form.cancelled());
    EXPECT_EQ(form.valueText(), u"7");
}
