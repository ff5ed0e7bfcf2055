#include "support/ErrorOf.h"
#include "support/Properties.h"
#include "surface/SurfaceFixture.h"
#include "surface/host/WidgetControl.h"
#include "surface/intrinsic/CheckBox.h"
#include "surface/intrinsic/CommandButton.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/OptionButton.h"
#include "surface/intrinsic/PictureBox.h"
#include "surface/intrinsic/TextBox.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

namespace zan::surface::tests {

using test::flagOf;
using test::numberOf;
using test::put;

using test::errorOf;

class Widgets : public SurfaceTest
{
protected:
    void open()
    {
        surface->show();
        surface->activateWindow();
        settle();
    }
    template <class Widget>
    static Widget* widgetOf(const Ref<LiveControl>& control)
    {
        return qobject_cast<Widget*>(static_cast<WidgetControl&>(*control).widget());
    }
};

TEST_F(Widgets, NoWidgetExistsBeforeItsControlIsShown)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 20});
    box->setVisible(false);
    open();
    EXPECT_EQ(box->widget(), nullptr);
    EXPECT_TRUE(surface->findChildren<QLineEdit*>().isEmpty());
    box->setVisible(true);
    settle();
    ASSERT_NE(box->widget(), nullptr);
    EXPECT_TRUE(box->widget()->isVisible());
    EXPECT_EQ(box->widget()->geometry(), QRect(10, 10, 100, 20));
    box->setVisible(false);
    settle();
    EXPECT_FALSE(box->widget()->isVisible());
}

TEST_F(Widgets, ATextBoxShowsItsPropertiesAndReportsEdits)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    box->setText(QStringLiteral("12.5"));
    open();
    auto* line = widgetOf<QLineEdit>(box);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->text(), u"12.5");
    takeLog();
    box->setFocus();
    QTest::keyClick(line, Qt::Key_End);
    takeLog();
    QTest::keyClicks(line, QStringLiteral("7"));
    EXPECT_EQ(box->text(), u"12.57");
    EXPECT_TRUE(takeLog().contains(QStringLiteral("text Text(1)")));
    box->setText(QStringLiteral("99"));
    EXPECT_EQ(takeLog(), QStringList{QStringLiteral("text Text(1)")});
    settle();
    EXPECT_EQ(line->text(), u"99") << "a write takes the place of what was typed";
    EXPECT_TRUE(takeLog().isEmpty()) << "showing a written text is no edit";
    put(*box, "Alignment", 1);
    put(*box, "Locked", true);
    put(*box, "MaxLength", 3);
    put(*box, "PasswordChar", QStringLiteral("*"));
    put(*box, "BorderStyle", 0);
    settle();
    EXPECT_TRUE(line->alignment() & Qt::AlignRight);
    EXPECT_TRUE(line->isReadOnly());
    EXPECT_EQ(line->maxLength(), 3);
    EXPECT_EQ(line->echoMode(), QLineEdit::Password);
    EXPECT_FALSE(line->hasFrame());
    box->setText(QStringLiteral("abcdef"));
    EXPECT_EQ(box->text(), u"abc");
    EXPECT_EQ(errorOf([&] { put(*box, "MaxLength", -1); }), 380);
}

TEST_F(Widgets, SelectionsWorkWithAndWithoutAWidget)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    const auto check = [&] {
        box->setText(QStringLiteral("hello world"));
        box->setSelStart(6);
        box->setSelLength(99);
        EXPECT_EQ(box->selStart(), 6);
        EXPECT_EQ(box->selLength(), 5);
        EXPECT_EQ(box->selText(), u"world");
        box->setSelText(QStringLiteral("all"));
        EXPECT_EQ(box->text(), u"hello all");
        EXPECT_EQ(box->selStart(), 9);
        EXPECT_EQ(box->selLength(), 0);
        EXPECT_EQ(errorOf([&] { box->setSelStart(-1); }), 380);
    };
    check();
    open();
    check();
    settle();
    check();
    box->setSelStart(0);
    box->setSelLength(5);
    settle();
    EXPECT_EQ(widgetOf<QLineEdit>(box)->selectedText(), u"hello");
    put(*box, "MultiLine", true);
    settle();
    box->setText(QStringLiteral("ab\r\ncd\r\nef"));
    settle();
    box->setSelStart(4);
    box->setSelLength(4);
    EXPECT_EQ(box->selText(), u"cd\r\n");
    EXPECT_EQ(widgetOf<QPlainTextEdit>(box)->textCursor().selectedText(), QStringLiteral("cd\u2029"));
}

TEST_F(Widgets, AMultiLineBoxKeepsClassicLineEnds)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 80});
    put(*box, "MultiLine", true);
    box->setText(QStringLiteral("a\r\nb"));
    open();
    auto* lines = widgetOf<QPlainTextEdit>(box);
    ASSERT_NE(lines, nullptr);
    EXPECT_EQ(lines->toPlainText(), u"a\nb");
    lines->moveCursor(QTextCursor::End);
    lines->insertPlainText(QStringLiteral("\nc"));
    EXPECT_EQ(box->text(), u"a\r\nb\r\nc");
    put(*box, "MultiLine", false);
    settle();
    EXPECT_NE(widgetOf<QLineEdit>(box), nullptr) << "another kind of widget takes the place";
}

TEST_F(Widgets, DosCharactersCanBeTypedIntoATextBox)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    box->font()->setCharset(255);
    box->setText(QStringLiteral("\u0082")); // e acute in the DOS set
    open();
    auto* line = widgetOf<QLineEdit>(box);
    EXPECT_EQ(line->text(), u"é");
    line->insert(QStringLiteral("é"));
    EXPECT_EQ(box->text(), QStringLiteral("\u0082\u0082"));
}

TEST_F(Widgets, ADigitsOnlyFieldTakesNothingElse)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    box->setDigitsOnly(true);
    open();
    QTest::keyClicks(box->widget(), QStringLiteral("1a-2.b3"));
    EXPECT_EQ(box->text(), u"123");
    box->setDigitsOnly(false);
    settle();
    QTest::keyClicks(box->widget(), QStringLiteral("x"));
    EXPECT_EQ(box->text(), u"123x");
}

TEST_F(Widgets, ACheckBoxRaisesItsClickWhenItsValueChangesHoweverThatComes)
{
    const auto box = show<CheckBox>(QStringLiteral("cbCheck"), {10, 10, 100, 20});
    open();
    takeLog();
    const QStringList click{QStringLiteral("click cbCheck(1)")};
    put(*box, "Value", 1);
    EXPECT_EQ(takeLog(), click);
    put(*box, "Value", 1);
    EXPECT_EQ(takeLog(), QStringList()) << "no change, no click";
    box->setEnabled(false);
    put(*box, "Value", 0);
    EXPECT_EQ(takeLog(), click) << "also while it is not enabled";
    box->setEnabled(true);
    put(*box, "Value", 2);
    takeLog();
    settle();
    EXPECT_EQ(widgetOf<QCheckBox>(box)->checkState(), Qt::PartiallyChecked);
    EXPECT_TRUE(takeLog().isEmpty()) << "showing the value is no click";
    QTest::mouseClick(surface.get(), Qt::LeftButton, {}, {20, 20});
    QTest::mouseClick(box->widget(), Qt::LeftButton, {}, {8, 10});
    EXPECT_EQ(numberOf(*box, "Value"), 0) << "greyed goes to unchecked";
    settle();
    EXPECT_EQ(widgetOf<QCheckBox>(box)->checkState(), Qt::Unchecked);
    takeLog();
    QTest::keyClick(box->widget(), Qt::Key_Space);
    EXPECT_EQ(numberOf(*box, "Value"), 1);
    EXPECT_TRUE(takeLog().contains(click.first()));
    EXPECT_EQ(errorOf([&] { put(*box, "Value", 3); }), 380);
}

TEST_F(Widgets, DroppingEnabledForAMomentDoesNotTakeTheFocus)
{
    const auto box = show<CheckBox>(QStringLiteral("cbCheck"), {10, 10, 100, 20});
    show<TextBox>(QStringLiteral("Text"), {10, 50, 100, 22});
    open();
    box->setFocus();
    ASSERT_TRUE(box->widget()->hasFocus());
    box->setEnabled(false);
    put(*box, "Value", 1);
    box->setEnabled(true);
    settle();
    EXPECT_TRUE(box->widget()->hasFocus());
    EXPECT_TRUE(box->widget()->isEnabled());
}

TEST_F(Widgets, OptionButtonsOfOneSurfaceAreOneGroup)
{
    surface->addArray<OptionButton>(QStringLiteral("Other"));
    const auto first = show<OptionButton>(QStringLiteral("obOption"), {10, 10, 100, 20});
    const auto second = showNew<OptionButton>(QStringLiteral("obOption"), {10, 40, 100, 20});
    const auto third = show<OptionButton>(QStringLiteral("Other"), {10, 70, 100, 20});
    first->setTabIndex(0);
    second->setTabIndex(1);
    third->setTabIndex(2);
    open();
    takeLog();
    first->setValue(true);
    third->setValue(true);
    EXPECT_FALSE(first->value());
    EXPECT_EQ(takeLog(), (QStringList{QStringLiteral("click obOption(1)"), QStringLiteral("click Other(1)")}));
    settle();
    QTest::mouseClick(second->widget(), Qt::LeftButton, {}, {8, 10});
    EXPECT_TRUE(second->value());
    EXPECT_FALSE(third->value());
    QTest::mouseClick(second->widget(), Qt::LeftButton, {}, {8, 10});
    settle();
    EXPECT_TRUE(widgetOf<QRadioButton>(second)->isChecked()) << "a second click takes nothing away";
    second->setFocus();
    QTest::keyClick(second->widget(), Qt::Key_Down);
    EXPECT_TRUE(third->value());
    EXPECT_TRUE(third->widget()->hasFocus());
    QTest::keyClick(third->widget(), Qt::Key_Down);
    EXPECT_TRUE(first->value()) << "round the end";
    first->setValue(false);
    settle();
    EXPECT_FALSE(widgetOf<QRadioButton>(first)->isChecked()) << "none may be chosen";
}

TEST_F(Widgets, EnterPressesTheDefaultButtonAndEscTheCancelButton)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    const auto ok = show<CommandButton>(QStringLiteral("CommandButton"), {10, 50, 80, 24});
    const auto cancel = showNew<CommandButton>(QStringLiteral("CommandButton"), {100, 50, 80, 24});
    const auto other = showNew<CommandButton>(QStringLiteral("CommandButton"), {200, 50, 80, 24});
    put(*other, "Default", true);
    put(*ok, "Default", true);
    EXPECT_FALSE(flagOf(*other, "Default")) << "one default button on a surface";
    put(*cancel, "Cancel", true);
    open();
    box->setFocus();
    takeLog();
    QTest::keyClick(box->widget(), Qt::Key_Return);
    EXPECT_TRUE(takeLog().contains(QStringLiteral("click CommandButton(1)")));
    QTest::keyClick(box->widget(), Qt::Key_Escape);
    EXPECT_TRUE(takeLog().contains(QStringLiteral("click CommandButton(2)")));
    other->setFocus();
    takeLog();
    QTest::keyClick(other->widget(), Qt::Key_Return);
    const QStringList pressed = takeLog();
    EXPECT_TRUE(pressed.contains(QStringLiteral("click CommandButton(3)"))) << "the focused button presses itself";
    EXPECT_FALSE(pressed.contains(QStringLiteral("click CommandButton(1)")));
    ok->setEnabled(false);
    box->setFocus();
    takeLog();
    QTest::keyClick(box->widget(), Qt::Key_Return);
    EXPECT_FALSE(takeLog().contains(QStringLiteral("click CommandButton(1)")));
}

TEST_F(Widgets, AButtonIsClickedByMouseKeyAndProgram)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {10, 10, 80, 24});
    put(*button, "Caption", QStringLiteral("&Go"));
    open();
    EXPECT_EQ(widgetOf<QPushButton>(button)->text(), u"&Go");
    const QString click = QStringLiteral("click CommandButton(1)");
    takeLog();
    QTest::mouseClick(button->widget(), Qt::LeftButton);
    EXPECT_EQ(takeLog().count(click), 1);
    QTest::keyClick(button->widget(), Qt::Key_Space);
    EXPECT_EQ(takeLog().count(click), 1);
    button->setValue(true);
    EXPECT_EQ(takeLog().count(click), 1);
    EXPECT_EQ(button->accessibleText(), u"Go");
}

TEST_F(Widgets, ColoursReachTheWidgetsThatShowThem)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    put(*box, "BackColor", values::rgb(255, 255, 0));
    put(*box, "ForeColor", values::rgb(255, 0, 0));
    const auto check = show<CheckBox>(QStringLiteral("cbCheck"), {10, 50, 100, 22});
    put(*check, "BackColor", values::rgb(0, 255, 0));
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {10, 90, 100, 22});
    put(*button, "BackColor", values::rgb(0, 255, 0));
    open();
    const QImage seen = picture();
    EXPECT_EQ(seen.pixelColor(60, 21), QColor(255, 255, 0));
    EXPECT_EQ(seen.pixelColor(105, 52), QColor(0, 255, 0));
    EXPECT_NE(seen.pixelColor(60, 101), QColor(0, 255, 0)) << "a standard button keeps the system's colours";
    EXPECT_EQ(box->widget()->palette().color(QPalette::Text), QColor(255, 0, 0));
    put(*button, "Style", 1);
    settle();
    EXPECT_EQ(button->widget()->palette().color(QPalette::Button), QColor(0, 255, 0));
    box->font()->setSize({180000});
    settle();
    EXPECT_EQ(box->widget()->font().pixelSize(), 24);
}

TEST_F(Widgets, ToolTipsOfWidgetsAreShownAsTheyStand)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    put(*box, "ToolTipText", QStringLiteral("Stage (m)"));
    open();
    EXPECT_EQ(box->widget()->toolTip(), u"Stage (m)");
    put(*box, "ToolTipText", QStringLiteral("<img src='file:///etc/passwd'>"));
    settle();
    EXPECT_FALSE(box->widget()->toolTip().contains(QStringLiteral("<img"))) << "markup is text here";
}

TEST_F(Widgets, ACheckBoxAndAnOptionButtonTakeAPressAnywhereInTheirRectangle)
{
    const auto box = show<CheckBox>(QStringLiteral("cbCheck"), {10, 10, 200, 60});
    const auto button = show<OptionButton>(QStringLiteral("obOption"), {10, 100, 200, 60});
    open();
    for (const QPoint place : {QPoint(0, 0), QPoint(199, 59), QPoint(199, 0), QPoint(0, 59), QPoint(150, 30)}) {
        put(*box, "Value", 0);
        button->setValue(false);
        settle();
        QTest::mouseClick(box->widget(), Qt::LeftButton, {}, place);
        QTest::mouseClick(button->widget(), Qt::LeftButton, {}, place);
        EXPECT_EQ(numberOf(*box, "Value"), 1) << place.x() << ' ' << place.y();
        EXPECT_TRUE(button->value()) << place.x() << ' ' << place.y();
    }
    QTest::mouseClick(box->widget(), Qt::LeftButton, {}, QPoint(200, 30));
    EXPECT_EQ(numberOf(*box, "Value"), 1) << "beside it is beside it";
}

TEST_F(Widgets, TheTabKeyComesLastToWhatIsMadeLastWhateverWentBefore)
{
    const auto first = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    const auto second = showNew<TextBox>(QStringLiteral("Text"), {10, 40, 100, 22});
    const auto third = showNew<TextBox>(QStringLiteral("Text"), {10, 70, 100, 22});
    const auto fourth = showNew<TextBox>(QStringLiteral("Text"), {10, 90, 100, 22});
    surface->array(QStringLiteral("Text"))->unload(second->index());
    surface->array(QStringLiteral("Text"))->unload(third->index());
    const auto last = showNew<TextBox>(QStringLiteral("Text"), {10, 120, 100, 22});
    EXPECT_GT(last->tabIndex(), fourth->tabIndex());
    first->tabLast();
    EXPECT_GT(first->tabIndex(), last->tabIndex());
    last->setTabIndex(32767);
    fourth->tabLast();
    EXPECT_EQ(fourth->tabPlace() - last->tabPlace(), 1) << "after the highest number they are counted anew";
}

TEST_F(Widgets, TheTabKeyFollowsTabIndexAndSkipsWhatIsNoStop)
{
    const auto first = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    const auto second = showNew<TextBox>(QStringLiteral("Text"), {10, 40, 100, 22});
    const auto third = showNew<TextBox>(QStringLiteral("Text"), {10, 70, 100, 22});
    open();
    first->setFocus();
    QTest::keyClick(first->widget(), Qt::Key_Tab);
    EXPECT_TRUE(second->widget()->hasFocus()) << "the order of making at first";
    third->setTabIndex(0);
    first->setTabIndex(1);
    second->setTabIndex(2);
    settle();
    third->setFocus();
    QTest::keyClick(third->widget(), Qt::Key_Tab);
    EXPECT_TRUE(first->widget()->hasFocus());
    put(*second, "TabStop", false);
    settle();
    QTest::keyClick(first->widget(), Qt::Key_Tab);
    EXPECT_FALSE(second->widget()->hasFocus());
    EXPECT_EQ(errorOf([&] { second->setTabIndex(-1); }), 380);
}

TEST_F(Widgets, FocusIsRefusedWhereItCannotGo)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    open();
    EXPECT_EQ(errorOf([&] { box->setFocus(); }), 0);
    box->setEnabled(false);
    EXPECT_EQ(errorOf([&] { box->setFocus(); }), 5);
    box->setEnabled(true);
    box->setVisible(false);
    EXPECT_EQ(errorOf([&] { box->setFocus(); }), 5);
    EXPECT_EQ(errorOf([&] { surface->array(u"Label")->item(1)->setFocus(); }), 5);
}

TEST_F(Widgets, ManyWidgetsSitInPanesAndAreStillReached)
{
    for (int place = 0; place < 350; ++place) {
        const auto box = showNew<TextBox>(QStringLiteral("Text"), {place % 20 * 30, place / 20 * 22, 28, 20});
        box->setText(QString::number(place));
    }
    surface->resize(620, 420);
    open();
    for (const auto* child : surface->findChildren<QWidget*>())
        EXPECT_LE(child->children().size(), 110);
    EXPECT_LE(surface->children().size(), 110);
    takeLog();
    for (const int place : {0, 99, 100, 349}) {
        const QPoint middle(place % 20 * 30 + 14, place / 20 * 22 + 10);
        EXPECT_EQ(surface->controlAt(middle)->index(), place + 2);
        QWidget* under = surface->childAt(middle);
        ASSERT_NE(under, nullptr);
        QTest::mouseClick(surface->windowHandle(), Qt::LeftButton, {}, middle);
        EXPECT_TRUE(takeLog().contains(QStringLiteral("click Text(%1)").arg(place + 2)));
    }
    QTest::mouseClick(surface->windowHandle(), Qt::LeftButton, {}, {29, 5});
    EXPECT_TRUE(takeLog().contains(QStringLiteral("click surface"))) << "between the boxes is the surface";
    const auto first = surface->array(u"Text")->item(2);
    const auto last = surface->array(u"Text")->item(351);
    last->move(first->left(), first->top());
    EXPECT_EQ((settle(), surface->controlAt({14, 10}).get()), last.get());
    last->zOrder(1);
    EXPECT_EQ((settle(), surface->controlAt({14, 10}).get()), first.get());
    last->zOrder(0);
    EXPECT_EQ((settle(), surface->controlAt({14, 10}).get()), last.get());
}

} // namespace zan::surface::tests
