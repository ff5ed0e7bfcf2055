#include "surface/SurfaceFixture.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/ProgressBar.h"
#include "surface/intrinsic/TextBox.h"

#include "support/ErrorOf.h"
#include "support/Properties.h"
#include "values/Convert.h"

namespace zan::surface::tests {

using test::numberOf;
using test::put;

using test::errorOf;

using values::Name;

using ControlArrays = SurfaceTest;

TEST_F(ControlArrays, ANewArrayHasItsTemplateHidden)
{
    ControlArray* labels = surface->array(u"label");
    ASSERT_NE(labels, nullptr) << "names ignore case";
    EXPECT_EQ(labels->lBound(), 1);
    EXPECT_EQ(labels->uBound(), 1);
    EXPECT_EQ(labels->count(), 1);
    EXPECT_FALSE(labels->item(1)->visible());
    EXPECT_EQ(labels->item(1)->name(), u"Label");
    EXPECT_EQ(surface->array(u"Nothing"), nullptr);
    EXPECT_EQ(errorOf([&] { surface->addArray<Label>(QStringLiteral("LABEL")); }), 5);
}

TEST_F(ControlArrays, BoundsFollowWhatIsLoadedAndGapsStay)
{
    ControlArray* labels = surface->array(u"Label");
    labels->load(2);
    labels->load(7);
    labels->load(4);
    EXPECT_EQ(labels->uBound(), 7);
    EXPECT_EQ(labels->count(), 4);
    EXPECT_EQ(errorOf([&] { labels->item(3); }), 340);
    labels->unload(7);
    EXPECT_EQ(labels->uBound(), 4);
    labels->unload(2);
    EXPECT_EQ(labels->uBound(), 4) << "a gap below does not move the bound";
    labels->load(2);
    EXPECT_EQ(labels->item(2)->index(), 2);
    labels->load(0);
    EXPECT_EQ(labels->lBound(), 0);
    labels->unload(0);
    EXPECT_EQ(labels->lBound(), 1);
}

TEST_F(ControlArrays, WrongIndicesAreRefusedWithTheirOwnErrors)
{
    ControlArray* labels = surface->array(u"Label");
    EXPECT_EQ(errorOf([&] { labels->load(1); }), 360);
    EXPECT_EQ(errorOf([&] { labels->unload(1); }), 362);
    EXPECT_EQ(errorOf([&] { labels->unload(2); }), 340);
    EXPECT_EQ(errorOf([&] { labels->load(-1); }), 340);
    EXPECT_EQ(errorOf([&] { labels->load(32768); }), 6);
    EXPECT_EQ(errorOf([&] { labels->load(32767); }), 0);
    EXPECT_EQ(labels->count(), 2);
}

TEST_F(ControlArrays, ANewElementIsACopyOfTheDesignNotOfTheTemplateInUse)
{
    ControlArray& array = surface->addArray<Label>(QStringLiteral("Styled"), [](LiveControl& design) {
        auto& label = static_cast<Label&>(design);
        label.move(4560, 1560.0F, 825.0F, 225.0F);
        label.setCaption(QStringLiteral("Design"));
        put(label, "Alignment", 1);
        label.font()->setItalic(true);
    });
    const auto first = array.item(1);
    EXPECT_EQ(first->width(), 825.0F);
    first->setWidth(99);
    first->setVisible(true);
    put(*first, "Tag", QStringLiteral("1"));
    static_cast<Label&>(*first).setCaption(QStringLiteral("In use"));
    const auto second = array.load(2);
    auto& label = static_cast<Label&>(*second);
    EXPECT_EQ(label.width(), 825.0F);
    EXPECT_EQ(label.height(), 225.0F);
    EXPECT_EQ(label.caption(), u"Design");
    EXPECT_EQ(numberOf(label, "Alignment"), 1);
    EXPECT_TRUE(label.font()->italic());
    EXPECT_FALSE(label.visible()) << "invisible until shown";
    EXPECT_TRUE(label.tag().isEmpty());
    EXPECT_NE(label.font(), static_cast<Label&>(*first).font()) << "each element has a font of its own";
    array.design().setWidth(500);
    EXPECT_EQ(array.load(3)->width(), 500.0F) << "the design can be changed later";
}

TEST_F(ControlArrays, ScriptsReachElementsByIndexAndWalkThem)
{
    ControlArray* labels = surface->array(u"Label");
    labels->load(3);
    const Variant index(std::int16_t(3));
    const Variant item = labels->invoke(Name(), binding::Access::Get, {&index, 1});
    EXPECT_EQ(item.object(), labels->item(3).get());
    EXPECT_EQ(values::toInteger(labels->get(Name("UBound"))), 3);
    std::vector<std::int16_t> seen;
    const auto walk = labels->enumerate();
    while (const auto element = walk->next()) {
        seen.push_back(static_cast<LiveControl*>(element->object())->index());
        if (seen.size() == 1)
            labels->unload(3); // the walk goes on with what is there
    }
    EXPECT_EQ(seen, (std::vector<std::int16_t>{1}));
}

TEST_F(ControlArrays, AnArrayHeldBeyondItsSurfaceIsEmpty)
{
    const Ref<ControlArray> labels(surface->array(u"Label"));
    surface.reset();
    EXPECT_EQ(labels->count(), 0);
    EXPECT_EQ(errorOf([&] { labels->item(1); }), 340);
    EXPECT_EQ(errorOf([&] { labels->load(2); }), 91);
}

} // namespace zan::surface::tests
