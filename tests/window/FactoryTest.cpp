#include "WindowFixture.h"

#include "surface/host/Surface.h"
#include "window/ControlFactory.h"
#include "window/ControlTypes.h"

using namespace zan;
using namespace zan::window;
using binding::Variant;
using values::Name;
using values::Ref;
using wrappers::iBenchControl;

namespace {
class Factory : public WindowTest
{
protected:
    Ref<iBenchControl> add(const char* type) { return panel->Controls()->Add(QString::fromLatin1(type)); }
};
} // namespace

TEST_F(Factory, FirstControlIsTheTemplateAndTheSecondLiesFiftyTwipsBelow)
{
    const auto first = add("VB.Label");
    const auto second = add("VB.Label");
    EXPECT_EQ(live(1)->index(), 1);
    EXPECT_EQ(first->Left(), 4560);
    EXPECT_EQ(first->Top(), 1560);
    EXPECT_EQ(first->Width(), 825);
    EXPECT_EQ(first->Height(), 225);
    EXPECT_EQ(live(2)->index(), 2);
    EXPECT_EQ(second->Left(), 4560);
    EXPECT_EQ(second->Top(), 1560 + 225 + 50);
    EXPECT_TRUE(live(2)->visible());
}

TEST_F(Factory, TheTabKeyFollowsTheOrderOfTheControls)
{
    fill("A", "<CONTROL><TYPE>VB.CheckBox</TYPE></CONTROL><CONTROL><TYPE>VB.TextBox</TYPE></CONTROL>"
              "<CONTROL><TYPE>VB.CommandButton</TYPE></CONTROL><CONTROL><TYPE>VB.TextBox</TYPE></CONTROL>"
              "<CONTROL><TYPE>VB.CheckBox</TYPE></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    for (int place = 2; place <= 5; ++place)
        EXPECT_LT(live(place - 1)->tabPlace(), live(place)->tabPlace()) << place;
}

TEST_F(Factory, UnknownKeyGivesNothingAndTouchesNoTemplate)
{
    EXPECT_FALSE(add("vb.label"));
    EXPECT_FALSE(add("No.Such"));
    EXPECT_FALSE(add(""));
    add("VB.Label");
    EXPECT_EQ(live(1)->index(), 1);
}

TEST_F(Factory, OptionButtonHasNoMenuEntryYetLoads)
{
    for (const NewControlMenuItem& item : panel->newControlMenu())
        EXPECT_NE(item.typeKey, u"VB.OptionButton");
    fill("A", "<CONTROL><TYPE>VB.OptionButton</TYPE><CAPTION>Auto</CAPTION></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(property(1, "Caption"), u"Auto");
}

TEST_F(Factory, MenuHasTheTypesInTheirOrder)
{
    QStringList plain;
    for (const NewControlMenuItem& item : panel->newControlMenu())
        plain << item.caption.toString();
    EXPECT_EQ(plain.first(6).join(u' '), u"&Label &Text Box &Command Button &Picture &Checkbox &Shape");
    EXPECT_TRUE(plain.contains(u"Progress &Bar"));
}

TEST_F(Factory, AfterAClearTheFirstNewControlIsAFurtherElementAndTheTemplateStaysHidden)
{
    add("VB.Label");
    panel->Clear();
    const Ref<surface::LiveControl> templateElement = panel->surface().array(u"Label")->item(1);
    EXPECT_FALSE(templateElement->visible());
    add("VB.Label");
    EXPECT_EQ(live(1)->index(), 2);
    EXPECT_FALSE(templateElement->visible());
}

TEST_F(Factory, RemovingTheTemplateHidesItAndRemovingOthersUnloadsThem)
{
    add("VB.TextBox");
    add("VB.TextBox");
    const Ref<surface::LiveControl> first = live(1);
    const Ref<surface::LiveControl> second = live(2);
    panel->Controls()->Remove(Variant(1));
    EXPECT_TRUE(first->isLoaded());
    EXPECT_FALSE(first->visible());
    panel->Controls()->Remove(Variant(1));
    EXPECT_FALSE(second->isLoaded());
}

TEST_F(Factory, NewLabelOnAnUnlockedSurfaceShowsABorder)
{
    add("VB.Label");
    EXPECT_EQ(property(1, "BorderStyle"), u"0");
    panel->setLockPositions(false);
    add("VB.Label");
    EXPECT_EQ(property(2, "BorderStyle"), u"1");
}

TEST_F(Factory, NewControlsTakeACopyOfTheWindowsFontAndItsColours)
{
    panel->setForeColor(values::rgb(9, 8, 7));
    panel->Font()->setSize({170000});
    add("VB.CheckBox");
    const Variant font = live(1)->get(Name("Font"));
    EXPECT_NE(font.object(), panel->Font().get());
    EXPECT_EQ(values::toDouble(binding::objectOf(font).get(Name("Size"))), 17.0);
    EXPECT_EQ(property(1, "ForeColor"), QString::number(values::rgb(9, 8, 7).code));
}

TEST_F(Factory, AControlThatSharesTheWindowsFontBeforeItIsPlacedGetsItsOwn)
{
    panel->surface().array(u"Label")->item(1)->putReference(Name("Font"), Variant(panel->Font()));
    add("VB.Label");
    panel->Font()->setSize({170000});
    const Variant font = live(1)->get(Name("Font"));
    EXPECT_NE(values::toDouble(binding::objectOf(font).get(Name("Size"))), 17.0);
}

TEST_F(Factory, TypesAreKeptInOneTableWithTheirRectangles)
{
    EXPECT_EQ(controlTypes().size(), 13u);
    EXPECT_EQ(controlTypes().find(u"SITEMAP")->design.top, -120);
    EXPECT_EQ(controlTypes().find(u"MSComctlLib.ProgressBar")->arrayName, u"pbar");
    EXPECT_EQ(controlTypes().find(u"sitemap"), nullptr);
}

TEST_F(Factory, TypeWhoseLibraryIsNotThereIsAnUnknownTypeAndItsNodeStays)
{
    fill("A", "<CONTROL><TYPE>ZanDataControls.ENTViewer</TYPE></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(panel->Controls()->Count(), 0);
    EXPECT_EQ(nodeOf("A").children(Name("CONTROL")).size(), 1u);
}

TEST_F(Factory, ControlsLieOverThoseThatWerePlacedBeforeThem)
{
    fill("A", "<CONTROL><TYPE>VB.Shape</TYPE><LEFT>0</LEFT><TOP>0</TOP><WIDTH>1500</WIDTH><HEIGHT>1500</HEIGHT>"
              "<FILLSTYLE>0</FILLSTYLE><FILLCOLOR>255</FILLCOLOR></CONTROL>"
              "<CONTROL><TYPE>VB.Label</TYPE><LEFT>300</LEFT><TOP>300</TOP><WIDTH>600</WIDTH><HEIGHT>600</HEIGHT>"
              "<BACKSTYLE>1</BACKSTYLE><BACKCOLOR>65280</BACKCOLOR></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    panel->resize(120, 120);
    const QImage picture = panel->grab().toImage();
    EXPECT_EQ(picture.pixelColor(40, 40), QColor(0, 255, 0)) << "the first label, the template, over the shape";
    EXPECT_EQ(picture.pixelColor(10, 10), QColor(255, 0, 0));
}

TEST_F(Factory, LightsAndBarsArePlacedAndFollowTheirChannels)
{
    logger->setValue(QStringLiteral("RTD"), QStringLiteral("LEVEL"), Variant(3));
    fill("A", "<CONTROL><TYPE>ZanBenchWindow.StatusLight</TYPE><BINDTO>RTD|LEVEL</BINDTO>"
              "<COMPAREVALUE>3</COMPAREVALUE></CONTROL>"
              "<CONTROL><TYPE>ZanBenchWindow.ValueBar</TYPE><BINDTO>RTD|LEVEL</BINDTO></CONTROL>");
    panel->LoadWindow(QStringLiteral("A"));
    EXPECT_EQ(property(1, "Value"), u"True");
    EXPECT_EQ(property(2, "Value"), u"3");
    EXPECT_EQ(live(1)->name(), u"StatusLight1");
    EXPECT_EQ(live(2)->height(), 5055);
}

TEST_F(Factory, EveryTypeHasAKeyAndAnArrayOfItsOwnAndARectangle)
{
    QStringList keys, arrays;
    for (const wrappers::ControlType& type : controlTypes()) {
        keys << type.key.toString();
        arrays << type.arrayName.toString().toLower();
        EXPECT_GT(type.design.width, 0) << keys.last().toStdString();
        EXPECT_GT(type.design.height, 0) << keys.last().toStdString();
        EXPECT_EQ(controlTypes().ofArray(arrays.last()), &type);
    }
    EXPECT_EQ(keys.removeDuplicates(), 0);
    EXPECT_EQ(arrays.removeDuplicates(), 0);
}

TEST_F(Factory, EditFamilyOfEachArrayStandsInItsRow)
{
    using wrappers::OnDrop;
    using wrappers::OnPress;
    struct Row
    {
        const char16_t* array;
        OnPress press;
        bool hover, focus;
        OnDrop drop;
    };
    constexpr OnPress Move = OnPress::SystemMove;
    constexpr OnPress Drag = OnPress::HostDrag;
    const Row rows[]{{u"CommandButton", Move, true, true, OnDrop::Nothing},
                     {u"cbCheck", Move, true, true, OnDrop::PassesOnToSurface},
                     {u"obOption", Move, true, true, OnDrop::Nothing},
                     {u"Text", Move, true, true, OnDrop::Nothing},
                     {u"Pic", Move, false, false, OnDrop::Nothing},
                     {u"pbar", Move, true, false, OnDrop::Nothing},
                     {u"Label", Drag, true, false, OnDrop::MovesIt},
                     {u"ENT", Drag, true, false, OnDrop::MovesIt},
                     {u"SiteMap1", Drag, true, false, OnDrop::MovesIt},
                     {u"ZanGraph1", Drag, true, false, OnDrop::Nothing},
                     {u"StatusLight1", Drag, true, false, OnDrop::MovesIt},
                     {u"ValueBar", Drag, true, false, OnDrop::MovesIt},
                     {u"Shape", OnPress::Nothing, false, false, OnDrop::Nothing}};
    for (const Row& row : rows) {
        const std::string name = QString::fromUtf16(row.array).toStdString();
        const wrappers::ControlType* type = controlTypes().ofArray(QStringView(row.array));
        ASSERT_TRUE(type) << name;
        EXPECT_EQ(type->press, row.press) << name;
        EXPECT_EQ(type->selectsOnHover, row.hover) << name;
        EXPECT_EQ(type->selectsOnFocus, row.focus) << name;
        EXPECT_EQ(type->drop, row.drop) << name;
    }
}

TEST_F(Factory, KeptDesignValuesRestyleTheTemplatesOfThePlainControlsAlone)
{
    binding::PropertyBag bag;
    bag.WriteProperty(Name("ForeColor"), Variant(values::rgb(1, 2, 3).code));
    panel->ReadProperties(bag);
    for (const wrappers::ControlType& type : controlTypes()) {
        const surface::ControlArray* array = panel->surface().array(type.arrayName);
        Variant colour;
        if (!array || array->item(1)->tryGet(Name("ForeColor"), colour) != binding::AccessStatus::Ok)
            continue;
        static const QStringList plain{"cbCheck", "Label", "CommandButton", "obOption", "Pic", "Text"};
        EXPECT_EQ(values::toLong(colour) == values::rgb(1, 2, 3).code, plain.contains(array->name()))
            << array->name().toStdString();
    }
}
