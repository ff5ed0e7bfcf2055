#include "display/StatusLight.h"
#include "display/ValueBar.h"

#include "DisplayFixture.h"
#include "surface/host/Surface.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <type_traits>

using namespace zan;
using display::StatusLight;
using display::ValueBar;
using values::Variant;

namespace {

template <class Widget>
class DisplayWidget : public testing::Test
{};
using Widgets = testing::Types<StatusLight, ValueBar>;
TYPED_TEST_SUITE(DisplayWidget, Widgets);

QWidget* surfaceOf(QWidget& widget)
{
    return widget.findChild<surface::Surface*>();
}

} // namespace

TYPED_TEST(DisplayWidget, ControlFillsTheWidgetOfAnyHost)
{
    QWidget host;
    auto* widget = new TypeParam(&host);
    widget->setGeometry(10, 10, 90, 60);
    host.resize(200, 200);
    host.show();
    EXPECT_EQ(widget->control().bounds(), QRect(0, 0, 90, 60));
    widget->resize(50, 40);
    EXPECT_EQ(widget->control().bounds(), QRect(0, 0, 50, 40));
    EXPECT_EQ(widget->sizeHint(), QSize(320, 240));
}

TYPED_TEST(DisplayWidget, MouseAndKeyboardComeAsSignals)
{
    TypeParam widget;
    widget.resize(80, 60);
    widget.show();
    widget.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&widget));
    widget.setFocus(); // goes to the control
    QSignalSpy down(&widget, &TypeParam::MouseDown);
    QSignalSpy up(&widget, &TypeParam::MouseUp);
    QSignalSpy move(&widget, &TypeParam::MouseMove);
    QSignalSpy click(&widget, &TypeParam::Click);
    QSignalSpy twice(&widget, &TypeParam::DblClick);
    QWidget* target = surfaceOf(widget);
    QTest::mouseMove(target, QPoint(3, 4));
    QTest::mousePress(target, Qt::LeftButton, Qt::ShiftModifier, QPoint(20, 30));
    ASSERT_EQ(down.size(), 1);
    EXPECT_EQ(down[0][0].toInt(), 1);
    EXPECT_EQ(down[0][1].toInt(), 1);
    EXPECT_FLOAT_EQ(down[0][2].toFloat(), 20);
    EXPECT_FLOAT_EQ(down[0][3].toFloat(), 30);
    QTest::mouseRelease(target, Qt::LeftButton, {}, QPoint(20, 30));
    EXPECT_EQ(up.size(), 1);
    EXPECT_EQ(click.size(), 1);
    EXPECT_GE(move.size(), 1);
    QTest::mouseDClick(target, Qt::LeftButton, {}, QPoint(20, 30));
    EXPECT_EQ(twice.size(), 1);

    QSignalSpy keyDown(&widget, &TypeParam::KeyDown);
    QSignalSpy keyPress(&widget, &TypeParam::KeyPress);
    QSignalSpy keyUp(&widget, &TypeParam::KeyUp);
    QTest::keyClick(target, Qt::Key_A);
    ASSERT_EQ(keyDown.size(), 1);
    EXPECT_EQ(keyDown[0][0].toInt(), 65);
    ASSERT_EQ(keyPress.size(), 1);
    EXPECT_EQ(keyPress[0][0].toInt(), 97);
    EXPECT_EQ(keyUp.size(), 1);
}

TYPED_TEST(DisplayWidget, WriteIsSeenInTheNextGrab)
{
    TypeParam widget;
    widget.resize(60, 60);
    const QImage before = widget.grab().toImage();
    widget.control().put(values::Name("Value"), Variant(-1.0));
    EXPECT_NE(widget.grab().toImage(), before);
}

TYPED_TEST(DisplayWidget, HostIsToldOfPropertiesWorthSaving)
{
    TypeParam widget;
    QSignalSpy changed(&widget, &TypeParam::PropertyChanged);
    widget.control().put(values::Name("Value"), Variant(-1.0));
    ASSERT_EQ(changed.size(), 1);
    EXPECT_EQ(changed[0][0].toString(), u"Value");
}

TYPED_TEST(DisplayWidget, ControlOutlivesItsWidgetWithoutHarm)
{
    auto widget = std::make_unique<TypeParam>();
    widget->resize(50, 50);
    const values::Ref<display::DisplayControl> control(&widget->control());
    widget.reset();
    EXPECT_FALSE(control->isLoaded());
    EXPECT_THROW(control->put(values::Name("Value"), Variant(true)), values::RuntimeError);
    EXPECT_NO_THROW(control->Refresh());
}

TYPED_TEST(DisplayWidget, AssistiveToolsSeeRoleAndText)
{
    TypeParam widget;
    widget.resize(60, 60);
    widget.show();
    QAccessibleInterface* face = QAccessible::queryAccessibleInterface(surfaceOf(widget));
    ASSERT_NE(face, nullptr);
    ASSERT_EQ(face->childCount(), 1);
    EXPECT_EQ(face->child(0)->role(),
              (std::is_same_v<TypeParam, StatusLight> ? QAccessible::Indicator : QAccessible::ProgressBar));
    EXPECT_EQ(face->child(0)->text(QAccessible::Value), widget.control().accessibleText());
    EXPECT_FALSE(face->child(0)->text(QAccessible::Name).isEmpty());
}
