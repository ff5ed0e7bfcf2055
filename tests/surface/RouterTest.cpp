#include "support/Properties.h"
#include "surface/SurfaceFixture.h"
#include "surface/host/KeyCodes.h"
#include "surface/intrinsic/CheckBox.h"
#include "surface/intrinsic/CommandButton.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/PictureBox.h"
#include "surface/intrinsic/Shape.h"
#include "surface/intrinsic/TextBox.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRegularExpression>
#include <QTest>
#include <QToolTip>
#include <QWindow>

namespace zan::surface::tests {

using test::numberOf;
using test::put;

/// Calls a function of the test inside a handler.
struct Reacting : SurfaceEvents
{
    std::function<void(LiveControl*)> onClick;
    std::function<void(LiveControl*)> onDown;
    std::function<void(LiveControl*)> onFocus;
    std::function<void(LiveControl*)> onKey;
    std::function<void()> onText;
    void clicked(LiveControl* control) override
    {
        if (onClick)
            onClick(control);
    }
    bool mouseDown(LiveControl* control, const MouseInput&) override
    {
        if (onDown)
            onDown(control);
        return false;
    }
    void gotFocus(LiveControl* control) override
    {
        if (onFocus)
            onFocus(control);
    }
    bool keyDown(LiveControl* control, int, int) override
    {
        if (onKey)
            onKey(control);
        return false;
    }
    void textChanged(LiveControl&) override
    {
        if (onText)
            onText();
    }
};

class Router : public SurfaceTest
{
protected:
    void open()
    {
        surface->show();
        surface->activateWindow();
        settle();
        takeLog();
    }
    void click(QPoint place, Qt::MouseButton button = Qt::LeftButton, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(surface->windowHandle(), button, modifiers, place);
    }
};

TEST_F(Router, APressOnALabelReachesItWithTwipsInsideIt)
{
    show<Label>(QStringLiteral("Label"), {100, 50, 80, 20});
    open();
    QTest::mousePress(surface->windowHandle(), Qt::LeftButton, Qt::ShiftModifier | Qt::AltModifier, {103, 57});
    EXPECT_EQ(takeLog(), QStringList{QStringLiteral("down Label(1) 1")});
    EXPECT_EQ(lastInput.x, 45.0F);
    EXPECT_EQ(lastInput.y, 105.0F);
    EXPECT_EQ(lastInput.shift, 5);
    QTest::mouseRelease(surface->windowHandle(), Qt::LeftButton, {}, {103, 57});
    EXPECT_EQ(takeLog(), (QStringList{QStringLiteral("up Label(1) 1"), QStringLiteral("click Label(1)")}));
}

TEST_F(Router, ButtonsAreOneTwoAndFour)
{
    open();
    click({300, 300}, Qt::RightButton);
    click({300, 300}, Qt::MiddleButton);
    EXPECT_EQ(takeLog(), (QStringList{QStringLiteral("down surface 2"), QStringLiteral("up surface 2"),
                                      QStringLiteral("down surface 4"), QStringLiteral("up surface 4")}))
        << "and only the left one clicks";
}

TEST_F(Router, AReleaseBelongsToTheControlOfThePressAndClicksOnlyInsideIt)
{
    show<Label>(QStringLiteral("Label"), {100, 50, 80, 20});
    open();
    QTest::mousePress(surface->windowHandle(), Qt::LeftButton, {}, {110, 60});
    logMoves = true;
    QTest::mouseMove(surface->windowHandle(), {300, 300});
    QTest::mouseRelease(surface->windowHandle(), Qt::LeftButton, {}, {300, 300});
    EXPECT_EQ(takeLog(), (QStringList{QStringLiteral("down Label(1) 1"), QStringLiteral("move Label(1) 1"),
                                      QStringLiteral("up Label(1) 1")}));
    EXPECT_EQ(lastInput.x, 3000.0F);
}

TEST_F(Router, ShapesAreBlindAndDisabledLabelsLetTheMouseThrough)
{
    const auto label = show<Label>(QStringLiteral("Label"), {0, 0, 100, 100});
    show<Shape>(QStringLiteral("Shape"), {0, 0, 200, 200});
    open();
    click({50, 50});
    EXPECT_EQ(takeLog().last(), QStringLiteral("click Label(1)"));
    click({150, 150});
    EXPECT_EQ(takeLog().last(), QStringLiteral("click surface"));
    label->setEnabled(false);
    click({50, 50});
    EXPECT_EQ(takeLog().last(), QStringLiteral("click surface"));
    EXPECT_EQ(lastInput.x, 750.0F);
}

TEST_F(Router, ADisabledWidgetLetsTheMouseThroughToWhatLiesUnderIt)
{
    show<Label>(QStringLiteral("Label"), {0, 0, 200, 100});
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    box->setEnabled(false);
    open();
    click({50, 20});
    EXPECT_EQ(takeLog().last(), QStringLiteral("click Label(1)"));
    EXPECT_EQ(lastInput.x, 750.0F);
}

TEST_F(Router, TheTopmostControlIsHit)
{
    show<Label>(QStringLiteral("Label"), {0, 0, 100, 100});
    const auto second = showNew<Label>(QStringLiteral("Label"), {50, 0, 100, 100});
    open();
    click({75, 50});
    EXPECT_EQ(takeLog().last(), QStringLiteral("click Label(2)"));
    second->zOrder(1);
    click({75, 50});
    EXPECT_EQ(takeLog().last(), QStringLiteral("click Label(1)"));
    second->zOrder();
    click({75, 50});
    EXPECT_EQ(takeLog().last(), QStringLiteral("click Label(2)"));
    show<PictureBox>(QStringLiteral("Pic"), {60, 40, 20, 20});
    second->zOrder();
    click({75, 50});
    EXPECT_EQ(takeLog().last(), QStringLiteral("click Pic(1)")) << "windowless controls lie under all others";
}

TEST_F(Router, ADoubleClickTakesThePlaceOfTheSecondPress)
{
    show<Label>(QStringLiteral("Label"), {0, 0, 100, 100});
    open();
    QTest::mouseDClick(surface->windowHandle(), Qt::LeftButton, {}, {20, 20});
    EXPECT_EQ(takeLog(), (QStringList{QStringLiteral("down Label(1) 1"), QStringLiteral("up Label(1) 1"),
                                      QStringLiteral("click Label(1)"), QStringLiteral("double Label(1)"),
                                      QStringLiteral("up Label(1) 1"), QStringLiteral("click Label(1)")}));
}

TEST_F(Router, WidgetsReportTheirMouseTooAndDoubleClicks)
{
    show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {10, 50, 80, 24});
    open();
    click({13, 20});
    QStringList seen = takeLog();
    seen.removeAll(QStringLiteral("focus Text(1)"));
    EXPECT_EQ(seen, (QStringList{QStringLiteral("down Text(1) 1"), QStringLiteral("up Text(1) 1"),
                                 QStringLiteral("click Text(1)")}));
    EXPECT_EQ(lastInput.x, 45.0F);
    QTest::mouseDClick(surface->windowHandle(), Qt::LeftButton, {}, {20, 20});
    EXPECT_TRUE(takeLog().contains(QStringLiteral("double Text(1)")));
    QTest::mouseDClick(surface->windowHandle(), Qt::LeftButton, {}, {20, 60});
    seen = takeLog();
    EXPECT_EQ(seen.count(QStringLiteral("click CommandButton(1)")), 2) << "two quick presses are two clicks";
    EXPECT_EQ(seen.count(QStringLiteral("down CommandButton(1) 1")), 2);
    EXPECT_EQ(button->surface(), surface.get());
}

TEST_F(Router, APressThatTheOwnerTakesNeverReachesTheWidget)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {10, 50, 80, 24});
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    open();
    takePresses = true;
    click({20, 60});
    click({20, 20});
    EXPECT_EQ(takeLog().filter(QRegularExpression(QStringLiteral("down|up|click"))),
              (QStringList{QStringLiteral("down CommandButton(1) 1"), QStringLiteral("down Text(1) 1")}));
    EXPECT_FALSE(qobject_cast<QPushButton*>(button->widget())->isDown());
    click({20, 20}, Qt::RightButton);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, {10, 10}, box->widget()->mapToGlobal(QPoint(10, 10)));
    QCoreApplication::sendEvent(box->widget(), &menu);
    EXPECT_TRUE(surface->findChildren<QMenu*>().isEmpty()) << "the box opens no menu of its own";
}

TEST_F(Router, AKeyThatTheOwnerTakesIsNotTypedAndMovesNoFocus)
{
    const auto first = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    const auto second = showNew<TextBox>(QStringLiteral("Text"), {10, 40, 100, 22});
    open();
    first->setFocus();
    takeKeys = true;
    QTest::keyClick(first->widget(), Qt::Key_A);
    QTest::keyClick(first->widget(), Qt::Key_Tab);
    EXPECT_EQ(first->text(), u"");
    EXPECT_TRUE(first->widget()->hasFocus());
    EXPECT_TRUE(takeLog().filter(QStringLiteral("keypress")).isEmpty());
    takeKeys = false;
    QTest::keyClick(first->widget(), Qt::Key_A);
    QTest::keyClick(first->widget(), Qt::Key_Tab);
    EXPECT_EQ(first->text(), u"a");
    EXPECT_TRUE(second->widget()->hasFocus());
}

TEST_F(Router, AKeyThatTheOwnerWantsIsNoShortcutOfTheWindow)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {10, 10, 100, 22});
    open();
    for (QWidget* place : {static_cast<QWidget*>(surface.get()), box->widget()}) {
        place->setFocus();
        for (const bool wanted : {false, true}) {
            takeKeys = wanted;
            QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_F7, Qt::NoModifier);
            event.ignore();
            QCoreApplication::sendEvent(place, &event);
            EXPECT_EQ(event.isAccepted(), wanted);
        }
    }
}

TEST_F(Router, PressesAndMovesThatAWidgetLeavesOverAreReportedOnce)
{
    show<CommandButton>(QStringLiteral("CommandButton"), {10, 50, 80, 24});
    show<CheckBox>(QStringLiteral("cbCheck"), {110, 50, 80, 24});
    open();
    logMoves = true;
    for (const QPoint place : {QPoint(20, 60), QPoint(120, 60)}) {
        QTest::mouseMove(surface->windowHandle(), place);
        EXPECT_EQ(takeLog().filter(QStringLiteral("move")).size(), 1);
        for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
            click(place, button);
            const QStringList log = takeLog();
            EXPECT_EQ(log.filter(QStringLiteral("down")).size(), 1) << log.join(u'|').toStdString();
            EXPECT_EQ(log.filter(QStringLiteral("up")).size(), 1);
        }
    }
}

TEST_F(Router, KeysAreReportedOnceWithClassicCodes)
{
    const auto button = show<CommandButton>(QStringLiteral("CommandButton"), {10, 50, 80, 24});
    open();
    button->setFocus();
    settle();
    takeLog();
    QTest::keyClick(button->widget(), Qt::Key_A);
    EXPECT_EQ(takeLog(), (QStringList{QStringLiteral("keydown CommandButton(1) 65/0"),
                                      QStringLiteral("keypress CommandButton(1) 97"),
                                      QStringLiteral("keyup CommandButton(1) 65/0")}))
        << "what the button leaves over is not reported again by the surface";
    surface->setFocus();
    takeLog();
    QTest::keyClick(surface.get(), Qt::Key_F5, Qt::ControlModifier);
    EXPECT_EQ(takeLog(),
              (QStringList{QStringLiteral("keydown surface 17/2"), QStringLiteral("keydown surface 116/2"),
                           QStringLiteral("keyup surface 116/2"), QStringLiteral("keyup surface 17/0")}));
}

TEST(KeyCodes, AreTheClassicOnes)
{
    const std::tuple<Qt::Key, bool, int> rows[]{
        {Qt::Key_A, false, 65},      {Qt::Key_7, false, 55},      {Qt::Key_7, true, 103},
        {Qt::Key_Return, false, 13}, {Qt::Key_Escape, false, 27}, {Qt::Key_Left, false, 37},
        {Qt::Key_Down, false, 40},   {Qt::Key_Delete, false, 46}, {Qt::Key_F1, false, 112},
        {Qt::Key_F12, false, 123},   {Qt::Key_Plus, true, 107},   {Qt::Key_Plus, false, 187},
        {Qt::Key_Space, false, 32},  {Qt::Key_Launch0, false, 0},
    };
    for (const auto& [key, keypad, code] : rows)
        EXPECT_EQ(classicKeyCode(key, keypad), code) << key;
}

TEST_F(Router, ToolTipsOfPaintedControlsAppearOverThem)
{
    const auto label = show<Label>(QStringLiteral("Label"), {100, 50, 80, 20});
    put(*label, "ToolTipText", QStringLiteral("Stage < 1 m & rising"));
    open();
    const auto tipAt = [&](QPoint place) {
        QToolTip::hideText();
        QHelpEvent help(QEvent::ToolTip, place, surface->mapToGlobal(place));
        QCoreApplication::sendEvent(surface.get(), &help);
        return QToolTip::text();
    };
    EXPECT_EQ(tipAt({110, 60}), u"Stage < 1 m & rising");
    put(*label, "ToolTipText", QStringLiteral("<b>bold</b>"));
    EXPECT_TRUE(tipAt({110, 60}).contains(QStringLiteral("&lt;b&gt;"))) << "markup is text here";
    tipAt({300, 300});
    QToolTip::hideText();
}

TEST_F(Router, AHandlerMayUnloadTheControlOfTheEvent)
{
    Reacting owner;
    surface->setEvents(&owner);
    const auto unload = [this](LiveControl* control) {
        if (control && control->isLoaded())
            surface->array(control->name())->unload(control->index());
    };
    for (const char* array : {"Label", "Pic", "pbar", "Text", "CommandButton", "cbCheck", "obOption"}) {
        for (int way = 0; way < 4; ++way) {
            owner = {};
            const auto control = surface->array(QString::fromLatin1(array))->load(2);
            control->move(150, 150.0F, 1500.0F, 450.0F);
            control->setVisible(true);
            surface->show();
            settle();
            (way == 0 ? owner.onDown : way == 1 ? owner.onClick : way == 2 ? owner.onFocus : owner.onKey) = unload;
            click({18, 20});
            if (control->isLoaded() && surface->focusWidget())
                QTest::keyClick(surface->focusWidget(), Qt::Key_Space);
            settle();
            if (control->isLoaded())
                surface->array(QString::fromLatin1(array))->unload(2);
            settle();
            EXPECT_FALSE(control->isLoaded());
        }
    }
}

TEST_F(Router, AHandlerMayDeleteTheWholeSurface)
{
    for (const char* array : {"Label", "Text", "CommandButton", "cbCheck", "obOption", "Pic"}) {
        for (int way = 0; way < 5; ++way) {
            Reacting owner;
            surface = std::make_unique<Surface>();
            surface->addArray<Label>(QStringLiteral("Label"));
            surface->addArray<TextBox>(QStringLiteral("Text"));
            surface->addArray<CommandButton>(QStringLiteral("CommandButton"));
            surface->addArray<CheckBox>(QStringLiteral("cbCheck"));
            surface->addArray<CheckBox>(QStringLiteral("obOption"));
            surface->addArray<PictureBox>(QStringLiteral("Pic"));
            surface->resize(300, 200);
            surface->setEvents(&owner);
            const auto control = surface->array(QString::fromLatin1(array))->item(1);
            control->move(150, 150.0F, 1500.0F, 450.0F);
            control->setVisible(true);
            surface->show();
            surface->activateWindow();
            surface->setFocus(); // so that the click moves the keyboard
            settle();
            const auto destroy = [this](LiveControl*) { surface.reset(); };
            switch (way) {
            case 0:
                owner.onDown = destroy;
                break;
            case 1:
                owner.onClick = destroy;
                break;
            case 2:
                owner.onFocus = destroy;
                break;
            case 3:
                owner.onKey = destroy;
                break;
            default:
                owner.onText = [this] { surface.reset(); };
            }
            click({18, 20});
            if (surface && surface->focusWidget())
                QTest::keyClick(surface->focusWidget(), Qt::Key_A);
            settle();
            const bool isText = control->typeName() == u"TextBox";
            const bool hasKeyboard = control->hosting() == LiveControl::Hosting::Widget;
            const bool isCalled = way == 2 ? hasKeyboard : way == 4 ? isText : true;
            EXPECT_EQ(surface == nullptr, isCalled) << array << ", way " << way;
            EXPECT_EQ(control->isLoaded(), surface != nullptr) << array << ", way " << way;
        }
    }
    surface.reset();
}

TEST_F(Router, AnErrorOfAHandlerGoesToTheSignalAndNotIntoTheToolkit)
{
    Reacting owner;
    const auto fail = [](LiveControl*) { values::raise(values::ErrorNumber::ObjectNotSet); };
    owner.onClick = owner.onDown = fail;
    owner.onText = [] { values::raise(values::ErrorNumber::Overflow); };
    show<Label>(QStringLiteral("Label"), {0, 0, 100, 100});
    const auto box = show<TextBox>(QStringLiteral("Text"), {0, 150, 100, 22});
    const auto check = show<CheckBox>(QStringLiteral("cbCheck"), {0, 200, 100, 22});
    open();
    surface->setEvents(&owner);
    click({50, 50});
    EXPECT_EQ(errors, (QList<int>{91, 91}));
    box->setText(QStringLiteral("x"));
    EXPECT_EQ(errors.last(), 6);
    put(*check, "Value", 1);
    EXPECT_EQ(errors.last(), 91);
    EXPECT_EQ(numberOf(*check, "Value"), 1);
    surface->setEvents(nullptr);
}

TEST_F(Router, AnErrorHandlerMayDeleteTheSurface)
{
    Reacting owner;
    owner.onClick = [](LiveControl*) { values::raise(values::ErrorNumber::ObjectNotSet); };
    show<Label>(QStringLiteral("Label"), {0, 0, 100, 100});
    open();
    surface->setEvents(&owner);
    QObject::connect(surface.get(), &Surface::runtimeError, [this] { surface.reset(); });
    click({50, 50});
    EXPECT_EQ(surface, nullptr);
}

} // namespace zan::surface::tests
