#include "surface/SurfaceFixture.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/TextBox.h"
#include "surface/ops/ControlOps.h"
#include "surface/ops/WindowOps.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QTreeWidget>

namespace zan::surface::tests {

using Operations = SurfaceTest;

TEST_F(Operations, BoundsHaveTheirOwnScreenLeftAndTheTopBelowTheParent)
{
    const auto box = show<TextBox>(QStringLiteral("Text"), {30, 40, 100, 22});
    surface->move(200, 300);
    surface->show();
    settle();
    const QPoint corner = surface->mapToGlobal(QPoint(0, 0));
    const WindowOps::Bounds bounds = WindowOps::GetWindowBounds(box->hWnd(), surface->hWnd());
    EXPECT_EQ(bounds.Left, float(corner.x() + 30)) << "not reduced by the parent's left";
    EXPECT_EQ(bounds.Top, 40.0F);
    EXPECT_EQ(bounds.Width, 100.0F);
    EXPECT_EQ(bounds.Height, 22.0F);
    const WindowOps::Bounds none = WindowOps::GetWindowBounds(0, surface->hWnd());
    EXPECT_EQ(none.Width, 0.0F);
}

TEST_F(Operations, LockedUpdatesPaintNothingUntilUnlocked)
{
    surface->show();
    settle();
    EXPECT_TRUE(WindowOps::LockUpdates(surface->hWnd()));
    EXPECT_FALSE(WindowOps::LockUpdates(surface->hWnd())) << "one lock at a time";
    EXPECT_FALSE(surface->updatesEnabled());
    WindowOps::UnlockUpdates();
    EXPECT_TRUE(surface->updatesEnabled());
    WindowOps::UnlockUpdates();
    EXPECT_FALSE(WindowOps::LockUpdates(0));
    EXPECT_TRUE(WindowOps::LockUpdates(surface->hWnd()));
    surface.reset();
    WindowOps::UnlockUpdates(); // of a surface that has gone
}

TEST_F(Operations, ListEntriesAreFoundWithoutRegardToCase)
{
    QComboBox box;
    ControlOps::SelectListItem(box, QStringLiteral("a"), 0);
    EXPECT_EQ(box.currentIndex(), -1) << "an empty list stays as it is";
    ControlOps::AddListItem(box, QStringLiteral("Red"), 255);
    ControlOps::AddListItem(box, QStringLiteral("Blue"), 16711680);
    ControlOps::AddListItem(box, QStringLiteral("BLUE"), 1);
    ControlOps::SelectListItem(box, QStringLiteral("bLUE"), 0);
    EXPECT_EQ(box.currentIndex(), 1) << "the first of them";
    EXPECT_EQ(box.currentData().toInt(), 16711680);
    ControlOps::SelectListItem(box, QStringLiteral("green"), 2);
    EXPECT_EQ(box.currentIndex(), 2);
    ControlOps::SelectListItem(box, QStringLiteral("green"), -1);
    EXPECT_EQ(box.currentIndex(), -1);
    QListWidget list;
    ControlOps::AddListItem(list, QStringLiteral("One"), 1);
    ControlOps::AddListItem(list, QStringLiteral("Two"), 2);
    ControlOps::SelectListItem(list, QStringLiteral("TWO"), 0);
    EXPECT_EQ(list.currentRow(), 1);
    EXPECT_EQ(list.currentItem()->data(Qt::UserRole).toInt(), 2);
    ControlOps::SelectListItem(list, QStringLiteral("x"), 0);
    EXPECT_EQ(list.currentRow(), 0);
}

TEST_F(Operations, TheStyleBitAdmitsDigitsOnly)
{
    QLineEdit field;
    ControlOps::SetWindowStyleBit(field, true);
    ControlOps::SetWindowStyleBit(field, true);
    QTest::keyClicks(&field, QStringLiteral("a1-2"));
    EXPECT_EQ(field.text(), u"12");
    ControlOps::SetWindowStyleBit(field, false);
    QTest::keyClicks(&field, QStringLiteral("b"));
    EXPECT_EQ(field.text(), u"12b");
}

TEST_F(Operations, ColumnsFitAndTheLastOneFillsTheView)
{
    QTreeWidget list;
    list.setColumnCount(3);
    list.setHeaderLabels({QStringLiteral("A"), QStringLiteral("A long header of a column"), QStringLiteral("C")});
    list.addTopLevelItem(new QTreeWidgetItem({QStringLiteral("content that is long"), QStringLiteral("b"), {}}));
    list.resize(600, 200);
    list.show();
    settle();
    ControlOps::SizeListColumns(list);
    EXPECT_GE(list.columnWidth(0), list.fontMetrics().horizontalAdvance(QStringLiteral("content that is long")));
    EXPECT_GE(list.columnWidth(1),
              list.fontMetrics().horizontalAdvance(QStringLiteral("A long header of a column")));
    EXPECT_EQ(list.columnWidth(0) + list.columnWidth(1) + list.columnWidth(2), list.viewport()->width());
}

} // namespace zan::surface::tests
