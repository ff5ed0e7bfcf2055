// What assistive tools are told of places on the screen while a graphics scene draws the surface at a zoom.
#include "surface/SurfaceFixture.h"
#include "surface/intrinsic/Label.h"

#include <QAccessible>
#include <QGraphicsProxyWidget>
#include <QGraphicsScene>
#include <QGraphicsView>

#include <cstdlib>

namespace zan::surface::tests {

class ZoomedFaces : public SurfaceTest
{
protected:
    ~ZoomedFaces() override
    {
        if (m_proxy)
            m_proxy->setWidget(nullptr); // the surface is the fixture's
    }
    void open(double zoom)
    {
        m_proxy = m_scene.addWidget(surface.get());
        m_view.setFrameShape(QFrame::NoFrame);
        m_view.scale(zoom, zoom);
        m_view.setGeometry(37, 23, 900, 700);
        m_view.show();
        settle();
    }
    /// Where the scene draws these pixels of the surface.
    QRect drawn(const QRect& pixels) const
    {
        const QRect inView = m_view.mapFromScene(m_proxy->mapToScene(QRectF(pixels))).boundingRect();
        return inView.translated(m_view.viewport()->mapToGlobal(QPoint(0, 0)));
    }
    static bool areNear(const QRect& one, const QRect& other)
    {
        const QMargins off(one.left() - other.left(), one.top() - other.top(), one.right() - other.right(),
                           one.bottom() - other.bottom());
        return std::abs(off.left()) <= 2 && std::abs(off.top()) <= 2 && std::abs(off.right()) <= 2 &&
               std::abs(off.bottom()) <= 2;
    }

private:
    QGraphicsScene m_scene;
    QGraphicsView m_view{&m_scene};
    QGraphicsProxyWidget* m_proxy = nullptr;
};

TEST_F(ZoomedFaces, PlacesAndSizesAreThoseOnTheScreen)
{
    const auto label = show<Label>(QStringLiteral("Label"), {100, 60, 80, 20});
    open(2);
    QAccessibleInterface* root = QAccessible::queryAccessibleInterface(surface.get());
    ASSERT_TRUE(root);
    ASSERT_EQ(root->childCount(), 1);
    const QRect wanted = drawn({100, 60, 80, 20});
    EXPECT_GE(wanted.width(), 159);
    EXPECT_TRUE(areNear(root->child(0)->rect(), wanted));
    EXPECT_TRUE(areNear(root->rect(), drawn(surface->rect())));
    EXPECT_EQ(root->childAt(wanted.right() - 4, wanted.bottom() - 4), root->child(0));
    EXPECT_NE(root->childAt(wanted.left() - 8, wanted.center().y()), root->child(0));
}

} // namespace zan::surface::tests
