#include "surface/SurfaceFixture.h"
#include "surface/host/Picture.h"
#include "surface/intrinsic/CheckBox.h"
#include "surface/intrinsic/CommandButton.h"
#include "surface/intrinsic/Label.h"
#include "surface/intrinsic/OptionButton.h"
#include "surface/intrinsic/PictureBox.h"
#include "surface/intrinsic/ProgressBar.h"
#include "surface/intrinsic/Shape.h"
#include "surface/intrinsic/TextBox.h"

#include "binding/MemberTable.h"
#include "support/ErrorOf.h"
#include "support/Properties.h"
#include "values/Convert.h"

#include <set>

namespace zan::surface::tests {

using test::put;

using test::errorOf;

using binding::AccessStatus;
using binding::Member;
using values::Name;

namespace {

const char* const ArrayNames[]{"Label", "Text", "CommandButton", "Pic", "cbCheck", "obOption", "Shape", "pbar"};

struct Choice
{
    const char* array;
    const char* property;
    std::int16_t highest;
};

/// Every property that is one of a few numbers.
const Choice Choices[]{
    {"Label", "Alignment", 2},   {"Label", "BorderStyle", 1},   {"Label", "BackStyle", 1},
    {"Label", "Appearance", 1},  {"Text", "Alignment", 2},      {"Text", "ScrollBars", 3},
    {"Text", "BorderStyle", 1},  {"CommandButton", "Style", 1}, {"cbCheck", "Value", 2},
    {"cbCheck", "Alignment", 1}, {"obOption", "Alignment", 1},  {"Pic", "BorderStyle", 1},
    {"Pic", "Appearance", 1},    {"Shape", "Shape", 5},         {"Shape", "BorderStyle", 6},
    {"Shape", "FillStyle", 7},   {"Shape", "BackStyle", 1},     {"pbar", "Orientation", 1},
    {"pbar", "Scrolling", 1},    {"pbar", "BorderStyle", 1},    {"pbar", "Appearance", 1},
};

} // namespace

using Members = SurfaceTest;

TEST_F(Members, ChoicesTakeTheirRangeAndRefuseTheNeighboursOfIt)
{
    for (const Choice& row : Choices) {
        const Ref<LiveControl> control = surface->array(QString::fromLatin1(row.array))->item(1);
        const Name name(row.property);
        for (std::int16_t value = 0; value <= row.highest; ++value) {
            control->put(name, Variant(value));
            EXPECT_EQ(values::toInteger(control->get(name)), value) << row.array << '.' << row.property;
        }
        for (const std::int16_t wrong : {std::int16_t(-1), std::int16_t(row.highest + 1)}) {
            EXPECT_EQ(errorOf([&] { control->put(name, Variant(wrong)); }), 380)
                << row.array << '.' << row.property << " = " << wrong;
            EXPECT_EQ(values::toInteger(control->get(name)), row.highest) << "a refused value changes nothing";
        }
    }
}

TEST_F(Members, NamesIgnoreCaseAndUnknownOnesAreReported)
{
    const Ref<LiveControl> label = surface->array(u"Label")->item(1);
    EXPECT_EQ(label->tryPutText(Name("CAPTION"), QStringLiteral("hello")), AccessStatus::Ok);
    EXPECT_EQ(static_cast<Label&>(*label).caption(), u"hello");
    EXPECT_EQ(label->tryPutText(Name("ACTION"), {}), AccessStatus::UnknownName);
    EXPECT_EQ(label->tryPutText(Name("INDEX"), QStringLiteral("7")), AccessStatus::ReadOnly);
    EXPECT_EQ(label->index(), 1);
}

TEST_F(Members, TypesHaveTheMembersOfTheirKindAndNoOthers)
{
    const auto has = [&](const char* array, const char* name) {
        return surface->array(QString::fromLatin1(array))->item(1)->members().find(Name(name)) != nullptr;
    };
    EXPECT_FALSE(has("pbar", "BackColor"));
    EXPECT_FALSE(has("pbar", "Font"));
    EXPECT_FALSE(has("Shape", "ForeColor"));
    EXPECT_TRUE(has("Shape", "BackColor"));
    EXPECT_FALSE(has("Pic", "PictureFile"));
    EXPECT_FALSE(has("Label", "TabIndex"));
    EXPECT_TRUE(has("Text", "TabStop"));
}

TEST_F(Members, MeasuresAreKeptAsGivenAndPlacedAtTheNearestPixel)
{
    const Ref<LiveControl> label = surface->array(u"Label")->item(1);
    label->move(107.3F, -8.0F, 22.4F, 22.6F);
    EXPECT_EQ(label->left(), 107.3F);
    EXPECT_EQ(label->top(), -8.0F);
    EXPECT_EQ(label->width(), 22.4F);
    EXPECT_EQ(label->bounds(), QRect(7, -1, 1, 2));
    label->move(30);
    EXPECT_EQ(label->left(), 30.0F);
    EXPECT_EQ(label->top(), -8.0F) << "what is left out stays";
}

TEST_F(Members, NegativeMeasuresAreRefusedAsAWhole)
{
    const Ref<LiveControl> label = surface->array(u"Label")->item(1);
    label->move(10, 20, 30, 40);
    EXPECT_EQ(errorOf([&] { label->move(99, 99.0F, -1.0F, 40.0F); }), 380);
    EXPECT_EQ(errorOf([&] { label->setHeight(-0.5F); }), 380);
    EXPECT_EQ(label->left(), 10.0F);
    EXPECT_EQ(label->height(), 40.0F);
    EXPECT_EQ(errorOf([&] { label->setWidth(0); }), 0) << "no size at all is a size";
}

TEST_F(Members, OnlyControlsWithAWindowHaveAHandleAndItLeadsBack)
{
    for (const char* windowless : {"Label", "Shape"})
        EXPECT_EQ(surface->array(QString::fromLatin1(windowless))->item(1)->hWnd(), 0);
    std::set<std::int32_t> handles{surface->hWnd()};
    for (const char* array : {"Text", "CommandButton", "Pic", "cbCheck", "obOption", "pbar"}) {
        const Ref<LiveControl> control = surface->array(QString::fromLatin1(array))->item(1);
        const std::int32_t handle = control->hWnd();
        EXPECT_GT(handle, 0);
        EXPECT_TRUE(handles.insert(handle).second) << "one handle, one control";
        EXPECT_EQ(control->hWnd(), handle);
        EXPECT_EQ(Surface::controlOfHandle(handle), control.get());
    }
    EXPECT_EQ(Surface::surfaceOfHandle(surface->hWnd()), surface.get());
    const std::int32_t last = surface->hWnd();
    surface.reset();
    EXPECT_EQ(Surface::surfaceOfHandle(last), nullptr);
}

TEST_F(Members, AfterUnloadingEveryLateBoundAccessRaisesObjectNotSet)
{
    for (const char* name : ArrayNames) {
        ControlArray* array = surface->array(QString::fromLatin1(name));
        const Ref<LiveControl> control = array->load(2);
        control->setVisible(true);
        SurfaceTest::settle();
        array->unload(2);
        EXPECT_FALSE(control->isLoaded());
        for (const Member& member : control->members().members()) {
            if (member.kind == Member::Kind::Property) {
                EXPECT_EQ(errorOf([&] { control->get(member.name); }), 91) << member.name.text().toStdString();
            }
            if (member.put) {
                EXPECT_EQ(errorOf([&] { control->put(member.name, Variant(std::int16_t(0))); }), 91);
            }
        }
        // Direct calls do nothing that anybody sees, and do not crash.
        control->move(1, 2.0F, 3.0F, 4.0F);
        control->setVisible(false);
        put(*control, "ToolTipText", QStringLiteral("x"));
        control->zOrder();
        EXPECT_EQ(control->hWnd(), 0);
        EXPECT_EQ(control->surface(), nullptr);
        EXPECT_EQ(errorOf([&] { control->setFocus(); }), 5);
    }
    SurfaceTest::settle();
}

TEST_F(Members, ControlsOutliveTheirSurface)
{
    std::vector<Ref<LiveControl>> all = surface->controls();
    ASSERT_EQ(all.size(), 8u);
    for (const auto& control : all)
        control->setVisible(true);
    surface->show();
    settle();
    surface.reset();
    for (const auto& control : all) {
        EXPECT_FALSE(control->isLoaded());
        EXPECT_EQ(errorOf([&] { control->get(Name("Left")); }), 91);
    }
}

} // namespace zan::surface::tests
