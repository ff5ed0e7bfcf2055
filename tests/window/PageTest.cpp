// A panel as a page of the toolkit's containers, and the size that it tells them.

#include "WindowFixture.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStackedLayout>
#include <QStackedWidget>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace zan;
using namespace zan::window;
using binding::Variant;

namespace {

class Page : public WindowTest
{
protected:
    Page()
    {
        fill("A", "<CONTROL><TYPE>VB.Label</TYPE><LEFT>1500</LEFT><TOP>300</TOP><WIDTH>3000</WIDTH>"
                  "<HEIGHT>600</HEIGHT></CONTROL>");
        panel->setShowSiteMap(false);
        panel->LoadWindow(QStringLiteral("A"));
    }
    /// The panel lives on and is as ready as ever.
    void expectAlive(const char* when)
    {
        ASSERT_TRUE(panel->Controls()) << when;
        EXPECT_EQ(panel->Controls()->Count(), 1) << when;
        EXPECT_TRUE(errors.empty()) << when;
    }
};

} // namespace

TEST_F(Page, PanelLivesThroughThePageChangesOfATabWidget)
{
    QTabWidget tabs;
    tabs.addTab(panel.get(), QStringLiteral("Panel"));
    tabs.addTab(new QWidget, QStringLiteral("Other"));
    tabs.show();
    ASSERT_TRUE(panel->isVisible());
    tabs.setCurrentIndex(1);
    ASSERT_FALSE(panel->isVisible());
    expectAlive("behind another tab");
    tabs.setCurrentIndex(0);
    expectAlive("in front again");
    tabs.hide();
    tabs.show();
    expectAlive("after the container was hidden");
    panel->setParent(nullptr);
}

TEST_F(Page, PanelLivesThroughThePageChangesOfAStack)
{
    QStackedWidget stack;
    stack.addWidget(new QWidget);
    stack.addWidget(panel.get()); // hides a page that is not the current one
    stack.show();
    expectAlive("behind the first page");
    stack.setCurrentIndex(1);
    ASSERT_TRUE(panel->isVisible());
    stack.setCurrentIndex(0);
    expectAlive("behind it again");
    stack.setCurrentIndex(1);
    expectAlive("in front");
    stack.removeWidget(panel.get());
    panel->setParent(nullptr);
}

TEST_F(Page, PanelLivesInAStackedLayoutInsideAnother)
{
    QWidget page;
    auto* outer = new QVBoxLayout(&page);
    auto* stack = new QStackedLayout;
    outer->addLayout(stack);
    stack->addWidget(panel.get());
    stack->addWidget(new QWidget);
    page.show();
    ASSERT_TRUE(panel->isVisible());
    stack->setCurrentIndex(1);
    ASSERT_FALSE(panel->isVisible());
    expectAlive("behind the other page");
    panel->setParent(nullptr);
}

TEST_F(Page, PanelLivesThroughTheStatesOfAnMdiWindow)
{
    QMdiArea area;
    QMdiSubWindow* window = area.addSubWindow(panel.get());
    area.addSubWindow(new QWidget);
    area.show();
    window->show();
    for (const auto change : {&QWidget::showMinimized, &QWidget::showNormal, &QWidget::hide, &QWidget::show,
                              &QWidget::showMaximized, &QWidget::showNormal}) {
        (window->*change)();
        expectAlive("after a change of the window's state");
    }
    window->showShaded();
    expectAlive("rolled up");
    area.setViewMode(QMdiArea::TabbedView);
    area.setActiveSubWindow(area.subWindowList().back());
    expectAlive("behind another tab");
    window->setWidget(nullptr);
    panel->setParent(nullptr);
}

TEST_F(Page, HidingItselfEndsAPanelUnlessTheHostSaysOtherwise)
{
    QWidget page;
    auto* kept = new BenchWindow(&page);
    kept->setEndsWhenHidden(false);
    page.show();
    kept->hide();
    EXPECT_TRUE(kept->Controls());
    kept->show();
    kept->setEndsWhenHidden(true);
    kept->hide();
    EXPECT_FALSE(kept->Controls());
}

TEST_F(Page, SizeHintIsTheSizeThatShowsEveryControl)
{
    EXPECT_EQ(panel->sizeHint(), QSize(300, 60));
    panel->Controls()->Control(Variant(1))->setWidth(6000);
    EXPECT_EQ(panel->sizeHint(), QSize(500, 60));
    QWidget form;
    auto* layout = new QVBoxLayout(&form);
    layout->setContentsMargins({});
    layout->addWidget(panel.get());
    EXPECT_EQ(form.sizeHint(), QSize(500, 60)) << "a layout does not clip it";
    panel->setParent(nullptr);
    panel->Clear();
    EXPECT_EQ(panel->sizeHint(), QSize(567, 393)) << "an empty panel has the size of its design";
}
