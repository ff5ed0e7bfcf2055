#pragma once

#include "WindowFixture.h"

#include "support/PointerScript.h"
#include "surface/edit/EditLayer.h"
#include "surface/host/Surface.h"
#include "window/PanelEditor.h"

namespace zan::window {

/// The CONTROL element of a type at a place in twips, with more elements.
inline QString control(const char* type, int left, int top, int width, int height, const char* more = "")
{
    return QStringLiteral("<CONTROL><TYPE>%1</TYPE><LEFT>%2</LEFT><TOP>%3</TOP><WIDTH>%4</WIDTH><HEIGHT>%5</HEIGHT>"
                          "%6</CONTROL>")
        .arg(QString::fromLatin1(type))
        .arg(left)
        .arg(top)
        .arg(width)
        .arg(height)
        .arg(QString::fromLatin1(more));
}

/// A panel on a screen that is edited with the input that a user makes.
class EditTest : public WindowTest
{
protected:
    using WindowTest::WindowTest;
    /// Loads a window with these controls and shows the panel, unlocked.
    void open(const QStringList& controls, bool unlocked = true)
    {
        fill("A", controls.join(QString()).toUtf8().constData());
        panel->LoadWindow(QStringLiteral("A"));
        panel->setLockPositions(!unlocked);
        panel->resize(800, 600);
        panel->show();
        // A window manager places the window and gives it the keyboard in its own time.
        panel->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel.get()));
        settle();
        // Far from everything: the toolkit tells of no move to where the test before has left the pointer.
        script().move({790, 590}).play();
        QObject::connect(panel.get(), &BenchWindow::MouseDown, panel.get(),
                         [this](int button) { hostPresses.push_back(button); });
    }
    void settle()
    {
        for (int turn = 0; turn < 3; ++turn)
            QCoreApplication::processEvents();
    }
    tests::PointerScript script() { return tests::PointerScript(*panel); }
    void press(QPoint place, Qt::MouseButton button = Qt::LeftButton)
    {
        forms.closeMenu();
        script().press(place, button).release(place, button).play();
    }
    void drag(QPoint from, QPoint to) { script().press(from).move((from + to) / 2).move(to).release(to).play(); }
    Ref<wrappers::iBenchControl> wrapper(int place) { return panel->Controls()->Control(binding::Variant(place)); }
    QRectF twips(int place)
    {
        const auto control = live(place);
        return {control->left(), control->top(), control->width(), control->height()};
    }
    QString stored(int place, const char* name)
    {
        return wrapper(place)->XMLNode().child(values::Name(name)).text();
    }
    QStringList menuCaptions()
    {
        QStringList captions;
        if (forms.menu()) {
            for (const surface::MenuItem& item : forms.menu()->items)
                captions << item.caption;
        }
        return captions;
    }
    void choose(const QString& caption)
    {
        const std::shared_ptr<surface::PopupMenu> menu = forms.menu();
        ASSERT_TRUE(menu);
        forms.closeMenu();
        choose(*menu, caption);
    }
    void choose(const surface::PopupMenu& menu, const QString& caption)
    {
        for (const surface::MenuItem& item : menu.items) {
            if (item.caption == caption && item.choose)
                return item.choose();
            if (item.menu)
                choose(*item.menu, caption);
        }
    }
    /// The list, the tree, the tags and the keys agree.
    void checkInvariants()
    {
        const auto list = panel->Controls();
        std::vector<document::Node> nodes = nodeOf("A").children(values::Name("CONTROL"));
        ASSERT_EQ(std::int32_t(nodes.size()), list->Count());
        for (std::int32_t place = 1; place <= list->Count(); ++place) {
            const auto held = wrapper(place);
            ASSERT_EQ(held->Index(), place);
            ASSERT_EQ(live(place)->tag(), QString::number(place));
            ASSERT_TRUE(live(place)->isLoaded());
            ASSERT_EQ(held->XMLNode().parent(), nodeOf("A"));
            ASSERT_EQ(list->placeOfControl(*held), place);
        }
    }
    bool hasMarker() { return layer() && layer()->marker().has_value(); }
    surface::EditLayer* layer() { return surface::EditLayer::find(panel->surface()); }
    bool hasHandleAt(QPoint place) { return layer() && layer()->handleAt(place).frame; }

    std::vector<int> hostPresses;
};

} // namespace zan::window
