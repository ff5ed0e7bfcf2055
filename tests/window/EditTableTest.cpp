// What the mouse and the keyboard do to each type of control while a panel is rearranged: one row per control array,
// and each column with the input that a user makes.

#include "EditFixture.h"

#include "support/Properties.h"

using namespace zan;
using namespace zan::window;
using values::Name;
using values::Ref;
using wrappers::OnDrop;
using wrappers::OnPress;

namespace {

struct ArrayRow
{
    const char* array;
    const char* type;
    OnPress press;
    bool hover;
    bool focus;
    OnDrop drop;
};

constexpr ArrayRow rows[] = {
    {"CommandButton", "VB.CommandButton", OnPress::SystemMove, true, true, OnDrop::Nothing},
    {"cbCheck", "VB.CheckBox", OnPress::SystemMove, true, true, OnDrop::PassesOnToSurface},
    {"obOption", "VB.OptionButton", OnPress::SystemMove, true, true, OnDrop::Nothing},
    {"Text", "VB.TextBox", OnPress::SystemMove, true, true, OnDrop::Nothing},
    {"Pic", "VB.Picture", OnPress::SystemMove, false, false, OnDrop::Nothing},
    {"pbar", "MSComctlLib.ProgressBar", OnPress::SystemMove, true, false, OnDrop::Nothing},
    {"Label", "VB.Label", OnPress::HostDrag, true, false, OnDrop::MovesIt},
    {"ENT", "ZanDataControls.ENTViewer", OnPress::HostDrag, true, false, OnDrop::MovesIt},
    {"SiteMap1", "SITEMAP", OnPress::HostDrag, true, false, OnDrop::MovesIt},
    {"ZanGraph1", "ZanDataControls.ZanGraph", OnPress::HostDrag, true, false, OnDrop::Nothing},
    {"StatusLight1", "ZanBenchWindow.StatusLight", OnPress::HostDrag, true, false, OnDrop::MovesIt},
    {"ValueBar", "ZanBenchWindow.ValueBar", OnPress::HostDrag, true, false, OnDrop::MovesIt},
};

/// The rows whose controls can be made.
std::vector<ArrayRow> madeRows()
{
    std::vector<ArrayRow> made;
    for (const ArrayRow& row : rows) {
        const wrappers::ControlType* type = controlTypes().ofArray(QString::fromLatin1(row.array));
        if (type && type->create)
            made.push_back(row);
    }
    return made;
}

/// A panel with a label at (600, 600) and one control of the type of the row, both larger than the reach of a press.
class EachArray : public EditTest, public testing::WithParamInterface<ArrayRow>
{
protected:
    static constexpr int Label = 1;
    static constexpr int Item = 2;

    void openRow(const QRectF& place, bool unlocked)
    {
        const wrappers::ControlType* type = panel->controlTypes().ofArray(QString::fromLatin1(GetParam().array));
        QStringList all{control("VB.Label", 600, 600, 1200, 400)};
        if (type->isSingle)
            panel->setShowSiteMap(true);
        else
            all << control(GetParam().type, int(place.x()), int(place.y()), int(place.width()),
                           int(place.height()));
        open(all, unlocked);
        if (type->isSingle) {
            live(Item)->move(float(place.x()), float(place.y()), float(place.width()), float(place.height()));
            settle();
        }
        panel->editor().setCurrentControl({});
    }
    bool isSystemMove() const { return GetParam().press == OnPress::SystemMove; }
    bool isMap() const { return qstrcmp(GetParam().array, "SiteMap1") == 0; }

    const QRectF onGrid{3000, 3000, 1200, 800};
    const QRectF offGrid{3010, 2990, 1210, 790};
    const QPoint inside{220, 220}; ///< 300 by 300 twips inside
};

std::string nameOfRow(const testing::TestParamInfo<ArrayRow>& row)
{
    return row.param.array;
}

} // namespace

TEST(EditTable, EachArrayHasItsColumnsInTheTableOfTypes)
{
    for (const ArrayRow& row : rows) {
        SCOPED_TRACE(row.array);
        const wrappers::ControlType* type = controlTypes().ofArray(QString::fromLatin1(row.array));
        ASSERT_TRUE(type);
        EXPECT_EQ(type->key, QLatin1String(row.type));
        EXPECT_EQ(type->press, row.press);
        EXPECT_EQ(type->selectsOnHover, row.hover);
        EXPECT_EQ(type->selectsOnFocus, row.focus);
        EXPECT_EQ(type->drop, row.drop);
    }
}

TEST_P(EachArray, WithLockMenuEveryPressIsTheHosts)
{
    openRow(offGrid, false);
    panel->setLockMenu(true);
    std::vector<QPointF> places;
    QObject::connect(panel.get(), &BenchWindow::MouseDown, panel.get(), [&](int, int, float x, float y) {
        places.push_back({x, y});
    });
    press(inside);
    press(inside, Qt::RightButton);
    press(inside, Qt::MiddleButton);
    EXPECT_EQ(hostPresses, (std::vector<int>{1, 2, 4}));
    EXPECT_EQ(places.front(), QPointF(inside - live(Item)->bounds().topLeft()) * 15) << "twips inside the control";
    EXPECT_FALSE(forms.menu());
    EXPECT_EQ(twips(Item), offGrid);
}

TEST_P(EachArray, AnyButtonButTheLeftOpensTheControlsMenuAtThePointerLockedOrNot)
{
    openRow(onGrid, false);
    for (const bool locked : {true, false}) {
        panel->setLockPositions(locked);
        for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
            panel->editor().setCurrentControl({});
            press(inside, button);
            ASSERT_TRUE(forms.menu());
            EXPECT_EQ(forms.menu()->name, u"mnuCtlRightClick");
            EXPECT_EQ(panel->editor().currentControl(), wrapper(Item));
            EXPECT_EQ(twips(Item), onGrid);
        }
    }
    EXPECT_TRUE(hostPresses.empty());
}

TEST_P(EachArray, ALeftPressOnALockedPanelSnapsWhatTheSystemMovesAndNothingElse)
{
    openRow(offGrid, false);
    const QString stored = this->stored(Item, "LEFT");
    press(inside);
    EXPECT_EQ(twips(Item), isSystemMove() ? onGrid : offGrid);
    EXPECT_EQ(this->stored(Item, "LEFT"), stored) << "a placement writes nothing to the document";
    EXPECT_TRUE(hostPresses.empty());
}

TEST_P(EachArray, APressWithoutMovementOnAnUnlockedPanelSnaps)
{
    openRow(offGrid, true);
    press(inside);
    EXPECT_EQ(twips(Item), GetParam().drop == OnDrop::Nothing && !isSystemMove() ? offGrid : onGrid);
}

TEST_P(EachArray, ADragOnAnUnlockedPanelMovesItAndStoresWhatItsFamilyStores)
{
    openRow(onGrid, true);
    QPoint onTheWay;
    const QString stored = wrapper(Item)->XMLNode().xml();
    script()
        .press(inside)
        .move({260, 240})
        .then([&] { onTheWay = live(Item)->bounds().topLeft(); })
        .move({320, 290})
        .release({320, 290})
        .play();
    EXPECT_EQ(twips(Item), QRectF(4400, 4000, 1200, 800)) << "4500 by 4050, snapped";
    if (isSystemMove()) {
        EXPECT_EQ(onTheWay, QPoint(240, 220)) << "it follows the pointer";
        EXPECT_EQ(this->stored(Item, "LEFT"), u"4500") << "the node keeps where the move ended";
        EXPECT_EQ(this->stored(Item, "TOP"), u"4050");
    } else {
        EXPECT_EQ(onTheWay, QPoint(200, 200)) << "a picture of it follows the pointer";
        if (isMap())
            EXPECT_EQ(wrapper(Item)->XMLNode().xml(), stored) << "the map's place is stored with its window";
        else
            EXPECT_EQ(this->stored(Item, "LEFT"), u"4400");
    }
    EXPECT_TRUE(errors.empty());
}

TEST_P(EachArray, ADragOnALockedPanelMovesNothing)
{
    openRow(onGrid, false);
    drag(inside, {320, 290});
    EXPECT_EQ(twips(Item), onGrid);
}

TEST_P(EachArray, ThePointerOverItMakesItTheCurrentControlWhereTheTableSaysSo)
{
    openRow(onGrid, true);
    script().move(inside).play();
    EXPECT_EQ(panel->editor().currentControl(), GetParam().hover ? wrapper(Item) : nullptr);
    panel->setLockPositions(true);
    panel->editor().setCurrentControl({});
    script().move(inside + QPoint(1, 1)).play();
    EXPECT_FALSE(panel->editor().currentControl()) << "not on a locked panel";
}

TEST_P(EachArray, TheKeyboardOnItMakesItTheCurrentControlWhereTheTableSaysSo)
{
    openRow(onGrid, true);
    for (const bool locked : {false, true}) {
        panel->setLockPositions(locked);
        panel->setFocus();
        panel->editor().setCurrentControl({});
        live(Item)->takeKeyboard(Qt::TabFocusReason);
        EXPECT_EQ(panel->editor().currentControl(), GetParam().focus && !locked ? wrapper(Item) : nullptr);
    }
}

TEST_P(EachArray, WhatIsDroppedOnItMovesItOrGoesOnToTheSurfaceOrDoesNothing)
{
    openRow(onGrid, true);
    const QRectF label = twips(Label);
    drag({50, 50}, inside);
    const OnDrop drop = GetParam().drop;
    // The place of the label and the 300 by 300 twips inside, less the 150 by 150 of the grab: 750, snapped.
    EXPECT_EQ(twips(Item), drop == OnDrop::MovesIt ? QRectF(800, 800, 1200, 800) : onGrid);
    EXPECT_EQ(twips(Label), drop == OnDrop::PassesOnToSurface ? QRectF(3200, 3200, 1200, 400) : label);
    EXPECT_TRUE(errors.empty());
}

TEST_P(EachArray, AnUnlockedControlHasHandlesWhenItHasAWindow)
{
    openRow(onGrid, true);
    EXPECT_EQ(hasHandleAt({197, 197}), wrapper(Item)->hWnd() != 0);
    EXPECT_EQ(wrapper(Item)->hWnd() != 0, GetParam().type != QLatin1String("VB.Label"));
    panel->setLockPositions(true);
    EXPECT_FALSE(hasHandleAt({197, 197}));
}

INSTANTIATE_TEST_SUITE_P(Edit, EachArray, testing::ValuesIn(madeRows()), nameOfRow);
