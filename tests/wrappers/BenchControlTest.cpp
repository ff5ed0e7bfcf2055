#include "wrappers/BenchControl.h"

#include "site/NodeObject.h"
#include "support/ErrorOf.h"
#include "support/FakePanel.h"
#include "support/FakeSite.h"

#include <gtest/gtest.h>

using namespace zan;
using document::Node;
using fake::FakeControl;
using test::errorOf;
using values::ErrorNumber;
using values::make;
using values::Name;
using values::Ref;
using values::Variant;
using wrappers::BenchControl;

namespace {

QString textOf(const Node& node, const char* name)
{
    return node.child(Name(name)).text();
}

bool has(const Node& node, const char* name)
{
    return bool(node.child(Name(name)));
}

/// A live control with neither colours nor measures.
class BareControl : public fake::LooseControl
{
public:
    QString Tag() const { return {}; }
    void setTag(const QString&) {}
    const binding::MemberTable& members() const override
    {
        static const binding::MemberTable table(
            "BareControl", nullptr, {binding::property<&BareControl::Tag, &BareControl::setTag>("Tag")});
        return table;
    }
};

struct Wrapped
{
    Ref<BenchControl> wrapper = make<BenchControl>();
    Ref<FakeControl> live = make<FakeControl>();
    Wrapped() { wrapper->setControl(live); }
};

} // namespace

TEST(AbstractControl, EveryMemberGivesZeroEmptyOrNothingAndDoesNotFail)
{
    const auto control = make<wrappers::iBenchControl>();
    for (const binding::Member& member : control->members().members()) {
        if (member.kind == binding::Member::Kind::Property && member.get) {
            const Variant value = control->get(member.name);
            EXPECT_TRUE(value.isObject() ? value.object() == nullptr
                                         : values::toText(value) == QLatin1String("0") ||
                                               values::toText(value).isEmpty() || values::toText(value) == u"False")
                << qPrintable(member.name.text());
        }
    }
    control->Move(1);
    control->Drag();
    control->UpdateNode();
    control->ZOrder();
    EXPECT_FALSE(control->XMLNode());
}

TEST(Wrapper, IsBornWithAControlElementAnEmptyFontAndTheWindowsSettings)
{
    const auto wrapper = make<BenchControl>();
    EXPECT_EQ(wrapper->XMLNode().xml(), u"<CONTROL><FONT/><USEWINDOWSETTINGS>-1</USEWINDOWSETTINGS></CONTROL>");
    EXPECT_TRUE(wrapper->UseWindowSettings());
}

TEST(Wrapper, WithoutALiveControlMeasuresReadZeroAndWritesReachTheNodeOnly)
{
    const auto wrapper = make<BenchControl>();
    wrapper->setLeft(120.5f);
    wrapper->setVisible(true);
    wrapper->setBackColour(values::ButtonFace);
    EXPECT_EQ(wrapper->Left(), 0);
    EXPECT_EQ(wrapper->hWnd(), 0);
    EXPECT_EQ(wrapper->BackColour().code, 0);
    EXPECT_EQ(wrapper->Font(), nullptr);
    EXPECT_EQ(textOf(wrapper->XMLNode(), "LEFT"), u"120.5");
    EXPECT_EQ(textOf(wrapper->XMLNode(), "VISIBLE"), u"-1");
    EXPECT_EQ(textOf(wrapper->XMLNode(), "BACKCOLOR"), u"-2147483633");
}

TEST(Wrapper, WritesTheLiveControlFirstAndTheNodeAfterIt)
{
    Wrapped w;
    w.live->refusesWidth = true;
    EXPECT_THROW(w.wrapper->setWidth(99), values::RuntimeError);
    EXPECT_FALSE(has(w.wrapper->XMLNode(), "WIDTH"));
    w.wrapper->setToolTipText(QStringLiteral("tip"));
    EXPECT_EQ(w.live->toolTip, u"tip");
    EXPECT_EQ(w.wrapper->ToolTipText(), u"tip");
}

TEST(Wrapper, IndexGoesToTheNodeAndToTheTag)
{
    Wrapped w;
    EXPECT_EQ(w.live->tag, u"0"); // no INDEX yet
    w.wrapper->setIndex(17);
    EXPECT_EQ(textOf(w.wrapper->XMLNode(), "INDEX"), u"17");
    EXPECT_EQ(w.live->tag, u"17");
}

TEST(Wrapper, LoadSetsPropertiesByElementNameInOrderAndSkipsUnknownOnes)
{
    Wrapped w;
    w.wrapper->setXMLNode(fake::tree("<CONTROL><TYPE>VB.Label</TYPE><NOSUCH>1</NOSUCH><LEFT>600</LEFT>"
                                     "<caption>low</caption><CAPTION>last wins</CAPTION><HWND>5</HWND>"
                                     "<VISIBLE>-1</VISIBLE><BACKCOLOR>255</BACKCOLOR></CONTROL>"));
    EXPECT_EQ(w.live->left, 600);
    EXPECT_EQ(w.live->caption, u"last wins");
    EXPECT_TRUE(w.live->visible);
    EXPECT_EQ(w.live->backColor, 255);
    EXPECT_EQ(w.live->handle, 0);
    EXPECT_EQ(w.wrapper->ControlType(), u"VB.Label");
}

TEST(Wrapper, LoadAddsAFontElementWhereThereIsNone)
{
    Wrapped w;
    w.wrapper->setXMLNode(fake::tree("<CONTROL><TOP>1</TOP></CONTROL>"));
    EXPECT_EQ(w.wrapper->XMLNode().xml(), u"<CONTROL><TOP>1</TOP><FONT/></CONTROL>");
}

TEST(Wrapper, StoredFontHasNoEffectWhileTheControlFollowsTheWindow)
{
    Wrapped w;
    w.wrapper->setXMLNode(fake::tree("<CONTROL><USEWINDOWSETTINGS>-1</USEWINDOWSETTINGS>"
                                     "<FONT><NAME>Other</NAME><SIZE>12</SIZE></FONT></CONTROL>"));
    EXPECT_EQ(w.live->font->name, u"Window Font");
    EXPECT_EQ(textOf(w.wrapper->XMLNode().child(Name("FONT")), "NAME"), u"Other");
}

TEST(Wrapper, StoredFontIsSetByNameAndItsSizeAssignedToItselfOtherwise)
{
    Wrapped w;
    w.wrapper->setXMLNode(
        fake::tree("<CONTROL><FONT><NAME>Other</NAME><SIZE>12</SIZE><BOLD>-1</BOLD></FONT></CONTROL>"));
    EXPECT_EQ(w.live->font->name, u"Other");
    EXPECT_EQ(w.live->font->size, 12);
    EXPECT_TRUE(w.live->font->bold);
    EXPECT_EQ(w.live->font->sizeWrites, 2);
}

TEST(Wrapper, PictureFileIsLoadedAndAssignedAndAMissingFileCostsNothing)
{
    Wrapped w;
    const auto picture = make<fake::FakeFont>();
    const wrappers::PictureLoader loader = [&](const QString& file) -> Variant {
        if (file != u"there.bmp")
            values::raise(ErrorNumber::FileNotFound);
        return Variant(picture);
    };
    w.wrapper->setPictureLoader(&loader);
    w.wrapper->setXMLNode(fake::tree("<CONTROL><PICTUREFILE>gone.bmp</PICTUREFILE><LEFT>3</LEFT></CONTROL>"));
    EXPECT_EQ(w.live->picture, nullptr);
    EXPECT_EQ(w.live->left, 3);
    w.wrapper->setXMLNode(fake::tree("<CONTROL><PICTUREFILE>there.bmp</PICTUREFILE></CONTROL>"));
    EXPECT_EQ(w.live->picture.get(), picture.get());
}

TEST(Wrapper, ChannelWritesTheBindStringFromTheChannelsOwnKeys)
{
    Wrapped w;
    const auto logger = make<fake::FakeLogger>();
    const auto channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("STAGE"));
    w.wrapper->setChannel(channel);
    EXPECT_EQ(w.wrapper->BindTo(), u"RTD|STAGE");
    w.wrapper->setChannel({});
    EXPECT_EQ(w.wrapper->BindTo(), u"");
    EXPECT_FALSE(has(w.wrapper->XMLNode(), "BINDTO"));
}

TEST(Wrapper, ChannelWhoseNodeHasNoParentLeavesTheBindStringAsItWas)
{
    Wrapped w;
    w.wrapper->setBindTo(QStringLiteral("A|B"));
    const auto loose = make<fake::FakeChannel>();
    w.wrapper->setChannel(loose);
    EXPECT_EQ(w.wrapper->BindTo(), u"A|B");
    EXPECT_EQ(w.wrapper->Channel().get(), loose.get());
}

TEST(Wrapper, ChannelOfAWindowWithoutKeyEmptiesTheBindString)
{
    Wrapped w;
    w.wrapper->setBindTo(QStringLiteral("A|B"));
    const auto logger = make<fake::FakeLogger>();
    const auto channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("STAGE"));
    logger->scheme->window(QStringLiteral("RTD"))->setKey(QString());
    w.wrapper->setChannel(channel);
    EXPECT_EQ(w.wrapper->BindTo(), u"");
}

TEST(Wrapper, MoveWritesGivenPartsAndReadsOmittedOnesFromTheLiveControl)
{
    Wrapped w;
    w.wrapper->Move(0, 50, {}, {});
    ASSERT_EQ(w.live->moves.size(), 1u);
    EXPECT_EQ(w.live->moves[0], (std::vector<float>{0, 50, 30, 40}));
    EXPECT_EQ(textOf(w.wrapper->XMLNode(), "TOP"), u"50");
    EXPECT_FALSE(has(w.wrapper->XMLNode(), "WIDTH"));
    EXPECT_FALSE(has(w.wrapper->XMLNode(), "LEFT")); // a position of exactly 0 is stored by absence
}

TEST(Wrapper, UpdateNodeStoresColoursPositionAndFontAndForcesZeroPositions)
{
    Wrapped w;
    w.live->left = 0;
    w.live->foreColor = 0;
    w.live->visible = true;
    w.wrapper->UpdateNode();
    const Node node = w.wrapper->XMLNode();
    EXPECT_EQ(textOf(node, "BACKCOLOR"), u"7");
    EXPECT_FALSE(has(node, "FORECOLOR"));
    EXPECT_EQ(textOf(node, "VISIBLE"), u"-1");
    EXPECT_EQ(textOf(node, "LEFT"), u"0");
    EXPECT_EQ(textOf(node, "HEIGHT"), u"40");
    EXPECT_EQ(node.child(Name("FONT")).xml(), u"<FONT><NAME>Window Font</NAME><SIZE>8.25</SIZE></FONT>");
}

TEST(Wrapper, UpdateNodeRemovesWhatTheLiveControlDoesNotHave)
{
    const auto wrapper = make<BenchControl>();
    wrapper->setXMLNode(fake::tree("<CONTROL><BACKCOLOR>5</BACKCOLOR><LEFT>4</LEFT></CONTROL>"));
    wrapper->setControl(make<BareControl>());
    wrapper->UpdateNode();
    EXPECT_FALSE(has(wrapper->XMLNode(), "BACKCOLOR"));
    EXPECT_EQ(textOf(wrapper->XMLNode(), "LEFT"), u"4");
}

TEST(Wrapper, ZOrderDoesNothingForAWorkingControlAndFailsWithoutOne)
{
    Wrapped w;
    EXPECT_NO_THROW(w.wrapper->ZOrder(1));
    const auto empty = make<BenchControl>();
    try {
        empty->ZOrder(1);
        FAIL() << "raised nothing";
    } catch (const values::RuntimeError& error) {
        EXPECT_TRUE(error.is(ErrorNumber::ObjectNotSet));
    }
}

TEST(Wrapper, GrabHandlesAreMadeOnceAndTheirStateReachesTheNode)
{
    Wrapped w;
    w.wrapper->setShowGrabHandles(true); // no handles yet: only the node is written
    EXPECT_FALSE(w.wrapper->ShowGrabHandles());
    EXPECT_EQ(textOf(w.wrapper->XMLNode(), "SHOWGRABHANDLES"), u"-1");
    w.wrapper->InitGrabHandles(1, 2, values::rgb(0, 0, 255));
    const display::cGrabHandles* first = w.wrapper->grabHandles();
    w.wrapper->InitGrabHandles(3, 4, values::rgb(255, 0, 0));
    EXPECT_EQ(w.wrapper->grabHandles(), first);
    w.wrapper->setShowGrabHandles(true);
    EXPECT_TRUE(w.wrapper->ShowGrabHandles());
    w.wrapper->setShowGrabHandles(false);
    EXPECT_FALSE(has(w.wrapper->XMLNode(), "SHOWGRABHANDLES"));
}

TEST(Wrapper, ControlThatIsNoLiveControlOfASurfaceIsRefusedBeforeAnythingIsStored)
{
    Wrapped w;
    const auto other = make<BenchControl>();
    const Ref<binding::Object> refused[] = {w.wrapper, other, make<fake::FakeFont>()};
    for (const auto& object : refused) {
        EXPECT_EQ(errorOf([&] { w.wrapper->setControl(object); }), int(ErrorNumber::TypeMismatch));
        EXPECT_EQ(errorOf([&] { w.wrapper->putReference(Name("Control"), Variant(object)); }),
                  int(ErrorNumber::TypeMismatch));
        EXPECT_EQ(w.wrapper->Control().get(), w.live.get());
    }
    EXPECT_EQ(w.wrapper->Left(), w.live->left);
    w.wrapper->setControl({});
    EXPECT_FALSE(w.wrapper->Control());
}

TEST(Wrapper, TwoWrappersCannotBeTheLiveControlsOfEachOther)
{
    const auto first = make<BenchControl>();
    const auto second = make<BenchControl>();
    EXPECT_EQ(errorOf([&] { first->setControl(second); }), int(ErrorNumber::TypeMismatch));
    EXPECT_EQ(errorOf([&] { second->setControl(first); }), int(ErrorNumber::TypeMismatch));
    EXPECT_EQ(first->Left(), 0);
    first->UpdateNode();
}

TEST(Wrapper, ColourOfATypeWithoutItIsSilentAndReachesTheNode)
{
    const auto wrapper = make<BenchControl>();
    wrapper->setControl(make<BareControl>());
    EXPECT_EQ(errorOf([&] {
                  wrapper->setBackColour({255});
                  wrapper->setForeColour({128});
              }),
              0);
    EXPECT_EQ(textOf(wrapper->XMLNode(), "BACKCOLOR"), u"255");
    EXPECT_EQ(textOf(wrapper->XMLNode(), "FORECOLOR"), u"128");
}

TEST(Wrapper, NodeIsReadAndLoadedByName)
{
    Wrapped w;
    const Variant own = w.wrapper->get(Name("XMLNode"));
    EXPECT_EQ(binding::Marshal<Node>::from(own), w.wrapper->XMLNode());
    const Node other = fake::tree("<CONTROL><LEFT>600</LEFT></CONTROL>");
    w.wrapper->putReference(Name("xmlnode"), binding::Marshal<Node>::to(other));
    EXPECT_EQ(w.wrapper->XMLNode(), other);
    EXPECT_EQ(w.live->left, 600);
}

TEST(Wrapper, OfTwoFontsOrPicturesTheLastOneCountsAndAPrefixIsNoPartOfTheName)
{
    Wrapped w;
    std::vector<QString> loaded;
    const wrappers::PictureLoader loader = [&](const QString& file) {
        loaded.push_back(file);
        return Variant(make<fake::FakeFont>());
    };
    w.wrapper->setPictureLoader(&loader);
    w.wrapper->setXMLNode(
        fake::tree("<CONTROL xmlns:p=\"urn:p\"><FONT><NAME>First</NAME></FONT><PICTUREFILE>a</PICTUREFILE>"
                   "<PICTUREFILE>b</PICTUREFILE><p:FONT><NAME>Last</NAME></p:FONT></CONTROL>"));
    EXPECT_EQ(w.live->font->name, u"Last");
    EXPECT_EQ(loaded, std::vector<QString>{QStringLiteral("b")});
    w.live->font->name = QStringLiteral("Newer");
    w.wrapper->UpdateNode();
    EXPECT_EQ(textOf(w.wrapper->XMLNode().child(Name("FONT")), "NAME"), u"First");
    EXPECT_EQ(textOf(w.wrapper->XMLNode().child(Name("p:FONT")), "NAME"), u"Newer");
}

TEST(Wrapper, PositionThatIsStoredAlreadyIsNoChangeOfTheDocument)
{
    const Node root = document::XMLOps::NewDocument().createElement(Name("SCHEME"));
    root.ownerDocument().appendChild(root);
    const Node control = root.createElement(Name("CONTROL"));
    root.appendChild(control);
    Wrapped w;
    w.wrapper->setXMLNode(control);
    w.live->left = 0;
    w.wrapper->UpdateNode();
    EXPECT_TRUE(document::XMLOps::IsMarkedChanged(root));
    document::XMLOps::UnmarkChanged(root);
    w.wrapper->UpdateNode();
    EXPECT_FALSE(document::XMLOps::IsMarkedChanged(root));
    w.live->left = 15;
    w.wrapper->UpdateNode();
    EXPECT_TRUE(document::XMLOps::IsMarkedChanged(root));
}

TEST(Wrapper, ChannelThatBindsItToAnotherOneWhenAskedLeavesThatOne)
{
    struct Rebinding : fake::FakeChannel
    {
        std::function<void()> asked;
        Node XMLNode() const override
        {
            if (asked)
                asked();
            return FakeChannel::XMLNode();
        }
    };
    Wrapped w;
    const auto logger = make<fake::FakeLogger>();
    const auto other = logger->channel(QStringLiteral("RTD"), QStringLiteral("OTHER"));
    const auto channel = make<Rebinding>();
    logger->scheme->window(QStringLiteral("RTD"))->Add(channel, QStringLiteral("FIRST"));
    channel->asked = [&] {
        if (w.wrapper->Channel() == channel)
            w.wrapper->setChannel(other);
    };
    w.wrapper->setChannel(channel);
    EXPECT_EQ(w.wrapper->Channel().get(), other.get());
    EXPECT_EQ(w.wrapper->BindTo(), u"RTD|OTHER");
}
