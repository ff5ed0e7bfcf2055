#include "CollectionFixture.h"

#include "site/NodeObject.h"

#include <stdexcept>

using namespace zan;
using namespace zan::test;

TEST_F(Collection, LoadMakesControlsInDocumentOrderWithPlaceKeysAndIndices)
{
    load(ThreeLabels);
    EXPECT_EQ(controls->Count(), 3);
    EXPECT_EQ(keys(), u"@1 @2 @3"); // the stored KEY is overwritten
    EXPECT_EQ(window.made[2]->tag, u"3");
    EXPECT_TRUE(window.made[0]->visible);
}

TEST_F(Collection, LoadShowsEveryControlWhateverItsNodeSaid)
{
    load("<WINDOW><CONTROL><TYPE>A</TYPE><VISIBLE>0</VISIBLE></CONTROL></WINDOW>");
    EXPECT_TRUE(window.made[0]->visible);
    EXPECT_TRUE(controls->Control(Variant(1))->Visible());
}

TEST_F(Collection, UnknownTypeIsPassedOverAndStaysInTheTree)
{
    load("<WINDOW><CONTROL><TYPE>UNKNOWN</TYPE></CONTROL><CONTROL><TYPE>A</TYPE></CONTROL></WINDOW>");
    EXPECT_EQ(controls->Count(), 1);
    EXPECT_EQ(keys(), u"@1");
    EXPECT_EQ(node.children(Name("CONTROL")).size(), 2u);
}

TEST_F(Collection, WindowWithoutControlsGivesAnEmptyListAndIsMarkedWithoutData)
{
    load("<WINDOW/>");
    EXPECT_EQ(controls->Count(), 0);
    EXPECT_FALSE(controls->HaveData());
}

TEST_F(Collection, ProtectedControlsAreHiddenRightAtTheLoad)
{
    controls->setHideProtectedControls(true);
    load("<WINDOW><CONTROL><TYPE>A</TYPE><HIDEWHENPROTECTED>-1</HIDEWHENPROTECTED></CONTROL>"
         "<CONTROL><TYPE>A</TYPE></CONTROL></WINDOW>");
    EXPECT_FALSE(window.made[0]->visible);
    EXPECT_TRUE(window.made[1]->visible);
    controls->setHideProtectedControls(false);
    EXPECT_TRUE(window.made[0]->visible);
}

TEST_F(Collection, RemovalRenumbersIndicesAndTagsButKeepsKeys)
{
    load(ThreeLabels);
    controls->Remove(Variant(2));
    EXPECT_EQ(controls->Count(), 2);
    EXPECT_EQ(controls->Control(Variant(2))->Index(), 2);
    EXPECT_EQ(window.made[2]->tag, u"2");
    EXPECT_EQ(keys(), u"@1 @3");
    EXPECT_EQ(node.children(Name("CONTROL")).size(), 2u);
}

TEST_F(Collection, PasteAfterARemovalFailsWhenItsListKeyExists)
{
    load(ThreeLabels);
    controls->Remove(Variant(2));
    const QString copied = controls->Control(Variant(1))->XMLNode().xml();
    EXPECT_EQ(errorOf([&] { controls->AddFromXML(copied); }), int(ErrorNumber::DuplicateKey));
    EXPECT_EQ(controls->Count(), 2);
}

TEST_F(Collection, ControlWithoutAPlaceInTheListStaysNeitherOnTheSurfaceNorOnItsChannel)
{
    const auto logger = make<fake::FakeLogger>();
    const auto channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("STAGE"));
    window.windows = logger->scheme->Windows();
    load("<WINDOW><CONTROL><TYPE>A</TYPE><BINDTO>RTD|STAGE</BINDTO></CONTROL><CONTROL><TYPE>A</TYPE></CONTROL>"
         "<CONTROL><TYPE>A</TYPE></CONTROL></WINDOW>");
    controls->Remove(Variant(2));
    const QString copied = controls->Control(Variant(1))->XMLNode().xml();
    EXPECT_EQ(errorOf([&] { controls->AddFromXML(copied); }), int(ErrorNumber::DuplicateKey));
    EXPECT_TRUE(window.made.back()->discarded);
    EXPECT_EQ(channel->useCount, 1);
    EXPECT_EQ(node.children(Name("CONTROL")).size(), 2u);
}

TEST_F(Collection, PasteKeepsTheCopiedKeySoThatASearchFindsTheFirst)
{
    load(ThreeLabels);
    const auto pasted = controls->AddFromXML(controls->Control(Variant(2))->XMLNode().xml());
    ASSERT_TRUE(pasted);
    EXPECT_EQ(pasted->Key(), u"@2");
    EXPECT_EQ(pasted->Index(), 4);
    EXPECT_EQ(controls->Control(Variant(u"@2"))->Index(), 2);
    EXPECT_EQ(node.children(Name("CONTROL")).size(), 4u);
}

TEST_F(Collection, PasteOfAnythingElseIsNothing)
{
    load(ThreeLabels);
    EXPECT_FALSE(controls->AddFromXML(QStringLiteral("plain text")));
    EXPECT_FALSE(controls->AddFromXML(QStringLiteral("<CONTROL/>")));
    EXPECT_EQ(controls->Count(), 3);
}

TEST_F(Collection, RemovalOfTheTemplateHidesItAndOfAnyOtherElementUnloadsIt)
{
    load(ThreeLabels);
    controls->Remove(Variant(1));
    EXPECT_FALSE(window.made[0]->visible);
    EXPECT_FALSE(window.made[0]->discarded);
    controls->Remove(Variant(1));
    EXPECT_TRUE(window.made[1]->discarded);
}

TEST_F(Collection, ControlIsFoundByItsNodesKeyInAnyCaseAndByPlace)
{
    load(ThreeLabels);
    controls->Control(Variant(2))->setKey(QStringLiteral("Pump"));
    EXPECT_EQ(controls->Control(Variant(u"pUMP"))->Index(), 2);
    EXPECT_EQ(controls->Control(Variant(u"@1"))->Index(), 1);
    EXPECT_EQ(controls->Control(Variant(2.0))->Index(), 2);
    EXPECT_EQ(errorOf([&] { controls->Control(Variant(u"@2")); }), int(ErrorNumber::SubscriptOutOfRange));
    EXPECT_EQ(errorOf([&] { controls->Control(Variant(0)); }), int(ErrorNumber::SubscriptOutOfRange));
    EXPECT_EQ(errorOf([&] { controls->Control(Variant(4)); }), int(ErrorNumber::SubscriptOutOfRange));
}

TEST_F(Collection, RemovalOfWhatIsNotThereFailsBeforeAnythingChanges)
{
    load(ThreeLabels);
    EXPECT_EQ(errorOf([&] { controls->Remove(Variant(4)); }), int(ErrorNumber::SubscriptOutOfRange));
    EXPECT_EQ(errorOf([&] { controls->Remove(Variant(u"none")); }), int(ErrorNumber::InvalidCall));
    EXPECT_EQ(keys(), u"@1 @2 @3");
    controls->Remove(Variant(u"@2")); // a list key
    EXPECT_EQ(keys(), u"@1 @3");
}

TEST_F(Collection, AddAppendsTheNodeRefreshesEverythingAndReturnsTheWrapper)
{
    load(ThreeLabels);
    live.updated.clear();
    const auto added = controls->Add(QStringLiteral("VB.TextBox"), QStringLiteral("Setpoint"));
    ASSERT_TRUE(added);
    EXPECT_EQ(added->Index(), 4);
    EXPECT_EQ(added->Key(), u"Setpoint");
    EXPECT_TRUE(added->XMLNode().parent() == node);
    EXPECT_EQ(live.updated.size(), 4u);
    EXPECT_FALSE(controls->Add(QStringLiteral("UNKNOWN")));
    EXPECT_EQ(controls->Count(), 4);
}

TEST_F(Collection, AddWritesTheKeyOnlyWhenTheArgumentWasGiven)
{
    load("<WINDOW/>");
    const auto without = controls->Add(QStringLiteral("A"));
    const auto empty = controls->Add(QStringLiteral("A"), QString());
    EXPECT_EQ(without->Key(), u"");
    EXPECT_EQ(empty->Key(), u"");
    controls->Add(QStringLiteral("A"), QStringLiteral("k"));
    EXPECT_EQ(errorOf([&] { controls->Add(QStringLiteral("A"), QStringLiteral("K")); }),
              int(ErrorNumber::DuplicateKey));
}

TEST_F(Collection, AddBeforeAnyLoadGoesToTheDetachedWindowElement)
{
    const auto added = controls->Add(QStringLiteral("A"));
    EXPECT_EQ(added->XMLNode().parent().name().text(), u"WINDOW");
    load("<WINDOW/>");
    EXPECT_EQ(controls->Count(), 0);
}

TEST_F(Collection, BoundControlsTakeTheirChannelUpAndCountIt)
{
    const auto logger = make<fake::FakeLogger>();
    const auto channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("STAGE"));
    window.windows = logger->scheme->Windows();
    load("<WINDOW><CONTROL><TYPE>A</TYPE><BINDTO>rtd|stage</BINDTO></CONTROL>"
         "<CONTROL><TYPE>A</TYPE><BINDTO>RTD|GONE</BINDTO></CONTROL></WINDOW>");
    EXPECT_EQ(channel->useCount, 1);
    EXPECT_EQ(controls->Control(Variant(1))->BindTo(), u"RTD|STAGE"); // rewritten from the channel's keys
    EXPECT_FALSE(controls->Control(Variant(2))->Channel());
    EXPECT_EQ(controls->Control(Variant(2))->BindTo(), u"RTD|GONE");
    controls->Remove(Variant(1));
    EXPECT_EQ(channel->useCount, 0);
}

TEST_F(Collection, UseCountNeverFallsBelowZero)
{
    const auto logger = make<fake::FakeLogger>();
    const auto channel = logger->channel(QStringLiteral("RTD"), QStringLiteral("STAGE"));
    window.windows = logger->scheme->Windows();
    load("<WINDOW><CONTROL><TYPE>A</TYPE><BINDTO>RTD|STAGE</BINDTO></CONTROL></WINDOW>");
    channel->useCount = 0;
    controls->Remove(Variant(1));
    EXPECT_EQ(channel->useCount, 0);
}

TEST_F(Collection, LoadingAnotherNodeEmptiesTheFormerTree)
{
    load(ThreeLabels);
    const Node former = node;
    load("<WINDOW><CONTROL><TYPE>A</TYPE></CONTROL></WINDOW>");
    EXPECT_EQ(former.children(Name("CONTROL")).size(), 0u);
    EXPECT_EQ(former.child(Name("CHANGED")).text(), u"-1");
    EXPECT_EQ(controls->Count(), 1);
}

TEST_F(Collection, UnlockingShowsHandlesEverythingHiddenAndEdges)
{
    load("<WINDOW><CONTROL><TYPE>VB.Label</TYPE></CONTROL><CONTROL><TYPE>VB.Shape</TYPE></CONTROL>"
         "<CONTROL><TYPE>A</TYPE></CONTROL></WINDOW>");
    window.made[2]->visible = false;
    EXPECT_TRUE(controls->LockPositions());
    controls->setLockPositions(false);
    EXPECT_TRUE(controls->Control(Variant(1))->ShowGrabHandles());
    EXPECT_TRUE(window.made[2]->visible);
    EXPECT_EQ(window.made[0]->borderStyle, 1);
    EXPECT_EQ(window.made[1]->borderStyle, 4);
    controls->setLockPositions(true);
    EXPECT_FALSE(controls->Control(Variant(1))->ShowGrabHandles());
    EXPECT_EQ(window.made[0]->borderStyle, 0);
    EXPECT_EQ(window.made[1]->borderStyle, 1);
}

TEST_F(Collection, MoreControlsThanAnIndexCanNumberFailByOverflowAndKeepThoseMade)
{
    Node root = document::XMLOps::NewDocument().createElement(Name("WINDOW"));
    for (int i = 0; i < 32768; ++i) {
        Node control = root.createElement(Name("CONTROL"));
        control.appendChild(control.createElement(Name("TYPE"), QStringLiteral("A")));
        root.appendChild(control);
    }
    EXPECT_EQ(errorOf([&] { controls->setXMLNode(root); }), int(ErrorNumber::Overflow));
    EXPECT_EQ(controls->Count(), 32767);
    EXPECT_TRUE(window.made.back()->discarded);
    controls->Clear();
    EXPECT_EQ(controls->Count(), 0);
    window.made.clear();
}

TEST_F(Collection, EventMarksDataAndUpdatesEveryControlInOrder)
{
    const auto logger = make<fake::FakeLogger>();
    controls->AttachLogger(logger);
    Q_EMIT logger->NewBenchData(); // without controls: only the mark
    EXPECT_TRUE(controls->HaveData());
    EXPECT_TRUE(live.updated.empty());
    load(ThreeLabels);
    EXPECT_FALSE(controls->HaveData());
    Q_EMIT logger->NewBenchData();
    EXPECT_EQ(live.updated, (std::vector<QString>{u"@1"_qs, u"@2"_qs, u"@3"_qs}));
    logger->link->enter(site::LinkState::NotConnected);
    EXPECT_TRUE(controls->HaveData()) << "a disconnect keeps the mark";
    controls->Clear();
    EXPECT_FALSE(controls->HaveData());
}

TEST_F(Collection, FailureEndsThePassSilentlyInAnEventAndReachesTheCallerElsewhere)
{
    const auto logger = make<fake::FakeLogger>();
    controls->AttachLogger(logger);
    load(ThreeLabels);
    live.failsAt = QStringLiteral("@2");
    live.updated.clear();
    Q_EMIT logger->NewBenchData();
    EXPECT_EQ(live.updated.size(), 2u);
    EXPECT_TRUE(window.errors.empty());
    EXPECT_EQ(errorOf([&] { controls->ScanControls(); }), int(ErrorNumber::TypeMismatch));
    EXPECT_EQ(errorOf([&] { controls->Add(QStringLiteral("A")); }), int(ErrorNumber::TypeMismatch));
}

TEST_F(Collection, FailureOfALinkFeedReachesTheHost)
{
    const auto logger = make<fake::FakeLogger>();
    controls->AttachLogger(logger);
    load(ThreeLabels);
    live.failsAt = QStringLiteral("@2");
    logger->link->enter(site::LinkState::Connected);
    EXPECT_EQ(live.states.size(), 2u);
    ASSERT_EQ(window.errors.size(), 1u);
    EXPECT_TRUE(window.errors[0].is(ErrorNumber::TypeMismatch));
}

TEST_F(Collection, ScanSurvivesAControlThatClearsTheList)
{
    const auto logger = make<fake::FakeLogger>();
    controls->AttachLogger(logger);
    load(ThreeLabels);
    live.updated.clear();
    live.onUpdate = [&](iBenchControl&) { controls->Clear(); };
    Q_EMIT logger->NewBenchData();
    EXPECT_EQ(live.updated.size(), 1u);
}

TEST_F(Collection, LoggerThatIsReplacedIsHeardNoMore)
{
    const auto first = make<fake::FakeLogger>();
    const auto second = make<fake::FakeLogger>();
    controls->AttachLogger(first);
    controls->AttachLogger(second);
    Q_EMIT first->NewBenchData();
    EXPECT_FALSE(controls->HaveData());
    Q_EMIT second->NewBenchData();
    EXPECT_TRUE(controls->HaveData());
    EXPECT_EQ(errorOf([&] { controls->AttachLogger({}); }), int(ErrorNumber::ObjectNotSet));
}

TEST_F(Collection, CollectionIsReachedByNameAndEnumerated)
{
    load(ThreeLabels);
    EXPECT_EQ(values::toLong(controls->get(Name("count"))), 3);
    const Variant first[] = {Variant(1)};
    EXPECT_EQ(binding::objectOf(controls->get(Name(), first)).typeName(), u"BenchControl");
    const auto items = controls->enumerate();
    int seen = 0;
    while (const auto item = items->next()) {
        EXPECT_EQ(values::toLong(binding::objectOf(*item).get(Name("Index"))), ++seen);
    }
    EXPECT_EQ(seen, 3);
}

// What code of a host may do -------------------------------------------------------------------------------------

namespace {

/// A channel that fails, or does something, where it is asked.
class HostileChannel : public fake::FakeChannel
{
public:
    std::function<void()> onValue, onUseCount, onRevision;

    const Variant& Value() const override
    {
        call(onValue);
        return value;
    }
    void setUseCount(std::int16_t count) override
    {
        call(onUseCount);
        FakeChannel::setUseCount(count);
    }
    std::uint32_t revision() const override
    {
        call(onRevision);
        return 1;
    }

private:
    static void call(const std::function<void()>& action)
    {
        if (action)
            action();
    }
};

class HostileSite : public Collection
{
protected:
    HostileSite()
    {
        window.windows = logger->scheme->windows;
        logger->scheme->window(QStringLiteral("RTD"))->Add(channel, QStringLiteral("STAGE"));
        controls->AttachLogger(logger);
    }

    Ref<fake::FakeLogger> logger = make<fake::FakeLogger>();
    Ref<HostileChannel> channel = make<HostileChannel>();
};

struct NoErrorOfOurs
{};

constexpr const char* BoundLabels = "<WINDOW><CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|STAGE</BINDTO></CONTROL>"
                                    "<CONTROL><TYPE>VB.Label</TYPE><BINDTO>RTD|STAGE</BINDTO></CONTROL></WINDOW>";

} // namespace

TEST_F(HostileSite, ControlWhoseChannelCannotBeTakenUpDoesNotStayOnTheSurface)
{
    channel->onUseCount = [] { throw std::runtime_error("full"); };
    EXPECT_THROW(load(BoundLabels), std::runtime_error);
    EXPECT_EQ(controls->Count(), 0);
    ASSERT_EQ(window.made.size(), 1u);
    EXPECT_FALSE(window.made[0]->visible);
    channel->onUseCount = {};
    load(BoundLabels);
    EXPECT_EQ(controls->Count(), 2);
}

TEST_F(HostileSite, ControlWhoseChannelCannotBeGivenUpStaysWhole)
{
    load(BoundLabels);
    channel->onUseCount = [] { throw std::runtime_error("stuck"); };
    EXPECT_THROW(controls->Remove(Variant(1)), std::runtime_error);
    EXPECT_EQ(controls->Count(), 2);
    EXPECT_EQ(node.children(Name("CONTROL")).size(), 2u);
}

TEST_F(HostileSite, WhateverAnUpdateThrowsEndsAnEventSilentlyAndALinkFeedAtTheHost)
{
    load(BoundLabels);
    live.onUpdate = [](iBenchControl&) { throw NoErrorOfOurs(); };
    Q_EMIT logger->NewBenchData();
    Q_EMIT logger->NewENTData();
    EXPECT_TRUE(window.errors.empty());
    EXPECT_THROW(controls->ScanControls(), NoErrorOfOurs);

    struct FailingFeed : RecordingLiveData
    {
        void followLink(iBenchControl&, int) override { throw std::runtime_error("no link"); }
    } failing;
    controls->setLiveData(&failing);
    logger->link->enter(site::LinkState::Connected);
    ASSERT_EQ(window.errors.size(), 1u);
    EXPECT_TRUE(window.errors[0].is(ErrorNumber::ExceptionOccurred));
    EXPECT_EQ(window.errors[0].description(), u"An exception occurred: no link");
    controls->setLiveData(&live);
}

TEST_F(HostileSite, ChannelMayEmptyTheListWhenTheScanAsksWhetherItHasChanged)
{
    load(BoundLabels);
    channel->onRevision = [this] {
        if (controls->Count() > 0)
            controls->Clear();
    };
    Q_EMIT logger->NewBenchData();
    EXPECT_EQ(controls->Count(), 0);
}

TEST_F(HostileSite, ChannelMayTakeTheLiveDataAwayWhenTheScanAsksWhetherItHasChanged)
{
    load(BoundLabels);
    live.updated.clear();
    channel->onRevision = [this] { controls->setLiveData(nullptr); };
    Q_EMIT logger->NewBenchData();
    EXPECT_TRUE(live.updated.empty());
}

TEST_F(HostileSite, SchemeThatLoadsAnotherWindowWhenAskedForAChannelHasItsWay)
{
    const Node second =
        fake::tree("<WINDOW><CONTROL><TYPE>VB.Label</TYPE><CAPTION>second</CAPTION></CONTROL></WINDOW>");
    bool once = true;
    channel->onUseCount = [&] {
        if (std::exchange(once, false))
            controls->setXMLNode(second);
    };
    load(BoundLabels);
    EXPECT_EQ(controls->XMLNode(), second);
    ASSERT_EQ(controls->Count(), 1);
    EXPECT_EQ(controls->Control(Variant(1))->XMLNode().child(Name("CAPTION")).text(), u"second");
}

TEST_F(HostileSite, LoggerWithoutALinkIsHeardAllTheSame)
{
    logger->link = nullptr;
    controls->AttachLogger(logger);
    Q_EMIT logger->NewBenchData();
    EXPECT_TRUE(controls->HaveData());
}

// Marks of change ------------------------------------------------------------------------------------------------

TEST_F(Collection, LockingAndScanningAreNoChangesOfTheDocument)
{
    const Node document = document::XMLOps::NewDocument();
    const Node root = document.createElement(Name("SCHEME"));
    document.appendChild(root);
    root.appendChild(fake::tree(ThreeLabels));
    controls->setXMLNode(root.firstChildElement());
    document::XMLOps::UnmarkChanged(root);
    controls->setLockPositions(false);
    EXPECT_EQ(controls->Control(Variant(1))->XMLNode().child(Name("SHOWGRABHANDLES")).text(), u"-1");
    controls->setLockPositions(true);
    live.onUpdate = [](iBenchControl& control) {
        EXPECT_EQ(document::XMLOps::GetAttribute(control.XMLNode(), Name("MODE"), QStringLiteral("CHANNEL")),
                  u"CHANNEL");
        control.setToolTipText(QStringLiteral("4.5 m"));
    };
    controls->ScanControls();
    EXPECT_FALSE(document::XMLOps::IsMarkedChanged(root));
    controls->Control(Variant(1))->setToolTipText(QStringLiteral("edited"));
    EXPECT_TRUE(document::XMLOps::IsMarkedChanged(root));
}

TEST_F(Collection, NodeIsReadAndLoadedByName)
{
    load(ThreeLabels);
    EXPECT_EQ(binding::Marshal<Node>::from(controls->get(Name("XMLNode"))), node);
    const Node other = fake::tree("<WINDOW><CONTROL><TYPE>VB.Label</TYPE></CONTROL></WINDOW>");
    controls->putReference(Name("XMLNode"), binding::Marshal<Node>::to(other));
    EXPECT_EQ(controls->Count(), 1);
    EXPECT_TRUE(node.children(Name("CONTROL")).empty());
}

TEST_F(Collection, ListOfTheMostControlsIsWalkedToItsEnd)
{
    Node root = document::XMLOps::NewDocument().createElement(Name("WINDOW"));
    for (int i = 0; i < 32767; ++i) {
        Node control = root.createElement(Name("CONTROL"));
        control.appendChild(control.createElement(Name("TYPE"), QStringLiteral("A")));
        root.appendChild(control);
    }
    controls->setXMLNode(root);
    ASSERT_EQ(controls->Count(), 32767);
    const auto items = controls->enumerate();
    int seen = 0;
    while (items->next())
        ++seen;
    EXPECT_EQ(seen, 32767);
    live.updated.clear();
    controls->ScanControls();
    EXPECT_EQ(live.updated.size(), 32767u);
    controls->setLockPositions(false);
    controls->updateAllNodes();
    controls->Remove(Variant(1));
    EXPECT_EQ(controls->Control(Variant(32766))->Index(), 32766);
}
